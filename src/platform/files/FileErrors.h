#pragma once

#include <QString>

#include <system_error>

namespace qvnd::files {

// Throw a RunTimeError with the number and its description, followed by the path.
[[noreturn]] void throwFileError(long number, const QString& path);
// The number that stands for a failure of the operating system: 53, 58, 61, 70, 76, else 75.
[[noreturn]] void throwFileError(std::error_code code, const QString& path);

} // namespace qvnd::files
