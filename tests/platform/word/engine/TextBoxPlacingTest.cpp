#include "platform/word/engine/TextBoxPlacing.h"

#include "platform/word/docfile/text/TablePlaces.h"
#include "platform/word/engine/ImportFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace qvnd::word::test {
namespace {

using testing::ElementsAre;

using Form = TextBoxPlacing::Form;

// Stories of paragraphs, all in one pool of property lists.
class TextBoxPlacing_ : public testing::Test {
protected:
    PropertyLists lists;
    Story story;

    void paragraph(Story& to, const std::u16string& text, const Bytes& properties = {},
                   const Bytes& characters = {}) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] >= 0x13 && text[i] <= 0x15) {
                to.fields.push_back(
                    {static_cast<Cp>(to.size() + i), static_cast<std::uint8_t>(text[i]), 0});
            }
        }
        to.text += text;
        const auto length = static_cast<Cp>(text.size());
        to.characters.push_back({length, lists.intern(characters)});
        to.paragraphs.push_back({length, 0, lists.intern(properties)});
    }
    Story box(const std::u16string& text, const Bytes& properties = {},
              const Bytes& characters = {}) {
        Story result;
        paragraph(result, text, properties, characters);
        return result;
    }
    static Bytes cell(unsigned depth = 1) {
        return sprm8(sprm::PFInTable, 1) + sprm32(sprm::PItap, depth);
    }
    static Bytes rowEnd() { return cell() + sprm8(sprm::PFTtp, 1); }
    static Bytes innerCellEnd() { return cell(2) + sprm8(sprm::PFInnerTableCell, 1); }
    static Bytes innerRowEnd() { return innerCellEnd() + sprm8(sprm::PFInnerTtp, 1); }
    void oneCell(Story& to, const std::u16string& text) {
        paragraph(to, text + u"\u0007", cell());
        paragraph(to, u"\u0007", rowEnd());
    }

    void place(Cp anchor, Story text) {
        TextBoxPlacing placing(story, lists);
        EXPECT_EQ(Form::text, placing.add(anchor, std::move(text)));
        placing.apply();
    }
    std::vector<TablePlace> tablePlaces() {
        TablePlaces places(lists);
        std::vector<TablePlace> result;
        Cp end = 0;
        for (const ParagraphRun& run : story.paragraphs) {
            end += run.length;
            result.push_back(places.of(run.properties, story.text.at(end - 1)));
        }
        return result;
    }
    PropertyListId charactersAt(Cp at) const {
        for (const CharacterRun& run : story.characters) {
            if (at < run.length) {
                return run.properties;
            }
            at -= run.length;
        }
        return PropertyListId::empty;
    }
    void expectSound() const {
        const auto add = [](Cp sum, const auto& run) { return sum + run.length; };
        EXPECT_EQ(std::accumulate(story.paragraphs.begin(), story.paragraphs.end(), Cp{0}, add),
                  story.size());
        EXPECT_EQ(std::accumulate(story.characters.begin(), story.characters.end(), Cp{0}, add),
                  story.size());
    }
};

constexpr TablePlace text0{};
constexpr TablePlace text1{1, false, false};
constexpr TablePlace cellEnd1{1, true, false};
constexpr TablePlace rowEnd1{1, false, true};
constexpr TablePlace text2{2, false, false};
constexpr TablePlace cellEnd2{2, true, false};
constexpr TablePlace rowEnd2{2, false, true};

TEST_F(TextBoxPlacing_, TheTextStandsBehindTheParagraphOfItsAnchorWithItsOwnFormat) {
    paragraph(story, u"anchor\r", sprm8(sprm::PJc80, 1));
    paragraph(story, u"next\r");
    place(3, box(u"boxed\r", sprm8(sprm::PJc80, 2), sprm8(sprm::CFBold, 1)));
    EXPECT_EQ(story.text, u"anchor\rboxed\rnext\r");
    ASSERT_EQ(story.paragraphs.size(), 3U);
    EXPECT_EQ(operand8(lists[story.paragraphs[0].properties], sprm::PJc80), 1);
    EXPECT_EQ(operand8(lists[story.paragraphs[1].properties], sprm::PJc80), 2);
    EXPECT_EQ(operand8(lists[charactersAt(7)], sprm::CFBold), 1);
    EXPECT_EQ(operand8(lists[charactersAt(6)], sprm::CFBold), -1);
    EXPECT_EQ(operand8(lists[charactersAt(13)], sprm::CFBold), -1);
    expectSound();
}

TEST_F(TextBoxPlacing_, SeveralOfOneParagraphStandInTheirOrder) {
    paragraph(story, u"anchors\r");
    paragraph(story, u"next\r");
    TextBoxPlacing placing(story, lists);
    EXPECT_EQ(Form::text, placing.add(9, box(u"later\r")));
    EXPECT_EQ(Form::text, placing.add(1, box(u"one\r")));
    EXPECT_EQ(Form::text, placing.add(5, box(u"two\r")));
    placing.apply();
    EXPECT_EQ(story.text, u"anchors\rone\rtwo\rnext\rlater\r");
    expectSound();
}

TEST_F(TextBoxPlacing_, PositionsInFrontStayAndThoseBehindMoveOn) {
    paragraph(story, u"ab\r");
    paragraph(story, u"cd\r");
    TextBoxPlacing placing(story, lists);
    placing.add(0, box(u"xyz\r"));
    placing.apply();
    EXPECT_EQ(placing.moved(0), 0U);
    EXPECT_EQ(placing.moved(2), 2U); // in front of the paragraph's mark
    EXPECT_EQ(placing.moved(3), 7U);
    EXPECT_EQ(placing.moved(6), 10U);
}

TEST_F(TextBoxPlacing_, FieldsOfTheStoryAndOfTheTextKeepTheirCharacters) {
    paragraph(story, u"\u0013A\u0015\r");
    paragraph(story, u"\u0013B\u0015\r");
    place(1, box(u"x\u0013C\u0014c\u0015\r"));
    ASSERT_EQ(story.fields.size(), 7U);
    for (const FieldMark& mark : story.fields) {
        EXPECT_EQ(story.text.at(mark.at), mark.character);
    }
    EXPECT_TRUE(std::is_sorted(story.fields.begin(), story.fields.end(),
                               [](const auto& a, const auto& b) { return a.at < b.at; }));
}

TEST_F(TextBoxPlacing_, AnchorsOfTheStoryKeepTheirCharacters) {
    paragraph(story, u"a\r");
    paragraph(story, u"bc\r");
    story.anchors = {{0, AnchorKind::footnote, 1}, {3, AnchorKind::footnote, 2}};
    place(0, box(u"box\r"));
    ASSERT_EQ(story.anchors.size(), 2U);
    EXPECT_EQ(story.text[story.anchors[0].at], u'a');
    EXPECT_EQ(story.text[story.anchors[1].at], u'c');
}

TEST_F(TextBoxPlacing_, ASectionsBreakStaysBehindTheText) {
    paragraph(story, u"anchor\f", {}, sprm8(sprm::CFBold, 1));
    paragraph(story, u"next\r");
    TextBoxPlacing placing(story, lists);
    placing.add(2, box(u"boxed\r"));
    placing.apply();
    EXPECT_EQ(story.text, u"anchor\rboxed\fnext\r");
    EXPECT_EQ(placing.moved(7), 13U); // where the next section begins
    expectSound();
}

TEST_F(TextBoxPlacing_, InACellTheTextStaysInTheCell) {
    oneCell(story, u"anchor");
    paragraph(story, u"behind\r");
    place(2, box(u"boxed\r"));
    EXPECT_EQ(story.text, u"anchor\rboxed\u0007\u0007behind\r");
    EXPECT_THAT(tablePlaces(), ElementsAre(text1, cellEnd1, rowEnd1, text0));
    expectSound();
}

TEST_F(TextBoxPlacing_, InACellATableOfTheTextBecomesAnInnerOne) {
    oneCell(story, u"anchor");
    paragraph(story, u"behind\r");
    Story text;
    oneCell(text, u"inner");
    paragraph(text, u"after\r");
    place(2, std::move(text));
    EXPECT_EQ(story.text, u"anchor\rinner\r\rafter\u0007\u0007behind\r");
    EXPECT_THAT(tablePlaces(), ElementsAre(text1, cellEnd2, rowEnd2, cellEnd1, rowEnd1, text0));
}

TEST_F(TextBoxPlacing_, InAnInnerCellTheLastParagraphTakesOverTheCellsEnd) {
    paragraph(story, u"anchor\r", innerCellEnd());
    paragraph(story, u"\r", innerRowEnd());
    paragraph(story, u"\u0007", cell());
    paragraph(story, u"\u0007", rowEnd());
    paragraph(story, u"behind\r");
    place(2, box(u"boxed\r"));
    EXPECT_EQ(story.text, u"anchor\rboxed\r\r\u0007\u0007behind\r");
    EXPECT_THAT(tablePlaces(), ElementsAre(text2, cellEnd2, rowEnd2, cellEnd1, rowEnd1, text0));
}

TEST_F(TextBoxPlacing_, OutsideOfTablesATableOfTheTextStaysAsItIs) {
    paragraph(story, u"anchor\r");
    Story text;
    oneCell(text, u"cell");
    paragraph(text, u"\r");
    place(2, std::move(text));
    EXPECT_EQ(story.text, u"anchor\rcell\u0007\u0007\r");
    EXPECT_THAT(tablePlaces(), ElementsAre(text0, cellEnd1, rowEnd1, text0));
}

TEST_F(TextBoxPlacing_, ARowOfExactHeightMayGrowAndAnotherStays) {
    paragraph(story, u"anchor\u0007", cell());
    paragraph(story, u"\u0007", rowEnd() + sprm16(sprm::TDyaRowHeight, 0x10000U - 400));
    paragraph(story, u"other\u0007", cell());
    paragraph(story, u"\u0007", rowEnd() + sprm16(sprm::TDyaRowHeight, 0x10000U - 500));
    place(2, box(u"boxed\r"));
    EXPECT_EQ(operand16(lists[story.paragraphs[2].properties], sprm::TDyaRowHeight), 400);
    EXPECT_EQ(operand16(lists[story.paragraphs[4].properties], sprm::TDyaRowHeight), 0x10000 - 500);
}

TEST_F(TextBoxPlacing_, AnAnchorInARowsEndCountsForTheRowsLastCell) {
    oneCell(story, u"cell");
    paragraph(story, u"behind\r");
    place(5, box(u"boxed\r"));
    EXPECT_EQ(story.text, u"cell\rboxed\u0007\u0007behind\r");
}

TEST_F(TextBoxPlacing_, AFieldsCodeOverSeveralParagraphsIsNotTornApart) {
    paragraph(story, u"a\u0013 IF x\r");
    paragraph(story, u"y \u0014result\r");
    paragraph(story, u"more\u0015\r");
    paragraph(story, u"behind\r");
    place(0, box(u"boxed\r"));
    EXPECT_EQ(story.text, u"a\u0013 IF x\ry \u0014result\rmore\u0015\rboxed\rbehind\r");
}

TEST_F(TextBoxPlacing_, AFieldsResultTakesTheTextIn) {
    paragraph(story, u"\u0013 TOC \u0014first\r");
    paragraph(story, u"second\u0015\r");
    place(8, box(u"boxed\r"));
    EXPECT_EQ(story.text, u"\u0013 TOC \u0014first\rboxed\rsecond\u0015\r");
}

TEST_F(TextBoxPlacing_, BreaksThatLeadToTheNextBoxOfAChainBeginNoPage) {
    paragraph(story, u"anchor\r");
    Story text;
    paragraph(text, u"a\u000Eb\u000Cc\u000E");
    paragraph(text, u"d\r");
    place(0, std::move(text));
    EXPECT_EQ(story.text, u"anchor\ra\vb\vc\rd\r");
}

// --- frames ---------------------------------------------------------------------------------

const FrameSpot spot{
    FrameSpot::Across::fromPage, FrameSpot::Down::fromParagraph, 700, -3, 2000, 900};

TEST_F(TextBoxPlacing_, WithASpotTheTextIsAFrameInFrontOfTheParagraphOfItsAnchor) {
    paragraph(story, u"first\r");
    paragraph(story, u"anchor\r");
    TextBoxPlacing placing(story, lists);
    EXPECT_EQ(Form::frame, placing.add(8, box(u"boxed\r", sprm8(sprm::PJc80, 2)), spot));
    placing.apply();
    EXPECT_EQ(story.text, u"first\rboxed\ranchor\r");
    const ByteView frame = lists[story.paragraphs[1].properties];
    EXPECT_EQ(operand8(frame, sprm::PJc80), 2);
    EXPECT_EQ(operand8(frame, sprm::PPc), 0xA0);
    EXPECT_EQ(operand8(frame, sprm::PWr), 2);
    EXPECT_EQ(operand16(frame, sprm::PDxaAbs), 701);
    EXPECT_EQ(operand16(frame, sprm::PDyaAbs), 0x10000 - 2);
    EXPECT_EQ(operand16(frame, sprm::PDxaWidth), 2000);
    EXPECT_EQ(operand16(frame, sprm::PWHeightAbs), 0x8000 | 900);
    EXPECT_EQ(operand8(lists[story.paragraphs[2].properties], sprm::PPc), -1);
    EXPECT_EQ(placing.moved(6), 6U); // a section that begins with the paragraph has the frame
    EXPECT_EQ(placing.moved(7), 13U);
    expectSound();
}

TEST_F(TextBoxPlacing_, ATableGoesIntoTheFrameRowByRow) {
    paragraph(story, u"first\r");
    paragraph(story, u"anchor\r");
    Story text;
    oneCell(text, u"cell");
    paragraph(text, u"\r");
    TextBoxPlacing placing(story, lists);
    EXPECT_EQ(Form::frame, placing.add(8, std::move(text), spot));
    placing.apply();
    EXPECT_THAT(tablePlaces(), ElementsAre(text0, cellEnd1, rowEnd1, text0, text0));
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_EQ(operand8(lists[story.paragraphs[i].properties], sprm::PPc), 0xA0);
    }
}

TEST_F(TextBoxPlacing_, NamesOfPlacesAreNoDistances) {
    paragraph(story, u"first\r");
    paragraph(story, u"anchor\r");
    FrameSpot atZero = spot;
    atZero.left = -1; // stored as 0 it would say "left"
    atZero.top = -5;  // stored as -4 it would say "top"
    TextBoxPlacing placing(story, lists);
    placing.add(8, box(u"boxed\r"), atZero);
    placing.apply();
    const ByteView frame = lists[story.paragraphs[1].properties];
    EXPECT_EQ(operand16(frame, sprm::PDxaAbs), 1);
    EXPECT_EQ(operand16(frame, sprm::PDyaAbs), 0x10000 - 3);
}

TEST_F(TextBoxPlacing_, AFrameStandsInFrontOfTheSecondParagraphRatherThanTheFirst) {
    paragraph(story, u"anchor\r");
    paragraph(story, u"second\r");
    TextBoxPlacing placing(story, lists);
    EXPECT_EQ(Form::frame, placing.add(2, box(u"boxed\r"), spot));
    placing.apply();
    EXPECT_EQ(story.text, u"anchor\rboxed\rsecond\r");
}

TEST_F(TextBoxPlacing_, WhereNoFrameCanStandTheTextStandsInTheText) {
    paragraph(story, u"only\r");
    EXPECT_EQ(Form::text, TextBoxPlacing(story, lists).add(1, box(u"boxed\r"), spot));
    oneCell(story, u"cell");
    EXPECT_EQ(Form::text, TextBoxPlacing(story, lists).add(6, box(u"boxed\r"), spot));
    paragraph(story, u"a\u0013 IF x\r"); // behind the table
    paragraph(story, u"y\u0015\r");
    EXPECT_EQ(Form::frame, TextBoxPlacing(story, lists).add(12, box(u"boxed\r"), spot));
    EXPECT_EQ(Form::text, TextBoxPlacing(story, lists).add(20, box(u"boxed\r"), spot));
    Story table;
    oneCell(table, u"cell");
    paragraph(table, u"\r");
    EXPECT_EQ(Form::text, TextBoxPlacing(story, lists).add(12, std::move(table), spot));
}

TEST_F(TextBoxPlacing_, FieldsThatBeginTheParagraphGoOnBehindTheFrame) {
    paragraph(story, u"first\r");
    paragraph(story, u"\u0013A\u0015\r");
    TextBoxPlacing placing(story, lists);
    EXPECT_EQ(Form::frame, placing.add(7, box(u"boxed\r"), spot));
    placing.apply();
    for (const FieldMark& mark : story.fields) {
        EXPECT_EQ(story.text.at(mark.at), mark.character);
    }
}

// --- no place -------------------------------------------------------------------------------

TEST_F(TextBoxPlacing_, ATextWithoutAPlaceStaysOutAndIsToldSo) {
    paragraph(story, u"text\r");
    TextBoxPlacing placing(story, lists);
    EXPECT_EQ(Form::none, placing.add(5, box(u"behind the end\r")));
    EXPECT_EQ(Form::none, placing.add(0, Story()));
    EXPECT_EQ(Form::none, placing.add(0, box(u"no mark")));
    placing.apply();
    EXPECT_EQ(story.text, u"text\r");
}

TEST_F(TextBoxPlacing_, TablesDoNotNestWithoutEnd) {
    paragraph(story, u"x\r", cell(deepestTable));
    TextBoxPlacing placing(story, lists);
    Story text;
    oneCell(text, u"cell");
    paragraph(text, u"\r");
    EXPECT_EQ(Form::none, placing.add(0, std::move(text)));
}

} // namespace
} // namespace qvnd::word::test
