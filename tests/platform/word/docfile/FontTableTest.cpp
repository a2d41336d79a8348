#include "platform/word/docfile/styles/FontTable.h"

#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qvnd::word {
namespace {

using test::hex;

TEST(FontTable, ChineseFontGetsItsCharacterSetAndLatinName) {
    const FontEntry font = makeFont(u"宋体");

    EXPECT_EQ(font.alternateName, u"SimSun");
    EXPECT_EQ(font.record.at(3), 134); // chs
    EXPECT_EQ(font.record.at(4), 3);   // ixchSzAlt: behind the name and its zero
}

TEST(FontTable, LatinFontHasNoAlternateName) {
    const FontEntry font = makeFont(u"Arial");

    EXPECT_EQ(font.alternateName, u"");
    EXPECT_EQ(font.record.at(3), 0);
    EXPECT_EQ(font.record.at(4), 0);
}

TEST(FontTable, EncodingWhatWasDecodedGivesEqualBytes) {
    Remarks remarks;
    const Bytes first = encodeFonts({makeFont(u"宋体"), makeFont(u"Arial")});
    const std::vector<FontEntry> read = decodeFonts(first, remarks);

    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].name, u"宋体");
    EXPECT_EQ(read[0].alternateName, u"SimSun");
    EXPECT_EQ(read[1].name, u"Arial");
    EXPECT_EQ(encodeFonts(read), first);
    EXPECT_TRUE(remarks.empty());
}

TEST(FontTable, FontWithoutARecordIsWrittenByItsName) {
    FontEntry font;
    font.name = u"Verdana";
    Remarks remarks;
    EXPECT_EQ(decodeFonts(encodeFonts({font}), remarks).at(0).name, u"Verdana");
}

// A length of one byte stands before each record.
TEST(FontTable, TheLongestRecordThatATableHoldsIsKeptAndALongerOneIsMadeAnew) {
    FontEntry font = makeFont(u"Arial");
    font.record.at(5) = 77; // panose
    Remarks remarks;
    font.record.resize(255);
    EXPECT_EQ(decodeFonts(encodeFonts({font}), remarks).at(0).record.at(5), 77);
    font.record.resize(256);
    const FontEntry made = decodeFonts(encodeFonts({font}), remarks).at(0);
    EXPECT_EQ(made.name, u"Arial");
    EXPECT_NE(made.record.at(5), 77);
}

TEST(FontTable, LongNameIsCutToWhatAnEntryHolds) {
    Remarks remarks;
    const FontEntry font = makeFont(std::u16string(300, u'x'));
    EXPECT_EQ(decodeFonts(encodeFonts({font}), remarks).at(0).name, std::u16string(64, u'x'));
}

TEST(FontTable, DamagedFontIsReplacedInItsPlace) {
    Remarks remarks;
    const Bytes arial = encodeFonts({makeFont(u"Arial")});
    Bytes bytes = hex("0200 0000  02 0000");
    bytes.insert(bytes.end(), arial.begin() + 4, arial.end());

    const std::vector<FontEntry> read = decodeFonts(bytes, remarks);

    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].name, u"Times New Roman");
    EXPECT_EQ(read[1].name, u"Arial");
    EXPECT_EQ(remarks.at(0), u"有 1 种字体已损坏，用它们的文字改用 Times New Roman");
}

TEST(FontTable, ANameThatIsNotClosedIsWrittenAnew) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"Arial")});
    bytes.back() = 0x41;
    const std::vector<FontEntry> read = decodeFonts(bytes, remarks);
    ASSERT_EQ(read.size(), 1U);
    EXPECT_TRUE(read[0].name.starts_with(u"Arial"));
    const Bytes& record = read[0].record;
    EXPECT_EQ(record.at(record.size() - 1), 0);
    EXPECT_EQ(record.at(record.size() - 2), 0);
    EXPECT_EQ(decodeFonts(encodeFonts(read), remarks).at(0).name, read[0].name);
}

TEST(FontTable, ANameThatIsNotClosedIsKeptToItsLastLetter) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"Arial")});
    bytes.at(4) = static_cast<std::uint8_t>(bytes.at(4) - 2); // the entry without its zero
    bytes.resize(bytes.size() - 2);
    EXPECT_EQ(decodeFonts(bytes, remarks).at(0).name, u"Arial");
    EXPECT_TRUE(remarks.empty());
}

TEST(FontTable, TheZeroOfTheLastLetterClosesNoName) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"A")});
    bytes.at(4) = 42; // up to the first byte of its zero
    bytes.resize(5 + 42);
    const FontEntry read = decodeFonts(bytes, remarks).at(0);
    EXPECT_EQ(read.name, u"A");
    EXPECT_EQ(read.record.size(), 43U);
}

TEST(FontTable, OfARecordThatIsNotClosedTheOtherNameIsDropped) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"宋体")});
    bytes.back() = 0x41;
    const FontEntry read = decodeFonts(bytes, remarks).at(0);
    EXPECT_EQ(read.name, u"宋体");
    EXPECT_EQ(read.alternateName, u"");
    EXPECT_EQ(decodeFonts(encodeFonts({read}), remarks).at(0).alternateName, u"");
}

TEST(FontTable, AFontWithoutANameIsReplacedInItsPlace) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"Arial")});
    const auto name = std::find(bytes.begin() + 5, bytes.end(), 'A');
    std::fill(name, bytes.end(), std::uint8_t{0});
    EXPECT_FALSE(decodeFonts(bytes, remarks).at(0).name.empty());
    EXPECT_EQ(remarks.at(0), u"有 1 种字体已损坏，用它们的文字改用 Times New Roman");
}

TEST(FontTable, TableThatEndsEarlyKeepsWhatIsWhole) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"Arial"), makeFont(u"Verdana")});
    bytes.resize(bytes.size() - 1);

    EXPECT_EQ(decodeFonts(bytes, remarks).size(), 1U);
    EXPECT_EQ(remarks.at(0), u"文件的字体已损坏，未能全部读出，部分文字的字体可能与原来不同");
}

TEST(FontTable, ARecordMayEndBehindTheOnlyLetterOfItsName) {
    Remarks remarks;
    Bytes bytes = encodeFonts({makeFont(u"A")});
    bytes.at(4) = 41; // behind the fixed part and the letter
    bytes.resize(5 + 41);
    EXPECT_EQ(decodeFonts(bytes, remarks).at(0).name, u"A");
    EXPECT_TRUE(remarks.empty());
    bytes.at(4) = 40;
    bytes.resize(5 + 40);
    EXPECT_EQ(decodeFonts(bytes, remarks).at(0).name, u"Times New Roman");
    EXPECT_EQ(remarks.size(), 1U);
}

} // namespace
} // namespace qvnd::word
