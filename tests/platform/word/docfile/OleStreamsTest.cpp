#include "platform/word/docfile/objects/OleStreams.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

std::uint32_t numberAt(const Bytes& bytes, std::size_t at) {
    LittleEndianReader reader(bytes, "test");
    reader.seek(at);
    return reader.u32();
}

TEST(OleStreams, CompObjNamesTheProgramClass) {
    const Bytes bytes = encodeCompObj();
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(text.find("Word.Document.8"), std::string::npos);
    EXPECT_NE(text.find("MSWordDoc"), std::string::npos);
    EXPECT_TRUE(std::equal(wordDocumentClass.begin(), wordDocumentClass.end(), bytes.begin() + 12));
}

TEST(OleStreams, PropertySetsHaveOneSectionAndTheCustomarySize) {
    for (const Bytes& bytes : {encodeSummary({}), encodeDocumentSummary()}) {
        EXPECT_EQ(bytes.size(), 4096U);
        EXPECT_EQ(numberAt(bytes, 0), 0xFFFEU);
        EXPECT_EQ(numberAt(bytes, 24), 1U);
        EXPECT_EQ(numberAt(bytes, 44), 48U);
        EXPECT_EQ(numberAt(bytes, 52), 1U); // the code page alone
    }
}

TEST(OleStreams, TextsAreUtf8AndEmptyOnesLeftOut) {
    const Bytes bytes = encodeSummary({u"施工方案", u"", u"author"});
    EXPECT_EQ(numberAt(bytes, 52), 3U);
    EXPECT_EQ(numberAt(bytes, 64), 2U); // title
    const std::size_t title = 48 + numberAt(bytes, 68);
    EXPECT_EQ(numberAt(bytes, title), 30U);
    EXPECT_EQ(numberAt(bytes, title + 4), 13U);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()) + title + 8), "施工方案");
    EXPECT_EQ(numberAt(bytes, 72), 4U); // author
}

} // namespace
} // namespace qvnd::word
