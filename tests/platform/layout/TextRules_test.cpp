// What is seen of text that its characters alone do not tell.

#include "platform/drawing/FontFeatures.h"
#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/objects/EmbeddedObjects.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "support/Images.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class TextRules : public test::PagedDocument {
protected:
    Page firstPage(FontMetrics& metrics) {
        sourceOfAll();
        DocumentLayout laidOut(source, metrics, options);
        return laidOut.nextPage().value_or(Page{});
    }
};

TEST_F(TextRules, AnOptionalHyphenIsSeenWhereALineEndsBehindItAlone) {
    type(u"aaaaaaaaa aaaaa\x1f"
         u"bbbbbbb\x1f"
         u"c\r"); // twenty letters a line
    const Page page = pages().at(0);
    EXPECT_EQ(textOf(page), u"aaaaaaaaa aaaaa-bbbbbbbc");
    EXPECT_EQ(textAt(page, u"bbbbbbb").baseline - textAt(page, u"aaaaaaaaa aaaaa-").baseline, 200);
    EXPECT_EQ(textAt(page, u"c").baseline, textAt(page, u"bbbbbbb").baseline);
}

TEST_F(TextRules, AJustifiedLineThatALineBreakEndsIsStretchedWhereTheSettingsSaySo) {
    const Bytes justified = withSprm8({}, sprm::PJc80, 3);
    type(u"甲乙丙\v丁戊\r", justified);
    const auto widthOf = [&](const std::u16string& text) {
        const Page page = pages().at(0);
        const PlacedText& run = textAt(page, text);
        return std::accumulate(run.advances.begin(), run.advances.end(), 0.0);
    };
    EXPECT_DOUBLE_EQ(widthOf(u"甲乙丙"), 600);
    word::writeDop(document.settings, {8, 13, 1}, 1);
    EXPECT_DOUBLE_EQ(widthOf(u"甲乙丙"), 2000);
    EXPECT_DOUBLE_EQ(widthOf(u"丁戊"), 400) << "the last line";
}

TEST_F(TextRules, NoLineEndsAtAnOptionalHyphenThatHasNoRoom) {
    type(u"aaaaaaaaaa aaaaaaaaa\x1f"
         u"bbb\r");
    const Page page = pages().at(0);
    EXPECT_EQ(textOf(page), u"aaaaaaaaaa aaaaaaaaabbb");
    EXPECT_EQ(textAt(page, u"aaaaaaaaa").baseline, textAt(page, u"bbb").baseline);
}

TEST_F(TextRules, NoLineEndsBeforeAnOptionalHyphen) {
    type(u"aaaaaaaaaaaaaaaaa 宋\x1f"
         u"bb\r"); // 宋 ends where the line ends
    const Page page = pages().at(0);
    EXPECT_EQ(textOf(page), u"aaaaaaaaaaaaaaaaa 宋bb");
    EXPECT_EQ(textAt(page, u"宋").baseline, textAt(page, u"bb").baseline);
}

// A font in which f and i have a ligature that is as wide as one and a half letters.
class FontsWithLigature : public test::FixedFonts {
public:
    Ligature ligature(FaceId, std::u32string_view text) override {
        return text.starts_with(U"fi") ? Ligature{2, 0.75} : Ligature{};
    }
};

TEST_F(TextRules, InTheOfficeSuiteLettersHaveTheRoomOfTheirLigature) {
    FontsWithLigature ligated;
    type(u"afib\r");
    EXPECT_EQ(firstPage(ligated).layer.texts.at(0).advances,
              (std::vector<float>{100, 100, 100, 100}));
    options = officeOptions();
    EXPECT_EQ(firstPage(ligated).layer.texts.at(0).advances,
              (std::vector<float>{100, 75, 75, 100}));
}

TEST_F(TextRules, LettersOfTwoLooksOrWithSpaceBetweenThemHaveNoLigature) {
    FontsWithLigature ligated;
    options = officeOptions();
    type(u"fifi\r");
    const auto spaced = intern(withSprm16({}, sprm::CDxaSpace, 10));
    const auto large = intern(withSprm16({}, sprm::CHps, 40));
    main.characters = {{1, {}}, {1, large}, {2, spaced}, {1, {}}};
    std::vector<float> advances;
    for (const PlacedText& run : firstPage(ligated).layer.texts) {
        advances.insert(advances.end(), run.advances.begin(), run.advances.end());
    }
    EXPECT_EQ(advances, (std::vector<float>{100, 200, 110, 110}));
}

// A font in which A and V stand a tenth closer.
class FontsWithKerning : public test::FixedFonts {
public:
    double kerning(FaceId, char32_t before, char32_t after) override {
        return before == U'A' && after == U'V' ? -0.1 : 0;
    }
};

TEST_F(TextRules, PairsOfLettersAreKernedFromTheSizeOnThatTheTextSays) {
    FontsWithKerning kerned;
    type(u"AVA\r");
    const auto advances = [&](unsigned from) {
        main.characters = {
            {4, intern(withSprm16({}, sprm::CHpsKern, static_cast<std::uint16_t>(from)))}};
        return firstPage(kerned).layer.texts.at(0).advances;
    };
    const std::vector<float> plain{100, 100, 100};
    EXPECT_EQ(advances(0), plain);
    EXPECT_EQ(advances(20), (std::vector<float>{80, 100, 100})); // the text has ten points
    EXPECT_EQ(advances(21), plain);
}

TEST_F(TextRules, NoPairIsKernedAcrossTwoLooks) {
    FontsWithKerning kerned;
    type(u"AV\r");
    const auto own = intern(withSprm16({}, sprm::CHpsKern, 2));
    const auto red = intern(withSprm8(withSprm16({}, sprm::CHpsKern, 2), sprm::CIco, 6));
    main.characters = {{1, own}, {2, red}};
    EXPECT_EQ(firstPage(kerned).layer.texts.at(0).advances, (std::vector<float>{100}));
}

// An object that keeps a metafile of itself, 62 by 12 points at that scale.
word::EmbeddedObjectRef formula(std::uint32_t acrossPerMille, std::uint32_t downPerMille) {
    const Bytes metafile = test::hex("010009000003 15000000 0000 05000000 0000"
                                     "05000000 0C02 0C00 3E00 03000000 0000");
    auto object = std::make_shared<word::EmbeddedObject>();
    object->entries.push_back(
        {u"\x0003PIC",
         false,
         {},
         test::joined({Bytes(0x14), test::littleEndian(1240, 4), test::littleEndian(240, 4),
                       Bytes(0x10), test::littleEndian(acrossPerMille, 4),
                       test::littleEndian(downPerMille, 4)})});
    object->entries.push_back({u"\x0003META", false, {}, test::joined({Bytes(8), metafile})});
    return object;
}

TEST_F(TextRules, AnObjectIsShownByThePictureThatItKeepsOfItself) {
    document.tables.objects = {formula(500, 1000)};
    type(u"前\x01后\r");
    const Bytes shows = withSprm32(withSprm8(withSprm8({}, sprm::CFSpec, 1), sprm::CFOle2, 1),
                                   sprm::CObjLocation, 0);
    main.characters = {{1, {}}, {1, intern(shows)}, {2, {}}};
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 1U);
    const PlacedPicture& picture = page.layer.pictures[0];
    EXPECT_EQ(picture.width, 620);
    EXPECT_EQ(picture.height, 240);
    EXPECT_EQ(picture.x, 1200);
    EXPECT_EQ(textAt(page, u"后").x, 1820);
    EXPECT_TRUE(word::Picture::fromBlob(*picture.blob));
}

TEST_F(TextRules, AnObjectBehindTheLastIsNotShown) {
    const word::EmbeddedObjectRef object = formula(500, 1000);
    document.tables.objects = {object, object};
    type(u"前\x01后\r");
    const Bytes shows = withSprm8(withSprm8({}, sprm::CFSpec, 1), sprm::CFOle2, 1);
    main.characters = {{1, {}}, {1, intern(withSprm32(shows, sprm::CObjLocation, 1))}, {2, {}}};
    EXPECT_EQ(pages().at(0).layer.pictures.size(), 1U);
    document.tables.objects.pop_back();
    EXPECT_TRUE(pages().at(0).layer.pictures.empty());
}

TEST_F(TextRules, AnObjectWithoutAPictureOfUsableSizeIsNotShown) {
    type(u"前\x01后\r");
    const Bytes shows = withSprm32(withSprm8({}, sprm::CFSpec, 1), sprm::CObjLocation, 0);
    main.characters = {{1, {}}, {1, intern(shows)}, {2, {}}};
    auto bare = std::make_shared<word::EmbeddedObject>(*formula(1000, 1000));
    bare->entries.erase(bare->entries.begin());
    auto broken = std::make_shared<word::EmbeddedObject>(*formula(1000, 1000));
    broken->entries[1].content.resize(10);
    for (const word::EmbeddedObjectRef& object :
         {formula(0, 1000), formula(1000, 40000), word::EmbeddedObjectRef(bare),
          word::EmbeddedObjectRef(broken), word::EmbeddedObjectRef()}) {
        document.tables.objects = {object};
        const Page page = pages().at(0);
        EXPECT_TRUE(page.layer.pictures.empty());
        EXPECT_EQ(textOf(page), u"前后");
    }
}

TEST_F(TextRules, InTheOfficeSuiteAStyleThatNamesABaseOfCharactersStandsAlone) {
    word::StyleDefinition& style = *document.tables.styles.styles[1];
    document.tables.styles.styles[0]->character = intern(withSprm16({}, sprm::CHps, 32));
    style.namesCharacterBase = true;
    type(u"a\r");
    main.paragraphs[0].style = 1;
    test::NamedFonts named;
    const auto shown = [&] { return firstPage(named).layer.texts.at(0); };
    EXPECT_EQ(shown().size, 320);
    options = officeOptions();
    EXPECT_EQ(shown().size, 240);
    EXPECT_EQ(named.names.at(shown().face), u"serif");
    style.character = intern(withSprm16(withSprm16({}, sprm::CHps, 28), sprm::CRgFtc0, 0));
    EXPECT_EQ(shown().size, 280);
    EXPECT_EQ(named.names.at(shown().face), document.tables.fonts.at(0).name);
}

TEST_F(TextRules, InTheOfficeSuiteAStyleThatStandsAloneControlsNoWidows) {
    word::StyleDefinition& style = *document.tables.styles.styles[1];
    style.namesCharacterBase = true;
    style.character = intern(withSprm16({}, sprm::CHps, 20)); // lines of the page's height
    paragraphs(9);
    type(u"一二三四五六七八九十甲\r"); // two lines, one of which has room
    main.paragraphs.back().style = 1;
    EXPECT_EQ(textOf(pages().at(1)), u"一二三四五六七八九十甲");
    options = officeOptions();
    main.paragraphs.back().style = 0;
    EXPECT_EQ(textOf(pages().at(1)), u"一二三四五六七八九十甲");
    main.paragraphs.back().style = 1;
    EXPECT_EQ(textOf(pages().at(1)), u"甲");
}

TEST_F(TextRules, InTheOfficeSuiteTheLineAboveTheNotesTakesLessRoom) {
    putFootnote(1, u"注\r");
    type(u"甲\x02\r");
    const auto above = [&] {
        const Page page = pages().at(0);
        return textAt(page, u"注").baseline - page.layer.rules.at(0).y1;
    };
    EXPECT_EQ(above(), 100 + 160);
    options = officeOptions();
    EXPECT_NEAR(above(), 62 + 160, 2);
}

class GridOfCharacters : public TextRules {
protected:
    // Nine cells of 200 twips in 1910, and lines of 250; `kind`: 1 with cells, 2 without.
    void setGrid(unsigned kind) {
        Bytes list = withSprm16(section(), sprm::SDxaRight, 1090);
        list = withSprm16(list, sprm::SClm, static_cast<std::uint16_t>(kind));
        document.sections[0].properties = intern(withSprm16(list, sprm::SDyaLinePitch, 250));
        options = officeOptions();
    }
    double leftOf(const std::u16string& text) { return textAt(pages().at(0), text).x; }
};

TEST_F(GridOfCharacters, StandsInTheMiddleAndTextBeginsAtItsCells) {
    type(u"a\tb\r", withSprm16({}, sprm::PDxaLeft80, 130));
    setGrid(2);
    const double tab = leftOf(u"b") - 1000;
    EXPECT_EQ(leftOf(u"a"), 1130);
    setGrid(1);
    EXPECT_EQ(leftOf(u"a"), 1255);
    EXPECT_EQ(leftOf(u"b"), 1055 + std::ceil(tab / 200) * 200);
    options = {};
    EXPECT_EQ(leftOf(u"a"), 1130);
}

TEST_F(GridOfCharacters, LatinTextInTheMiddleOfALineTakesWholeCells) {
    type(u"abc\r", withSprm8({}, sprm::PJc80, 1));
    setGrid(2);
    EXPECT_EQ(leftOf(u"abc"), 1000 + (1910 - 300) / 2);
    setGrid(1);
    EXPECT_EQ(leftOf(u"abc"), 1055 + (1800 - 400) / 2);
}

TEST_F(GridOfCharacters, ChineseTextTakesWholeCellsAndBeginsAtOneBehindLatin) {
    setGrid(1);
    type(u"a中大文\r");
    const auto large = intern(withSprm16({}, sprm::CHps, 32));
    main.characters = {{2, {}}, {1, large}, {2, {}}};
    EXPECT_EQ(leftOf(u"文"), 1055 + 200 + 200 + 400);
    EXPECT_EQ(leftOf(u"大"), 1055 + 200 + 200);
    EXPECT_EQ(textAt(pages().at(0), u"a中").advances, (std::vector<float>{200, 200}));
}

TEST_F(GridOfCharacters, ALineOfAPictureReachesBelowItAsTextWould) {
    document.tables.objects = {formula(500, 1000)};
    type(u"\x01\r后\r");
    main.characters = {{1, intern(withSprm32({}, sprm::CObjLocation, 0))}, {3, {}}};
    const auto foot = [&] { return textAt(pages().at(0), u"后").baseline; };
    setGrid(2);
    const double high = foot();
    setGrid(1);
    EXPECT_EQ(foot() - high, 250);
}

// The head of a table of a script with one feature of that name, and what its lookup holds.
std::string featureTable(std::string_view feature, const Bytes& lookup) {
    const Bytes bytes =
        test::joined({test::hex("0001 0000 000A 001E 002C"), test::hex("0001"), test::ascii("latn"),
                      test::hex("0008 0004 0000 0000 FFFF 0001 0000"), test::hex("0001"),
                      test::ascii(feature), test::hex("0008 0000 0001 0000 0001 0004"), lookup});
    return {bytes.begin(), bytes.end()};
}

// Glyphs 5, 7 and 8 have the ligature 20, glyphs 5 and 6 the ligature 21; `covers`: how the table
// says that this is of glyph 5.
std::string substitutions(std::string_view feature, const Bytes& covers) {
    return featureTable(
        feature,
        test::joined({test::hex("0004 0000 0001 0008 0001 001C 0001 0008"),
                      test::hex("0002 0006 000E 0014 0003 0007 0008 0015 0002 0006"), covers}));
}

TEST(Ligatures, AreThoseOfTheStandardFeature) {
    for (const Bytes& covers :
         {test::hex("0001 0001 0005"), test::hex("0002 0001 0005 0005 0000")}) {
        const drawing::Ligatures ligatures(substitutions("liga", covers));
        const auto glyphOf = [&](std::vector<std::uint16_t> glyphs) {
            const auto* found = ligatures.find(glyphs);
            return found != nullptr ? found->glyph : 0;
        };
        EXPECT_EQ(glyphOf({5, 7, 8, 9}), 20);
        EXPECT_EQ(glyphOf({5, 6}), 21);
        EXPECT_EQ(glyphOf({5, 7}), 0);
        EXPECT_EQ(glyphOf({6, 5}), 0);
        EXPECT_EQ(glyphOf({}), 0);
        EXPECT_TRUE(drawing::Ligatures(substitutions("dlig", covers)).empty());
    }
}

TEST(Ligatures, OfATableThatBreaksOffAreWhatIsThere) {
    const std::string whole = substitutions("liga", test::hex("0001 0001 0005"));
    const std::array<std::uint16_t, 2> glyphs{5, 6};
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const drawing::Ligatures ligatures(std::string_view(whole).substr(0, size));
        EXPECT_EQ(ligatures.find(glyphs), nullptr) << size;
    }
}

// Glyph 5 moves glyph 6 behind it by -20. The value has a placement before the advance.
constexpr std::string_view pairOfGlyphs = "0002 0000 0001 0008 0001 0014 0005 0000 0001 000C"
                                          "0001 0006 0007 FFEC 0001 0001 0005";
// Glyph 5 moves glyphs 6 and 7, which are a class, by -30, and all others by 3.
constexpr std::string_view pairOfClasses = "0009 0000 0001 0008 0001 0002 0000 0008"
                                           "0002 0018 0004 0000 001E 0024 0001 0002 0003 FFE2"
                                           "0000 0000 0001 0001 0005 0001 0005 0000"
                                           "0002 0001 0006 0007 0001";

TEST(Kerning, IsThatOfAPairOrOfTheClassesOfItsGlyphs) {
    drawing::Kerning pairs(featureTable("kern", test::hex(pairOfGlyphs)));
    EXPECT_EQ(pairs.between(5, 6), -20);
    EXPECT_EQ(pairs.between(5, 6), -20) << "asked again";
    EXPECT_EQ(pairs.between(5, 7), 0);
    EXPECT_EQ(pairs.between(6, 5), 0);
    drawing::Kerning classes(featureTable("kern", test::hex(pairOfClasses)));
    EXPECT_EQ(classes.between(5, 6), -30);
    EXPECT_EQ(classes.between(5, 7), -30);
    EXPECT_EQ(classes.between(5, 8), 3);
    EXPECT_EQ(classes.between(4, 6), 0);
}

TEST(Kerning, OfATableThatBreaksOffIsNone) {
    const std::string whole = featureTable("kern", test::hex(pairOfGlyphs));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(drawing::Kerning(whole.substr(0, size)).between(5, 6), 0) << size;
    }
}

TEST_F(TextRules, MarksOfNoFieldHideNothing) {
    type(u"甲\x15乙\x14丙\r");
    main.fields = {{1, 0x15, 0}, {3, 0x14, 0}};
    EXPECT_EQ(textOf(pages().at(0)), u"甲乙丙");
}

} // namespace
} // namespace qvnd::layout
