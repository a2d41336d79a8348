#include "generate/numbering/NumberText.h"

#include "platform/error/RunTimeError.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

void joinCounters(const LevelCounters& counters, int level, QString& text) {
    for (int i = 1; i <= level; ++i) {
        const QString number = QString::number(counters.at(i));
        if (i > 1)
            text += u'.';
        text += number;
    }
}

QString chineseNumber(const NumberWords& words, int counter) {
    if (counter <= NumberWords::last)
        return words.at(counter);
    const int firstDigit = QString::number(counter).at(0).digitValue();
    return words.at(firstDigit) + u'十' + words.at(counter % 10);
}

QString styledNumber(const LevelNumbering& numbering, int level, int counter) {
    const int row = std::min(level, ChapterGrid::lastRow);
    const QString& style = numbering.grid.at(row, ChapterColumn::序号标志);
    if (style == u"一型")
        return chineseNumber(numbering.words, counter);
    if (style == u"A型")
        return QChar(counter + 64);
    if (style == u"aa型")
        return QChar(counter + 96);
    return QString::number(counter);
}

// From 11 on the tens are written once and the units name the list's empty entry.
QString roman(int number) {
    static const QStringList numerals = u",I,II,III,IV,V,VI,VII,VIII,IX,X"_s.split(',');
    if (number < 0)
        return {};
    return (number < 11 ? numerals.at(number) : u"X"_s) + u'.';
}

} // namespace

QString FormatLevelNumber(const LevelNumbering& numbering, int level, int counter) {
    QString text;
    try {
        if (numbering.gMultLevelOn)
            joinCounters(numbering.counters, level, text);
        else
            text = styledNumber(numbering, level, counter);
    } catch (const RunTimeError&) {
        // A number that cannot be made is no reason to lose the node: the text so far stands.
    }
    return text;
}

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
