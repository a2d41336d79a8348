#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <filesystem>
#include <string>

// What a file that is no Word 97-2003 document is instead, for the user.
namespace qvnd::word {

// The format that a file's first bytes speak of, in Chinese; empty when it is not known.
// 4096 bytes suffice.
std::u16string foreignFormat(ByteView start);

// That of a file; a compound file is told by the streams that it holds.
std::u16string foreignFormat(const std::filesystem::path& path);

// How a file that needs a password is encrypted ([MS-OFFCRYPTO]), for the user; empty for a file
// that is not, and where it cannot be told.
std::u16string encryptionOf(const std::filesystem::path& path);

} // namespace qvnd::word
