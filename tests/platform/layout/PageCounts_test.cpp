#include "platform/word/layout/PageCounts.h"

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/text/Fields.h"

namespace qvnd::layout {
namespace {

PageCounts counts(int total, const std::vector<int>& ofSections = {}) {
    PageCounts result;
    result.total = total;
    result.ofSections = ofSections;
    return result;
}

TEST(PageCounts, AreAsWideWhereEachHasAsManyDigits) {
    EXPECT_TRUE(areAsWide(counts(1), counts(9)));
    EXPECT_FALSE(areAsWide(counts(9), counts(10)));
    EXPECT_FALSE(areAsWide(counts(100), counts(99)));
    EXPECT_TRUE(areAsWide(counts(5, {10, 3}), counts(5, {99, 9})));
    EXPECT_FALSE(areAsWide(counts(5, {10, 3}), counts(5, {9, 3})));
    EXPECT_FALSE(areAsWide(counts(5, {3, 10}), counts(5, {3, 9})));
    EXPECT_TRUE(areAsWide(counts(5, {3}), counts(5, {3, 9}))) << "a section not counted has one";
    EXPECT_FALSE(areAsWide(counts(5, {3, 10}), counts(5, {3})));
    EXPECT_FALSE(areAsWide(counts(5), counts(5, {3, 10})));
}

TEST(PageCounts, AreNotAsWideWhereNotesStandOnOtherPages) {
    PageCounts known = counts(5);
    known.noteSheets = {0, 1};
    EXPECT_FALSE(areAsWide(counts(5), known)) << "their numbers may have other digits";
    EXPECT_TRUE(areAsWide(known, known));
}

class CountedPages : public test::PagedDocument {
protected:
    // A field of that kind, in whatever text.
    static word::Story withField(std::uint8_t kind) {
        word::Story story;
        story.text = u"\x13 X \x14"
                     u"9\x15\r";
        story.fields = {
            {0, word::fieldBegin, kind}, {4, word::fieldSeparator, 0}, {6, word::fieldEnd, 0}};
        return story;
    }
    PageCounter counter(std::size_t sections = 2) { return {sourceOfAll(), sections}; }
};

TEST_F(CountedPages, AreShownByFieldsOfAnyText) {
    EXPECT_FALSE(counter().isShown());
    constexpr std::uint8_t pageNumber = 0x21;
    main = withField(pageNumber);
    EXPECT_FALSE(counter().isShown());
    for (const std::uint8_t kind : {pageCountField, sectionPagesField}) {
        main = withField(kind);
        EXPECT_TRUE(counter().isShown());
        main = {};
        document.headers.assign(1, {});
        document.headers[0][3] = word::slicesOf(withField(kind));
        EXPECT_TRUE(counter().isShown());
        document.headers.clear();
        document.tables.sideStories = {
            {nullptr, true, {}, {}},
            {std::make_shared<const word::Story>(withField(kind)), true, {}, {}}};
        EXPECT_TRUE(counter().isShown());
        document.tables.sideStories.clear();
        document.tables.shapeTexts = {{nullptr, {}},
                                      {std::make_shared<const word::Story>(withField(kind)), {}}};
        EXPECT_TRUE(counter().isShown());
        document.tables.shapeTexts.clear();
        EXPECT_FALSE(counter().isShown());
    }
}

TEST_F(CountedPages, AreThoseUpToTheLastAndThoseOfEachSection) {
    main = withField(pageCountField);
    PageCounter total = counter();
    total.add(0, 2);
    total.add(1, 6);
    total.add(1, 5);
    EXPECT_EQ(total.corrected(counts(3))->total, 7);
    EXPECT_TRUE(total.corrected(counts(3, {4, 4}))->ofSections == (std::vector<int>{4, 4}))
        << "which nothing shows";
    EXPECT_FALSE(total.corrected(counts(7)));
    main = withField(sectionPagesField);
    PageCounter each = counter();
    each.add(0, 1);
    each.add(0, 0);
    each.add(1, 4);
    each.add(1, 6);
    each.add(1, 4);
    EXPECT_EQ(each.corrected(counts(3))->total, 3);
    EXPECT_EQ(each.corrected(counts(3))->ofSections, (std::vector<int>{2, 3}));
    EXPECT_FALSE(each.corrected(counts(3, {2, 3})));
}

TEST_F(CountedPages, AreEstimatedAsOneForEachSixHundredCharactersAndOneMore) {
    type(std::u16string(598, u'x') + u"\r");
    EXPECT_EQ(likelyPages(sourceOfAll()), 1);
    type(u"\r");
    EXPECT_EQ(likelyPages(sourceOfAll()), 2);
}

} // namespace
} // namespace qvnd::layout
