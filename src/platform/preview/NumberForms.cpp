#include "platform/preview/NumberForms.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

namespace {

QString roman(int number) {
    constexpr std::array<std::pair<int, const char*>, 13> steps{{{1000, "M"},
                                                                 {900, "CM"},
                                                                 {500, "D"},
                                                                 {400, "CD"},
                                                                 {100, "C"},
                                                                 {90, "XC"},
                                                                 {50, "L"},
                                                                 {40, "XL"},
                                                                 {10, "X"},
                                                                 {9, "IX"},
                                                                 {5, "V"},
                                                                 {4, "IV"},
                                                                 {1, "I"}}};
    constexpr int highest = 32767;
    QString text;
    int rest = number <= highest ? number : 0;
    for (const auto& [value, letters] : steps) {
        for (; rest >= value; rest -= value) {
            text += QLatin1String(letters);
        }
    }
    return text;
}

// a to z, then aa to zz, and so on.
QString letters(int number, char16_t first) {
    constexpr int count = 26;
    constexpr int longest = 30;
    if (number < 1) {
        return {};
    }
    const int times = std::min((number - 1) / count + 1, longest);
    return {times, QChar(static_cast<char16_t>(first + (number - 1) % count))};
}

QString digitForDigit(int number, const QString& digits) {
    QString text = QString::number(number);
    for (QChar& c : text) {
        c = c.isDigit() ? digits.at(c.digitValue()) : c;
    }
    return text;
}

QString chinese(int number, const QString& digits, const QString& units) {
    constexpr int highest = 9999;
    if (number <= 0 || number > highest) {
        return number == 0 ? digits.first(1) : QString::number(number);
    }
    QString text;
    bool gap = false;
    int unit = 3;
    for (const int value : {1000, 100, 10, 1}) {
        const int digit = number / value % 10;
        if (digit == 0) {
            gap = gap || !text.isEmpty();
        } else {
            text += gap ? digits.first(1) : QString();
            gap = false;
            text += digits.at(digit);
            text += unit > 0 ? QString(units.at(unit - 1)) : QString();
        }
        --unit;
    }
    return text;
}

// 十 to 十九 go without their one.
QString counting(int number) {
    const QString text = chinese(number, u"零一二三四五六七八九"_s, u"十百千"_s);
    return number >= 10 && number < 20 ? text.mid(1) : text;
}

QString enclosed(int number, char16_t first, int count) {
    return number >= 1 && number <= count
               ? QString(QChar(static_cast<char16_t>(first + number - 1)))
               : QString::number(number);
}

QString ofCycle(int number, const QString& cycle) {
    return number >= 1 && number <= cycle.size() ? QString(cycle.at(number - 1))
                                                 : QString::number(number);
}

QString ordinal(int number) {
    const int last = number % 10;
    const bool isTeen = number / 10 % 10 == 1;
    const char* ending = isTeen || last == 0 || last > 3 ? "th"
                         : last == 1                     ? "st"
                         : last == 2                     ? "nd"
                                                         : "rd";
    return QString::number(number) + QLatin1String(ending);
}

} // namespace

QString numberInForm(int number, unsigned nfc) {
    switch (nfc) {
    case 1:
        return roman(number);
    case 2:
        return roman(number).toLower();
    case 3:
        return letters(number, u'A');
    case 4:
        return letters(number, u'a');
    case 5:
        return ordinal(number);
    case 10: // 一〇二
    case 36:
        return digitForDigit(number, u"〇一二三四五六七八九"_s);
    case 11:
    case 33:
    case 35:
    case 37:
    case 39:
        return counting(number);
    case 14:
    case 19:
        return digitForDigit(number, u"０１２３４５６７８９"_s);
    case 16:
    case 34:
    case 38:
        return chinese(number, u"零壹贰叁肆伍陆柒捌玖"_s, u"拾佰仟"_s);
    case 18:
    case 28:
        return enclosed(number, u'①', 20);
    case 22:
        return QString::number(number).rightJustified(2, u'0');
    case 26:
        return enclosed(number, u'⒈', 20);
    case 27:
        return enclosed(number, u'⑴', 20);
    case 29:
        return enclosed(number, u'㈠', 10);
    case 30:
        return ofCycle(number, u"甲乙丙丁戊己庚辛壬癸"_s);
    case 31:
        return ofCycle(number, u"子丑寅卯辰巳午未申酉戌亥"_s);
    default:
        return QString::number(number);
    }
}

} // namespace qvnd::preview
