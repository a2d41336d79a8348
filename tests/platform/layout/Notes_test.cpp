// Footnotes at the feet of pages, and endnotes behind the text.

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/layout/NoteStrips.h"
#include "platform/word/layout/PageNotes.h"

#include <memory>
#include <string>
#include <vector>

namespace qvnd::layout {
namespace {

using word::AnchorKind;
using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class Notes : public test::PagedDocument {
protected:
    void addNote(const std::u16string& text, bool automatic = true) {
        document.tables.sideStories.push_back(
            {std::make_shared<const word::Story>(story(text)), automatic, {}, {}});
    }
};

TEST_F(Notes, AFootnoteStandsOnThePageOfItsReference) {
    type(u"甲\x02\r");
    paragraphs(9);
    putFootnote(1, u"\x02注\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[0]).substr(0, 2), u"甲1");
    EXPECT_EQ(textOf(found[0]).substr(textOf(found[0]).size() - 2), u"1注");
    EXPECT_EQ(found[0].layer.rules.size(), 1U);
    EXPECT_TRUE(found[1].layer.rules.empty());
}

TEST_F(Notes, ALongFootnoteGoesOnAtTheFootOfTheNextPage) {
    for (int i = 0; i < 7; ++i) {
        type(u"一\r");
    }
    type(u"甲\x02\r");
    paragraphs(1);
    putFootnote(15, u"\x02注\r二\r三\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[0]), u"一一一一一一一甲11注");
    EXPECT_EQ(textOf(found[1]), u"一二三");
    EXPECT_DOUBLE_EQ(found[1].layer.texts.back().baseline, 3000 - 200 + 160);
}

TEST_F(Notes, AFootnoteOfManyPagesGoesOnBehindTheText) {
    type(u"甲\x02\r");
    std::u16string lines = u"\x02注\r";
    for (int i = 0; i < 25; ++i) {
        lines += u"二\r";
    }
    putFootnote(1, lines);
    std::u16string all;
    for (const Page& page : pages()) {
        all += textOf(page);
    }
    EXPECT_EQ(all, u"甲11注" + std::u16string(25, u'二'));
}

TEST_F(Notes, InTheOfficeSuiteNothingIsKeptBelowTheLastLineOfANote) {
    Bytes spaced = withSprm16({}, sprm::PDyaAfter, 300);
    spaced = withSprm32(spaced, sprm::PDyaLine, (1U << 16U) | 360); // one and a half lines
    main.anchors = {{1, AnchorKind::footnote, 0}};
    document.tables.sideStories.push_back(
        {std::make_shared<const word::Story>(story(u"注\r释\r", spaced)), true, {}, {}});
    type(u"甲\u0002\r");
    const auto foot = [&] { return textAt(pages().at(0), u"释").baseline; };
    EXPECT_DOUBLE_EQ(foot(), 3000 - 300 - 40);
    options = officeOptions();
    EXPECT_NEAR(foot(), 3000 - 40, 0.02);
}

TEST_F(Notes, EndnotesStandBehindTheTextInTheOrderOfTheirReferences) {
    type(u"甲\x02乙\x02\r");
    main.anchors = {{1, AnchorKind::endnote, 1}, {3, AnchorKind::endnote, 0}};
    addNote(u"\x02先\r");
    addNote(u"\x02后\r");
    EXPECT_EQ(textOf(pages().at(0)), u"甲i乙iii后ii先");
}

TEST_F(Notes, InTheOfficeSuiteEndnotesStandBelowTheFootnotesOfThePageOfTheirReferences) {
    type(u"甲\x02乙\x02\f丙\x02\r");
    main.anchors = {
        {1, AnchorKind::endnote, 0}, {3, AnchorKind::footnote, 1}, {6, AnchorKind::endnote, 2}};
    addNote(u"先\r");
    addNote(u"脚\r");
    addNote(u"后\r");
    options = officeOptions();
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[0]), u"甲i乙1脚先");
    EXPECT_EQ(textOf(found[1]), u"丙ii后");
    EXPECT_NEAR(textAt(found[0], u"先").baseline, 3000, 50); // of the page's last line
}

TEST_F(Notes, FootnotesAndEndnotesAreCountedApartFromTheFirstNumbersOfTheDocument) {
    type(u"甲\x02乙\x02丙\x02\r");
    main.anchors = {
        {1, AnchorKind::footnote, 0}, {3, AnchorKind::endnote, 1}, {5, AnchorKind::footnote, 2}};
    addNote(u"脚\r");
    addNote(u"尾\r");
    addNote(u"注\r");
    word::writeDop(document.settings, word::dop::firstFootnote, 5);
    word::writeDop(document.settings, word::dop::firstEndnote, 0); // as 1
    EXPECT_EQ(textOf(pages().at(0)), u"甲5乙i丙6尾脚注");
}

TEST_F(Notes, AreCountedAnewInEachSectionWhereTheSettingsSaySo) {
    type(u"甲\x02乙\x02\r");
    nextSection(section());
    type(u"丙\x02丁\x02\r");
    main.anchors = {{1, AnchorKind::footnote, 0},
                    {3, AnchorKind::footnote, 1},
                    {6, AnchorKind::footnote, 2},
                    {8, AnchorKind::endnote, 3}};
    for (int i = 0; i < 4; ++i) {
        addNote(u"注\r");
    }
    word::writeDop(document.settings, word::dop::firstFootnote, 4);
    EXPECT_TRUE(textOf(pages().at(1)).starts_with(u"丙6丁i"));
    word::writeDop(document.settings, word::dop::footnoteRestart, 1);
    EXPECT_TRUE(textOf(pages().at(0)).starts_with(u"甲4乙5"));
    EXPECT_TRUE(textOf(pages().at(1)).starts_with(u"丙4丁i"));
    EXPECT_FALSE(layout->showsPageCounts());
}

TEST_F(Notes, ASectionMayNumberItsNotesInItsOwnWay) {
    type(u"甲\x02\r");
    Bytes own = withSprm8(section(), sprm::SRncFtn, 1);
    own = withSprm16(own, sprm::SNFtn, 3);
    own = withSprm16(own, sprm::SNfcFtnRef, 18);
    own = withSprm8(own, sprm::SRncEdn, 1);
    own = withSprm16(own, sprm::SNEdn, 7);
    own = withSprm16(own, sprm::SNfcEdnRef, 0);
    nextSection(own);
    type(u"丙\x02丁\x02\r");
    main.anchors = {
        {1, AnchorKind::footnote, 0}, {4, AnchorKind::footnote, 1}, {6, AnchorKind::endnote, 2}};
    for (int i = 0; i < 3; ++i) {
        addNote(u"注\r");
    }
    EXPECT_TRUE(textOf(pages().at(0)).starts_with(u"甲1"));
    EXPECT_TRUE(textOf(pages().at(1)).starts_with(u"丙③丁7"));
}

TEST_F(Notes, AreCountedAnewOnEachPageOnceItIsKnownWhereTheyStand) {
    type(u"甲\x02\r乙\x02\r");
    for (int i = 0; i < 5; ++i) {
        type(u"一\r");
    }
    type(u"丙\x02\r丁\x02\r");
    main.anchors = {{1, AnchorKind::footnote, 0},
                    {4, AnchorKind::footnote, 1},
                    {17, AnchorKind::footnote, 2},
                    {20, AnchorKind::footnote, 3}};
    for (int i = 0; i < 4; ++i) {
        addNote(u"\x02注\r");
    }
    word::writeDop(document.settings, word::dop::footnoteRestart, 2);
    pages();
    EXPECT_TRUE(layout->showsPageCounts());
    const auto counts = layout->correctedCounts();
    ASSERT_TRUE(counts);
    options.counts = *counts;
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(textOf(found[0]).starts_with(u"甲1乙2"));
    EXPECT_TRUE(textOf(found[0]).ends_with(u"1注2注"));
    EXPECT_EQ(textOf(found[1]), u"丙1丁21注2注");
    EXPECT_FALSE(layout->correctedCounts());
}

TEST_F(Notes, ANoteWithAMarkOfItsOwnTakesNoNumber) {
    type(u"甲*乙\x02\r");
    main.anchors = {{1, AnchorKind::footnote, 0}, {3, AnchorKind::footnote, 1}};
    addNote(u"*脚\r", false);
    addNote(u"\x02注\r");
    EXPECT_EQ(textOf(pages().at(0)), u"甲*乙1*脚1注");
}

TEST_F(Notes, ADrawingOrCommentThatHasTheIndexOfANoteIsNone) {
    type(u"甲\x02乙\r");
    addNote(u"脚\r");
    for (const AnchorKind kind : {AnchorKind::drawing, AnchorKind::comment}) {
        main.anchors = {{1, AnchorKind::footnote, 0}, {2, kind, 0}};
        EXPECT_EQ(textOf(pages().at(0)), u"甲1乙脚");
    }
}

TEST_F(Notes, AReferenceToANoteThatIsNotThereIsNotSeen) {
    type(u"甲\x02乙\x02\r");
    addNote(u"脚\r");
    main.anchors = {{1, AnchorKind::footnote, 0}, {3, AnchorKind::endnote, 1}};
    EXPECT_EQ(textOf(pages().at(0)), u"甲1乙脚");
}

TEST_F(Notes, ANoteIsComposedOnceForEachWidth) {
    type(u"甲\x02\r");
    main.anchors = {{1, AnchorKind::footnote, 0}};
    addNote(u"一二三四五六\r");
    sourceOfAll();
    StoryReader::Shared shared(source, fonts);
    NoteStrips notes(shared, {});
    LineSetting wide;
    wide.width = 2000;
    LineSetting narrow;
    narrow.width = 600;
    const Strips* known = &notes.strips(0, wide);
    EXPECT_EQ(known->size(), 1U);
    EXPECT_EQ(notes.strips(0, narrow).size(), 2U);
    EXPECT_EQ(&notes.strips(0, wide), known);
    EXPECT_TRUE(notes.strips(1, wide).empty()) << "one that is not there";
}

// Notes of three lines each, in columns of 2000 twips.
class NotesOfPage : public Notes {
protected:
    NotesOfPage() {
        type(u"甲\x02乙\x02\r");
        main.anchors = {{1, AnchorKind::footnote, 0}, {3, AnchorKind::footnote, 1}};
        addNote(u"一\r二\r三\r");
        addNote(u"四\r五\r六\r");
        setting.width = 2000;
        shared = std::make_unique<StoryReader::Shared>(sourceOfAll(), fonts);
        strips = std::make_unique<NoteStrips>(*shared, std::vector<int>{});
    }
    PageNotes notes() { return {*strips, setting, true}; }
    std::vector<double> baselines() const {
        std::vector<double> found;
        for (const PlacedText& text : layer.texts) {
            found.push_back(text.baseline);
        }
        return found;
    }

    LineSetting setting;
    std::unique_ptr<StoryReader::Shared> shared;
    std::unique_ptr<NoteStrips> strips;
    Layer layer;
};

TEST_F(NotesOfPage, TheFirstOneTakesTheRoomOfTheRuleAsWell) {
    EXPECT_DOUBLE_EQ(notes().roomOf(0, true).whole, 200 + 600);
    EXPECT_DOUBLE_EQ(notes().roomOf(0, true).least, 200 + 200);
    EXPECT_DOUBLE_EQ(notes().roomOf(1, false).whole, 600);
    EXPECT_DOUBLE_EQ(notes().roomOf(1, false).least, 200);
}

TEST_F(NotesOfPage, TheirHeightIsThatOfWhatIsLeftOfThem) {
    EXPECT_DOUBLE_EQ(notes().heightOf({}, 5000), 0);
    EXPECT_DOUBLE_EQ(notes().heightOf({{0, 0}}, 5000), 200 + 600);
    EXPECT_DOUBLE_EQ(notes().heightOf({{0, 1}, {1, 2}}, 5000), 200 + 400 + 200);
    EXPECT_DOUBLE_EQ(notes().heightOf({{0, 3}}, 5000), 200);
    EXPECT_GT(notes().heightOf({{0, 0}, {1, 0}}, 500), 500) << "counted as far as need be";
    EXPECT_DOUBLE_EQ(notes().heightOf({{0, 0}}, 800), 800);
}

TEST_F(NotesOfPage, WhatHasNoRoomIsCarriedOn) {
    const auto carried = notes().place({{0, 0}, {1, 0}}, {1000, 2000, 3050}, layer);
    ASSERT_EQ(layer.rules.size(), 1U);
    EXPECT_DOUBLE_EQ(layer.rules[0].y1, 2100);
    EXPECT_DOUBLE_EQ(layer.rules[0].x1, 1000);
    EXPECT_DOUBLE_EQ(layer.rules[0].x2, 1000 + 2880);
    EXPECT_EQ(baselines(), (std::vector<double>{2360, 2560, 2760, 2960}));
    EXPECT_DOUBLE_EQ(layer.texts[0].x, 1000);
    ASSERT_EQ(carried.size(), 1U);
    EXPECT_EQ(carried[0].note, 1U);
    EXPECT_EQ(carried[0].from, 1U);
    layer = {};
    EXPECT_TRUE(notes().place(carried, {1000, 2000, 2600}, layer).empty());
    EXPECT_EQ(baselines(), (std::vector<double>{2360, 2560}));
}

TEST_F(NotesOfPage, OneThatGoesOnHasTheSpaceAboveItsLineAndNoneBelowTheLineBefore) {
    const Bytes spaced = withSprm16(withSprm16({}, sprm::PDyaBefore, 50), sprm::PDyaAfter, 300);
    document.tables.sideStories[0].text =
        std::make_shared<const word::Story>(story(u"一\r二\r三\r", spaced));
    EXPECT_DOUBLE_EQ(notes().heightOf({{0, 1}}, 5000), 200 + 50 + 200 + 350 + 200 + 300);
    EXPECT_TRUE(notes().place({{0, 1}}, {0, 2000, 5000}, layer).empty());
    EXPECT_EQ(baselines(), (std::vector<double>{2200 + 50 + 160, 2200 + 50 + 200 + 350 + 160}));
}

TEST_F(NotesOfPage, ALineStandsOnEachPageThoughItHasNoRoomAndNoMoreThanOne) {
    const auto carried = notes().place({{0, 0}, {1, 0}}, {0, 2000, 2100}, layer);
    EXPECT_EQ(layer.texts.size(), 1U);
    ASSERT_EQ(carried.size(), 2U);
    EXPECT_EQ(carried[0].from, 1U);
    EXPECT_EQ(carried[1].note, 1U);
    EXPECT_EQ(carried[1].from, 0U);
}

TEST_F(Notes, TheSpaceAboveANoteCountsToTheRoomOfItsFirstLine) {
    const auto onFirstPage = [this](unsigned space) {
        main = {};
        document.tables.sideStories.clear();
        paragraphs(7);
        type(u"甲\x02\r");
        main.anchors = {{15, AnchorKind::footnote, 0}};
        const Bytes spaced = withSprm16({}, sprm::PDyaBefore, space);
        document.tables.sideStories.push_back(
            {std::make_shared<const word::Story>(story(u"注\r释\r", spaced)), true, {}, {}});
        return textOf(pages().at(0)).substr(0, 8);
    };
    EXPECT_EQ(onFirstPage(0), u"一一一一一一一甲");
    EXPECT_EQ(onFirstPage(300), u"一一一一一一一") << "two lines of room are not enough";
}

} // namespace
} // namespace qvnd::layout
