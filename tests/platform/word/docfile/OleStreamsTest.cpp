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

TEST(OleStreams, LongTextsMakeASummaryLongerThanIsCustomary) {
    const std::u16string title(3000, u'工');
    const Bytes bytes = encodeSummary({title, u"", u"author"});
    EXPECT_GT(bytes.size(), 9000U);
    EXPECT_TRUE(isPropertySetStream(bytes));
    const std::size_t at = 48 + numberAt(bytes, 68);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()) + at + 8).size(), 9000U);
    const std::size_t author = 48 + numberAt(bytes, 76);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()) + author + 8), "author");
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

TEST(OleStreams, ValuesBeginAtMultiplesOfFourBytes) {
    for (std::size_t size = 1; size <= 4; ++size) {
        const Bytes bytes = encodeSummary({std::u16string(size, u'a'), u"", u"author"});
        const std::uint32_t title = numberAt(bytes, 68);
        EXPECT_EQ(title % 4, 0U);
        EXPECT_EQ(numberAt(bytes, 76), title + (size < 4 ? 12 : 16)) << size;
    }
}

// One set with one value: `type`, a length, four bytes.
Bytes setOfOneValue(std::uint32_t type, std::uint32_t length) {
    LittleEndianWriter out;
    out.u16(0xFFFE);
    out.zeros(22);
    out.u32(1);
    out.zeros(16);
    out.u32(48);
    out.u32(28); // of the set
    out.u32(1);
    out.u32(2);
    out.u32(16);
    out.u32(type);
    out.u32(length);
    out.u32(0);
    return out.take();
}

TEST(OleStreams, APropertySetIsSoundWhereAllItsValuesLieInIt) {
    EXPECT_TRUE(isPropertySetStream(encodeSummary({u"施工方案", u"", u"author"})));
    EXPECT_TRUE(isPropertySetStream(encodeDocumentSummary()));
    const Bytes sound = setOfOneValue(30, 4);
    EXPECT_TRUE(isPropertySetStream(sound));
    EXPECT_FALSE(isPropertySetStream(ByteView(sound).first(sound.size() - 1)));
    EXPECT_FALSE(isPropertySetStream(ByteView(sound).first(27)));
    EXPECT_FALSE(isPropertySetStream({}));
    const auto with = [&](std::size_t at, std::uint8_t value) {
        Bytes changed = sound;
        changed[at] = value;
        return isPropertySetStream(changed);
    };
    EXPECT_FALSE(with(0, 0));   // no stream of property sets
    EXPECT_FALSE(with(24, 0));  // no set
    EXPECT_FALSE(with(24, 3));  // more than the format knows
    EXPECT_FALSE(with(44, 49)); // a set that begins too late
    EXPECT_FALSE(with(48, 29)); // one that is too long
    EXPECT_FALSE(with(52, 4));  // more values than there is room for
    EXPECT_TRUE(with(60, 24));
    EXPECT_FALSE(with(60, 25)); // a value behind the set
}

TEST(OleStreams, APropertySetIsSoundWhereTextsAndBytesAreAsLongAsTheySay) {
    for (const std::uint32_t type : {30U, 65U, 71U, 0x1003U}) {
        EXPECT_TRUE(isPropertySetStream(setOfOneValue(type, 4))) << type;
        EXPECT_FALSE(isPropertySetStream(setOfOneValue(type, 5))) << type;
    }
    EXPECT_TRUE(isPropertySetStream(setOfOneValue(31, 2)));
    EXPECT_FALSE(isPropertySetStream(setOfOneValue(31, 3)));
    EXPECT_TRUE(isPropertySetStream(setOfOneValue(3, 99))); // a number
}

TEST(OleStreams, APropertySetHasItsHeadAndATextItsLength) {
    const Bytes sound = setOfOneValue(30, 4);
    const auto withSetAt = [&](std::size_t at) {
        Bytes changed = sound;
        changed[44] = static_cast<std::uint8_t>(at);
        return isPropertySetStream(changed);
    };
    EXPECT_FALSE(withSetAt(sound.size()));
    EXPECT_FALSE(withSetAt(sound.size() - 7)) << "half a head";
    for (const std::uint32_t type : {30U, 31U, 65U, 0x1003U}) {
        Bytes changed = setOfOneValue(type, 0);
        changed[60] = 24; // the type stands where the set ends, without a length behind it
        std::copy_n(changed.begin() + 64, 4, changed.begin() + 72);
        EXPECT_FALSE(isPropertySetStream(changed)) << type;
    }
}

} // namespace
} // namespace qvnd::word
