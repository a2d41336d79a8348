#include "platform/word/engine/DocumentOpening.h"

#include "platform/word/engine/ImportFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace qvnd::word {
namespace {

using namespace importing;

ByteView paragraphList(const DocumentContent& content) {
    return content.tables.lists[content.main.at(0).fragment->paragraphs.at(0).properties];
}
ByteView runList(const DocumentContent& content, std::size_t run = 0) {
    return content.tables.lists[content.main.at(0).fragment->characters.at(run).properties];
}

TEST(DocumentOpening, ASoundDocumentStaysAsItIs) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"宋体");
    const std::uint16_t list = source.addList(7, 0);
    const Bytes paragraph = sprm16(sprm::PIlfo, list);
    const Bytes characters = sprm16(sprm::CRgFtc0, font) + sprm8(sprm::CFBold, 1);
    source.paragraph(u"text", 0, paragraph, characters);
    source.data.bookmarks = {{u"mark", 0, 2, 0}};
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(bytesOf(paragraphList(content)), paragraph);
    EXPECT_EQ(bytesOf(runList(content)), characters);
    EXPECT_EQ(content.main.at(0).fragment->text, u"text\r");
    EXPECT_EQ(content.bookmarks.at(0).name, u"mark");
}

TEST(DocumentOpening, NamesOfWhatTheDocumentDoesNotHaveGo) {
    SourceDocument source;
    source.paragraph(u"text", 0, sprm16(sprm::PIlfo, 3) + sprm8(sprm::PFKeep, 1),
                     sprm16(sprm::CRgFtc0, 99) + sprm16(sprm::CIstd, 77) + sprm8(sprm::CFBold, 1));
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(operand16(paragraphList(content), sprm::PIlfo), 0);
    EXPECT_EQ(operand8(paragraphList(content), sprm::PFKeep), 1);
    EXPECT_EQ(bytesOf(runList(content)), sprm8(sprm::CFBold, 1));
}

TEST(DocumentOpening, PicturesOfBulletsStayAndNamesOfNoneGo) {
    SourceDocument source;
    const Bytes shown = sprm16(sprm::CPbiGrf, 1) + sprm32(sprm::CPbiIBullet, 0);
    for (const Bytes& bullet : {shown, sprm16(sprm::CPbiGrf, 1) + sprm32(sprm::CPbiIBullet, 1)}) {
        source.addList(static_cast<std::int32_t>(source.data.tables.listDefinitions.size() + 7),
                       23);
        source.data.tables.listDefinitions.back().levels.front().character = source.list(bullet);
    }
    const Bytes picture = sprm8(sprm::CFSpec, 1) + sprm32(sprm::CPicLocation, 0);
    source.data.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{1}));
    source.data.tables.bulletPictures.push_back(source.list(picture));
    source.paragraph(u"text");
    const DocumentContent content = openedDocument(source.take());
    const auto listOf = [&](PropertyListId id) { return bytesOf(content.tables.lists[id]); };
    ASSERT_EQ(content.tables.bulletPictures.size(), 1U);
    EXPECT_EQ(listOf(content.tables.bulletPictures[0]), picture);
    EXPECT_EQ(listOf(content.tables.listDefinitions.at(0).levels.front().character), shown);
    EXPECT_EQ(listOf(content.tables.listDefinitions.at(1).levels.front().character), Bytes());
}

TEST(DocumentOpening, AListWhoseDefinitionIsMissingIsNone) {
    SourceDocument source;
    const std::uint16_t list = source.addList(7, 0);
    source.data.tables.listDefinitions.clear();
    source.paragraph(u"text", 0, sprm16(sprm::PIlfo, list));
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(operand16(paragraphList(content), sprm::PIlfo), 0);
}

TEST(DocumentOpening, OfTwoListsWithOneNumberTheFirstStays) {
    SourceDocument source;
    source.addList(7, 0);
    source.addList(7, 23);
    source.data.tables.listDefinitions[0].linkedStyles[0] = 900;
    source.paragraph(u"text");
    const DocumentContent content = openedDocument(source.take());
    ASSERT_EQ(content.tables.listDefinitions.size(), 1U);
    EXPECT_EQ(content.tables.listDefinitions[0].levels[0].head[4], 0);
    EXPECT_EQ(content.tables.listDefinitions[0].linkedStyles[0], StyleDefinition::none);
}

TEST(DocumentOpening, ABuiltInStyleStaysOneAtItsPlaceAndTheFirstElsewhere) {
    SourceDocument source;
    source.style(0).sti = 31;
    for (const std::uint16_t number : {31, 31, 0}) {
        StyleDefinition style;
        style.name = u"样式";
        style.sti = number;
        source.data.tables.styles.styles.resize(
            std::max<std::size_t>(source.data.tables.styles.styles.size(), 15));
        source.data.tables.styles.styles.emplace_back(style);
    }
    const std::size_t first = source.data.tables.styles.styles.size() - 3;
    source.paragraph(u"text");
    const DocumentContent content = openedDocument(source.take());
    const auto numberAt = [&](std::size_t istd) {
        return content.tables.styles.styles.at(istd)->sti;
    };
    EXPECT_EQ(numberAt(0), 0);
    EXPECT_EQ(numberAt(first), 31);
    EXPECT_EQ(numberAt(first + 1), StyleDefinition::userDefined);
    EXPECT_EQ(numberAt(first + 2), StyleDefinition::userDefined);
}

TEST(DocumentOpening, ADocumentWithoutFontsGetsTheOneThatItsStylesName) {
    SourceDocument source;
    source.data.tables.fonts.clear();
    source.paragraph(u"text");
    const DocumentContent content = openedDocument(source.take());
    ASSERT_EQ(content.tables.fonts.size(), 1U);
    for (const std::uint16_t font : content.tables.styles.defaultFonts) {
        EXPECT_EQ(font, 0);
    }
}

TEST(DocumentOpening, AMarkOfANoteThatThereIsNotBecomesABlank) {
    SourceDocument source;
    const Bytes special = sprm8(sprm::CFSpec, 1) + sprm8(sprm::CFBold, 1);
    source.run(u"a");
    source.run(u"\u0002\u0005", special);
    source.run(u"\u0002\r");
    source.endParagraph(0, {});
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(content.main.at(0).fragment->text, u"a  \u0002\r") << "the last is no mark";
    EXPECT_EQ(bytesOf(runList(content, 1)), sprm8(sprm::CFBold, 1));
}

TEST(DocumentOpening, EqualNamesOfBookmarksBecomeDifferent) {
    SourceDocument source;
    source.paragraph(u"text");
    source.data.bookmarks = {{u"mark", 0, 1, 0}, {u"MARK", 1, 2, 0}};
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(content.bookmarks.at(0).name, u"mark");
    EXPECT_NE(content.bookmarks.at(1).name, u"MARK");
}

TEST(DocumentOpening, CharactersOfFieldsAreSpecial) {
    SourceDocument source;
    source.paragraph(u"\u0013 PAGE \u0015");
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(operand8(runList(content, 0), sprm::CFSpec), 1);
    EXPECT_EQ(operand8(runList(content, 1), sprm::CFSpec), -1);
    EXPECT_EQ(operand8(runList(content, 2), sprm::CFSpec), 1);
}

TEST(DocumentOpening, ARevisionOfNobodyStaysOne) {
    SourceDocument source;
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIbstRMark, 9));
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(content.tables.authors.at(operand16(runList(content), sprm::CIbstRMark)), u"Unknown");
}

TEST(DocumentOpening, TheAuthorBehindTheLastIsNobody) {
    SourceDocument source;
    source.data.tables.authors = {u"张工"};
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIbstRMark, 0));
    source.paragraph(u"y", 0, {}, sprm16(sprm::CIbstRMark, 1));
    const DocumentContent content = openedDocument(source.take());
    const auto authorOf = [&](std::size_t run) {
        return content.tables.authors.at(operand16(runList(content, run), sprm::CIbstRMark));
    };
    EXPECT_EQ(authorOf(0), u"张工");
    EXPECT_EQ(authorOf(2), u"Unknown"); // behind the first one's mark
}

TEST(DocumentOpening, StylesHeadersSeparatorsAndTextsOfShapesAreLookedAtToo) {
    SourceDocument source;
    const Bytes missing = sprm16(sprm::CRgFtc0, 99);
    source.paragraph(u"x");
    source.style(0).character = source.list(missing);
    Story other = source.main;
    other.characters = {{other.size(), source.list(missing)}};
    source.data.headers.resize(1);
    source.data.headers[0][1] = slicesOf(other);
    source.data.separators[3] = slicesOf(other);
    source.data.tables.shapeTexts = {{std::make_shared<Story>(other), {}}};
    const DocumentContent content = openedDocument(source.take());
    const PropertyLists& lists = content.tables.lists;
    EXPECT_TRUE(lists[content.tables.styles.styles[0]->character].empty());
    EXPECT_TRUE(lists[joined(content.headers.at(0)[1])->characters.at(0).properties].empty());
    EXPECT_TRUE(lists[joined(content.separators[3])->characters.at(0).properties].empty());
    EXPECT_TRUE(lists[content.tables.shapeTexts.at(0).text->characters.at(0).properties].empty());
}

std::vector<std::u16string> lostByOpening(SourceDocument& source) {
    std::vector<std::u16string> lost;
    openedDocument(source.take(), &lost);
    return lost;
}

TEST(DocumentOpening, CharactersThatStandForNothingAreCountedAsWithAnInsertion) {
    SourceDocument source;
    source.paragraph(u"a\u0008b\u0002\u0001c", 0, {}, sprm8(sprm::CFSpec, 1));
    source.run(u"\u0013 EMBED x ");
    source.run(u"\u0014", sprm8(sprm::CFOle2, 1) + sprm8(sprm::CFSpec, 1));
    source.run(u"\u0015\r");
    source.endParagraph();
    source.data.unread.sideStories = {1, 0, 0, 0};
    source.data.unread.remarks = {u"remark"};
    EXPECT_THAT(lostByOpening(source),
                testing::ElementsAre(u"remark", u"脚注 1 个未能带入", u"浮动图形 1 个未能带入",
                                     u"嵌入对象 1 个没有数据，只带入了其图片",
                                     u"图片 1 个没有数据，未能带入"));
}

TEST(DocumentOpening, WhatHasItsDrawingItsPictureAndItsObjectLosesNothing) {
    SourceDocument source;
    source.data.tables.blobs = {std::make_shared<Bytes>(Bytes{1})};
    source.data.tables.objects = {std::make_shared<EmbeddedObject>()};
    source.data.tables.drawings.resize(1);
    source.paragraph(u"\u0008", 0, {}, sprm8(sprm::CFSpec, 1));
    source.main.anchors = {{0, AnchorKind::drawing, 0}};
    source.paragraph(u"\u0001", 0, {}, sprm8(sprm::CFSpec, 1) + sprm32(sprm::CPicLocation, 0));
    source.run(u"\u0013 EMBED x ");
    source.run(u"\u0014",
               sprm8(sprm::CFOle2, 1) + sprm8(sprm::CFSpec, 1) + sprm32(sprm::CObjLocation, 0));
    source.run(u"\u0015\r");
    source.endParagraph();
    EXPECT_THAT(lostByOpening(source), testing::IsEmpty());
}

// `count` different entries of six bytes.
Bytes longList(SprmOpcode first, unsigned count) {
    Bytes list;
    for (unsigned i = 0; i < count; ++i) {
        const Bytes entry = sprm32(static_cast<SprmOpcode>(first + i % 60), i);
        list.insert(list.end(), entry.begin(), entry.end());
    }
    return list;
}

TEST(DocumentOpening, FormattingThatNoFileHasRoomForStaysInPartAndIsTold) {
    SourceDocument source;
    source.paragraph(u"x", 0, longList(0x6410, 3000));
    source.paragraph(u"y", 0, {}, longList(0x6840, 3000));
    source.data.sections = {{4, source.list(longList(0x7040, 6000))}};
    std::vector<std::u16string> lost;
    const DocumentContent content = openedDocument(source.take(), &lost);
    EXPECT_LE(paragraphList(content).size(), 0x3FA2U);
    EXPECT_GT(paragraphList(content).size(), 0x3FA2U - 6);
    EXPECT_LE(runList(content, 1).size(), 0x3FA2U);
    const ByteView section = content.tables.lists[content.sections.at(0).properties];
    EXPECT_LE(section.size(), 0x7FFFU);
    EXPECT_GT(section.size(), 0x7FFFU - 6);
    EXPECT_THAT(lost, testing::ElementsAre(
                          u"格式 3 种过于繁复，只带入了一部分，用它们的文字可能与原来不同"));
}

TEST(DocumentOpening, LevelsOfOverridesOriginalsOfStylesAndNotesAreLookedAtToo) {
    SourceDocument source;
    const Bytes missing = sprm16(sprm::CRgFtc0, 99);
    source.addList(7, 0);
    ListLevelOverride changed;
    changed.level = ListLevel{};
    changed.level->character = source.list(missing);
    changed.level->paragraph = source.list(sprm16(sprm::PIlfo, 9));
    source.data.tables.listOverrides[0].levels = {ListLevelOverride{}, changed};
    source.style(0).original =
        OriginalStyle{0, 0, source.list(sprm16(sprm::PIlfo, 9)), source.list(missing)};
    source.paragraph(u"x");
    Story note = source.main;
    note.characters = {{note.size(), source.list(missing)}};
    source.data.tables.sideStories.push_back({std::make_shared<const Story>(note), true, {}, {}});
    const DocumentContent content = openedDocument(source.take());
    const auto listOf = [&](PropertyListId id) { return bytesOf(content.tables.lists[id]); };
    const auto& levels = content.tables.listOverrides.at(0).levels;
    EXPECT_FALSE(levels.at(0).level);
    ASSERT_TRUE(levels.at(1).level);
    EXPECT_EQ(listOf(levels.at(1).level->character), Bytes());
    EXPECT_EQ(operand16(listOf(levels.at(1).level->paragraph), sprm::PIlfo), 0);
    const auto& original = content.tables.styles.styles.at(0)->original;
    ASSERT_TRUE(original);
    EXPECT_EQ(listOf(original->character), Bytes());
    EXPECT_EQ(operand16(listOf(original->paragraph), sprm::PIlfo), 0);
    EXPECT_EQ(listOf(content.tables.sideStories.at(0).text->characters.at(0).properties), Bytes());
}

TEST(DocumentOpening, NamesAreGoodUpToTheLastThatIsThere) {
    SourceDocument source;
    source.data.tables.blobs = {std::make_shared<const Bytes>(Bytes{1}), nullptr};
    const auto styleList = [](unsigned style) { return sprm16(sprm::CIstd, style); };
    const auto fontList = [](unsigned font) { return sprm16(sprm::CRgFtc0, font); };
    const auto pictureList = [](std::uint32_t blob) {
        return sprm8(sprm::CFSpec, 1) + sprm32(sprm::CPicLocation, blob);
    };
    source.addStyle(styleOf(StyleKind::character, u"强", StyleDefinition::userDefined));
    unsigned size = 30; // that keeps the runs apart
    for (const Bytes& list :
         {styleList(15), styleList(11), styleList(9), styleList(14), styleList(16), fontList(0),
          fontList(1), pictureList(0), pictureList(1), pictureList(2)}) {
        source.run(u"x", list + sprm16(sprm::CHps, ++size));
    }
    source.run(u"\r");
    source.endParagraph();
    const DocumentContent content = openedDocument(source.take());
    const auto stays = [&](std::size_t run, SprmOpcode opcode) {
        return findSprm(runList(content, run), opcode).has_value();
    };
    EXPECT_TRUE(stays(0, sprm::CIstd));
    EXPECT_FALSE(stays(1, sprm::CIstd)) << "a style of tables";
    EXPECT_FALSE(stays(2, sprm::CIstd)) << "an empty place";
    EXPECT_FALSE(stays(3, sprm::CIstd));
    EXPECT_FALSE(stays(4, sprm::CIstd)) << "behind the last place";
    EXPECT_TRUE(stays(5, sprm::CRgFtc0));
    EXPECT_FALSE(stays(6, sprm::CRgFtc0));
    EXPECT_TRUE(stays(7, sprm::CPicLocation));
    EXPECT_FALSE(stays(8, sprm::CPicLocation)) << "a lost picture";
    EXPECT_FALSE(stays(9, sprm::CPicLocation));
}

TEST(DocumentOpening, AParagraphNamesAListThatIsThere) {
    SourceDocument source;
    const std::uint16_t last = source.addList(7, 0);
    for (const unsigned list : {unsigned{last}, last + 1U, 0U, 0x07FFU, 0x07FEU}) {
        source.run(u"x\r");
        source.endParagraph(0, sprm16(sprm::PIlfo, list));
    }
    const DocumentContent content = openedDocument(source.take());
    const auto listOf = [&](std::size_t paragraph) {
        const Story& story = *content.main.at(0).fragment;
        return operand16(content.tables.lists[story.paragraphs.at(paragraph).properties],
                         sprm::PIlfo);
    };
    EXPECT_EQ(listOf(0), last);
    EXPECT_EQ(listOf(1), 0);
    EXPECT_EQ(listOf(2), 0);
    EXPECT_EQ(listOf(3), 0x07FF) << "the numbering of an older program";
    EXPECT_EQ(listOf(4), 0);
}

TEST(DocumentOpening, ADefaultFontThatIsNotThereIsTheFirst) {
    SourceDocument source;
    source.addFont(u"宋体");
    source.paragraph(u"text");
    source.data.tables.styles.defaultFonts = {1, 2, 1, 99};
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(content.tables.styles.defaultFonts, (std::array<std::uint16_t, 4>{1, 0, 1, 0}));
}

} // namespace
} // namespace qvnd::word
