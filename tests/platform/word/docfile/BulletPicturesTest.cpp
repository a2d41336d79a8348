#include "platform/word/docfile/text/BulletPictures.h"

#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/format/Fib.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <string_view>

namespace qvnd::word {
namespace {

using test::ContentBuilder;
using test::plain;

Bytes pictureOfSize(std::uint32_t size) {
    constexpr unsigned headSize = 68; // of PICF
    LittleEndianWriter picture;
    picture.u32(size);
    picture.u16(headSize);
    picture.zeros(size - picture.position());
    return picture.take();
}

class BulletPictures : public testing::Test {
protected:
    // Gives the document one more picture for bullets.
    void addPicture(std::uint32_t size) {
        DocumentTables& tables = builder.content.tables;
        const auto index = static_cast<std::uint32_t>(tables.blobs.size());
        tables.blobs.push_back(std::make_shared<const Bytes>(pictureOfSize(size)));
        tables.bulletPictures.push_back(tables.lists.intern(pictureAt(index)));
    }
    static Bytes pictureAt(std::uint32_t index) {
        return withSprm32(withSprm8(withSprm8({}, sprm::CFVanish, 1), sprm::CFSpec, 1),
                          sprm::CPicLocation, index);
    }
    void saveAs() { writer.saveAs(path, builder.content); }
    void save() { writer.save(builder.content); }
    const Bytes& file() const { return folder->bytes(path); }
    DocumentContent read() const {
        const std::vector<Finding> findings = checkDocument(file());
        EXPECT_TRUE(findings.empty()) << findings.front().rule;
        return readDocument(file());
    }
    // The sizes of the pictures as they came back, one after the other.
    static std::vector<std::size_t> sizesOf(const DocumentContent& document) {
        std::vector<std::size_t> sizes;
        for (const PropertyListId id : document.tables.bulletPictures) {
            const auto at = findSprm(document.tables.lists[id], sprm::CPicLocation);
            const std::uint32_t index = LittleEndianReader(at.value().operand, "index").u32();
            sizes.push_back(document.tables.blobs.at(index)->size());
        }
        return sizes;
    }
    // Brings the builder's text, as one story, under a bookmark of the fixed name.
    std::vector<PropertyListId> take(Story& main, Cp start, Cp end) {
        body.bookmarks.push_back({u"_PictureBullets", start, end});
        main = *joined(builder.content.main);
        body.sections = builder.content.sections;
        return takeBulletPictures(main, body, builder.content.tables.lists, remarks);
    }

    std::shared_ptr<test::MemoryFolder> folder = std::make_shared<test::MemoryFolder>();
    const std::filesystem::path path = "/folder/out.doc";
    DocumentWriter writer{folder};
    ContentBuilder builder;
    DocumentBody body;
    Remarks remarks;
};

TEST_F(BulletPictures, StandHiddenInTheFileAndInNoStory) {
    builder.add({plain(u"text\r")});
    addPicture(100);
    addPicture(200);
    saveAs();
    const CompoundFile compound = CompoundFile::over(file());
    EXPECT_EQ(readFib(compound.stream(u"WordDocument")).ccp.text, 8U) << "two more than the text";
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, u"text\r\r");
    EXPECT_EQ(sizesOf(document), (std::vector<std::size_t>{100, 200}));
    EXPECT_TRUE(document.bookmarks.empty());
    EXPECT_EQ(document.sections.back().length, 6U);
}

TEST_F(BulletPictures, ThoseOfEverySaveComeBackInTheirOrder) {
    builder.add({plain(u"one\r")});
    saveAs();
    addPicture(100);
    builder.add({plain(u"two\r")});
    save();
    EXPECT_EQ(sizesOf(read()), (std::vector<std::size_t>{100}));
    addPicture(300);
    addPicture(200);
    builder.add({plain(u"three\r")});
    save();
    builder.add({plain(u"four\r")});
    save();
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, u"one\rtwo\rthree\rfour\r\r");
    EXPECT_EQ(sizesOf(document), (std::vector<std::size_t>{100, 300, 200}));
}

TEST_F(BulletPictures, BookmarksKeepTheirPlacesToTheEndOfTheText) {
    builder.add({plain(u"text\r")});
    addPicture(100);
    builder.content.bookmarks = {{u"a", 0, 4}, {u"b", 4, 5}, {u"c", 5, 6}, {u"d", 6, 6}};
    saveAs();
    const DocumentContent document = read();
    ASSERT_EQ(document.bookmarks.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(document.bookmarks[i].start, builder.content.bookmarks[i].start) << i;
        EXPECT_EQ(document.bookmarks[i].end, builder.content.bookmarks[i].end) << i;
    }
}

TEST_F(BulletPictures, HaveTheirPlaceInADocumentWithAsManyBookmarksAsItMayHave) {
    builder.add({plain(u"text\r")});
    addPicture(100);
    for (std::size_t i = 0; i < mostOwnBookmarks; ++i) {
        const std::u16string name = u"m" + digits(static_cast<std::int64_t>(i));
        builder.content.bookmarks.push_back({name, 0, 1});
    }
    saveAs();
    const DocumentContent document = read();
    EXPECT_EQ(document.bookmarks.size(), 16379U);
    EXPECT_EQ(document.tables.bulletPictures.size(), 1U);
}

TEST_F(BulletPictures, AreTakenOutOfTheMiddleWithTheirSectionAndWhatSpeaksOfIt) {
    const Bytes picture = pictureAt(0);
    builder.add({plain(u"ab"), {u"\x01\x01", picture}, plain(u"cd\r")});
    body.bookmarks = {{u"before", 0, 2}, {u"over", 1, 5}, {u"within", 3, 3}, {u"behind", 4, 6}};
    Story main;
    EXPECT_EQ(take(main, 2, 4).size(), 2U);
    EXPECT_EQ(main.text, u"abcd\r\r");
    EXPECT_EQ(main.paragraphs.front().length, 5U);
    EXPECT_EQ(body.sections.back().length, 6U);
    ASSERT_EQ(body.bookmarks.size(), 4U);
    const std::vector<std::pair<Cp, Cp>> places{{0, 2}, {1, 3}, {2, 2}, {2, 4}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(std::pair(body.bookmarks[i].start, body.bookmarks[i].end), places[i]) << i;
    }
}

TEST_F(BulletPictures, TheRangeOfACommentIsNoPlaceOfTheirsWhateverItIsCalled) {
    builder.add({{u"\x01", pictureAt(0)}, plain(u"ab\r")});
    body.bookmarks = {{u"_PictureBullets", 0, 1, 0, 7U}};
    Story main = *joined(builder.content.main);
    body.sections = builder.content.sections;
    EXPECT_TRUE(takeBulletPictures(main, body, builder.content.tables.lists, remarks).empty());
    EXPECT_EQ(main.text, u"\x01"
                         u"ab\r\r");
    EXPECT_EQ(body.bookmarks.size(), 1U);
}

TEST_F(BulletPictures, AreSpecialCharactersThatNameAPicture) {
    EXPECT_TRUE(isBulletPicture(pictureAt(0)));
    EXPECT_FALSE(isBulletPicture(withSprm32({}, sprm::CPicLocation, 0)));
    EXPECT_FALSE(isBulletPicture(withSprm8({}, sprm::CFSpec, 1)));
}

TEST_F(BulletPictures, ABookmarkOverTextGoesAndTheTextStays) {
    builder.add({plain(u"a"), {u"\x01", pictureAt(0)}, plain(u"b\r")});
    for (const auto& [start, end] : {std::pair<Cp, Cp>{0, 2}, {0, 1}, {2, 2}}) {
        body = {};
        remarks.clear();
        Story main;
        EXPECT_TRUE(take(main, start, end).empty());
        EXPECT_EQ(main.text, u"a\x01"
                             u"b\r\r");
        EXPECT_TRUE(body.bookmarks.empty());
        EXPECT_EQ(remarks.size(), start < end ? 1U : 0U);
    }
}

TEST_F(BulletPictures, APlaceThatReachesTooFarGivesThePicturesAndLeavesTheText) {
    builder.add({plain(u"a"), {u"\x01\x01", pictureAt(0)}, plain(u"b\r")});
    Story main;
    EXPECT_EQ(take(main, 1, 5).size(), 2U);
    EXPECT_EQ(main.text, u"ab\r\r");
    EXPECT_TRUE(remarks.empty()) << "no picture is lost";
}

TEST_F(BulletPictures, ADamagedOneKeepsItsPlaceAmongTheOthers) {
    const Bytes hidden = withSprm8({}, sprm::CFVanish, 1);
    builder.add({{u"\x01", pictureAt(0)},
                 {u"  ", hidden},
                 {u"\x01", pictureAt(1)},
                 {u" ", hidden},
                 plain(u"b\r")});
    Story main;
    const std::vector<PropertyListId> pictures = take(main, 0, 5);
    EXPECT_EQ(main.text, u" b\r\r") << "behind the last one nothing keeps a place";
    ASSERT_EQ(pictures.size(), 4U);
    const PropertyLists& lists = builder.content.tables.lists;
    for (const auto& [at, shows] : {std::pair(0U, true), {1, false}, {2, false}, {3, true}}) {
        EXPECT_EQ(isBulletPicture(lists[pictures[at]]), shows) << at;
    }
}

TEST_F(BulletPictures, WithTextBetweenThemTheOnesBehindItAreLostAndTold) {
    builder.add({{u"\x01", pictureAt(0)}, plain(u"b"), {u"\x01", pictureAt(1)}, plain(u"\r")});
    Story main;
    EXPECT_EQ(take(main, 0, 3).size(), 1U);
    EXPECT_EQ(main.text, u"b\x01\r\r");
    EXPECT_EQ(remarks, Remarks{u"项目符号的图片已损坏，未能全部读出。"});
}

TEST_F(BulletPictures, APlaceWithoutAPictureComesBackFromEverySave) {
    builder.add({plain(u"text\r")});
    addPicture(100);
    DocumentTables& tables = builder.content.tables;
    tables.bulletPictures.push_back(tables.lists.intern(withSprm8({}, sprm::CFVanish, 1)));
    addPicture(200);
    saveAs();
    for (int pass = 0; pass < 2; ++pass) {
        const DocumentContent document = read();
        EXPECT_EQ(joined(document.main)->text, u"text\r\r");
        const auto& pictures = document.tables.bulletPictures;
        ASSERT_EQ(pictures.size(), 3U);
        EXPECT_TRUE(isBulletPicture(document.tables.lists[pictures[0]]));
        EXPECT_FALSE(isBulletPicture(document.tables.lists[pictures[1]]));
        EXPECT_TRUE(isBulletPicture(document.tables.lists[pictures[2]]));
        DocumentWriter(folder).saveAs(path, document);
    }
}

TEST_F(BulletPictures, ACharacterWithoutAPictureIsNone) {
    builder.add({{u"\x01", withSprm8({}, sprm::CFSpec, 1)}, plain(u"\r")});
    Story main;
    EXPECT_TRUE(take(main, 0, 1).empty());
    EXPECT_EQ(main.text, u"\x01\r\r");
    EXPECT_EQ(remarks.size(), 1U);
}

} // namespace
} // namespace qvnd::word
