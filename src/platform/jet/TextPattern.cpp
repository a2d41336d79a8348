#include "platform/jet/TextPattern.h"

#include <QChar>

namespace qvnd::jet {

namespace {

char16_t folded(QChar c) { return c.toCaseFolded().unicode(); }

// Matches one character against the set whose opening bracket is at `at`; `at` moves behind the
// closing one.
bool inSet(QChar c, QStringView pattern, qsizetype& at, qsizetype close) {
    QStringView set = pattern.mid(at + 1, close - at - 1);
    at = close + 1;
    const bool outside = set.startsWith(u'!');
    if (outside) {
        set = set.mid(1);
    }
    const char16_t wanted = folded(c);
    bool found = false;
    for (qsizetype i = 0; i < set.size(); ++i) {
        const bool range = i + 2 < set.size() && set[i + 1] == u'-';
        const char16_t low = folded(set[i]);
        const char16_t high = range ? folded(set[i + 2]) : low;
        found = found || (wanted >= low && wanted <= high);
        i += range ? 2 : 0;
    }
    return found != outside;
}

// Does the one pattern element at `at` match the character? Moves behind the element.
bool matchesOne(QChar c, QStringView pattern, qsizetype& at) {
    const QChar element = pattern[at];
    if (element == u'[') {
        const qsizetype close = pattern.indexOf(u']', at);
        return close >= 0 && inSet(c, pattern, at, close);
    }
    ++at;
    if (element == u'?') {
        return true;
    }
    return element == u'#' ? (c >= u'0' && c <= u'9') : folded(element) == folded(c);
}

// An empty set stands for no character at all.
qsizetype skipEmptySets(QStringView pattern, qsizetype at) {
    while (pattern.mid(at).startsWith(u"[]")) {
        at += 2;
    }
    return at;
}

} // namespace

bool matchesPattern(QStringView text, QStringView pattern) {
    qsizetype at = 0;
    qsizetype i = 0;
    qsizetype afterStar = -1; // where in the pattern to go on when the latest star takes one more
    qsizetype taken = 0;
    for (;;) {
        at = skipEmptySets(pattern, at);
        if (at < pattern.size() && pattern[at] == u'*') {
            afterStar = ++at;
            taken = i;
            continue;
        }
        if (i == text.size()) {
            return at == pattern.size();
        }
        if (at < pattern.size() && matchesOne(text[i], pattern, at)) {
            ++i;
            continue;
        }
        if (afterStar < 0) {
            return false;
        }
        at = afterStar;
        i = ++taken;
    }
}

bool isPattern(QStringView pattern) {
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == u'[') {
            at = pattern.indexOf(u']', at);
            if (at < 0) {
                return false;
            }
        }
    }
    return true;
}

} // namespace qvnd::jet
