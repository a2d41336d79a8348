#include "platform/jet/Failure.h"
#include "platform/jet/Value.h"

#include <QLocale>

#include <cmath>

namespace qvnd::jet {

namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

qsizetype digitsFrom(QStringView text, qsizetype at) {
    const qsizetype start = at;
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at - start;
}

double hexadecimal(QStringView digits) {
    bool good = false;
    const qlonglong number = digits.toString().toLongLong(&good, 16);
    if (!good || digits.front() == u'-' || digits.front() == u'+') {
        failTypeMismatch();
    }
    return static_cast<double>(number);
}

// Copies sign, digits, fraction and exponent in the form that the C locale reads, leaving out the
// commas between digits; anything else is no number.
QString plainForm(QStringView text) {
    QString plain;
    qsizetype at = 0;
    const auto take = [&](qsizetype count) {
        plain += text.mid(at, count);
        at += count;
    };
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        take(1);
    }
    qsizetype digits = digitsFrom(text, at);
    qsizetype seen = digits;
    take(digits);
    while (seen > 0 && at < text.size() && text[at] == u',' && digitsFrom(text, at + 1) > 0) {
        ++at;
        take(digitsFrom(text, at));
    }
    if (at < text.size() && text[at] == u'.') {
        take(1);
        digits = digitsFrom(text, at);
        seen += digits;
        take(digits);
    }
    if (seen > 0 && at < text.size() && QStringView(u"eEdD").contains(text[at])) {
        plain += u'e';
        ++at;
        if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
            take(1);
        }
        digits = digitsFrom(text, at);
        seen = digits;
        take(digits);
    }
    if (seen == 0 || at != text.size()) {
        failTypeMismatch();
    }
    return plain;
}

} // namespace

double numberOf(QStringView text) {
    const QStringView trimmed = text.trimmed();
    if (trimmed.startsWith(u"&H", Qt::CaseInsensitive)) {
        return hexadecimal(trimmed.mid(2));
    }
    // Well formed by now: what is too wide becomes infinite, what is too small zero.
    const double number = QLocale::c().toDouble(plainForm(trimmed));
    if (!std::isfinite(number)) {
        failOverflow();
    }
    return number;
}

} // namespace qvnd::jet
