// What is read of the characters of a paragraph.

#include "platform/word/layout/StoryReader.h"

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "support/Images.h"

#include <algorithm>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;
using Kind = TextItem::Kind;

class StoryReading : public test::PagedDocument {
protected:
    // Of `main`.
    ParagraphItems read(std::size_t paragraph = 0, FontMetrics* with = nullptr) {
        sourceOfAll();
        shared = std::make_unique<StoryReader::Shared>(source, with != nullptr ? *with : fonts,
                                                       options.officeLines);
        return StoryReader(*shared, *source.main).read(paragraph, startOf(paragraph), {});
    }
    word::Cp startOf(std::size_t paragraph) const {
        word::Cp start = 0;
        for (std::size_t i = 0; i < paragraph; ++i) {
            start += main.paragraphs[i].length;
        }
        return start;
    }
    // Of a paragraph of that text and look.
    std::vector<TextItem> items(const std::u16string& text, const Bytes& look = {}) {
        main = story(text + u"\r");
        main.characters[0].properties = intern(look);
        return read().items;
    }
    std::u32string characters(const std::u16string& text, const Bytes& look = {}) {
        std::u32string result;
        for (const TextItem& item : items(text, look)) {
            result += item.character;
        }
        return result;
    }
    static std::vector<Kind> kindsOf(const std::vector<TextItem>& items) {
        std::vector<Kind> kinds;
        kinds.reserve(items.size());
        for (const TextItem& item : items) {
            kinds.push_back(item.kind);
        }
        return kinds;
    }
    // The items of a paragraph behind a label that this follows: 0 a tab, 1 a space, 2 nothing.
    std::vector<TextItem> behindLabel(std::uint8_t follows) {
        document.tables.listDefinitions = {numberedList(0)};
        document.tables.listDefinitions[0].levels[0].head[15] = follows;
        document.tables.listOverrides = {{77, 0, 0, {}}};
        main = story(u"甲\r", withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0));
        return read().items;
    }

    std::unique_ptr<StoryReader::Shared> shared; // the items point into it
};

TEST_F(StoryReading, TwoCodeUnitsAreOneCharacterAndHalfOfOneIsNone) {
    EXPECT_EQ(characters(u"\xD800\xDC00"), U"\U00010000");
    EXPECT_EQ(characters(u"\xDBFF\xDFFF"), U"\U0010FFFF");
    EXPECT_EQ(items(u"甲\xD840\xDC01").at(1).at, 1U);
    EXPECT_EQ(characters(u"\xDC00甲\xDC00\xD840"), U"甲");
    EXPECT_EQ(characters(u"\xD7FF\xE000"), (std::u32string{0xD7FF, 0xE000}));
}

TEST_F(StoryReading, ACharacterOfTwoCodeUnitsIsPlacedAsBoth) {
    type(u"\xD800\xDC00\r");
    type(u"𠀁乙\r");
    const Page page = pages().at(0);
    EXPECT_EQ(page.layer.texts.at(0).text, u"\xD800\xDC00");
    EXPECT_EQ(textAt(page, u"𠀁乙").advances, (std::vector<float>{200, 0, 200}));
}

TEST_F(StoryReading, CodesOfThePrivateAreaAreSymbols) {
    EXPECT_EQ(characters(u"\xEFFF\xF000\xF0B1\xF0FF\xF100"),
              (std::u32string{0xEFFF, U'•', U'±', U'•', 0xF100}));
}

TEST_F(StoryReading, CapitalsAreTheLettersOfBothLatinBlocksAlone) {
    EXPECT_EQ(characters(u"`az{ßàþ÷ÿ一", withSprm8({}, sprm::CFCaps, 1)), U"`AZ{ßÀÞ÷ÿ一");
    const auto small = items(u"aA1", withSprm8({}, sprm::CFSmallCaps, 1));
    ASSERT_EQ(small.size(), 3U);
    EXPECT_EQ(small[0].character, U'A');
    EXPECT_DOUBLE_EQ(small[0].size, 160);
    EXPECT_DOUBLE_EQ(small[0].width, 80);
    EXPECT_DOUBLE_EQ(small[1].size, 200);
    EXPECT_DOUBLE_EQ(small[2].size, 200);
    EXPECT_DOUBLE_EQ(items(u"a", withSprm8({}, sprm::CFCaps, 1)).at(0).size, 200);
}

TEST_F(StoryReading, RaisedAndLoweredTextIsSmallerAndOffTheLine) {
    const auto raised = items(u"甲", withSprm8({}, sprm::CIss, 1)).at(0);
    EXPECT_DOUBLE_EQ(raised.size, 130);
    EXPECT_DOUBLE_EQ(raised.raised, 66);
    EXPECT_DOUBLE_EQ(items(u"甲", withSprm8({}, sprm::CIss, 2)).at(0).raised, -30);
    const auto moved = items(u"甲", withSprm16({}, sprm::CHpsPos, 6)).at(0);
    EXPECT_DOUBLE_EQ(moved.size, 200);
    EXPECT_DOUBLE_EQ(moved.raised, 60);
}

TEST_F(StoryReading, ScaleAndSpacingMakeTheWidth) {
    const Bytes look = withSprm16(withSprm16({}, sprm::CCharScale, 150), sprm::CDxaSpace, 30);
    EXPECT_DOUBLE_EQ(items(u"甲", look).at(0).width, 200 * 1.5 + 30);
    EXPECT_DOUBLE_EQ(items(u"\t", look).at(0).width, 0) << "a tab's is set in its line";
}

TEST_F(StoryReading, BreaksTabsAndHyphensAreWhatTheirCodesSay) {
    const auto found = items(u"\v\f\u000E\t\u001E\u001F甲");
    EXPECT_EQ(kindsOf(found),
              (std::vector{Kind::lineBreak, Kind::pageBreak, Kind::columnBreak, Kind::tab,
                           Kind::character, Kind::optionalHyphen, Kind::character}));
    EXPECT_EQ(found.at(4).character, U'-');
    EXPECT_DOUBLE_EQ(found.at(5).width, 0);
    EXPECT_DOUBLE_EQ(found.at(5).hyphenWidth, found.at(4).width);
    EXPECT_EQ(found.at(6).character, U'甲');
    EXPECT_EQ(found.at(2).at, 2U);
    EXPECT_DOUBLE_EQ(found.at(2).size, 200);
}

TEST_F(StoryReading, AnchorsOfDrawingsAreToldByTheirPlaces) {
    main = story(u"甲\u0008乙\u0008\r");
    const ParagraphItems found = read();
    EXPECT_EQ(found.anchors, (std::vector<word::Cp>{1, 3}));
    EXPECT_EQ(found.items.size(), 2U);
}

TEST_F(StoryReading, AMarkAtTheEndOfAParagraphIsNoTextOfIt) {
    for (const char16_t mark : {u'\r', u'\a', u'\f'}) {
        main = story(u"");
        main.text = {u'甲', mark};
        main.characters = {{2, {}}};
        main.paragraphs = {{2, 0, {}}};
        EXPECT_EQ(read().items.size(), 1U) << int{mark};
    }
    main.text = u"甲乙"; // without a mark
    EXPECT_EQ(read().items.size(), 2U);
}

TEST_F(StoryReading, InTheOfficeSuiteABreakBehindAParagraphsEndIsNoneAndOneBehindTextIsOne) {
    const auto kinds = [&](const std::u16string& text) {
        main = story(u"甲\r" + text + u"\r");
        return kindsOf(read(1).items);
    };
    const std::vector broken{Kind::character, Kind::pageBreak, Kind::character};
    options = officeOptions();
    EXPECT_EQ(kinds(u"乙\f丙"), broken);
    EXPECT_EQ(kinds(u"乙\f\f丙"), broken);
    EXPECT_EQ(kinds(u"\f丙"), (std::vector{Kind::character}));
    EXPECT_TRUE(read(1).startsPage);
    EXPECT_FALSE((kinds(u"乙\f\f丙"), read(1).startsPage));
    options = {};
    EXPECT_EQ(kinds(u"\f丙"), (std::vector{Kind::pageBreak, Kind::character}));
    EXPECT_FALSE(read(1).startsPage);
}

TEST_F(StoryReading, InTheOfficeSuiteABreakBehindOneThatIsNoneIsOne) {
    options = officeOptions();
    const auto kinds = [&](const std::u16string& breaks) {
        main = story(u"甲\r" + breaks + u"\f丙\r");
        main.paragraphs = {{2, 0, {}}};
        main.paragraphs.insert(main.paragraphs.end(), breaks.size(), {1, 0, {}});
        main.paragraphs.push_back({3, 0, {}});
        return kindsOf(read(main.paragraphs.size() - 1).items);
    };
    EXPECT_EQ(kinds(u""), (std::vector{Kind::character}));
    EXPECT_EQ(kinds(u"\f"), (std::vector{Kind::pageBreak, Kind::character}));
    EXPECT_EQ(kinds(u"\f\f"), (std::vector{Kind::character}));
}

TEST_F(StoryReading, InTheOfficeSuiteAParagraphOfABreakAloneIsLeftOutBehindAnotherOne) {
    const auto isLeftOut = [&](const std::u16string& text, std::vector<word::ParagraphRun> runs) {
        main = story(text);
        main.paragraphs = std::move(runs);
        return read(main.paragraphs.size() - 1).isLeftOut;
    };
    EXPECT_FALSE(isLeftOut(u"甲\r\f", {{2, 0, {}}, {1, 0, {}}}));
    options = officeOptions();
    EXPECT_TRUE(isLeftOut(u"甲\r\f", {{2, 0, {}}, {1, 0, {}}}));
    EXPECT_FALSE(isLeftOut(u"甲\r\r", {{2, 0, {}}, {1, 0, {}}}));
    EXPECT_FALSE(isLeftOut(u"甲\r\f乙", {{2, 0, {}}, {2, 0, {}}}));
    EXPECT_FALSE(isLeftOut(u"\f", {{1, 0, {}}}));
}

TEST_F(StoryReading, BehindALabelFollowsATabOrASpaceOrNothing) {
    const auto withTab = behindLabel(0);
    EXPECT_EQ(kindsOf(withTab),
              (std::vector{Kind::character, Kind::character, Kind::tab, Kind::character}));
    EXPECT_DOUBLE_EQ(withTab.at(2).size, 200);
    const auto withSpace = behindLabel(1);
    ASSERT_EQ(withSpace.size(), 4U);
    EXPECT_EQ(withSpace[2].character, U' ');
    const auto withNothing = behindLabel(2);
    ASSERT_EQ(withNothing.size(), 3U);
    EXPECT_EQ(withNothing[1].character, U'、');
    for (const auto& found : {withTab, withSpace, withNothing}) {
        for (const TextItem& item : found) {
            EXPECT_EQ(item.isLabel, &item != &found.back());
            EXPECT_EQ(item.endsLabel, &item + 1 == &found.back());
        }
    }
}

TEST_F(StoryReading, ALabelMayBeHiddenOrASymbol) {
    behindLabel(0);
    word::ListLevel& level = document.tables.listDefinitions[0].levels[0];
    level.text = {0xF0B1};
    level.head[6] = 0;
    EXPECT_EQ(read().items.at(0).character, U'±');
    level.character = intern(withSprm8({}, sprm::CFVanish, 1));
    EXPECT_EQ(read().items.size(), 1U);
}

TEST_F(StoryReading, ALabelWithoutTextThatNothingFollowsIsNone) {
    behindLabel(2);
    word::ListLevel& level = document.tables.listDefinitions[0].levels[0];
    level.text.clear();
    level.head[6] = 0;
    const auto found = read().items;
    ASSERT_EQ(found.size(), 1U);
    EXPECT_FALSE(found[0].isLabel || found[0].endsLabel);
}

TEST_F(StoryReading, OnlyABracketStandsForTheSymbolOfItsRun) {
    document.tables.fonts.push_back(word::makeFont(u"Symbol"));
    const Bytes arrow = withSprm32({}, sprm::CSymbol, (0xF0AEU << 16U) | 2U);
    EXPECT_EQ(characters(u"a(甲", arrow), U"a→甲");
    EXPECT_EQ(characters(u"(", withSprm8({}, sprm::CFSpec, 1)), U"(");
}

TEST_F(StoryReading, AReferenceWithoutANoteIsNotSeen) { EXPECT_EQ(characters(u"甲\u0002"), U"甲"); }

TEST_F(StoryReading, APictureThatIsNotThereOrIsDataIsNotSeen) {
    const Bytes located = withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1);
    EXPECT_TRUE(items(u"\u0001", located).empty());
    document.tables.blobs = {nullptr};
    EXPECT_TRUE(items(u"\u0001", located).empty());
    document.tables.blobs = {std::make_shared<const Bytes>(Bytes(100))};
    EXPECT_TRUE(items(u"\u0001", located).empty()) << "it is no picture";
    document.tables.blobs = {word::Picture::fromImage(test::png(96, 48))->blob()};
    EXPECT_EQ(items(u"\u0001", located).size(), 1U);
    EXPECT_TRUE(items(u"\u0001", withSprm8(located, sprm::CFData, 1)).empty());
}

TEST_F(StoryReading, ParagraphsMayBeReadInAnyOrder) {
    main = story(u"甲\r乙\r丙\r");
    main.characters = {{2, {}}, {1, intern(withSprm16({}, sprm::CHps, 40))}, {3, {}}};
    sourceOfAll();
    StoryReader::Shared all(source, fonts);
    StoryReader reader(all, *source.main);
    const auto sizeIn = [&](std::size_t paragraph) {
        return reader.read(paragraph, startOf(paragraph), {}).items.at(0).size;
    };
    EXPECT_DOUBLE_EQ(sizeIn(2), 200);
    EXPECT_DOUBLE_EQ(sizeIn(1), 400);
    EXPECT_DOUBLE_EQ(sizeIn(0), 200);
    EXPECT_DOUBLE_EQ(sizeIn(1), 400);
}

// Fonts of one measure whose faces are the requests.
class AskedFonts : public test::FixedFonts {
public:
    FaceId face(const FaceRequest& request) override {
        asked.push_back(request);
        return static_cast<FaceId>(asked.size() - 1);
    }
    std::vector<FaceRequest> asked;
};

class FontsOfText : public StoryReading {
protected:
    FontsOfText() {
        document.tables.fonts = {word::makeFont(u"拉丁"), word::makeFont(u"中文"),
                                 word::makeFont(u"其他"), word::makeFont(u"Symbol")};
    }
    static Bytes look(std::uint16_t latin) {
        return withSprm16(withSprm16(withSprm16({}, sprm::CRgFtc0, latin), sprm::CRgFtc1, 1),
                          sprm::CRgFtc2, 2);
    }
    std::u16string nameFor(const std::u16string& character, const Bytes& look) {
        main = story(character + u"\r");
        main.characters[0].properties = intern(look);
        asked.asked.clear();
        return asked.asked.at(read(0, &asked).items.at(0).face).name;
    }
    AskedFonts asked;
};

TEST_F(FontsOfText, TheyAreThoseOfTheScriptOfEachCharacter) {
    EXPECT_EQ(nameFor(u"a", look(0)), u"拉丁");
    EXPECT_EQ(nameFor(u"\u007F", look(0)), u"拉丁");
    EXPECT_EQ(nameFor(u"\u0080", look(0)), u"其他");
    EXPECT_EQ(nameFor(u"é", look(0)), u"其他");
    EXPECT_EQ(nameFor(u"甲", look(0)), u"中文");
    EXPECT_EQ(nameFor(u"“", look(0)), u"其他");
    EXPECT_EQ(nameFor(u"“", withSprm8(look(0), sprm::CIdctHint, 1)), u"中文");
    EXPECT_EQ(nameFor(u"a", withSprm8(look(0), sprm::CIdctHint, 1)), u"拉丁");
    options = officeOptions();
    EXPECT_EQ(nameFor(u"é", look(0)), u"拉丁");
    EXPECT_EQ(nameFor(u"“", look(0)), u"其他");
}

TEST_F(FontsOfText, EachCharacterHasItsOwnWhateverStandsBeforeIt) {
    main = story(u"a甲éaB甲\r");
    main.characters = {{4, intern(look(0))},
                       {2, intern(withSprm8(look(0), sprm::CFBold, 1))},
                       {1, intern(look(0))}};
    const std::vector<TextItem> items = read(0, &asked).items;
    std::vector<FaceRequest> requests;
    requests.reserve(items.size());
    for (const TextItem& item : items) {
        requests.push_back(asked.asked.at(item.face));
    }
    EXPECT_EQ(requests, (std::vector<FaceRequest>{{u"拉丁", false, false, false},
                                                  {u"中文", false, false, true},
                                                  {u"其他", false, false, false},
                                                  {u"拉丁", false, false, false},
                                                  {u"拉丁", true, false, false},
                                                  {u"中文", true, false, true}}));
}

TEST_F(FontsOfText, ASymbolFontHasAllButChineseCharacters) {
    EXPECT_EQ(nameFor(u"é", look(3)), u"Symbol");
    EXPECT_EQ(nameFor(u"甲", look(3)), u"中文");
}

TEST_F(FontsOfText, BoldItalicAndChineseAreAskedForApart) {
    const auto request = [&](const std::u16string& character, const Bytes& look) {
        nameFor(character, look);
        return asked.asked.front();
    };
    EXPECT_EQ(request(u"a", look(0)), (FaceRequest{u"拉丁", false, false, false}));
    EXPECT_EQ(request(u"a", withSprm8(look(0), sprm::CFBold, 1)),
              (FaceRequest{u"拉丁", true, false, false}));
    EXPECT_EQ(request(u"a", withSprm8(look(0), sprm::CFItalic, 1)),
              (FaceRequest{u"拉丁", false, true, false}));
    EXPECT_EQ(request(u"甲", look(0)), (FaceRequest{u"中文", false, false, true}));
}

TEST_F(FontsOfText, OneFontHasAFaceForEachLookAndScript) {
    const Bytes both = withSprm16(withSprm16({}, sprm::CRgFtc0, 1), sprm::CRgFtc1, 1);
    main = story(u"abc甲\r");
    main.characters = {{1, intern(both)},
                       {1, intern(withSprm8(both, sprm::CFBold, 1))},
                       {1, intern(withSprm8(both, sprm::CFItalic, 1))},
                       {2, intern(both)}};
    std::vector<FaceRequest> requests;
    for (const TextItem& item : read(0, &asked).items) {
        requests.push_back(asked.asked.at(item.face));
    }
    EXPECT_EQ(requests, (std::vector<FaceRequest>{{u"中文", false, false, false},
                                                  {u"中文", true, false, false},
                                                  {u"中文", false, true, false},
                                                  {u"中文", false, false, true}}));
}

TEST_F(FontsOfText, AFontThatIsNotThereHasNoNameAndInTheOfficeSuiteSerif) {
    EXPECT_EQ(nameFor(u"a", look(4)), u"");
    options = officeOptions();
    EXPECT_EQ(nameFor(u"a", look(4)), u"serif");
    EXPECT_EQ(nameFor(u"甲", withSprm16(look(0), sprm::CRgFtc1, 4)), u"");
}

TEST_F(FontsOfText, TheMarkOfAnEmptyParagraphMayBeChineseButNotInTheOfficeSuite) {
    const auto ofMark = [&](const Bytes& look) {
        main = story(u"\r");
        main.characters[0].properties = intern(look);
        asked.asked.clear();
        return asked.asked.at(read(0, &asked).markFace).name;
    };
    EXPECT_EQ(ofMark(look(0)), u"拉丁");
    EXPECT_EQ(ofMark(withSprm8(look(0), sprm::CIdctHint, 1)), u"中文");
    options = officeOptions();
    EXPECT_EQ(ofMark(withSprm8(look(0), sprm::CIdctHint, 1)), u"拉丁");
}

} // namespace
} // namespace qvnd::layout
