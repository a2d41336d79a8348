// What a table's style says of the text of its cells, part by part.

#include "platform/layout/TypedRows.h"
#include "platform/word/layout/StoryReader.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

constexpr word::StyleIndex tableStyle = 20;

// Options of a table (Fatl) and the parts that its style may format apart (cnfc).
constexpr unsigned headerRow = 0x20;
constexpr unsigned footerRow = 0x40;
constexpr unsigned firstColumn = 0x80;
constexpr unsigned lastColumn = 0x100;
constexpr unsigned noRowBands = 0x200;
constexpr unsigned noColumnBands = 0x400;
constexpr unsigned noBands = noRowBands | noColumnBands;

class TableStyles : public test::TypedRows {
protected:
    TableStyles() { addStyle(tableStyle, word::StyleDefinition::none); }

    word::StyleDefinition& addStyle(word::StyleIndex index, word::StyleIndex base) {
        auto& styles = document.tables.styles.styles;
        styles.resize(std::max<std::size_t>(styles.size(), index + 1U));
        styles[index].emplace();
        styles[index]->kind = word::StyleKind::table;
        styles[index]->basedOn = base;
        return *styles[index];
    }
    word::StyleDefinition& style() { return *document.tables.styles.styles[tableStyle]; }
    // A list with an entry of a condition behind it.
    static Bytes when(std::uint16_t opcode, unsigned part, const Bytes& formatting,
                      const Bytes& list = {}) {
        word::LittleEndianWriter entry;
        entry.u16(opcode);
        entry.u8(static_cast<unsigned>(2 + formatting.size()));
        entry.u16(part);
        Bytes all = list;
        const Bytes head = entry.take();
        all.insert(all.end(), head.begin(), head.end());
        all.insert(all.end(), formatting.begin(), formatting.end());
        return all;
    }
    void useStyle(unsigned options, word::StyleIndex index = tableStyle) {
        moreOfRows = withSprm32(withSprm16({}, sprm::TIstd, index), sprm::TTlp, options << 16U);
    }
    // Rows of three cells, 甲 in all.
    void typeRows(int count) {
        for (int i = 0; i < count; ++i) {
            typeRow({u"甲", u"甲", u"甲"}, {0, 700, 1400, 2000});
        }
        type(u"末\r");
    }
    // The sizes in half points of the cells' texts, row by row, and of the text behind the table.
    std::vector<double> sizes() {
        const Page page = pages().at(0);
        std::vector<double> result;
        result.reserve(page.layer.texts.size());
        for (const PlacedText& run : page.layer.texts) {
            result.push_back(run.size / twipsPerHalfPoint);
        }
        return result;
    }
    static Bytes size(unsigned halfPoints) { return withSprm16({}, sprm::CHps, halfPoints); }
    using Sizes = std::vector<double>;
};

TEST_F(TableStyles, ItsCharactersAreThoseOfTheCellsAndOfNothingElse) {
    style().character = intern(size(30));
    useStyle(noBands);
    typeRows(1);
    EXPECT_EQ(sizes(), (Sizes{30, 30, 30, 20}));
}

TEST_F(TableStyles, TheStyleOfTheParagraphAndItsOwnFormattingStandAboveIt) {
    style().character = intern(size(30));
    useStyle(noBands);
    typeRows(1);
    document.tables.styles.styles[1]->character = intern(size(40));
    main.paragraphs[0].style = 1;
    main.characters[2].properties = intern(size(50)); // behind the first cell and its mark
    EXPECT_EQ(sizes(), (Sizes{40, 50, 30, 20}));
}

TEST_F(TableStyles, TheOneThatItIsBasedOnStandsBelowIt) {
    style().character = intern(size(30));
    addStyle(21, tableStyle).character = intern(withSprm8({}, sprm::CFBold, 1));
    useStyle(noBands, 21);
    typeRows(1);
    EXPECT_EQ(sizes(), (Sizes{30, 30, 30, 20}));
    EXPECT_EQ(pages().at(0).layer.texts.at(0).face, 1U) << "bold";
    style().character = {};
    document.tables.styles.styles[21]->character = intern(size(32));
    EXPECT_EQ(sizes(), (Sizes{32, 32, 32, 20}));
}

TEST_F(TableStyles, APartIsFormattedApartWhereTheTableSaysSo) {
    for (const auto& [options, part, expected] : {
             std::tuple(headerRow, 0x01U, Sizes{40, 40, 40, 20, 20, 20, 20, 20, 20, 20}),
             std::tuple(footerRow, 0x02U, Sizes{20, 20, 20, 20, 20, 20, 40, 40, 40, 20}),
             std::tuple(firstColumn, 0x04U, Sizes{40, 20, 20, 40, 20, 20, 40, 20, 20, 20}),
             std::tuple(lastColumn, 0x08U, Sizes{20, 20, 40, 20, 20, 40, 20, 20, 40, 20}),
             std::tuple(headerRow | lastColumn, 0x100U,
                        Sizes{20, 20, 40, 20, 20, 20, 20, 20, 20, 20}),
             std::tuple(headerRow | firstColumn, 0x200U,
                        Sizes{40, 20, 20, 20, 20, 20, 20, 20, 20, 20}),
             std::tuple(footerRow | lastColumn, 0x400U,
                        Sizes{20, 20, 20, 20, 20, 20, 20, 20, 40, 20}),
             std::tuple(footerRow | firstColumn, 0x800U,
                        Sizes{20, 20, 20, 20, 20, 20, 40, 20, 20, 20}),
         }) {
        style().character = intern(when(sprm::CCnf, part, size(40)));
        main = {};
        useStyle(noBands | options);
        typeRows(3);
        EXPECT_EQ(sizes(), expected) << part;
        main = {};
        useStyle(noBands);
        typeRows(3);
        EXPECT_EQ(sizes(), Sizes(10, 20)) << part << ": not asked for";
    }
}

TEST_F(TableStyles, BandsAreCountedBehindTheHeadingsInTheirWidth) {
    Bytes bands = when(sprm::CCnf, 0x40, size(30));
    style().character = intern(when(sprm::CCnf, 0x80, size(40), bands));
    useStyle(noColumnBands);
    typeRows(3);
    EXPECT_EQ(sizes(), (Sizes{30, 30, 30, 40, 40, 40, 30, 30, 30, 20}));
    main = {};
    useStyle(noColumnBands | headerRow);
    typeRows(3);
    EXPECT_EQ(sizes(), (Sizes{20, 20, 20, 30, 30, 30, 40, 40, 40, 20}));
    style().table = intern(withSprm8({}, sprm::TCHorzBands, 2));
    EXPECT_EQ(sizes(), (Sizes{20, 20, 20, 30, 30, 30, 30, 30, 30, 20}));
    bands = when(sprm::CCnf, 0x10, size(30));
    style().character = intern(when(sprm::CCnf, 0x20, size(40), bands));
    main = {};
    useStyle(noRowBands);
    typeRows(1);
    EXPECT_EQ(sizes(), (Sizes{30, 40, 30, 20}));
}

TEST_F(TableStyles, CornersStandAboveColumnsAndTheseAboveRowsAndBands) {
    Bytes parts = when(sprm::CCnf, 0x200, size(50)); // in whatever order
    parts = when(sprm::CCnf, 0x04, size(40), parts);
    parts = when(sprm::CCnf, 0x01, size(30), parts);
    parts = when(sprm::CCnf, 0x40, size(24), parts);
    style().character = intern(withSprm16(parts, sprm::CHps, 22));
    useStyle(headerRow | firstColumn | noColumnBands);
    typeRows(2);
    EXPECT_EQ(sizes(), (Sizes{50, 30, 30, 40, 24, 24, 20}));
}

TEST_F(TableStyles, ItsParagraphsAreThoseOfTheCells) {
    style().paragraph = intern(
        when(sprm::PCnf, 0x01, withSprm8({}, sprm::PJc, 2), withSprm16({}, sprm::PDyaBefore, 100)));
    useStyle(headerRow | noBands);
    typeRows(2);
    const auto texts = pages().at(0).layer.texts;
    ASSERT_EQ(texts.size(), 7U);
    EXPECT_DOUBLE_EQ(texts[3].baseline - texts[0].baseline, 200 + 20 + 100)
        << "a line, the border above the second row, the space";
    EXPECT_DOUBLE_EQ(texts[0].x, 1000 + 700 - 108 - 200) << "at the right";
    EXPECT_DOUBLE_EQ(texts[3].x, 1000 + 108);
}

TEST_F(TableStyles, ItsBackgroundIsThatOfCellsWhoseRowSaysNone) {
    const auto shading = [](unsigned blue) {
        word::LittleEndianWriter entry;
        entry.u16(sprm::TCellShdStyle);
        entry.u8(10);
        entry.u32(0);
        entry.u32(blue << 16U);
        entry.u16(0);
        return entry.take();
    };
    style().table = intern(when(sprm::TCnf, 0x01, shading(0x40), shading(0x80)));
    useStyle(headerRow | noBands);
    typeRows(2);
    const auto fills = [&] {
        const Page page = pages().at(0);
        std::vector<std::uint32_t> colours;
        colours.reserve(page.layer.fills.size());
        for (const Fill& fill : page.layer.fills) {
            colours.push_back(fill.colour);
        }
        return colours;
    };
    EXPECT_EQ(fills(), (std::vector<std::uint32_t>{0x40, 0x40, 0x40, 0x80, 0x80, 0x80}));
    word::LittleEndianWriter own; // none, for the first cell
    own.u16(sprm::TDefTableShd80);
    own.u8(2);
    own.u16(0);
    const Bytes entry = own.take();
    main = {};
    moreOfRows.insert(moreOfRows.end(), entry.begin(), entry.end());
    typeRows(1);
    EXPECT_TRUE(fills().empty());
}

TEST_F(TableStyles, InTheOfficeSuiteTheySayNothingOfTheText) {
    options = officeOptions();
    style().character = intern(size(30));
    useStyle(noBands);
    typeRows(1);
    EXPECT_EQ(sizes(), (Sizes{20, 20, 20, 20}));
}

} // namespace
} // namespace qvnd::layout
