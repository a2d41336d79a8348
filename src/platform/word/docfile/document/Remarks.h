#pragma once

#include "platform/error/Utf8.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qvnd::word {

// What a tolerant decoder left out and why, in Chinese, for the user.
using Remarks = std::vector<std::u16string>;

// A number as text of a remark.
inline std::u16string digits(std::int64_t number) { return fromUtf8(std::to_string(number)); }

} // namespace qvnd::word
