#include "platform/word/engine/BookmarkImport.h"
#include "platform/word/docfile/document/DataBlobs.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/ImportFixture.h"
#include "platform/word/engine/NormalTemplate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Bookmarks of all texts of a document, and what speaks of them, behind a second insertion.
namespace qvnd::word {
namespace {

using namespace importing;
using testing::ElementsAre;

Story textWith(const std::u16string& text, std::vector<Bookmark> bookmarks = {}) {
    Story story;
    story.text = text;
    story.characters = {{story.size(), PropertyListId::empty}};
    story.paragraphs = {{story.size(), 0, PropertyListId::empty}};
    for (Cp at = 0; at < story.size(); ++at) {
        if (text[at] >= 0x13 && text[at] <= 0x15) {
            story.fields.push_back({at, static_cast<std::uint8_t>(text[at]), 0});
        }
    }
    story.bookmarks = std::move(bookmarks);
    return story;
}

// A document with a bookmark in its text, in a note, in the text of a shape and in the header of
// its first section; each is named by a field of the next text.
SourceDocument documentWithBookmarksEverywhere() {
    SourceDocument source;
    source.run(u"a");
    source.run(u"\u0002", sprm8(sprm::CFSpec, 1));
    source.run(u"\u0013REF note\u0015\f");
    source.endParagraph();
    source.paragraph(u"last");
    source.main.anchors = {{1, AnchorKind::footnote, 0}};
    source.data.bookmarks = {{u"main", 0, 1, 0}};
    source.data.tables.sideStories = {
        {std::make_shared<const Story>(
             textWith(u"\u0002xyz\u0013REF box\u0015\r", {{u"note", 1, 3, 5}})),
         true, u"", u"", 0}};
    source.data.tables.shapeTexts = {
        {std::make_shared<const Story>(textWith(u"\u0013REF head\u0015b\r", {{u"box", 10, 11, 0}})),
         {}}};
    source.data.tables.drawings = {{Bytes(22), Bytes(8), {{0, ShapeReference::Kind::text, 0, 0}}}};
    source.main.text[0] = u'\u0008';
    source.main.characters.insert(source.main.characters.begin(),
                                  {1, source.list(sprm8(sprm::CFSpec, 1))});
    source.main.characters[1].length -= 1;
    std::erase_if(source.main.characters, [](const CharacterRun& run) { return run.length == 0; });
    source.main.anchors.insert(source.main.anchors.begin(), {0, AnchorKind::drawing, 0});
    source.data.sections = {{13, PropertyListId::empty}, {5, PropertyListId::empty}};
    source.data.headers.resize(2);
    source.data.headers[0][1] =
        slicesOf(textWith(u"h\u0013REF main\u0015\r", {{u"head", 0, 1, 0}}));
    return source;
}

std::vector<std::u16string> namesAndTexts(const Story& story) {
    std::vector<std::u16string> result{story.text};
    for (const Bookmark& bookmark : story.bookmarks) {
        result.push_back(bookmark.name + u" " + digits(bookmark.start) + u" " +
                         digits(bookmark.end));
    }
    return result;
}

TEST(BookmarkImport, BookmarksOfNotesShapesAndHeadersComeAndAreNamedAnewTogetherWithTheirFields) {
    SourceDocument source = documentWithBookmarksEverywhere();
    ImportTarget target;
    target.import(source.document());
    EXPECT_THAT(namesAndTexts(*target.tables.sideStories.at(0).text),
                ElementsAre(u"\u0002xyz\u0013REF box\u0015\r", u"note 1 3"));
    target.import(source.document());
    EXPECT_EQ(target.last.bookmarks.at(0).name, u"main_2");
    EXPECT_EQ(target.last.text->text.substr(2, 12), u"\u0013REF note_2\u0015");
    EXPECT_THAT(namesAndTexts(*target.tables.sideStories.at(1).text),
                ElementsAre(u"\u0002xyz\u0013REF box_2\u0015\r", u"note_2 1 3"));
    EXPECT_EQ(target.tables.sideStories[1].text->bookmarks[0].flags, 5);
    EXPECT_THAT(namesAndTexts(*target.tables.shapeTexts.at(1).text),
                ElementsAre(u"\u0013REF head_2\u0015b\r", u"box_2 12 13"));
    EXPECT_THAT(namesAndTexts(*joined(target.last.headers.at(0)[1])),
                ElementsAre(u"h\u0013REF main_2\u0015\r", u"head_2 0 1"));
}

TEST(BookmarkImport, FieldsOfAllTextsSpeakOfBookmarks) {
    SourceDocument source = documentWithBookmarksEverywhere();
    EXPECT_THAT(namesInFields(source.document()),
                testing::UnorderedElementsAre(u"note", u"box", u"head", u"main"));
}

// All bookmarks of what came in last.
std::vector<std::u16string> namesOfAll(const ImportTarget& target) {
    std::vector<std::u16string> names;
    const auto add = [&](const std::vector<Bookmark>& bookmarks) {
        for (const Bookmark& bookmark : bookmarks) {
            names.push_back(bookmark.name);
        }
    };
    add(target.last.bookmarks);
    add(joined(target.last.headers.at(0)[1])->bookmarks);
    add(target.tables.sideStories.at(0).text->bookmarks);
    add(target.tables.shapeTexts.at(0).text->bookmarks);
    return names;
}

// A document that has room for two bookmarks more, beside that of the pictures of bullets.
ImportTarget almostFull() {
    ImportTarget target;
    for (std::int64_t i = 0; i < 13'997; ++i) {
        target.names.add(u"m" + digits(i));
    }
    return target;
}

TEST(BookmarkImport, WhereThereIsNoRoomThoseOfOtherTextsGoBeforeThoseOfTheMainStory) {
    SourceDocument source = documentWithBookmarksEverywhere();
    ImportTarget target = almostFull();
    target.import(source.document());
    EXPECT_THAT(namesOfAll(target), ElementsAre(u"main", u"head"));
    EXPECT_THAT(
        target.last.leftOut,
        testing::Contains(u"书签 2 个未能带入，一个文档最多 16380 个书签，其中 2380 个留给目录"));
}

TEST(BookmarkImport, HiddenOnesThatNothingNamesGoFirstWhereverTheyStand) {
    SourceDocument source = documentWithBookmarksEverywhere();
    Story header = *joined(source.data.headers[0][1]);
    header.bookmarks[0].name = u"_Ref1";
    source.data.headers[0][1] = slicesOf(header);
    source.data.bookmarks.push_back({u"_Ref2", 0, 1, 0});
    ImportTarget target = almostFull();
    target.import(source.document());
    EXPECT_THAT(namesOfAll(target), ElementsAre(u"main", u"note"));
}

TEST(BookmarkImport, TheNameOfThePicturesOfBulletsIsNoOthers) {
    SourceDocument source = documentWithBookmarksEverywhere();
    source.data.bookmarks[0].name = u"_pictureBULLETS";
    ImportTarget target;
    EXPECT_EQ(target.import(source.document()).bookmarks.at(0).name, u"_pictureBULLETS_2");
    EXPECT_EQ(openedDocument(source.take()).bookmarks.at(0).name, u"_pictureBULLETS_2");
}

TEST(BookmarkImport, NamesOfAnOpenedDocumentAreUniqueThroughAllItsTexts) {
    SourceDocument source = documentWithBookmarksEverywhere();
    source.data.bookmarks[0].name = u"NOTE";
    const DocumentContent content = openedDocument(source.take());
    EXPECT_EQ(content.bookmarks.at(0).name, u"NOTE");
    EXPECT_EQ(content.tables.sideStories.at(0).text->bookmarks.at(0).name, u"note_2");
}

TEST(BookmarkImport, WhatComesInGetsOtherNamesThanTheTextsOfTheDocumentHave) {
    SourceDocument source = documentWithBookmarksEverywhere();
    WorkingDocument document(openedDocument(source.take()));
    for (const char16_t* name : {u"main", u"note", u"box", u"head"}) {
        EXPECT_TRUE(document.bookmarkNames().contains(name));
    }
}

// --- fields that speak of bookmarks -----------------------------------------------------------

// The code of a field behind a second insertion of a document with the bookmarks 总价 and Text1.
std::u16string codeAfterRenaming(const std::u16string& code) {
    SourceDocument source;
    source.paragraph(u"\u0013" + code + u"\u0015");
    source.data.bookmarks = {{u"总价", 0, 1, 0}, {u"Text1", 0, 1, 0}, {u"A1", 0, 1, 0}};
    ImportTarget target;
    target.import(source.document());
    const std::u16string text = target.import(source.document()).text->text;
    return text.substr(1, text.size() - 3);
}

TEST(RenamedFields, AFormulaReckonsWithItsOwnBookmarks) {
    EXPECT_EQ(codeAfterRenaming(u"= 总价 * 2"), u"= 总价_2 * 2");
    EXPECT_EQ(codeAfterRenaming(u"=总价*Text1"), u"=总价_2*Text1_2");
    EXPECT_EQ(codeAfterRenaming(u"=(总价+1)/3"), u"=(总价_2+1)/3");
    EXPECT_EQ(codeAfterRenaming(u"=SUM(总价 Text1)"), u"=SUM(总价_2 Text1_2)");
}

TEST(RenamedFields, FunctionsCellsTextsAndPicturesOfAFormulaAreNoBookmarks) {
    EXPECT_EQ(codeAfterRenaming(u"=Text1(2)"), u"=Text1(2)");
    EXPECT_EQ(codeAfterRenaming(u"=A1+总价"), u"=A1+总价_2");
    EXPECT_EQ(codeAfterRenaming(u"=总价 \\# \"总价\""), u"=总价_2 \\# \"总价\"");
    EXPECT_EQ(codeAfterRenaming(u"=总价 \\# 总价"), u"=总价_2 \\# 总价");
}

TEST(RenamedFields, AnEntryOfTheIndexKeepsTheRangeOfItsOwnCopy) {
    EXPECT_EQ(codeAfterRenaming(u"XE \"总价\" \\r 总价"), u"XE \"总价\" \\r 总价_2");
}

TEST(RenamedFields, ALinkIntoAnotherFileKeepsItsPlaceThere) {
    EXPECT_EQ(codeAfterRenaming(u"HYPERLINK \"D:\\\\b.doc\" \\l \"总价\""),
              u"HYPERLINK \"D:\\\\b.doc\" \\l \"总价\"");
}

TEST(RenamedFields, WhatIsComparedIsNamedAnewAndWhatIsShownIsNot) {
    EXPECT_EQ(codeAfterRenaming(u"IF 总价 > 5 总价 \"总价\""), u"IF 总价_2 > 5 总价 \"总价\"");
    EXPECT_EQ(codeAfterRenaming(u"IF 5 <= 总价 \"a\" \"b\""), u"IF 5 <= 总价_2 \"a\" \"b\"");
    EXPECT_EQ(codeAfterRenaming(u"if 总价=Text1 \"a\""), u"if 总价_2=Text1_2 \"a\"");
    EXPECT_EQ(codeAfterRenaming(u"COMPARE \"总价\" = \"x\""), u"COMPARE \"总价\" = \"x\"");
    EXPECT_EQ(codeAfterRenaming(u"COMPARE 总价 = \"x\""), u"COMPARE 总价_2 = \"x\"");
    EXPECT_EQ(codeAfterRenaming(u"IF 总价"), u"IF 总价");
}

TEST(RenamedFields, APictureInTheCodeOfALinkStaysWithItsNewName) {
    SourceDocument source;
    source.data.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{1}));
    source.run(u"\u0013HYPERLINK \\l \"bm\" ");
    source.run(u"\u0001", sprm32(sprm::CPicLocation, 0) + sprm8(sprm::CFSpec, 1));
    source.run(u"\u0014x\u0015\r");
    source.endParagraph();
    source.data.bookmarks = {{u"bm", 0, 3, 0}};
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"\u0013HYPERLINK \\l \"bm_2\" \u0001\u0014x\u0015\r");
}

// NilPICFAndBinData with an FFData of a text field.
Bytes formField(const std::u16string& name) {
    LittleEndianWriter writer;
    writer.u32(0);
    writer.u16(0x44);
    writer.zeros(0x44 - 6);
    writer.u32(0xFFFFFFFF);
    writer.zeros(6);
    writer.u16(static_cast<unsigned>(name.size()));
    writer.text(name);
    writer.u16(0);
    writer.u32(0x12345678); // default text and the rest
    writer.patchU32(0, static_cast<std::uint32_t>(writer.position()));
    return writer.take();
}

TEST(FormFields, TheNameStandsInTheDataAndCanBeChanged) {
    EXPECT_EQ(formFieldName(formField(u"Text1")), u"Text1");
    EXPECT_EQ(withFormFieldName(formField(u"Text1"), u"合计_2"), formField(u"合计_2"));
    EXPECT_EQ(withFormFieldName(formField(u"x"), std::u16string(20, u'y')),
              formField(std::u16string(20, u'y')));
    EXPECT_EQ(withFormFieldName(formField(u"x"), std::u16string(21, u'y')), formField(u""));
}

TEST(FormFields, OtherDataHaveNoName) {
    Bytes hyperlink = formField(u"Text1");
    hyperlink[0x44] = 8;
    EXPECT_EQ(formFieldName(hyperlink), std::nullopt);
    EXPECT_EQ(formFieldName(Bytes(0x44 + 11, 0xFF)), std::nullopt);
    Bytes cut = formField(u"Text1");
    cut.resize(0x44 + 12 + 10);
    EXPECT_EQ(formFieldName(cut), u"Text1");
    cut.resize(0x44 + 12 + 9);
    EXPECT_EQ(formFieldName(cut), std::nullopt);
}

TEST(FormFields, AFieldGetsTheNewNameOfItsBookmarkAndTheFirstOneKeepsTheOld) {
    SourceDocument source;
    source.data.tables.blobs = {std::make_shared<const Bytes>(formField(u"Text1"))};
    const Bytes data =
        sprm8(sprm::CFSpec, 1) + sprm8(sprm::CFData, 1) + sprm32(sprm::CPicLocation, 0);
    source.run(u"\u0013 IF Text1 = \u0013 FORMTEXT ");
    source.run(u"\u0001", data);
    source.run(u"\u0014x\u0015 a b\u0015\r");
    source.endParagraph();
    source.main.fields[1].data = 70;
    source.data.bookmarks = {{u"Text1", 12, 26, 0}};
    ImportTarget target;
    target.import(source.document());
    const auto nameOf = [&] {
        const Cp at = static_cast<Cp>(target.last.text->text.find(u'\u0001'));
        Cp end = 0;
        std::size_t run = 0;
        while ((end += target.last.text->characters.at(run).length) <= at) {
            ++run;
        }
        return formFieldName(
            *target.tables.blobs.at(operand16(target.runList(run), sprm::CPicLocation)));
    };
    EXPECT_EQ(nameOf(), u"Text1");
    target.import(source.document());
    EXPECT_EQ(target.last.text->text.substr(0, 15), u"\u0013 IF Text1_2 = ");
    EXPECT_EQ(nameOf(), u"Text1_2");
    EXPECT_EQ(formFieldName(*target.tables.blobs.at(0)), u"Text1");
}

TEST(FormFields, DataBehindOneBelongToItNoMore) {
    SourceDocument source;
    source.data.tables.blobs = {std::make_shared<const Bytes>(formField(u"Text1")),
                                std::make_shared<const Bytes>(Bytes{1})};
    const auto data = [](std::uint32_t blob) {
        return sprm8(sprm::CFSpec, 1) + sprm8(sprm::CFData, 1) + sprm32(sprm::CPicLocation, blob);
    };
    for (int i = 0; i < 2; ++i) {
        source.run(u"\u0013 FORMTEXT ");
        source.run(u"\u0001", data(0));
        source.run(u"\u0014x\u0015");
    }
    source.run(u"\u0013HYPERLINK \\l \"bm\" ");
    source.run(u"\u0001", data(1));
    source.run(u"\u0014y\u0015\r");
    source.endParagraph();
    source.main.fields[0].data = source.main.fields[3].data = 70;
    source.data.bookmarks = {{u"bm", 0, 3, 0}};
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"\u0013 FORMTEXT \u0001\u0014x\u0015"
                                      u"\u0013 FORMTEXT \u0001\u0014x\u0015"
                                      u"\u0013HYPERLINK \\l \"bm_2\" \u0014y\u0015\r");
}

} // namespace
} // namespace qvnd::word
