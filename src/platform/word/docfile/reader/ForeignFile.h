#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <filesystem>
#include <string>
#include <string_view>

// What a file that is no Word 97-2003 document is instead, for the user.
namespace qvnd::word {

struct ForeignFormat {
    std::u16string name; // in Chinese, for the user; empty when it is not known
    // Whether it is one of a text document that office suites read.
    bool isText = false;
};

// The format that a file's bytes speak of. Its first 4096 bytes suffice, of an archive its last
// 16384 besides: the names of its parts stand at its end.
ForeignFormat foreignFormat(ByteView bytes);

// That of a file; a compound file is told by the streams that it holds.
ForeignFormat foreignFormat(const std::filesystem::path& path);

// What encryptionOf() says of a document under rights management.
inline constexpr std::u16string_view rightsManagement = u"信息权限管理（IRM）";
// The stream that holds such a document, [MS-OFFCRYPTO] 2.2.10.
inline constexpr std::u16string_view protectedContentName = u"\tDRMContent";

// How a file that is encrypted is so ([MS-OFFCRYPTO]), for the user; empty for a file that is not,
// and where it cannot be told.
std::u16string encryptionOf(const std::filesystem::path& path);

} // namespace qvnd::word
