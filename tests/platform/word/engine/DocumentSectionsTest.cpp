#include "platform/word/engine/DocumentSections.h"

#include "platform/word/docfile/document/SlicedText.h"

#include <gtest/gtest.h>

#include <string>

namespace qvnd::word {
namespace {

constexpr auto header = HeaderKind::oddHeader;
constexpr auto footer = HeaderKind::oddFooter;

SlicedText textOf(const std::u16string& text) {
    Story story;
    story.text = text + u"\r";
    story.characters = {{story.size(), PropertyListId::empty}};
    story.paragraphs = {{story.size(), 0, PropertyListId::empty}};
    return slicesOf(std::move(story));
}

// Sections of ten characters each, with these headers.
class SectionsOfADocument : public testing::Test {
protected:
    DocumentSections& make(const std::vector<std::u16string>& texts) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            runs.push_back({10, PropertyListId(i + 1)});
            headers.emplace_back();
            if (!texts[i].empty()) {
                headerOf(i) = textOf(texts[i]);
            }
        }
        sections.emplace(runs, headers);
        return *sections;
    }
    SlicedText& headerOf(std::size_t section, HeaderKind kind = header) {
        return headers[section][static_cast<std::size_t>(kind)];
    }
    // What each section has as its header, "-" for none.
    std::u16string written() {
        std::u16string all;
        for (std::size_t i = 0; i < headers.size(); ++i) {
            const std::u16string text = headerOf(i).empty() ? u"-\r" : joined(headerOf(i))->text;
            all += text.substr(0, text.size() - 1);
        }
        return all;
    }
    std::vector<Cp> lengths() const {
        std::vector<Cp> result;
        result.reserve(runs.size());
        for (const SectionRun& run : runs) {
            result.push_back(run.length);
        }
        return result;
    }
    std::vector<std::size_t> owners() const {
        std::vector<std::size_t> result;
        result.reserve(runs.size());
        for (std::size_t i = 0; i < runs.size(); ++i) {
            result.push_back(sections->headerOwner(i, header));
        }
        return result;
    }

    std::vector<SectionRun> runs;
    std::vector<HeaderSet> headers;
    std::optional<DocumentSections> sections;
};

using Lengths = std::vector<Cp>;
using Owners = std::vector<std::size_t>;

TEST_F(SectionsOfADocument, HoldTheCharactersFromTheirStartOn) {
    const DocumentSections& made = make({u"", u"", u""});
    EXPECT_EQ(made.indexAt(0), 0U);
    EXPECT_EQ(made.indexAt(9), 0U);
    EXPECT_EQ(made.indexAt(10), 1U);
    EXPECT_EQ(made.indexAt(20), 2U);
    EXPECT_EQ(made.indexAt(99), 2U);
    EXPECT_EQ(made.start(0), 0U);
    EXPECT_EQ(made.start(1), 10U);
    EXPECT_EQ(made.start(2), 20U);
}

TEST_F(SectionsOfADocument, ShowTheHeaderOfTheNearestOneInFrontThatHasOne) {
    make({u"", u"a", u"", u"b"});
    EXPECT_EQ(owners(), (Owners{0, 1, 1, 3}));
    EXPECT_EQ(sections->headerOwner(3, footer), 0U);
}

TEST_F(SectionsOfADocument, AHeaderThatIsBroughtCountsUpToTheSectionBehind) {
    make({u"a", u"", u"", u""});
    sections->bringHeader(1, 3, header, textOf(u"b"));
    EXPECT_EQ(owners(), (Owners{0, 1, 1, 0}));
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"ab-a");
}

TEST_F(SectionsOfADocument, BehindTwoDocumentsWithHeadersTheOneInFrontOfBothIsShown) {
    make({u"a", u"", u"", u"", u""});
    sections->bringHeader(1, 2, header, textOf(u"b"));
    sections->bringHeader(3, 4, header, textOf(u"c"));
    EXPECT_EQ(owners(), (Owners{0, 1, 0, 3, 0}));
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"abaca");
}

TEST_F(SectionsOfADocument, BehindAHeaderThatIsBroughtTheNearestOfTheDocumentIsShown) {
    make({u"a", u"d", u"", u""});
    sections->bringHeader(2, 3, header, textOf(u"b"));
    EXPECT_EQ(owners(), (Owners{0, 1, 2, 1}));
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"adbd");
}

TEST_F(SectionsOfADocument, BehindAHeaderThatIsBroughtAPlaceWithoutAnyIsBlank) {
    make({u"", u"", u""});
    sections->bringHeader(1, 2, header, textOf(u"b"));
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"-bx");
}

TEST_F(SectionsOfADocument, TheHeaderOfASectionThatADocumentIsPutIntoGoesBehindIt) {
    make({u"", u"a", u""});
    sections->bringHeader(1, 2, header, textOf(u"b"));
    EXPECT_EQ(written(), u"-ba");
    EXPECT_EQ(owners(), (Owners{0, 1, 2}));
}

TEST_F(SectionsOfADocument, AHeaderOfTheSectionBehindStaysItsOwn) {
    make({u"", u"a", u"c"});
    sections->bringHeader(1, 2, header, textOf(u"b"));
    EXPECT_EQ(written(), u"-bc");
}

TEST_F(SectionsOfADocument, WhatWasBroughtBeforeGoesNotBehindWhatIsBroughtNow) {
    make({u"a", u"", u""});
    sections->bringHeader(1, 2, header, textOf(u"b"));
    sections->bringHeader(1, 2, header, textOf(u"c"));
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"aca");
}

TEST_F(SectionsOfADocument, WhatTheySayAgainIsWrittenWhereItHasChanged) {
    make({u"a", u"", u""});
    sections->bringHeader(1, 2, header, textOf(u"b"));
    sections->fillReturned(textOf(u"x"));
    const auto shared = headerOf(0).front().fragment;
    EXPECT_EQ(headerOf(2).front().fragment, shared);
    headerOf(0) = textOf(u"n");
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"nbn");
    headerOf(0) = textOf(u"new");
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(written(), u"newbnew");
    headerOf(0).front().length = 2; // another part of the same text
    headerOf(0).front().begin = 2;
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(headerOf(2).front().length, 2U);
    EXPECT_EQ(headerOf(2).front().begin, 2U);
    headerOf(0).front().begin = 1;
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(headerOf(2).front().begin, 1U);
    headerOf(0).front().length = 3;
    sections->fillReturned(textOf(u"x"));
    EXPECT_EQ(headerOf(2).front().length, 3U);
}

TEST_F(SectionsOfADocument, ACutLeavesTheHeadersInFront) {
    make({u"a", u"b"});
    sections->cut(10, PropertyListId{9});
    EXPECT_EQ(lengths(), (Lengths{10, 10})) << "nothing stands in front of it";
    sections->cut(14, PropertyListId{9});
    EXPECT_EQ(lengths(), (Lengths{10, 4, 6}));
    EXPECT_EQ(runs[1].properties, PropertyListId{9});
    EXPECT_EQ(runs[2].properties, PropertyListId{2});
    EXPECT_EQ(written(), u"ab-");
    EXPECT_EQ(owners(), (Owners{0, 1, 1}));
}

TEST_F(SectionsOfADocument, GrowByWhatIsInsertedIntoThem) {
    make({u"", u""});
    sections->inserted(10, 3);
    EXPECT_EQ(lengths(), (Lengths{10, 13}));
    sections->inserted(9, 2);
    EXPECT_EQ(lengths(), (Lengths{12, 13}));
    EXPECT_EQ(sections->start(1), 12U);
    sections->inserted(25, 1);
    EXPECT_EQ(lengths(), (Lengths{12, 14}));
}

TEST_F(SectionsOfADocument, OneWhoseBreakIsErasedBecomesPartOfTheNext) {
    make({u"a", u"b", u"c"});
    sections->erased(5, 9);
    EXPECT_EQ(lengths(), (Lengths{6, 10, 10}));
    sections->erased(5, 6);
    EXPECT_EQ(lengths(), (Lengths{15, 10}));
    EXPECT_EQ(runs[0].properties, PropertyListId{2});
    EXPECT_EQ(written(), u"bc");
    sections->erased(15, 25);
    EXPECT_EQ(lengths(), (Lengths{15, 0})) << "the last one has no break";
    EXPECT_EQ(sections->indexAt(15), 1U);
}

TEST_F(SectionsOfADocument, OneThatGoesLeavesItsHeaderToTheNextThatHasNone) {
    make({u"a", u"", u""});
    sections->erased(8, 22);
    EXPECT_EQ(lengths(), Lengths{16});
    EXPECT_EQ(written(), u"a");
    EXPECT_EQ(sections->count(), 1U);
}

TEST_F(SectionsOfADocument, AreAsLongAsTheirTextHasBecome) {
    make({u"", u"", u""});
    sections->replaced([](Cp at) { return at < 15 ? at : at + 7; });
    EXPECT_EQ(lengths(), (Lengths{10, 17, 10}));
    EXPECT_EQ(sections->start(2), 27U);
}

} // namespace
} // namespace qvnd::word
