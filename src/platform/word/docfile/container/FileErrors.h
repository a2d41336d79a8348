#pragma once

#include <filesystem>
#include <system_error>

namespace qvnd::word {

// Throws the RunTimeError that belongs to what the system said of writing `path`: 61 disk full,
// 70 permission denied, 76 path not found, 75 anything else. The description names the file.
[[noreturn]] void throwFileError(const std::error_code& reason, const std::filesystem::path& path);

} // namespace qvnd::word
