#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/ImportFixture.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// Names of lists, and the fields that count by them.
namespace qvnd::word {
namespace {

using namespace importing;
using testing::ElementsAre;
using testing::IsEmpty;

// A document with a list of that name, which only a field of the text names.
SourceDocument documentWithNamedList(const std::u16string& name,
                                     const std::u16string& code = u"LISTNUM Clauses \\l 2",
                                     std::uint8_t numberFormat = 0) {
    SourceDocument source;
    source.addList(4711, numberFormat);
    source.data.tables.listDefinitions.back().name = name;
    source.paragraph(u"\x13" + code + u"\x15");
    return source;
}

std::vector<std::u16string> listNamesOf(const DocumentTables& tables) {
    std::vector<std::u16string> names;
    for (const ListDefinition& list : tables.listDefinitions) {
        names.push_back(list.name);
    }
    return names;
}

TEST(ListNames, AListThatAFieldNamesComesAlong) {
    SourceDocument source = documentWithNamedList(u"Clauses");
    ImportTarget target;
    target.import(source.document());
    EXPECT_THAT(listNamesOf(target.tables), ElementsAre(u"Clauses"));
    EXPECT_EQ(target.tables.listOverrides.size(), 1U);
    EXPECT_THAT(target.last.changed, IsEmpty());
}

TEST(ListNames, AListThatNoParagraphCanBeOfComesForAFieldAsWell) {
    SourceDocument source = documentWithNamedList(u"Clauses");
    source.data.tables.listOverrides.clear();
    ImportTarget target;
    target.import(source.document());
    EXPECT_THAT(listNamesOf(target.tables), ElementsAre(u"Clauses"));
    EXPECT_EQ(target.tables.listOverrides.size(), 1U);
}

TEST(ListNames, AListThatNothingNamesStaysBehind) {
    SourceDocument source = documentWithNamedList(u"Clauses", u"LISTNUM Other");
    ImportTarget target;
    target.import(source.document());
    EXPECT_THAT(listNamesOf(target.tables), IsEmpty());
}

TEST(ListNames, ATakenNameGetsANewOneFieldsFollowAndItIsTold) {
    SourceDocument source = documentWithNamedList(u"Clauses");
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_THAT(listNamesOf(target.tables), ElementsAre(u"Clauses", u"Clauses_2"));
    EXPECT_EQ(target.last.text->text, u"\x13LISTNUM Clauses_2 \\l 2\x15\r");
    EXPECT_THAT(target.last.changed,
                ElementsAre(u"列表 1 个改了名（如“Clauses”改为“Clauses_2”），"
                            u"因为别的文档已有同名的列表，引用它们的地方已一并更改"));
}

TEST(ListNames, TheCaseOfLettersMakesNoOtherName) {
    SourceDocument source = documentWithNamedList(u"CLAUSES");
    ImportTarget target;
    target.import(documentWithNamedList(u"Clauses").document());
    target.import(source.document());
    EXPECT_THAT(listNamesOf(target.tables), ElementsAre(u"Clauses", u"CLAUSES_2"));
    EXPECT_EQ(target.last.text->text, u"\x13LISTNUM CLAUSES_2 \\l 2\x15\r");
}

TEST(ListNames, FieldsOfNotesFollowToo) {
    SourceDocument source = documentWithNamedList(u"Clauses", u"PAGE");
    Story note;
    note.text = u"\x02\x13LISTNUM \"clauses\"\x15\r";
    note.characters = {{note.size()}};
    note.paragraphs = {{note.size()}};
    note.fields = {{1, 0x13, 0}, {19, 0x15, 0}};
    source.data.tables.sideStories = {{std::make_shared<const Story>(note), true, u"", u"", 0}};
    source.run(u"\x02", sprm8(sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    source.main.anchors = {{source.main.size() - 2, AnchorKind::footnote, 0}};
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(target.tables.sideStories.at(1).text->text, u"\x02\x13LISTNUM \"Clauses_2\"\x15\r");
}

TEST(ListNames, EqualListsOfBulletsAreSharedUnderTheirName) {
    SourceDocument source = documentWithNamedList(u"Clauses", u"LISTNUM Clauses", 23);
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_THAT(listNamesOf(target.tables), ElementsAre(u"Clauses"));
    EXPECT_EQ(target.last.text->text, u"\x13LISTNUM Clauses\x15\r");
}

TEST(ListNames, ANewNameIsNoLongerThanAFileAllows) {
    const std::u16string longest(255, u'x');
    SourceDocument source = documentWithNamedList(longest, u"LISTNUM " + longest);
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(target.tables.listDefinitions.at(1).name, std::u16string(253, u'x') + u"_2");
}

TEST(ListNames, OfEqualNamesOfAnOpenedDocumentTheFirstKeepsIt) {
    SourceDocument source = documentWithNamedList(u"Clauses");
    for (const auto& [lsid, name] : {std::pair(8, u"Clauses"), {9, u""}, {10, u""}}) {
        source.addList(lsid, 0);
        source.data.tables.listDefinitions.back().name = name;
    }
    EXPECT_THAT(listNamesOf(openedDocument(source.take()).tables),
                ElementsAre(u"Clauses", u"Clauses_2", u"", u""));
}

// Whatever came in often stands in a sound file, and that file brought in gives the same again.
TEST(ListNames, ADocumentThatCameTwiceIsSoundAndASecondPassChangesNothing) {
    const auto memory = std::make_shared<test::MemoryFolder>();
    const auto insertAll = [&](const std::vector<const DocumentContent*>& sources) {
        WorkingDocument document(normalTemplate());
        for (const DocumentContent* source : sources) {
            ImportNotes notes;
            DocumentBody body =
                importDocument(document.tables(), document.bookmarkNames(), *source, notes);
            insertDocument(document, document.main().size() - 1, std::move(body));
        }
        DocumentWriter(memory).saveAs("/folder/a.doc", document.content());
        EXPECT_THAT(checkDocument(memory->bytes("/folder/a.doc")), IsEmpty());
        return readDocument(memory->bytes("/folder/a.doc"));
    };
    SourceDocument source = documentWithNamedList(u"Clauses");
    const DocumentContent first = insertAll({&source.document(), &source.document()});
    const DocumentContent second = insertAll({&first});
    EXPECT_THAT(listNamesOf(second.tables),
                testing::UnorderedElementsAre(u"Clauses", u"Clauses_2"));
    EXPECT_EQ(joined(second.main)->text.substr(0, joined(first.main)->text.size()),
              joined(first.main)->text);
}

} // namespace
} // namespace qvnd::word
