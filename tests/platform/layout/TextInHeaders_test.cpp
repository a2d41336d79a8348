// What headers and footers show of the text of their pages: chapters, headings, reckoned fields.

#include "platform/error/Utf8.h"
#include "platform/layout/TypedRows.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::HeaderKind;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

constexpr std::uint8_t ifField = 0x07;
constexpr std::uint8_t styleField = 0x0A;
constexpr std::uint8_t countField = 0x1A;
constexpr std::uint8_t pageField = 0x21;
constexpr std::uint8_t formulaField = 0x22;

class TextInHeaders : public test::TypedRows {
protected:
    // A paragraph in the style of headings of that level.
    void heading(const std::u16string& text, word::StyleIndex level = 1, const Bytes& own = {}) {
        type(text + u"\r", own);
        main.paragraphs.back().style = level;
    }
    // Lists of that text for each level; 0 to 8 stand for the numbers.
    void numberHeadings(const std::vector<std::u16string>& texts) {
        word::ListDefinition list = numberedList(0);
        for (std::size_t level = 0; level < texts.size(); ++level) {
            list.levels[level] = list.levels[0];
            list.levels[level].text = texts[level];
        }
        document.tables.listDefinitions = {list};
        document.tables.listOverrides = {{77, 0, 0, {}}};
    }
    static Bytes numbered(unsigned level = 0) {
        return withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, level);
    }
    static Bytes withChapters(unsigned level, unsigned separator = 0) {
        return withSprm8(withSprm8(section(), sprm::SiHeadingPgn, level), sprm::ScnsPgn, separator);
    }
    void setSection(const Bytes& list) { document.sections[0].properties = intern(list); }
    // A header of fields, nested as braces say; each bar parts an instruction from its result.
    void putFields(const std::u16string& text, std::vector<std::uint8_t> kinds) {
        word::Story header = story(text + u"\r");
        std::size_t kind = 0;
        for (word::Cp at = 0; at < header.text.size(); ++at) {
            char16_t& c = header.text[at];
            if (c == u'{' || c == u'|' || c == u'}') {
                c = c == u'{' ? u'\x13' : c == u'|' ? u'\x14' : u'\x15';
                const bool begins = c == u'\x13';
                header.fields.push_back({at, static_cast<std::uint8_t>(c),
                                         begins ? kinds.at(kind++) : std::uint8_t{0}});
            }
        }
        putHeader(HeaderKind::oddHeader, header);
    }
    // What stands on each page in front of its first line of text.
    std::vector<std::string> headers() {
        std::vector<std::string> result;
        for (const Page& page : pages()) {
            std::u16string header;
            for (const PlacedText& run : page.layer.texts) {
                header += run.baseline < 1000 ? run.text : std::u16string();
            }
            result.push_back(toUtf8(header));
        }
        return result;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(TextInHeaders, APageNumberHasTheNumberOfItsChapterInFront) {
    numberHeadings({std::u16string(u"第\0章", 3)});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"总则", 1, numbered());
    paragraphs(10);
    heading(u"施工", 1, numbered());
    EXPECT_EQ(headers(), (Texts{"1-1", "2-2"}));
    EXPECT_EQ(pages().at(1).numberText, u"2-2");
}

TEST_F(TextInHeaders, TheSignBetweenChapterAndPageIsThatOfTheSection) {
    numberHeadings({std::u16string(u"\0.", 2)});
    putFields(u"{PAGE|9}", {pageField});
    heading(u"总则", 1, numbered());
    const std::vector<std::string> signs{"-", ".", ":", "—", "–", "-"};
    for (unsigned sign = 0; sign < signs.size(); ++sign) {
        setSection(withChapters(1, sign));
        EXPECT_EQ(headers(), Texts{"1" + signs[sign] + "1"});
    }
}

TEST_F(TextInHeaders, AChapterIsTheFirstThatBeginsOnThePageOrElseTheLastBeforeIt) {
    numberHeadings({std::u16string(1, u'\0')});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    paragraphs(10);
    heading(u"甲", 1, numbered());
    paragraphs(8);
    heading(u"乙", 1, numbered());
    paragraphs(8);
    heading(u"丙", 1, numbered());
    heading(u"丁", 1, numbered());
    paragraphs(10);
    EXPECT_EQ(headers(), (Texts{"1", "1-2", "3-3", "4-4"})) << "none before the first heading";
}

TEST_F(TextInHeaders, AChapterWithoutANumberIsThatOfAHigherHeadingOrNone) {
    document.tables.styles.styles[2] = document.tables.styles.styles[1];
    document.tables.styles.styles[2]->sti = 2;
    numberHeadings({std::u16string(1, u'\0'), std::u16string(u"\0.\1", 3)});
    setSection(withChapters(2));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"甲", 1, numbered());
    paragraphs(9);
    heading(u"乙", 2, numbered(1));
    EXPECT_EQ(headers(), (Texts{"1-1", "1.1-2"}));
    main = {};
    heading(u"甲");
    EXPECT_EQ(headers(), Texts{"1"});
}

TEST_F(TextInHeaders, APageOnWhichASectionBeginsHasTheChaptersOfTheOneAboveIt) {
    numberHeadings({std::u16string(1, u'\0')});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"甲", 1, numbered());
    nextSection(withSprm8(section(), sprm::SBkc, 0));
    paragraphs(12);
    EXPECT_EQ(headers(), (Texts{"1-1", "2"}));
    EXPECT_EQ(layout->chapterAt(0), u"1-");
    EXPECT_EQ(layout->chapterAt(2), u"") << "of the section that shows none";
    EXPECT_EQ(layout->chapterAt(1000), u"");
}

TEST_F(TextInHeaders, InTheOfficeSuitePageNumbersHaveNoChapters) {
    options = officeOptions();
    numberHeadings({std::u16string(1, u'\0')});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"甲", 1, numbered());
    EXPECT_EQ(headers(), Texts{"1"});
}

TEST_F(TextInHeaders, AStyleFieldShowsTheFirstParagraphOfItsStyleOnThePage) {
    putFields(u"{STYLEREF \"标题 1\" \\* MERGEFORMAT|旧}", {styleField});
    paragraphs(1);
    heading(u"总则");
    heading(u"施工");
    paragraphs(8);
    heading(u"质量");
    paragraphs(12);
    EXPECT_EQ(headers(), (Texts{"总则", "质量", "质量"}));
    putFields(u"{STYLEREF 1 \\l|旧}", {styleField});
    EXPECT_EQ(headers(), (Texts{"施工", "质量", "质量"})) << "the last one";
}

TEST_F(TextInHeaders, BeforeTheFirstOfItsStyleAStyleFieldShowsTheOneToCome) {
    putFields(u"{STYLEREF \"heading 1\"|旧}", {styleField});
    paragraphs(10);
    heading(u"总则");
    EXPECT_EQ(headers(), (Texts{"总则", "总则"}));
}

TEST_F(TextInHeaders, AStyleFieldShowsNeitherHiddenTextNorInstructions) {
    putFields(u"{STYLEREF 1|旧}", {styleField});
    type(u"甲密\x13X\x14乙\x15\x1E\r");
    main.paragraphs.back().style = 1;
    main.characters = {
        {1, {}}, {1, intern(withSprm8({}, sprm::CFVanish, 1))}, {main.size() - 2, {}}};
    EXPECT_EQ(headers(), Texts{"甲乙-"});
}

TEST_F(TextInHeaders, AStyleFieldMayShowTheNumberOfItsParagraph) {
    numberHeadings({std::u16string(u"第\0章.", 4)});
    heading(u"总则", 1, numbered());
    putFields(u"{STYLEREF 1 \\n|旧}", {styleField});
    EXPECT_EQ(headers(), Texts{"第1章"});
    putFields(u"{STYLEREF 1 \\w \\t|旧}", {styleField});
    EXPECT_EQ(headers(), Texts{"1"});
    putFields(u"{STYLEREF \\n\"标题 1\"|旧}", {styleField});
    EXPECT_EQ(headers(), Texts{"第1章"}) << "a switch in front of the name";
    main = {};
    heading(u"总则");
    EXPECT_EQ(headers(), Texts{"0"}) << "one without a number";
}

TEST_F(TextInHeaders, TheChapterOfACaptionIsTheNumberAlone) {
    numberHeadings({std::u16string(u"第\0章.", 4)});
    heading(u"总则", 1, numbered());
    putFields(u"图 {STYLEREF 1 \\s|旧}-1", {styleField});
    EXPECT_EQ(headers(), Texts{"图 1-1"});
}

TEST_F(TextInHeaders, ALabelWithAllItsLevelsIsShownWhereItHasThem) {
    document.tables.styles.styles[2] = document.tables.styles.styles[1];
    document.tables.styles.styles[2]->sti = 2;
    putFields(u"{STYLEREF 2 \\w|旧}", {styleField});
    for (const auto& [label, shown] : {std::pair(std::u16string(u"\0.\1", 3), "1.1"),
                                       std::pair(std::u16string(u"(\1)"), "旧")}) {
        numberHeadings({std::u16string(1, u'\0'), label});
        main = {};
        heading(u"甲", 1, numbered());
        heading(u"乙", 2, numbered(1));
        EXPECT_EQ(headers(), Texts{shown});
    }
}

TEST_F(TextInHeaders, AStyleFieldOfAPageWithEndnotesShowsWhatStandsBeforeThem) {
    putFields(u"{STYLEREF 1|旧}", {styleField});
    heading(u"甲");
    paragraphs(10);
    heading(u"乙");
    type(u"文\x02\r");
    main.anchors = {{main.size() - 2, word::AnchorKind::endnote, 0}};
    const auto note = story(std::u16string(150, u'注') + u"\r");
    document.tables.sideStories = {{std::make_shared<const word::Story>(note), true, {}, {}}};
    EXPECT_EQ(headers(), (Texts{"甲", "乙", "乙"}));
    EXPECT_EQ(layout->lines().back().at, main.size() - 3);
}

TEST_F(TextInHeaders, AHeadingStandsOnItsPageThoughItsFirstCharacterIsHidden) {
    putFields(u"{STYLEREF 1|旧}", {styleField});
    heading(u"甲");
    paragraphs(9);
    const word::Cp at = main.size();
    heading(u"密乙");
    main.characters.back() = {1, intern(withSprm8({}, sprm::CFVanish, 1))};
    main.characters.push_back({2, {}});
    EXPECT_EQ(headers(), (Texts{"甲", "乙"}));
    EXPECT_EQ(placeOf(layout->lines(), at).sheet, 1);
}

TEST_F(TextInHeaders, AStyleFieldOfNoParagraphOrPlaceKeepsWhatItStored) {
    paragraphs(1);
    for (const auto* code : {u"STYLEREF 1", u"STYLEREF 没有", u"STYLEREF 正文 \\p",
                             u"STYLEREF 正文 \\x", u"STYLEREF"}) {
        putFields(u"{" + std::u16string(code) + u"|旧}", {styleField});
        EXPECT_EQ(headers(), Texts{"旧"}) << toUtf8(code);
    }
    putFields(u"{STYLEREF 正文|旧}", {styleField});
    EXPECT_EQ(headers(), Texts{"一"});
    options = officeOptions();
    EXPECT_EQ(headers(), Texts{"旧"});
}

TEST_F(TextInHeaders, AStyleFieldInTheTextShowsWhatStandsBeforeIt) {
    heading(u"甲");
    type(u"\x13STYLEREF 1\x14旧\x15\r");
    main.fields = {{2, 0x13, styleField}, {13, 0x14, 0}, {15, 0x15, 0}};
    heading(u"乙");
    EXPECT_EQ(textOf(pages().at(0)), u"甲甲乙");
}

TEST_F(TextInHeaders, AStyleFieldInATableShowsWhatStandsBeforeItThere) {
    heading(u"甲");
    typeRow({u"子"}, {0, 1000});
    typeRow({u"乙"}, {0, 1000});
    main.paragraphs[3].style = 1;
    const word::Cp at = main.size();
    typeRow({u"\x13STYLEREF 1\x14旧\x15"}, {0, 1000});
    main.fields = {{at, 0x13, styleField}, {at + 11, 0x14, 0}, {at + 13, 0x15, 0}};
    type(u"丙\r");
    EXPECT_EQ(textOf(pages().at(0)), u"甲子乙乙丙");
}

TEST_F(TextInHeaders, AFormulaReckonsWithPageNumbers) {
    paragraphs(12);
    options.counts.total = 12;
    const std::vector<std::uint8_t> kinds{formulaField, pageField, countField};
    for (const auto& [code, shown] : {
             std::pair(u"= {PAGE|1} - 1", "1"),
             std::pair(u"={PAGE|1}*(2+3)\\* MERGEFORMAT", "10"),
             std::pair(u"= {PAGE|1} + {NUMPAGES|1} \\* ROMAN", "XIV"),
             std::pair(u"= {PAGE|1} / 4", "0.5"),
             std::pair(u"= {PAGE|1} / 3", "0.67"),
             std::pair(u"= -{PAGE|1} + 2.5", "0.5"),
             std::pair(u"= {PAGE|1} \\# \"000\"", "002"),
             std::pair(u"= INT({PAGE|1} / 4) + MOD({NUMPAGES|1}, 5)", "2"),
         }) {
        putFields(u"{" + std::u16string(code) + u"|旧}", kinds);
        EXPECT_EQ(headers().at(1), shown) << toUtf8(code);
    }
}

TEST_F(TextInHeaders, AFormulaThatIsNotUnderstoodKeepsWhatItStored) {
    paragraphs(1);
    for (const auto* code : {u"= {PAGE|1} / 0", u"= SUM(ABOVE) + {PAGE|1}", u"= {PAGE|1} +",
                             u"= ({PAGE|1}", u"= {PAGE|1} \\# \"¥0,0\"", u"= 1 + 1"}) {
        putFields(u"{" + std::u16string(code) + u"|旧}", {formulaField, pageField});
        EXPECT_EQ(headers(), Texts{"旧"}) << toUtf8(code);
    }
    std::u16string endless = u"{PAGE|1}";
    for (int i = 0; i < 20; ++i) {
        endless += u"*99999999999999999999";
    }
    std::u16string difference = endless;
    difference += u"-";
    difference += endless;
    for (const std::u16string& sum : {endless, difference}) {
        std::u16string field = u"{= ";
        field += sum;
        field += u"|旧}";
        putFields(field, {formulaField, pageField, pageField});
        EXPECT_EQ(headers(), Texts{"旧"});
    }
    const std::u16string deep(100'000, u'(');
    putFields(u"{= " + deep + u"{PAGE|1}|旧}", {formulaField, pageField});
    EXPECT_EQ(headers(), Texts{"旧"});
}

TEST_F(TextInHeaders, AConditionIsAskedOnEachPage) {
    paragraphs(12);
    options.counts.total = 2;
    for (const auto& [code, first, second] : {
             std::tuple(u"IF {PAGE|1} = 1 \"首页\" \"其他\"", "首页", "其他"),
             std::tuple(u"IF {PAGE|1} > 1 \"第{PAGE|1}页\"", "", "第2页"),
             std::tuple(u"IF {PAGE|1} <> {NUMPAGES|1} 转下页 完", "转下页", "完"),
             std::tuple(u"IF {PAGE|1}<=1 “甲” “乙” \\* MERGEFORMAT", "甲", "乙"),
             std::tuple(u"If {PAGE|1} >= {PAGE|1} 等 异", "等", "等"),
             std::tuple(u"IF \"第{PAGE|1}\" = \"第2\" 是 否", "否", "是"),
         }) {
        const bool counts = std::u16string_view(code).find(u"NUM") != std::u16string::npos;
        putFields(u"{" + std::u16string(code) + u"|旧}",
                  {ifField, pageField, counts ? countField : pageField});
        EXPECT_EQ(headers(), (Texts{first, second})) << toUtf8(code);
    }
}

TEST_F(TextInHeaders, AConditionOfNoPageOrThatIsNotUnderstoodKeepsWhatItStored) {
    paragraphs(1);
    for (const auto* code : {u"IF 1 = 1 甲 乙", u"IF {PAGE|1}", u"IF {PAGE|1} ~ 2 甲 乙",
                             u"IF {PAGE|1} = 1 \"甲\v乙\" 丙"}) {
        putFields(u"{" + std::u16string(code) + u"|旧}", {ifField, pageField});
        const std::string shown = headers().at(0);
        EXPECT_TRUE(shown.ends_with("旧")) << toUtf8(code) << shown;
    }
    options = officeOptions();
    putFields(u"{IF {PAGE|1} = 1 甲 乙|旧}", {ifField, pageField});
    EXPECT_EQ(headers(), Texts{"旧"});
}

TEST_F(TextInHeaders, AListInAHeaderCountsForItself) {
    numberHeadings({std::u16string(1, u'\0')});
    type(u"甲\r乙\r", numbered());
    putHeader(HeaderKind::oddHeader, story(u"眉\r", numbered()));
    putHeader(HeaderKind::oddFooter, story(u"脚\r", numbered()));
    EXPECT_EQ(textOf(pages().at(0)), u"1眉1脚1甲2乙");
}

} // namespace
} // namespace qvnd::layout
