#include "platform/word/docfile/pictures/Md4.h"

#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

// The test suite of RFC 1320, A.5.
TEST(Md4, GivesTheDigestsOfItsStandard) {
    const auto digest = [](std::string_view text) {
        const auto bytes = md4(test::ascii(text));
        return Bytes(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(digest(""), test::hex("31d6cfe0d16ae931b73c59d7e0c089c0"));
    EXPECT_EQ(digest("a"), test::hex("bde52cb31de33e46245e05fbdbd6fb24"));
    EXPECT_EQ(digest("abc"), test::hex("a448017aaf21d8525fc10ae87aa6729d"));
    EXPECT_EQ(digest("message digest"), test::hex("d9130a8164549fe818874806e1c7014b"));
    EXPECT_EQ(digest("abcdefghijklmnopqrstuvwxyz"), test::hex("d79e1c308aa5bbcdeea8ed63df412da9"));
    EXPECT_EQ(digest("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
              test::hex("043f8582f241db351ce627e153e7f0e4"));
    EXPECT_EQ(digest("1234567890123456789012345678901234567890123456789012345678901234567890"
                     "1234567890"),
              test::hex("e33b4ddc9c38f2199c3e7b164fcc0536"));
}

} // namespace
} // namespace qvnd::word
