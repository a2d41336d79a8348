#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/engine/ImportFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace qvnd::word;
using namespace qvnd::word::importing;

// Styles whose links to each other cannot be taken over as they are.
namespace {

StyleDefinition own(StyleKind kind, const std::u16string& name,
                    StyleIndex base = StyleDefinition::none) {
    return styleOf(kind, name, StyleDefinition::userDefined, base);
}

// A row's paragraph of that table style.
Bytes rowOf(StyleIndex style) { return sprm8(sprm::PFTtp, 1) + sprm16(sprm::TIstd, style); }

TEST(ImportedStyles, TheLastPlaceOfASheetIsUsedAndOneBeyondIsTold) {
    SourceDocument source;
    source.paragraph(u"x", source.addStyle(own(StyleKind::paragraph, u"引文")));
    source.paragraph(u"y", source.addStyle(own(StyleKind::paragraph, u"说明")));
    source.paragraph(u"z", source.addStyle(own(StyleKind::paragraph, u"说明二")));
    ImportTarget target;
    target.tables.styles.styles.resize(mostStyles - 1);
    const auto& result = target.import(source.document());
    EXPECT_EQ(target.tables.styles.styles.size(), mostStyles);
    EXPECT_EQ(target.styleOfParagraph(0).name, u"引文");
    EXPECT_EQ(target.styleOfParagraph(1).name, u"正文");
    ASSERT_EQ(result.leftOut.size(), 1U);
    EXPECT_EQ(result.leftOut[0], u"样式 2 种未能带入，一个文档最多 4093 种样式");
}

// A character style over a base that the target defines otherwise is written out in full.
TEST(ImportedStyles, ACharacterStyleKeepsItsOwnListWhereItsBaseHasNoRoomInIt) {
    const auto listOf = [](SprmOpcode opcode, std::size_t size) {
        Bytes list;
        while (list.size() + 4 <= size) {
            list = list + sprm16(opcode, 20);
        }
        return list;
    };
    SourceDocument source;
    const StyleIndex base = source.addStyle(own(StyleKind::character, u"底"));
    const StyleIndex style = source.addStyle(own(StyleKind::character, u"字", base));
    source.style(base).character = source.list(listOf(sprm::CHps, longestStyleList));
    source.style(style).character = source.list(listOf(sprm::CHpsKern, 40));
    source.run(u"x", sprm16(sprm::CIstd, style));
    source.run(u"\r");
    source.endParagraph();
    ImportTarget target;
    target.tables.styles.styles.push_back(own(StyleKind::character, u"底"));
    const auto& result = target.import(source.document());
    const StyleDefinition& brought =
        *target.tables.styles.styles.at(operand16(target.runList(), sprm::CIstd));
    EXPECT_EQ(bytesOf(target.tables.lists[brought.character]), listOf(sprm::CHpsKern, 40));
    ASSERT_EQ(result.leftOut.size(), 1U);
    EXPECT_EQ(result.leftOut[0], u"格式 1 种过于繁复，只带入了一部分，用它们的文字可能与原来不同");
}

TEST(ImportedStyles, NamesAndAliasesThatTheTargetHasAsEitherAreNotTakenTwice) {
    SourceDocument source;
    StyleDefinition quote = own(StyleKind::paragraph, u"h1");
    quote.aliases = u"h2,正文,new";
    source.paragraph(u"x", source.addStyle(quote));
    ImportTarget target;
    StyleDefinition heading = own(StyleKind::paragraph, u"章");
    heading.aliases = u"h1,h2";
    target.tables.styles.styles.push_back(heading);
    target.import(source.document());
    EXPECT_EQ(target.styleOfParagraph().name, u"h1_2");
    EXPECT_EQ(target.styleOfParagraph().aliases, u"new");
}

TEST(ImportedStyleLinks, ABaseThatBecomesTheStyleItselfIsNone) {
    constexpr std::uint16_t bodyText = 66;
    SourceDocument source;
    const StyleIndex base = source.addStyle(styleOf(StyleKind::paragraph, u"正文文本", bodyText));
    source.paragraph(u"x",
                     source.addStyle(styleOf(StyleKind::paragraph, u"Body Text", bodyText, base)));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.styleOfParagraph().name, u"Body Text");
    EXPECT_EQ(target.styleOfParagraph().basedOn, StyleDefinition::none);
}

// A style whose name the target has for another kind gets a new one, which its base may have.
TEST(ImportedStyleLinks, ABaseWhoseNameTheStyleGetsIsNone) {
    SourceDocument source;
    const StyleIndex base = source.addStyle(own(StyleKind::paragraph, u"引文_2"));
    source.style(base).paragraph = source.list(sprm8(sprm::PJc80, 1));
    source.paragraph(u"x", source.addStyle(own(StyleKind::paragraph, u"引文", base)));
    ImportTarget target;
    target.tables.styles.styles.push_back(own(StyleKind::character, u"引文"));
    target.import(source.document());
    const StyleDefinition& brought = target.styleOfParagraph();
    EXPECT_EQ(brought.name, u"引文_2");
    EXPECT_EQ(brought.basedOn, StyleDefinition::none);
    EXPECT_EQ(operand8(target.tables.lists[brought.paragraph], sprm::PJc80), 1);
}

TEST(ImportedStyleLinks, ABaseOfTheBaseThatBecomesTheStyleItselfIsWrittenIntoTheBase) {
    constexpr std::uint16_t bodyText = 66;
    SourceDocument source;
    const StyleIndex last = source.addStyle(styleOf(StyleKind::paragraph, u"正文文本", bodyText));
    const StyleIndex middle = source.addStyle(own(StyleKind::paragraph, u"引文", last));
    const StyleIndex first =
        source.addStyle(styleOf(StyleKind::paragraph, u"Body Text", bodyText, middle));
    source.style(last).paragraph = source.list(sprm8(sprm::PJc80, 1));
    source.style(middle).paragraph = source.list(sprm16(sprm::PDyaBefore, 120));
    source.paragraph(u"x", first);
    ImportTarget target;
    target.import(source.document());
    const StyleDefinition& brought = target.styleOfParagraph();
    ASSERT_NE(brought.basedOn, StyleDefinition::none);
    const StyleDefinition& quote = *target.tables.styles.styles.at(brought.basedOn);
    EXPECT_EQ(quote.name, u"引文");
    EXPECT_EQ(quote.basedOn, StyleDefinition::none);
    EXPECT_EQ(operand8(target.tables.lists[quote.paragraph], sprm::PJc80), 1);
    EXPECT_EQ(operand16(target.tables.lists[quote.paragraph], sprm::PDyaBefore), 120);
}

TEST(ImportedStyleLinks, ACharacterStyleTakesInTheBaseThatBecomesTheStyleAboveIt) {
    SourceDocument source;
    const StyleIndex last = source.addStyle(styleOf(StyleKind::character, u"Strong", 87));
    const StyleIndex middle = source.addStyle(own(StyleKind::character, u"着重", last));
    const StyleIndex first = source.addStyle(styleOf(StyleKind::character, u"强调", 87, middle));
    source.style(first).character = source.style(last).character =
        source.list(sprm16(sprm::CHps, 30));
    source.style(middle).character = source.list(sprm8(sprm::CFItalic, 1));
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIstd, first));
    ImportTarget target;
    target.import(source.document());
    const auto& styles = target.tables.styles.styles;
    const auto found = std::find_if(styles.begin(), styles.end(), [](const auto& style) {
        return style && style->name == u"着重";
    });
    ASSERT_NE(found, styles.end());
    EXPECT_EQ((*found)->basedOn, StyleDefinition::none);
    EXPECT_EQ(operand16(target.tables.lists[(*found)->character], sprm::CHps), 30);
}

TEST(ImportedStyleLinks, ABaseOfAnotherKindIsNoBase) {
    SourceDocument source;
    const StyleIndex letters = source.addStyle(own(StyleKind::character, u"字"));
    const StyleIndex style = source.addStyle(own(StyleKind::paragraph, u"引文", letters));
    source.paragraph(u"x", style);
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.styleOfParagraph().name, u"引文");
    EXPECT_EQ(target.styleOfParagraph().basedOn, StyleDefinition::none);
    EXPECT_TRUE(target.last.changed.empty()) << "it keeps its name";
}

TEST(ImportedStyleLinks, WhatABaseSaysThatIsNoneDoesNotComeIntoTheStyle) {
    SourceDocument source;
    const StyleIndex letters = source.addStyle(own(StyleKind::character, u"字"));
    source.style(letters).character = source.list(sprm8(sprm::CFBold, 1));
    const StyleIndex one = source.addStyle(own(StyleKind::paragraph, u"一", letters + 2U));
    const StyleIndex two = source.addStyle(own(StyleKind::paragraph, u"二", one));
    const StyleIndex over = source.addStyle(own(StyleKind::paragraph, u"引文", letters));
    source.style(one).character = source.list(sprm8(sprm::CFItalic, 1));
    source.style(one).paragraph = source.list(sprm8(sprm::PFKeep, 1));
    source.paragraph(u"x", one); // in a circle with the other
    source.paragraph(u"y", two);
    source.paragraph(u"z", over);
    ImportTarget target;
    target.import(source.document());
    for (const std::size_t paragraph : {1U, 2U}) {
        const StyleDefinition& style = target.styleOfParagraph(paragraph);
        EXPECT_EQ(style.basedOn, StyleDefinition::none);
        EXPECT_EQ(operand8(target.tables.lists[style.character], sprm::CFBold), -1) << paragraph;
        EXPECT_EQ(operand8(target.tables.lists[style.character], sprm::CFItalic), -1) << paragraph;
        EXPECT_EQ(operand8(target.tables.lists[style.paragraph], sprm::PFKeep), -1) << paragraph;
    }
}

TEST(ImportedStyleLinks, ATableStyleOverAnotherBaseIsAnotherStyle) {
    SourceDocument source;
    const StyleIndex grid = source.addStyle(own(StyleKind::table, u"网格", 11));
    source.paragraph(u"x", 0, rowOf(grid));
    ImportTarget target;
    target.tables.styles.styles.push_back(own(StyleKind::table, u"网格"));
    target.import(source.document());
    const StyleDefinition& brought =
        *target.tables.styles.styles.at(operand16(target.paragraphList(), sprm::TIstd));
    EXPECT_EQ(brought.name, u"网格_2");
    EXPECT_EQ(brought.basedOn, 11);
}

TEST(ImportedStyleLinks, ATableStyleOverABaseOfAnotherKindIsTheTargetsWithoutABase) {
    SourceDocument source;
    const StyleIndex grid = source.addStyle(own(StyleKind::table, u"网格", 0));
    source.paragraph(u"x", 0, rowOf(grid));
    ImportTarget target;
    target.tables.styles.styles.push_back(own(StyleKind::table, u"网格"));
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::TIstd), 15);
    EXPECT_EQ(target.tables.styles.styles.size(), 16U);
}

TEST(ImportedStyleLinks, ATieThatIsNotReturnedIsNone) {
    SourceDocument source;
    const StyleIndex tied = source.addStyle(own(StyleKind::character, u"字"));
    const StyleIndex style = source.addStyle(own(StyleKind::paragraph, u"引文", 0));
    source.style(style).link = tied;
    source.run(u"x", sprm16(sprm::CIstd, tied));
    source.run(u"\r");
    source.endParagraph(style);
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.styleOfParagraph().name, u"引文");
    EXPECT_EQ(target.styleOfParagraph().link, 0);
}

// 0 and -1 are no numbers of a list: paragraphs that name them have none.
TEST(ImportedListNumbers, AListUnderANumberThatMeansNoneGetsAnother) {
    for (const std::int32_t reserved : {0, -1}) {
        SourceDocument source;
        source.paragraph(u"x", 0, sprm16(sprm::PIlfo, source.addList(reserved, 0)));
        ImportTarget target;
        target.import(source.document());
        ASSERT_EQ(target.tables.listDefinitions.size(), 1U);
        const std::int32_t number = target.tables.listDefinitions[0].lsid;
        EXPECT_NE(number, 0);
        EXPECT_NE(number, -1);
        EXPECT_EQ(target.tables.listOverrides.at(0).lsid, number);
    }
}

TEST(ImportedStyles, WhatAStyleWasBeforeAChangeComesAlongWithItsAuthorAndFonts) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"黑体");
    source.data.tables.authors = {u"张工"};
    StyleDefinition changed = own(StyleKind::paragraph, u"改");
    changed.original = OriginalStyle{7, 0, source.list(sprm8(sprm::PFKeep, 1)),
                                     source.list(sprm16(sprm::CRgFtc0, font))};
    source.paragraph(u"x", source.addStyle(changed));
    ImportTarget target;
    target.tables.authors = {u"李工", u"王工"};
    target.import(source.document());
    const auto& original = target.styleOfParagraph().original;
    ASSERT_TRUE(original);
    EXPECT_EQ(original->date, 7U);
    EXPECT_EQ(target.tables.authors.at(original->author), u"张工");
    EXPECT_EQ(bytesOf(target.tables.lists[original->paragraph]), sprm8(sprm::PFKeep, 1));
    const auto came = operand16(target.tables.lists[original->character], sprm::CRgFtc0);
    EXPECT_EQ(target.tables.fonts.at(came).name, u"黑体");
}

TEST(ImportedStyles, ANumberThatNamesAStyleOfAnotherKindBringsNone) {
    SourceDocument source;
    const StyleIndex ofParagraphs = source.addStyle(own(StyleKind::paragraph, u"引文"));
    const StyleIndex ofCharacters = source.addStyle(own(StyleKind::character, u"字"));
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIstd, ofParagraphs));
    source.paragraph(u"y", ofCharacters);
    source.paragraph(u"z", 0, rowOf(ofParagraphs));
    ImportTarget target;
    const std::size_t before = target.tables.styles.styles.size();
    target.import(source.document());
    EXPECT_EQ(target.tables.styles.styles.size(), before);
    EXPECT_FALSE(findSprm(target.runList(), sprm::CIstd));
    EXPECT_EQ(target.styleOfParagraph(1).name, u"正文");
}

// Its picture could not be read.
TEST(ImportedBullets, OneWithoutAPictureComesWithoutOne) {
    SourceDocument source;
    DocumentTables& tables = source.data.tables;
    tables.blobs = {nullptr};
    for (const std::uint32_t blob : {0U, 1U}) { // missing, and beyond the last
        tables.bulletPictures.push_back(
            source.list(sprm8(sprm::CFSpec, 1) + sprm32(sprm::CPicLocation, blob)));
    }
    tables.bulletPictures.push_back(source.list({})); // no place of a picture
    const std::uint16_t list = source.addList(9, 23);
    tables.listDefinitions.back().levels.front().character =
        source.list(sprm32(sprm::CPbiIBullet, 0) + sprm16(sprm::CPbiGrf, 1));
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.tables.bulletPictures.size(), 1U) << "the others show none";
    EXPECT_FALSE(
        findSprm(target.tables.lists[target.tables.bulletPictures[0]], sprm::CPicLocation));
    EXPECT_EQ(target.tables.listDefinitions.size(), 1U);
}

} // namespace
