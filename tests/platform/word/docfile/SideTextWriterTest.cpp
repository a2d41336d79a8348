#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/docfile/writer/SideText.h"
#include "support/ContentBuilder.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::ContentBuilder;
using test::plain;
using test::Words;

// Notes and comments of a document under work, as a file gives them back.
class SideTextWriter : public testing::Test {
protected:
    static Words special(char16_t character) {
        return {std::u16string(1, character), withSprm8({}, sprm::CFSpec, 1)};
    }
    std::shared_ptr<const Story> noteText(const std::u16string& text) {
        return builder.fragment({special(0x02), plain(text + u"\r")});
    }
    // Adds a paragraph whose last character is the anchor.
    void add(const std::u16string& text, AnchorKind kind, std::uint32_t index) {
        const char16_t mark = kind == AnchorKind::comment ? 0x05 : 0x02;
        Story story = *builder.fragment({plain(text), special(mark), plain(u"\r")});
        story.anchors = {{static_cast<Cp>(text.size()), kind, index}};
        builder.add(std::make_shared<const Story>(std::move(story)));
    }
    void addNote(const std::u16string& text, AnchorKind kind, const std::u16string& note) {
        auto& notes = builder.content.tables.sideStories;
        notes.push_back({noteText(note), true, {}, {}});
        add(text, kind, static_cast<std::uint32_t>(notes.size() - 1));
    }
    void addComment(const std::u16string& text, const std::u16string& comment,
                    const std::u16string& author) {
        auto& comments = builder.content.tables.sideStories;
        comments.push_back(
            {builder.fragment({special(0x05), plain(comment + u"\r")}), true, author, u"W", 99});
        add(text, AnchorKind::comment, static_cast<std::uint32_t>(comments.size() - 1));
    }
    void addHeader(const std::u16string& text) {
        HeaderSet set;
        set[1] = slicesOf(builder.fragment({plain(text + u"\r")}));
        builder.content.headers = {set};
    }
    DocumentContent read() const {
        const Bytes& file = folder->bytes(path);
        for (const Finding& finding : checkDocument(file)) {
            ADD_FAILURE() << finding.rule;
        }
        return readDocument(file);
    }
    // "kind:text" of each anchor of the main story, in order.
    static std::vector<std::u16string> notesOf(const DocumentContent& document) {
        std::vector<std::u16string> result;
        for (const Anchor& anchor : joined(document.main)->anchors) {
            const DocumentTables& tables = document.tables;
            const bool comment = anchor.kind == AnchorKind::comment;
            const Story& text = *tables.sideStories.at(anchor.index).text;
            const char16_t* kind = anchor.kind == AnchorKind::footnote ? u"f:" : u"e:";
            result.push_back((comment ? u"c:" : kind) + text.text.substr(1));
        }
        return result;
    }

    std::shared_ptr<test::MemoryFolder> folder = std::make_shared<test::MemoryFolder>();
    const std::filesystem::path path = "/folder/a.doc";
    DocumentWriter writer{folder};
    ContentBuilder builder;
};

using Texts = std::vector<std::u16string>;

TEST_F(SideTextWriter, NotesComeBackAtTheirPlaces) {
    addNote(u"one", AnchorKind::footnote, u"first");
    addNote(u"two", AnchorKind::endnote, u"second");
    addNote(u"three", AnchorKind::footnote, u"third");
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, builder.text());
    EXPECT_EQ(notesOf(document), (Texts{u"f:first\r", u"e:second\r", u"f:third\r"}));
    EXPECT_EQ(document.unread.sideStories, (std::array<int, anchorKinds>{}));
    EXPECT_TRUE(document.unread.remarks.empty());
}

TEST_F(SideTextWriter, BookmarksOfNotesCommentsAndHeadersComeBackInTheirTexts) {
    addNote(u"one", AnchorKind::footnote, u"first");
    addComment(u"two", u"second", u"王");
    addHeader(u"head");
    const auto mark = [](std::shared_ptr<const Story>& text, const Bookmark& bookmark) {
        Story marked = *text;
        marked.bookmarks.push_back(bookmark);
        text = std::make_shared<const Story>(std::move(marked));
    };
    mark(builder.content.tables.sideStories[0].text, {u"在脚注", 1, 4, 2});
    mark(builder.content.tables.sideStories[1].text, {u"在批注", 3, 3, 0});
    mark(builder.content.headers[0][1][0].fragment, {u"在页眉", 0, 5, 0});
    builder.content.bookmarks = {{u"在正文", 0, 2, 0}};
    writer.saveAs(path, builder.content);
    writer.save(builder.content);

    const DocumentContent document = read();

    EXPECT_EQ(document.bookmarks, builder.content.bookmarks);
    const auto& notes = document.tables.sideStories;
    EXPECT_EQ(notes.at(0).text->bookmarks, (std::vector<Bookmark>{{u"在脚注", 1, 4, 2}}));
    EXPECT_EQ(notes.at(1).text->bookmarks, (std::vector<Bookmark>{{u"在批注", 3, 3, 0}}));
    EXPECT_EQ(joined(document.headers.at(0)[1])->bookmarks,
              (std::vector<Bookmark>{{u"在页眉", 0, 5, 0}}));
    EXPECT_TRUE(document.unread.remarks.empty());
}

TEST_F(SideTextWriter, ABookmarkFromOneNoteIntoAnotherEndsWithTheFirstAndIsTold) {
    addNote(u"one", AnchorKind::footnote, u"first");
    addNote(u"two", AnchorKind::footnote, u"second");
    for (SideStory& note : builder.content.tables.sideStories) {
        Story text = *note.text;
        text.bookmarks = {{u"over both", 1, 4, 0}};
        note.text = std::make_shared<const Story>(std::move(text));
    }
    writer.saveAs(path, builder.content);
    ASSERT_EQ(checkDocument(folder->bytes(path)).front().rule, "bookmark.text");

    const DocumentContent document = readDocument(folder->bytes(path));

    const auto& notes = document.tables.sideStories;
    EXPECT_EQ(notes.at(0).text->bookmarks,
              (std::vector<Bookmark>{{u"over both", 1, notes[0].text->size(), 0}}));
    EXPECT_TRUE(notes.at(1).text->bookmarks.empty());
    EXPECT_EQ(document.unread.remarks,
              Remarks{u"有 1 个书签跨越了几段独立的文字，只保留了第一段中的部分。"});
}

TEST_F(SideTextWriter, ABookmarkOfAHeaderThatStandsTwiceStandsOnce) {
    addHeader(u"head");
    Story header = *builder.content.headers[0][1][0].fragment;
    header.bookmarks = {{u"head", 0, 4, 0}};
    builder.content.headers[0][1] = slicesOf(header);
    builder.add({plain(u"a\f")});
    builder.content.sections = {{2, {}}, {1, {}}};
    builder.content.headers.push_back(builder.content.headers[0]);
    writer.saveAs(path, builder.content);

    const DocumentContent document = read();

    EXPECT_EQ(joined(document.headers.at(0)[1])->bookmarks.size(), 1U);
    EXPECT_EQ(joined(document.headers.at(1)[1])->text, u"head\r");
    EXPECT_TRUE(joined(document.headers.at(1)[1])->bookmarks.empty());
}

TEST_F(SideTextWriter, ANoteMayBearAMarkOfTheUsersOwn) {
    builder.content.tables.sideStories.push_back(
        {builder.fragment({plain(u"* text\r")}), false, {}, {}});
    Story story = *builder.fragment({plain(u"a*\r")});
    story.anchors = {{1, AnchorKind::footnote, 0}};
    builder.add(std::make_shared<const Story>(std::move(story)));
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    ASSERT_EQ(document.tables.sideStories.size(), 1U);
    EXPECT_FALSE(document.tables.sideStories[0].automatic);
    EXPECT_EQ(joined(document.main)->anchors.at(0).at, 1U);
}

TEST_F(SideTextWriter, AllPartsStandTogether) {
    addHeader(u"页眉");
    addNote(u"one", AnchorKind::footnote, u"first");
    addComment(u"two", u"批注", u"王工");
    addNote(u"three", AnchorKind::endnote, u"last");
    builder.content.bookmarks.push_back({u"", 4, 7, 0, 1U});
    builder.content.bookmarks.push_back({u"name", 1, 2, 0, {}});
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(notesOf(document), (Texts{u"f:first\r", u"c:批注\r", u"e:last\r"}));
    EXPECT_EQ(joined(document.headers.at(0)[1])->text, u"页眉\r");
    EXPECT_EQ(document.tables.sideStories.back().author, u"王工");
    EXPECT_EQ(document.tables.sideStories.back().date, 99U);
    ASSERT_EQ(document.bookmarks.size(), 2U);
    EXPECT_EQ(document.bookmarks[0].name, u"name");
    EXPECT_EQ(document.bookmarks[1].comment, 2U);
    EXPECT_EQ(document.bookmarks[1].start, 4U);
    EXPECT_EQ(document.bookmarks[1].end, 7U);
}

TEST_F(SideTextWriter, EverySaveAddsWhatIsNew) {
    writer.saveAs(path, builder.content);
    Texts expected;
    for (int i = 0; i < 12; ++i) {
        const std::u16string number(1, static_cast<char16_t>(u'a' + i));
        if (i == 5) {
            addHeader(u"header");
        }
        if (i % 3 == 2) {
            addComment(number, u"comment " + number, u"author");
            expected.push_back(u"c:comment " + number + u"\r");
        } else {
            const bool foot = i % 2 == 0;
            addNote(number, foot ? AnchorKind::footnote : AnchorKind::endnote, u"note " + number);
            expected.push_back((foot ? u"f:note " : u"e:note ") + number + u"\r");
        }
        writer.save(builder.content);
        const DocumentContent document = read();
        ASSERT_EQ(joined(document.main)->text, builder.text());
        ASSERT_EQ(notesOf(document), expected);
    }
}

TEST_F(SideTextWriter, ASaveWritesNoNoteTwice) {
    addNote(u"one", AnchorKind::footnote, u"a note that is known by its words");
    writer.saveAs(path, builder.content);
    builder.add({plain(u"more\r")});
    writer.save(builder.content);
    const Bytes& file = folder->bytes(path);
    const std::u16string words = u"known by its words";
    Bytes wanted;
    for (const char16_t c : words) {
        wanted.push_back(static_cast<std::uint8_t>(c));
        wanted.push_back(0);
    }
    const auto first = std::search(file.begin(), file.end(), wanted.begin(), wanted.end());
    ASSERT_NE(first, file.end());
    EXPECT_EQ(std::search(first + 1, file.end(), wanted.begin(), wanted.end()), file.end());
}

TEST_F(SideTextWriter, ANoteWhoseReferenceIsGoneIsNotWritten) {
    addNote(u"one", AnchorKind::footnote, u"first");
    addNote(u"two", AnchorKind::footnote, u"second");
    writer.saveAs(path, builder.content);
    builder.content.main.erase(builder.content.main.begin());
    builder.content.sections.back().length -= 5;
    writer.save(builder.content);
    EXPECT_EQ(notesOf(read()), (Texts{u"f:second\r"}));
}

std::vector<const Story*> fragmentsOf(const SlicedText& text) {
    std::vector<const Story*> fragments;
    for (const StorySlice& slice : text) {
        fragments.push_back(slice.fragment.get());
    }
    return fragments;
}

// A text that was never taken back must come out as one that was.
TEST(FragmentCopies, EverySaveGetsTheSameCopiesWhereverTextCameInOrWent) {
    const auto mark = lonelyMark();
    const auto one = lonelyMark();
    const auto two = lonelyMark();
    const auto textOf = [](const std::vector<std::shared_ptr<const Story>>& stories) {
        SlicedText text;
        for (const auto& story : stories) {
            text.push_back({story, 0, 1});
        }
        return text;
    };
    FragmentCopies copies;
    SlicedText first = textOf({one, mark, two, mark});
    copies.makeDistinct(first);
    EXPECT_EQ(first[1].fragment, mark);
    EXPECT_NE(first[3].fragment, mark);
    EXPECT_EQ(first[3].fragment->text, u"\r");

    SlicedText longer = textOf({one, mark, one, mark, two, mark});
    copies.makeDistinct(longer);
    EXPECT_EQ(longer[3].fragment, first[3].fragment);
    EXPECT_NE(longer[2].fragment, one);
    EXPECT_EQ(longer[4].fragment, two);
    EXPECT_NE(longer[5].fragment, longer[3].fragment);

    SlicedText again = textOf({one, mark, two, mark});
    copies.makeDistinct(again);
    EXPECT_EQ(fragmentsOf(again), fragmentsOf(first));
    SlicedText longerAgain = textOf({one, mark, one, mark, two, mark});
    copies.makeDistinct(longerAgain);
    EXPECT_EQ(fragmentsOf(longerAgain), fragmentsOf(longer));
}

} // namespace
} // namespace qvnd::word
