#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qvnd::word {

// A time of some desktop.
struct Moment {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// The time of this desktop, now.
Moment localMoment();

// What a DATE or TIME field shows at that time, as the picture in its instruction says
// (\@ "yyyy-MM-dd", [ECMA-376] part 1, 17.16.4.1; EEEE, O, A and aaaa are the Chinese forms of
// year, month, day and weekday). Nothing for a field without a picture, and for one with letters
// that only a language tells (names of months and days).
std::optional<std::u16string> dateShown(std::u16string_view instruction, const Moment& moment);

} // namespace qvnd::word
