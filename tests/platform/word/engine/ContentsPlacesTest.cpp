#include "platform/word/engine/ContentsFixture.h"

#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/MemoryFolder.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Bookmarks and what else has its place at a contents.
namespace qvnd::test {
namespace {

using namespace qvnd::word;

// --- what has its place in a contents, or next to it ------------------------------------------

class PlacesInContents : public ContentsTest {
protected:
    // Sets the bookmark and brings longer page numbers in. Answers the text under the bookmark
    // before and behind that, numbers left out.
    std::pair<std::u16string, std::u16string> textOf(Cp start, Cp end) {
        document().change().addBookmark({u"目录", start, end, 0});
        const std::u16string before = textOfBookmark();
        pages.numbers = {100, 200};
        document().SaveAs(folder.path() / "a.doc");
        return {before, textOfBookmark()};
    }
    std::u16string textOfBookmark() {
        for (const Bookmark& bookmark : document().read().bookmarks()) {
            if (bookmark.name == u"目录") {
                std::u16string text = story().text(bookmark.start, bookmark.end);
                std::erase_if(text, [](char16_t c) { return c >= u'0' && c <= u'9'; });
                return text;
            }
        }
        return u"no bookmark";
    }
    FieldSpan contents() { return contentsFields(story()).at(0); }
};

TEST_F(PlacesInContents, ABookmarkOverTheContentsStaysOverThem) {
    twoHeadings();
    addAt(2);
    const auto [before, behind] = textOf(contents().start, contents().end);
    EXPECT_EQ(before.substr(0, 4), u"\x13 TO");
    EXPECT_EQ(behind, before);
    const Bookmark& bookmark = document().read().bookmarks().back();
    EXPECT_EQ(bookmark.start, contents().start);
    EXPECT_EQ(bookmark.end, contents().end);
}

TEST_F(PlacesInContents, ABookmarkThatBeginsWithTheContentsKeepsThem) {
    twoHeadings();
    addAt(2);
    const auto [before, behind] = textOf(contents().start, contents().end + 3);
    EXPECT_EQ(behind, before);
}

TEST_F(PlacesInContents, ABookmarkWithinTheContentsKeepsItsWords) {
    twoHeadings();
    addAt(2);
    const auto second = static_cast<Cp>(text().find(u"第一节"));
    const auto [before, behind] = textOf(second, second + 3);
    EXPECT_EQ(before, u"第一节");
    EXPECT_EQ(behind, before);
}

TEST_F(PlacesInContents, APointRightBehindTheContentsStaysThere) {
    twoHeadings();
    addAt(2);
    textOf(contents().end, contents().end);
    EXPECT_EQ(document().read().bookmarks().back().start, contents().end);
}

TEST_F(PlacesInContents, TheRangeOfACommentOnThemStays) {
    twoHeadings();
    addAt(2);
    document().change().addBookmark({u"", contents().start, contents().end, 0, 7U});
    pages.numbers = {100, 200};
    document().SaveAs(folder.path() / "a.doc");
    const Bookmark& range = document().read().bookmarks().back();
    EXPECT_EQ(range.comment, 7U);
    EXPECT_EQ(range.end, contents().end);
}

TEST_F(PlacesInContents, SectionsBehindThemKeepTheirBreaks) {
    twoHeadings();
    addAt(2);
    DocumentSections& sections = document().change().sections();
    const Cp at = story().size() - 1;
    story().insertMark(at, u'\f', story().paragraphLook(at), PropertyListId::empty);
    sections.cut(at + 1, PropertyListId::empty);
    pages.numbers = {100, 200};
    document().SaveAs(folder.path() / "a.doc");
    ASSERT_EQ(sections.count(), 2U);
    EXPECT_EQ(story().at(sections.start(1) - 1), u'\f');
    EXPECT_EQ(sections.indexAt(story().size()), 1U);
}

// --- where a file has no room for more bookmarks ----------------------------------------------

class FullContents : public ContentsTest {
protected:
    // Fills the document up to `room` more bookmarks.
    void fillUpTo(std::size_t room, const std::u16string& prefix) {
        WorkingDocument& content = document().change();
        for (std::size_t left = content.roomForBookmarks(); left > room; --left) {
            const std::u16string name = prefix + digits(static_cast<std::int64_t>(left));
            content.bookmarkNames().add(name);
            content.addBookmark({name, 0, 1, 0});
        }
    }
    // A field in the last paragraph.
    void addReferenceTo(const std::u16string& name) {
        Story field;
        field.text = u"\x13 REF " + name + u" \x15";
        field.characters = {{field.size()}};
        field.paragraphs = {{field.size()}};
        field.fields = matchFields({}, field.text).marks;
        story().insertFragment(story().size() - 1, std::make_shared<const Story>(field));
    }
    std::size_t headingBookmarks() {
        const auto& all = document().read().bookmarks();
        return static_cast<std::size_t>(std::count_if(
            all.begin(), all.end(), [](const Bookmark& b) { return b.name.starts_with(u"_Toc"); }));
    }
};

TEST_F(FullContents, AHeadingWithoutABookmarkIsListedWithoutNumberAndLinkAndTold) {
    twoHeadings();
    fillUpTo(1, u"书签");
    addAt(2);
    EXPECT_EQ(shown(), u"第一章>1|第一节|");
    EXPECT_EQ(headingBookmarks(), 1U);
    EXPECT_EQ(document().read().roomForBookmarks(), 0U);
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(report.lines,
              std::vector<std::u16string>{
                  u"a.doc: 目录中的标题 1 个没有页码和链接，一个文档最多 16380 个书签"});
    const auto memory = std::make_shared<MemoryFolder>();
    DocumentWriter(memory).saveAs("/folder/a.doc", document().read().content());
    EXPECT_TRUE(checkDocument(memory->bytes("/folder/a.doc")).empty());
}

TEST_F(FullContents, HiddenBookmarksThatNothingSpeaksOfMakeRoomForTheHeadings) {
    twoHeadings();
    fillUpTo(0, u"_Ref");
    addAt(2);
    EXPECT_EQ(shown(), u"第一章>1|第一节>1|");
    EXPECT_EQ(headingBookmarks(), 2U);
    EXPECT_EQ(document().read().roomForBookmarks(), 0U);
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(report.lines,
              std::vector<std::u16string>{u"a.doc: 隐藏的书签 2 个没有保留，目录需要它们的位置"});
}

TEST_F(FullContents, HiddenBookmarksThatAFieldOrTheContentsSpeakOfStay) {
    twoHeadings();
    addAt(2);
    document().tablesOfContents().Item(1).Delete();
    addReferenceTo(u"_Ref1");
    WorkingDocument& content = document().change();
    content.addBookmark({u"_Ref1", 0, 1, 0});
    fillUpTo(0, u"书签");
    heading(u"第二章", u'1');
    addAt(2);
    EXPECT_EQ(headingBookmarks(), 2U) << "those that the contents had before";
    const auto& all = content.bookmarks();
    EXPECT_TRUE(
        std::any_of(all.begin(), all.end(), [](const Bookmark& b) { return b.name == u"_Ref1"; }));
}

} // namespace
} // namespace qvnd::test
