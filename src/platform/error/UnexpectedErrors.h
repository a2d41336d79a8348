#pragma once

#include "platform/error/RunTimeError.h"

#include <exception>

// What is no run-time error and ends a command all the same: memory that there is not, a mistake of
// the program. A command tells it in words and the program goes on.
namespace qvnd {

namespace error {
inline constexpr long outOfMemory = 7;
inline constexpr long internalError = 51;
} // namespace error

// A run-time error as it is, anything else as one of the two above with a description for the user.
RunTimeError runTimeErrorOf(const std::exception& failure);

} // namespace qvnd
