#include "platform/word/layout/PagesOnDemand.h"

#include "platform/layout/PagedDocument.h"
#include "platform/word/layout/FillState.h"
#include "platform/word/layout/Strips.h"

#include <memory>
#include <random>
#include <utility>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

// What stands on a page and where.
std::u16string described(const Page& page) {
    std::u16string text = page.numberText + u":";
    for (const PlacedText& run : page.layer.texts) {
        const auto place = std::to_string(run.x) + "," + std::to_string(run.baseline);
        text += run.text + u"@" + std::u16string(place.begin(), place.end()) + u" ";
    }
    return text;
}

// Paragraphs of one to four lines that keep together in different ways, so that pages begin in
// their midst.
class OnDemand : public test::PagedDocument {
protected:
    void typeUnevenly(int count) {
        const std::vector<word::Bytes> kinds{
            {},
            withSprm8({}, sprm::PFKeepFollow, 1),
            withSprm8({}, sprm::PFKeep, 1),
            withSprm8({}, sprm::PFWidowControl, 1),
        };
        for (int i = 0; i < count; ++i) {
            std::u16string text(static_cast<std::size_t>(3 + 7 * (i % 6)), u'一');
            text += static_cast<char16_t>(u'a' + i % 26);
            type(text + u"\r", kinds[static_cast<std::size_t>(i) % kinds.size()]);
        }
    }
    std::vector<std::u16string> inOrder() {
        std::vector<std::u16string> result;
        for (const Page& page : pages()) {
            result.push_back(described(page));
        }
        return result;
    }
    PagesOnDemand& onDemand() {
        demanded = std::make_unique<PagesOnDemand>(sourceOfAll(), fonts, LayoutOptions{});
        return *demanded;
    }
    void findAll() {
        while (demanded->findNext()) {
        }
    }

    std::unique_ptr<PagesOnDemand> demanded;
};

TEST_F(OnDemand, PagesComeOutTheSameInWhateverOrderTheyAreAskedFor) {
    typeUnevenly(150);
    const auto wanted = inOrder();
    ASSERT_GT(wanted.size(), 30U);
    onDemand();
    findAll();
    ASSERT_EQ(demanded->sizes().size(), wanted.size());
    std::mt19937 random(20261122);
    for (int i = 0; i < 200; ++i) {
        const std::size_t sheet = random() % wanted.size();
        ASSERT_EQ(described(demanded->page(sheet)), wanted[sheet]) << "page " << sheet;
    }
}

TEST_F(OnDemand, PagesAreFoundOneByOneWhileOthersAreLookedAt) {
    typeUnevenly(150);
    const auto wanted = inOrder();
    onDemand();
    std::mt19937 random(7);
    std::size_t found = 0;
    while (demanded->findNext()) {
        ++found;
        ASSERT_EQ(demanded->sizes().size(), found);
        const std::size_t sheet = random() % found;
        ASSERT_EQ(described(demanded->page(sheet)), wanted[sheet]) << "page " << sheet;
    }
    EXPECT_EQ(found, wanted.size());
    EXPECT_TRUE(demanded->isWhole());
}

TEST_F(OnDemand, TheFirstPageNeedsNoOther) {
    typeUnevenly(150);
    onDemand();
    ASSERT_TRUE(demanded->findNext());
    EXPECT_EQ(demanded->sizes().size(), 1U);
    EXPECT_FALSE(demanded->isWhole());
}

TEST_F(OnDemand, AHighTableIsLaidOutAgainFromBeforeIt) {
    typeUnevenly(8);
    word::LittleEndianWriter definition;
    definition.u16(sprm::TDefTable);
    definition.u16(2 + 1 + 2 * 2);
    definition.u8(1);
    definition.u16(0);
    definition.u16(2000);
    const word::Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
    word::Bytes mark = withSprm8(inTable, sprm::PFTtp, 1);
    const word::Bytes row = definition.take();
    mark.insert(mark.end(), row.begin(), row.end());
    for (int i = 0; i < 900; ++i) {
        type(u"格");
        main.text += u"\a\a";
        main.characters.push_back({2, {}});
        main.paragraphs.push_back({2, 0, intern(inTable)});
        main.paragraphs.push_back({1, 0, intern(mark)});
    }
    type(u"尾\r");
    const auto wanted = inOrder();
    ASSERT_GT(wanted.size(), 80U);
    onDemand();
    findAll();
    for (const std::size_t sheet : {80U, 3U, 41U, 42U, 0U, 79U}) {
        EXPECT_EQ(described(demanded->page(sheet)), wanted[sheet]) << "page " << sheet;
    }
}

TEST_F(OnDemand, LinesThatAreLaidOutAgainAreToldOnce) {
    typeUnevenly(60);
    DocumentLayout lazy(sourceOfAll(), fonts, {});
    const auto start = lazy.place();
    while (lazy.nextPage()) {
    }
    const std::size_t lines = lazy.lines().size();
    lazy.goTo(*start);
    while (lazy.nextPage()) {
    }
    EXPECT_EQ(lazy.lines().size(), lines);
}

TEST_F(OnDemand, APlaceTellsHowMuchMemoryItTakes) {
    typeUnevenly(1);
    type(std::u16string(500, u'一') + u"\r");
    DocumentLayout lazy(sourceOfAll(), fonts, {});
    constexpr std::size_t any = 1'000'000;
    const std::size_t atStart = lazy.placeSize(any);
    ASSERT_TRUE(lazy.nextPage()); // the long paragraph waits for the next pages
    const std::size_t behind = lazy.placeSize(any);
    EXPECT_GT(behind, atStart + 400 * (sizeof(char16_t) + sizeof(float)));
    EXPECT_LT(lazy.placeSize(atStart), behind);
}

// Fonts that count the characters measured.
class CountingFonts : public test::FixedFonts {
public:
    double advance(FaceId face, char32_t c) override {
        ++measured;
        return FixedFonts::advance(face, c);
    }
    int measured = 0;
};

TEST_F(OnDemand, OnlyTextBesideAFrameIsComposedTwice) {
    Bytes frame = withSprm16({}, sprm::PDxaWidth, 800);
    frame = withSprm16(frame, sprm::PWHeightAbs, 0x8000 | 400); // exactly so high
    const auto measured = [&] {
        CountingFonts counting;
        sourceOfAll();
        DocumentLayout laidOut(source, counting, options);
        while (laidOut.nextPage()) {
        }
        return counting.measured;
    };
    type(u"甲乙丙丁\r");
    EXPECT_EQ(measured(), 4);
    type(u"框\r", frame);
    type(u"甲乙丙丁\r");
    EXPECT_EQ(measured(), 4 + 1 + 2 * 4);
    type(std::u16string(50, u'一') + u"\r"); // five lines, the first beside the frame
    type(u"二\r");
    EXPECT_EQ(measured(), 4 + 1 + 2 * 4 + 2 * 50 + 1);
}

TEST(PlaceSize, CountsUpToWhatGoesBeyondTheMost) {
    FillState state;
    state.page_.layer.fills.resize(2);
    const std::size_t page = sizeOf(state.page_.layer);
    const std::size_t strip = sizeOf(Strip());
    state.columns_ = {{{Strip(), 0}, {Strip(), 200}}, {{Strip(), 0}}};
    state.pending_.resize(2);
    EXPECT_EQ(sizeOf(state, 1'000'000), page + 5 * strip);
    EXPECT_EQ(sizeOf(state, page - 1), page);
    EXPECT_EQ(sizeOf(state, page), page + strip);
    EXPECT_EQ(sizeOf(state, page + 2 * strip), page + 3 * strip);
    EXPECT_EQ(sizeOf(state, page + 3 * strip), page + 4 * strip);
    EXPECT_EQ(sizeOf(state, page + 4 * strip), page + 5 * strip);
}

TEST(PlaceSize, TakesInAllThatAStripHolds) {
    Strip strip;
    const std::size_t empty = sizeOf(strip);
    std::size_t size = empty;
    const auto grownBy = [&] {
        const std::size_t before = std::exchange(size, sizeOf(strip));
        return size - before;
    };
    strip.layer.fills.resize(3);
    EXPECT_EQ(grownBy(), 3 * sizeof(Fill));
    strip.layer.rules.resize(2);
    EXPECT_EQ(grownBy(), 2 * sizeof(Rule));
    strip.layer.pictures.resize(2);
    EXPECT_EQ(grownBy(), 2 * sizeof(PlacedPicture));
    strip.layer.outlines.resize(1);
    strip.layer.outlines[0].path.lineTo({0, 0});
    strip.layer.outlines[0].path.lineTo({1, 0});
    EXPECT_EQ(grownBy(), sizeof(Outline) + 2 * sizeof(PathPoint));
    PlacedText text;
    text.text = u"一二三";
    strip.layer.texts = {text, text};
    const std::size_t texts = 2 * (sizeof(PlacedText) + 3 * (sizeof(char16_t) + sizeof(float)));
    EXPECT_EQ(grownBy(), texts);
    strip.layer.textArt.resize(1);
    strip.layer.textArt[0].texts = {text, text};
    EXPECT_EQ(grownBy(), sizeof(TextArt) + texts);
    strip.floats.resize(1);
    strip.floats[0].layer.fills.resize(1);
    EXPECT_EQ(grownBy(), sizeof(AnchoredFloat) + sizeof(Fill));
    RowParts row;
    row.frame.rules.resize(4);
    row.cells.resize(2);
    row.cells[1].strips = SharedStrips(Strips(3));
    strip.row = std::make_shared<const RowParts>(row);
    EXPECT_EQ(grownBy(), sizeof(RowParts) + 4 * sizeof(Rule) + 3 * empty);
}

TEST_F(OnDemand, TheNumberOfPagesIsShownOnceTheyAreCounted) {
    paragraphs(25);
    putFieldFooter(u"NUMPAGES", 0x1A);
    onDemand();
    ASSERT_TRUE(demanded->findNext());
    EXPECT_EQ(textOf(demanded->page(0))[0], u'1');
    EXPECT_EQ(demanded->round(), 1);
    findAll();
    EXPECT_EQ(demanded->round(), 2);
    ASSERT_EQ(demanded->sizes().size(), 3U);
    EXPECT_EQ(textOf(demanded->page(0))[0], u'3');
}

TEST_F(OnDemand, EachPageTellsItsPaper) {
    type(u"甲\r");
    nextSection(word::withSprm16(section(), sprm::SXaPage, 6000));
    type(u"乙\r");
    onDemand();
    findAll();
    EXPECT_EQ(demanded->sizes(), (std::vector<PageSize>{{4000, 4000}, {6000, 4000}}));
}

TEST_F(OnDemand, PagesComeOneByOneAsTheyAreAskedFor) {
    paragraphs(50);
    document.main = word::slicesOf(main);
    source = sourceOf(document);
    DocumentLayout lazy(source, fonts, {});
    ASSERT_TRUE(lazy.nextPage());
    EXPECT_LT(lazy.lines().back().at, 40U);
}

TEST_F(OnDemand, ALongTableIsComposedRowByRow) {
    const word::Bytes inTable = word::withSprm8({}, sprm::PFInTable, 1);
    const word::Bytes mark = word::withSprm8(inTable, sprm::PFTtp, 1);
    for (int i = 0; i < 200; ++i) {
        main.text += u"甲\a\a";
        main.paragraphs.push_back({2, 0, intern(inTable)});
        main.paragraphs.push_back({1, 0, intern(mark)});
    }
    main.characters = {{600, {}}};
    type(u"末\r");
    document.main = word::slicesOf(main);
    source = sourceOf(document);
    DocumentLayout lazy(source, fonts, {});
    ASSERT_TRUE(lazy.nextPage());
    EXPECT_LT(lazy.placeSize(1000000), 20000U) << "what is composed and stands on no page yet";
    int count = 1;
    while (lazy.nextPage()) {
        ++count;
    }
    EXPECT_EQ(count, 21);
}

TEST_F(OnDemand, BehindTheLastPageNoneIsFoundHoweverOftenItIsAskedFor) {
    typeUnevenly(20);
    onDemand();
    findAll();
    const std::size_t count = demanded->sizes().size();
    EXPECT_FALSE(demanded->findNext());
    EXPECT_FALSE(demanded->findNext());
    EXPECT_EQ(demanded->sizes().size(), count);
}

TEST_F(OnDemand, AFrameThatBeginsASectionStandsOnItsPageAloneHoweverPagesAreAskedFor) {
    paragraphs(3);
    nextSection(section());
    type(u"框\r", withSprm16({}, sprm::PDxaWidth, 800));
    paragraphs(3);
    const auto expected = inOrder();
    ASSERT_EQ(expected.size(), 2U);
    onDemand();
    ASSERT_TRUE(demanded->findNext());
    EXPECT_EQ(described(demanded->page(0)), expected[0]);
    findAll();
    EXPECT_EQ(described(demanded->page(1)), expected[1]);
    EXPECT_EQ(described(demanded->page(0)), expected[0]);
}

TEST_F(OnDemand, PagesWhoseHeadersShowTheirHeadingsAreTheSameInAnyOrder) {
    constexpr std::uint8_t styleField = 0x0A;
    word::Story header = story(u"\x13STYLEREF 1\x14"
                               u"旧\x15\r");
    header.fields = {{0, 0x13, styleField}, {11, 0x14, 0}, {13, 0x15, 0}};
    putHeader(word::HeaderKind::oddHeader, header);
    typeUnevenly(30);
    nextSection(withSprm8(section(), sprm::SBkc, 0));
    document.headers[1][static_cast<std::size_t>(word::HeaderKind::oddHeader)] =
        word::slicesOf(story(u"后\r"));
    typeUnevenly(30);
    for (std::size_t i = 0; i < main.paragraphs.size(); i += 7) {
        main.paragraphs[i].style = 1;
    }
    const auto expected = inOrder();
    ASSERT_GT(expected.size(), 9U);
    onDemand();
    findAll();
    for (std::size_t sheet = expected.size(); sheet-- > 0;) {
        EXPECT_EQ(described(demanded->page(sheet)), expected[sheet]);
    }
}

} // namespace
} // namespace qvnd::layout
