#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qvnd::word {

// A local date and time.
struct Moment {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// The current local time of this computer.
Moment localMoment();

// The result of a DATE or TIME field at that time. The field's instruction holds the format as a
// date picture (\@ "yyyy-MM-dd", [ECMA-376] part 1, 17.16.4.1). EEEE, O, A and aaaa write year,
// month, day and weekday in Chinese. Nothing for a field without a picture, and for a picture that
// needs the names of months or days in another language.
std::optional<std::u16string> dateShown(std::u16string_view instruction, const Moment& moment);

} // namespace qvnd::word
