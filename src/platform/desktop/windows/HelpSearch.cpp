#include "platform/desktop/windows/HelpSearch.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

constexpr qsizetype titleRank = 1000;
constexpr qsizetype before = 14; // characters of an excerpt in front of the word
constexpr qsizetype excerptLength = 60;

QStringList pairsOf(const QStringList& words) {
    QStringList pairs;
    for (const QString& word : words) {
        for (qsizetype i = 0; i + 2 <= word.size(); ++i) {
            pairs << word.mid(i, 2);
        }
    }
    pairs.removeDuplicates();
    return pairs;
}

bool holds(const HelpText& page, const QString& word) {
    return page.title.contains(word, Qt::CaseInsensitive) ||
           page.text.contains(word, Qt::CaseInsensitive);
}

QString excerpt(const QString& text, const QStringList& words) {
    qsizetype place = -1;
    for (const QString& word : words) {
        const qsizetype found = text.indexOf(word, 0, Qt::CaseInsensitive);
        if (found >= 0 && (place < 0 || found < place)) {
            place = found;
        }
    }
    const qsizetype from = std::max<qsizetype>(0, place - before);
    const QString part = text.mid(from, excerptLength).simplified();
    return (from > 0 ? u"…"_s : QString()) + part +
           (from + excerptLength < text.size() ? u"…"_s : QString());
}

} // namespace

QStringList HelpSearch::words(const QString& text) {
    static const QRegularExpression gaps(u"[\\s\\x{3000},;，、；。]+"_s);
    return text.split(gaps, Qt::SkipEmptyParts);
}

std::vector<HelpSearch::Ranked> HelpSearch::withAll(const QStringList& words) const {
    std::vector<Ranked> found;
    for (const HelpText& page : pages_) {
        qsizetype rank = 0;
        const bool all = std::all_of(words.begin(), words.end(), [&](const QString& word) {
            rank += page.text.count(word, Qt::CaseInsensitive) +
                    (page.title.contains(word, Qt::CaseInsensitive) ? titleRank : 0);
            return holds(page, word);
        });
        if (all) {
            found.push_back({&page, rank});
        }
    }
    return found;
}

std::vector<HelpSearch::Ranked> HelpSearch::withMost(const QStringList& pairs) const {
    std::vector<Ranked> found;
    for (const HelpText& page : pages_) {
        const qsizetype count = std::count_if(
            pairs.begin(), pairs.end(), [&](const QString& pair) { return holds(page, pair); });
        if (count > 0 && count * 2 >= pairs.size()) {
            found.push_back({&page, count});
        }
    }
    return found;
}

std::vector<HelpHit> HelpSearch::find(const QString& text) const {
    QStringList sought = words(text);
    if (sought.isEmpty()) {
        return {};
    }
    std::vector<Ranked> found = withAll(sought);
    if (found.empty()) {
        sought = pairsOf(sought);
        found = withMost(sought);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Ranked& one, const Ranked& other) { return one.rank > other.rank; });
    std::vector<HelpHit> hits;
    hits.reserve(found.size());
    for (const Ranked& ranked : found) {
        hits.push_back({ranked.page->page, ranked.page->title, excerpt(ranked.page->text, sought)});
    }
    return hits;
}

} // namespace qvnd::desktop
