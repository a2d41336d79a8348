#include "platform/word/formatting/DateForms.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace qvnd::word {

namespace {

constexpr std::u16string_view chineseDigits = u"〇一二三四五六七八九";

std::u16string digitsOf(int number, std::size_t least) {
    std::u16string text;
    for (; number > 0; number /= 10) {
        text.insert(text.begin(), static_cast<char16_t>(u'0' + number % 10));
    }
    text.insert(0, least > text.size() ? least - text.size() : 0, u'0');
    return text;
}

std::u16string chineseYear(int year) {
    std::u16string text;
    for (const char16_t digit : digitsOf(year, 1)) {
        text += chineseDigits[static_cast<std::size_t>(digit - u'0')];
    }
    return text;
}

// 1 to 31.
std::u16string chineseNumber(int number) {
    std::u16string text;
    if (number >= 20) {
        text += chineseDigits[static_cast<std::size_t>(number / 10)];
    }
    if (number >= 10) {
        text += u'十';
    }
    if (number % 10 > 0) {
        text += chineseDigits[static_cast<std::size_t>(number % 10)];
    }
    return text;
}

// 0: Sunday. Sakamoto's rule.
int weekday(const Moment& moment) {
    constexpr std::array<int, 12> shift{0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    const int year = moment.month < 3 ? moment.year - 1 : moment.year;
    return (year + year / 4 - year / 100 + year / 400 +
            shift.at(static_cast<std::size_t>((moment.month - 1) % 12)) + moment.day) %
           7;
}

std::u16string chineseWeekday(const Moment& moment) {
    constexpr std::u16string_view days = u"日一二三四五六";
    return std::u16string(u"星期") + days[static_cast<std::size_t>(weekday(moment))];
}

// What `count` times that letter stands for; nothing for letters that are not known.
std::optional<std::u16string> part(char16_t letter, std::size_t count, const Moment& moment) {
    const int hour = moment.hour % 12 == 0 ? 12 : moment.hour % 12;
    const bool isShort = count <= 2;
    switch (letter) {
    case u'y':
    case u'Y':
        return isShort ? digitsOf(moment.year % 100, 2) : digitsOf(moment.year, 4);
    case u'M':
        return isShort ? std::optional(digitsOf(moment.month, count)) : std::nullopt;
    case u'd':
    case u'D':
        return isShort ? std::optional(digitsOf(moment.day, count)) : std::nullopt;
    case u'H':
        return digitsOf(moment.hour, count);
    case u'h':
        return digitsOf(hour, count);
    case u'm':
        return digitsOf(moment.minute, count);
    case u's':
    case u'S':
        return digitsOf(moment.second, count);
    case u'E':
        return chineseYear(moment.year);
    case u'O':
        return chineseNumber(moment.month);
    case u'A':
        return chineseNumber(moment.day);
    case u'a':
        return count >= 3 ? std::optional(chineseWeekday(moment)) : std::nullopt;
    default:
        return std::nullopt;
    }
}

bool isLetter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

bool isHalfOfDay(std::u16string_view rest) {
    return rest.starts_with(u"AM/PM") || rest.starts_with(u"am/pm");
}

std::optional<std::u16string> shownBy(std::u16string_view picture, const Moment& moment) {
    std::u16string text;
    for (std::size_t at = 0; at < picture.size();) {
        const char16_t c = picture[at];
        if (c == u'\'') {
            const std::size_t end = std::min(picture.find(u'\'', at + 1), picture.size());
            text += picture.substr(at + 1, end - at - 1);
            at = end + 1;
        } else if (isHalfOfDay(picture.substr(at))) {
            text += moment.hour < 12 ? u"AM" : u"PM";
            at += 5;
        } else if (isLetter(c)) {
            const std::size_t end = std::min(picture.find_first_not_of(c, at), picture.size());
            const auto shown = part(c, end - at, moment);
            if (!shown) {
                return std::nullopt;
            }
            text += *shown;
            at = end;
        } else {
            text += c;
            ++at;
        }
    }
    return text;
}

// What stands behind \@, in quotation marks or up to the next blank.
std::u16string_view pictureIn(std::u16string_view instruction) {
    const std::size_t mark = instruction.find(u"\\@");
    if (mark == std::u16string_view::npos) {
        return {};
    }
    std::u16string_view rest = instruction.substr(mark + 2);
    rest.remove_prefix(std::min(rest.find_first_not_of(u' '), rest.size()));
    if (rest.empty()) {
        return {};
    }
    const bool isQuoted = rest[0] == u'"' || rest[0] == u'“';
    rest.remove_prefix(isQuoted ? 1 : 0);
    return rest.substr(0, rest.find_first_of(isQuoted ? u"\"”" : u" "));
}

} // namespace

Moment localMoment() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::optional<std::u16string> dateShown(std::u16string_view instruction, const Moment& moment) {
    const std::u16string_view picture = pictureIn(instruction);
    return picture.empty() ? std::nullopt : shownBy(picture, moment);
}

} // namespace qvnd::word
