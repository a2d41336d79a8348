#include "platform/word/docfile/text/BookmarkTables.h"

#include "platform/word/docfile/format/Sttb.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

BookmarkTableViews viewsOf(const BookmarkTables& tables) {
    return {tables.names, tables.starts, tables.ends};
}

TEST(BookmarkTables, NestedAndCrossingBookmarksKeepTheirEnds) {
    const std::vector<Bookmark> bookmarks{
        {u"late", 50, 60, 0}, {u"outer", 1, 90, 3}, {u"inner", 5, 9, 0}, {u"point", 5, 5, 0}};
    Remarks remarks;

    const auto read = decodeBookmarks(viewsOf(encodeBookmarks(bookmarks, 101)), 100, 100, remarks);

    ASSERT_EQ(read.size(), 4U);
    EXPECT_EQ(read[0].name, u"outer");
    EXPECT_EQ(read[0].end, 90U);
    EXPECT_EQ(read[0].flags, 3);
    EXPECT_EQ(read[1].name, u"inner");
    EXPECT_EQ(read[1].end, 9U);
    EXPECT_EQ(read[2].name, u"point");
    EXPECT_EQ(read[2].end, 5U);
    EXPECT_EQ(read[3].name, u"late");
    EXPECT_TRUE(remarks.empty());
}

TEST(BookmarkTables, OneOfAHeaderThatEndsInFrontOfItsStartKeepsItsStart) {
    BookmarkTables tables = encodeBookmarks(std::vector<Bookmark>{{u"header", 150, 160, 0}}, 200);
    const auto endOf = [&](std::uint8_t end) {
        tables.ends[0] = end;
        Remarks remarks;
        return decodeBookmarks(viewsOf(tables), 100, 200, remarks).at(0).end;
    };
    EXPECT_EQ(endOf(151), 151U);
    EXPECT_EQ(endOf(150), 150U);
    EXPECT_EQ(endOf(149), 150U);
    EXPECT_EQ(endOf(120), 150U);
}

TEST(BookmarkTables, EncodingWhatWasDecodedGivesEqualBytes) {
    const BookmarkTables first =
        encodeBookmarks(std::vector<Bookmark>{{u"b", 7, 9, 1}, {u"a", 3, 20, 0}}, 30);
    Remarks remarks;

    const BookmarkTables again =
        encodeBookmarks(decodeBookmarks(viewsOf(first), 30, 30, remarks), 30);

    EXPECT_EQ(again.names, first.names);
    EXPECT_EQ(again.starts, first.starts);
    EXPECT_EQ(again.ends, first.ends);
}

TEST(BookmarkTables, NoBookmarkIsNoTable) {
    EXPECT_TRUE(encodeBookmarks({}, 10).names.empty());
    EXPECT_TRUE(encodeBookmarks({}, 10).starts.empty());
    EXPECT_TRUE(encodeBookmarks({}, 10).ends.empty());
}

TEST(BookmarkTables, BookmarkOutsideOfAllTextIsLeftOutAndNamed) {
    const BookmarkTables tables =
        encodeBookmarks(std::vector<Bookmark>{{u"in", 1, 2, 0}, {u"header", 150, 160, 0}}, 200);
    Remarks remarks;

    EXPECT_EQ(decodeBookmarks(viewsOf(tables), 100, 100, remarks).size(), 1U);
    EXPECT_EQ(remarks.at(0), u"书签“header”不在任何文字中，未读入");
}

TEST(BookmarkTables, BookmarksBehindTheMainTextComeInAsLongAsTheyLieInTheTextOfTheOtherParts) {
    const std::vector<Bookmark> all{{u"main", 1, 2, 0},
                                    {u"aside", 150, 200, 4},
                                    {u"across", 90, 160, 0},
                                    {u"out", 190, 201, 0}};
    Remarks remarks;

    const auto read = decodeBookmarks(viewsOf(encodeBookmarks(all, 300)), 100, 200, remarks);

    const std::vector<Bookmark> expected{
        {u"main", 1, 2, 0}, {u"across", 90, 90, 0}, {u"aside", 150, 200, 4}, {u"out", 190, 190, 0}};
    EXPECT_EQ(read, expected);
    EXPECT_EQ(remarks.size(), 2U);
}

TEST(BookmarkTables, BookmarksOfTextsAsideAreCountedThroughAllText) {
    Story note;
    note.text = u"abcdef\r";
    note.characters = {{7}};
    note.paragraphs = {{7}};
    note.bookmarks = {{u"whole", 0, 7, 0}, {u"cut", 2, 5, 3}, {u"point", 4, 4, 0}};
    const auto fragment = std::make_shared<const Story>(note);
    const SlicedText text{{fragment, 0, 3}, {fragment, 4, 3}};

    const std::vector<Bookmark> expected{
        {u"whole", 100, 106, 0}, {u"cut", 102, 104, 3}, {u"point", 103, 103, 0}};
    EXPECT_EQ(bookmarksAside(text, 100), expected);
}

TEST(BookmarkTables, BookmarkWhoseEndIsLostStandsAtItsStartAndIsNamed) {
    Sttb names;
    names.entries = {{u"lost", {}}, {u"kept", {}}};
    const Bytes encodedNames = encodeSttb(names);
    const Bytes starts = hex("01000000 02000000 09000000  0700 0000  0000 0000");
    const Bytes ends = hex("05000000 06000000 09000000");
    Remarks remarks;

    const auto read = decodeBookmarks({encodedNames, starts, ends}, 100, 100, remarks);

    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].name, u"lost");
    EXPECT_EQ(read[0].start, 1U);
    EXPECT_EQ(read[0].end, 1U);
    EXPECT_EQ(read[1].end, 5U);
    ASSERT_EQ(remarks.size(), 1U);
    EXPECT_EQ(remarks[0], u"书签“lost”的结束位置已损坏，只保留了起点");
}

TEST(BookmarkTables, BookmarkWhoseEndLiesBeforeItOrBehindTheMainTextStandsAtItsStart) {
    for (const Cp end : {Cp{3}, Cp{101}}) {
        const BookmarkTables tables =
            encodeBookmarks(std::vector<Bookmark>{{u"mark", 4, end, 0}}, 200);
        Remarks remarks;
        const auto read = decodeBookmarks(viewsOf(tables), 100, 100, remarks);
        ASSERT_EQ(read.size(), 1U);
        EXPECT_EQ(read[0].end, 4U);
        EXPECT_EQ(remarks.size(), 1U);
    }
    Remarks remarks;
    const auto last = std::vector<Bookmark>{{u"at the end", 100, 100, 0}, {u"behind", 100, 101, 0}};
    EXPECT_EQ(decodeBookmarks(viewsOf(encodeBookmarks(last, 200)), 100, 100, remarks).size(), 1U);
}

TEST(BookmarkTables, NamesAreNeitherEmptyNorLongerThanTheFormatAllows) {
    const BookmarkTables tables = encodeBookmarks(
        std::vector<Bookmark>{{u"", 1, 2, 0}, {std::u16string(60, u'x'), 3, 4, 0}}, 20);
    Remarks remarks;

    const auto read = decodeBookmarks(viewsOf(tables), 10, 10, remarks);

    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].name, std::u16string(40, u'x'));
    EXPECT_EQ(remarks.size(), 1U);
}

TEST(BookmarkTables, WhereThereIsNoRoomThoseThatGoFirstGoAndThenTheLast) {
    const std::vector<Bookmark> all{
        {u"a", 0, 1, 0},     {u"_Ref1", 0, 1, 0}, {u"b", 0, 1, 0},
        {u"_Ref2", 0, 1, 0}, {u"", 0, 1, 0, 7}, // the range of a comment
    };
    const auto namesWithin = [&](std::size_t room) {
        std::vector<const Bookmark*> places;
        places.reserve(all.size());
        for (const Bookmark& bookmark : all) {
            places.push_back(&bookmark);
        }
        const std::vector<bool> stays = bookmarksWithin(room, places, isHidden);
        std::u16string names;
        for (std::size_t i = 0; i < all.size(); ++i) {
            names += stays.at(i) ? all[i].name + u' ' : u"";
        }
        return names;
    };
    EXPECT_EQ(namesWithin(4), u"a _Ref1 b _Ref2  ");
    EXPECT_EQ(namesWithin(3), u"a _Ref1 b  ");
    EXPECT_EQ(namesWithin(2), u"a b  ");
    EXPECT_EQ(namesWithin(1), u"a  ");
}

TEST(BookmarkTables, ThePlaceOfThePicturesOfBulletsTakesNoneOfTheRoom) {
    const Bookmark pictures{u"_PictureBullets", 5, 6, 0};
    const Bookmark other{u"_Ref1", 0, 1, 0};
    const Bookmark second = pictures; // of a damaged table: only the first is their place
    const std::vector<const Bookmark*> all{&other, &pictures, &second};
    EXPECT_EQ(bookmarksWithin(2, all, isHidden), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(bookmarksWithin(1, all, isHidden), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(bookmarksWithin(0, all, isHidden), (std::vector<bool>{false, true, false}));
}

TEST(BookmarkTables, OnesBeyondWhatADocumentHoldsAreLeftOutAndCounted) {
    std::vector<Bookmark> bookmarks(mostBookmarks + 2, Bookmark{u"_x", 1, 2, 0});
    bookmarks.back().name = u"last";
    const BookmarkTables tables = encodeBookmarks(bookmarks, 20);
    Remarks remarks;

    const auto read = decodeBookmarks(viewsOf(tables), 10, 10, remarks);

    ASSERT_EQ(read.size(), 16379U);
    EXPECT_EQ(read.back().name, u"last");
    EXPECT_EQ(remarks.at(0),
              u"有 3 个书签未读入，一个文档最多 16380 个书签，其中 1 个留给项目符号的图片");
}

TEST(BookmarkTables, SurplusNamesAreTold) {
    Sttb names;
    names.entries = {{u"only a name", {}}};
    Remarks remarks;

    EXPECT_TRUE(decodeBookmarks({encodeSttb(names), {}, {}}, 100, 100, remarks).empty());
    EXPECT_EQ(remarks.at(0), u"书签表的名称与位置个数不同，多出的未读入");
}

} // namespace
} // namespace qvnd::word
