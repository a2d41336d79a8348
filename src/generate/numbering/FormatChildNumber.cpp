#include "generate/numbering/FormatChildNumber.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

// From 11 on the tens are written once and the units name the list's empty entry.
QString roman(int number) {
    static const QStringList numerals = u",I,II,III,IV,V,VI,VII,VIII,IX,X"_s.split(',');
    if (number < 0)
        return {};
    return (number < 11 ? numerals.at(number) : u"X"_s) + u'.';
}

} // namespace

QString FormatChildNumber(const QString& number, const QString& style) {
    const int n = number.toInt();
    if (style == u"无")
        return {};
    if (style == u"1、")
        return number + u'、';
    if (style == u"1.")
        return number + u'.';
    if (style == u"1)")
        return number + u')';
    if (style == u"A.")
        return QString(QChar(n + 64)) + u'.';
    if (style == u"A)")
        return QString(QChar(n + 64)) + u')';
    if (style == u"a)")
        return QString(QChar(n + 96)) + u')';
    if (style == u"I.")
        return roman(n);
    return number;
}

} // namespace qvnd::generate
