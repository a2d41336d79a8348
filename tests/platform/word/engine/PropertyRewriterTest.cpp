#include "platform/word/engine/PropertyRewriter.h"

#include "platform/word/engine/ImportFixture.h"

#include <gtest/gtest.h>

using namespace qvnd::word;
using namespace qvnd::word::importing;

namespace {

// Everything lies a fixed distance away in the target; 99 is nowhere.
class Moved : public ImportReferences {
public:
    int questions = 0;

    std::optional<std::uint16_t> font(std::uint16_t ftc) override { return away(ftc, 100); }
    std::optional<StyleIndex> style(StyleIndex istd, StyleKind kind) override {
        return away(istd, static_cast<std::uint16_t>(200 + 10 * static_cast<int>(kind)));
    }
    std::uint16_t list(std::uint16_t ilfo) override {
        return static_cast<std::uint16_t>(ilfo + 300);
    }
    std::optional<std::uint32_t> blob(std::uint32_t index) override {
        return index == 99 ? std::nullopt : std::optional(index + 0x10000);
    }
    std::optional<std::uint32_t> object(std::uint32_t index) override {
        return index == 99 ? std::nullopt : std::optional(index + 0x20000);
    }
    std::optional<std::uint32_t> bulletPicture(std::uint32_t index) override {
        return index == 99 ? std::nullopt : std::optional(index + 0x30000);
    }
    std::optional<std::uint16_t> author(std::uint16_t index) override { return away(index, 500); }

private:
    std::optional<std::uint16_t> away(std::uint16_t index, std::uint16_t distance) {
        ++questions;
        return index == 99 ? std::nullopt
                           : std::optional(static_cast<std::uint16_t>(index + distance));
    }
};

Bytes rewritten(const Bytes& list) {
    PropertyLists source;
    PropertyLists target;
    Moved references;
    const PropertyListId id = source.intern(list);
    return bytesOf(target[PropertyRewriter(source, target, references).rewritten(id)]);
}

Bytes variable(SprmOpcode opcode, const Bytes& operand) { return withSprm({}, opcode, operand); }

} // namespace

TEST(PropertyRewriter, WhatPointsNowhereTravelsAsItCame) {
    const Bytes list = sprm8(sprm::CFBold, 0x81) + sprm16(sprm::CHps, 24) +
                       sprm32(0x6815, 0x12345678) + variable(0xCA76, {4, 1, 2, 3, 4});
    EXPECT_EQ(rewritten(list), list);
}

TEST(PropertyRewriter, FontsOfEveryScriptAndOfSymbolsAreTranslated) {
    for (const SprmOpcode opcode :
         {sprm::CRgFtc0, sprm::CRgFtc1, sprm::CRgFtc2, sprm::CFtcBi, sprm::CFtc}) {
        EXPECT_EQ(rewritten(sprm16(opcode, 3)), sprm16(opcode, 103));
    }
    EXPECT_EQ(rewritten(sprm32(sprm::CSymbol, 0xF0B70003)), sprm32(sprm::CSymbol, 0xF0B70067));
}

TEST(PropertyRewriter, FontsOfOldNumberingAreTranslated) {
    Bytes operand(85, 0);
    operand[0] = 84;
    operand[7] = 2;
    Bytes expected = operand;
    expected[7] = 102;
    EXPECT_EQ(rewritten(variable(sprm::PAnld80, operand)), variable(sprm::PAnld80, expected));
}

TEST(PropertyRewriter, FontsOfTheNineLevelsOfSectionNumberingAreTranslated) {
    Bytes operand(213, 0);
    operand[0] = 212;
    Bytes expected = operand;
    for (std::size_t level = 0; level < 9; ++level) {
        operand[7 + 16 * level] = static_cast<std::uint8_t>(level);
        expected[7 + 16 * level] = static_cast<std::uint8_t>(100 + level);
    }
    EXPECT_EQ(rewritten(variable(sprm::SOlstAnm80, operand)), variable(sprm::SOlstAnm80, expected));
}

TEST(PropertyRewriter, APictureOfABulletIsTranslatedWhereOneShows) {
    const Bytes shown = sprm16(sprm::CPbiGrf, 1) + sprm32(sprm::CPbiIBullet, 2);
    EXPECT_EQ(rewritten(shown), sprm16(sprm::CPbiGrf, 1) + sprm32(sprm::CPbiIBullet, 0x30002));
    const Bytes hidden = sprm16(sprm::CPbiGrf, 2) + sprm32(sprm::CPbiIBullet, 2);
    EXPECT_EQ(rewritten(hidden + sprm8(sprm::CFBold, 1)), sprm8(sprm::CFBold, 1));
    const Bytes lost = sprm16(sprm::CPbiGrf, 1) + sprm32(sprm::CPbiIBullet, 99);
    EXPECT_EQ(rewritten(lost + sprm8(sprm::CFBold, 1)), sprm8(sprm::CFBold, 1));
    EXPECT_EQ(rewritten(sprm32(sprm::CPbiIBullet, 2)), Bytes());
}

TEST(PropertyRewriter, StylesAreAskedForByTheirKind) {
    EXPECT_EQ(rewritten(sprm16(sprm::PIstd, 1)), sprm16(sprm::PIstd, 211));
    EXPECT_EQ(rewritten(sprm16(sprm::CIstd, 1)), sprm16(sprm::CIstd, 221));
    EXPECT_EQ(rewritten(sprm16(sprm::TIstd, 1)), sprm16(sprm::TIstd, 231));
}

TEST(PropertyRewriter, ListsAndPicturesAreTranslated) {
    EXPECT_EQ(rewritten(sprm16(sprm::PIlfo, 7)), sprm16(sprm::PIlfo, 307));
    EXPECT_EQ(rewritten(sprm32(sprm::CPicLocation, 5)), sprm32(sprm::CPicLocation, 0x10005));
}

TEST(PropertyRewriter, AuthorsOfEveryRevisionAreTranslated) {
    EXPECT_EQ(rewritten(sprm16(sprm::CIbstRMark, 1)), sprm16(sprm::CIbstRMark, 501));
    EXPECT_EQ(rewritten(sprm16(sprm::CIbstRMarkDel, 1)), sprm16(sprm::CIbstRMarkDel, 501));
    const Bytes change{7, 1, 1, 0, 9, 9, 9, 9};
    const Bytes changed{7, 1, 0xF5, 1, 9, 9, 9, 9};
    for (const SprmOpcode opcode :
         {sprm::CPropRMark, sprm::CPropRMark90, sprm::PPropRMark, sprm::PPropRMark90,
          sprm::SPropRMark, sprm::SPropRMark90, sprm::TPropRMark}) {
        EXPECT_EQ(rewritten(variable(opcode, change)), variable(opcode, changed));
    }
    Bytes numbering(129, 0);
    numbering[0] = 128;
    numbering[3] = 1;
    Bytes numbered = numbering;
    numbered[3] = 0xF5;
    numbered[4] = 1;
    EXPECT_EQ(rewritten(variable(sprm::PNumRM, numbering)), variable(sprm::PNumRM, numbered));
}

// A table style has such lists for its first row, its last column, ...
TEST(PropertyRewriter, WhatListsInsideAnEntryNameIsTranslatedOneLevelDown) {
    const Bytes font = sprm16(sprm::CRgFtc0, 3) + sprm8(sprm::CFBold, 1);
    const Bytes there = sprm16(sprm::CRgFtc0, 103) + sprm8(sprm::CFBold, 1);
    EXPECT_EQ(rewritten(variable(sprm::CCnf, Bytes{9, 1, 0} + font)),
              variable(sprm::CCnf, Bytes{9, 1, 0} + there));
    EXPECT_EQ(rewritten(variable(sprm::PCnf, Bytes{6, 1, 0} + sprm16(sprm::PIlfo, 7))),
              variable(sprm::PCnf, Bytes{6, 1, 0} + sprm16(sprm::PIlfo, 307)));
    EXPECT_EQ(rewritten(variable(sprm::TCnf, Bytes{6, 1, 0} + sprm16(sprm::TIstd, 1))),
              variable(sprm::TCnf, Bytes{6, 1, 0} + sprm16(sprm::TIstd, 231)));
    EXPECT_EQ(rewritten(variable(sprm::CMajority, Bytes{7} + font)),
              variable(sprm::CMajority, Bytes{7} + there));
    const Bytes inner = variable(sprm::CCnf, Bytes{9, 1, 0} + font);
    EXPECT_EQ(rewritten(variable(sprm::CCnf, Bytes{14, 1, 0} + inner)),
              variable(sprm::CCnf, {2, 1, 0}));
}

TEST(PropertyRewriter, AListInsideAnEntryIsWholeSoundAndOfTheSameGroup) {
    const Bytes bold = sprm8(sprm::CFBold, 1);
    EXPECT_EQ(rewritten(variable(sprm::CCnf, Bytes{8, 1, 0} + sprm8(sprm::PFKeep, 1) + bold)),
              variable(sprm::CCnf, Bytes{5, 1, 0} + bold));
    EXPECT_EQ(rewritten(variable(sprm::CCnf, Bytes{8, 1, 0} + bold + Bytes{0x4F, 0x4A, 1})),
              variable(sprm::CCnf, Bytes{5, 1, 0} + bold));
    EXPECT_EQ(rewritten(variable(sprm::PCnf, Bytes{5, 1, 0} + sprm8(sprm::PIlvl, 200))),
              variable(sprm::PCnf, {2, 1, 0}));
    EXPECT_EQ(rewritten(variable(sprm::CCnf, Bytes{8, 1, 0} + sprm32(sprm::CPicLocation, 5))),
              variable(sprm::CCnf, {2, 1, 0}));
}

TEST(PropertyRewriter, WhatNamesNothingInAListInsideAnEntryLeavesItShorter) {
    const Bytes list = sprm16(sprm::CRgFtc0, 99) + sprm8(sprm::CFBold, 1);
    EXPECT_EQ(rewritten(variable(sprm::CCnf, Bytes{9, 1, 0} + list)),
              variable(sprm::CCnf, Bytes{5, 1, 0} + sprm8(sprm::CFBold, 1)));
    EXPECT_EQ(rewritten(variable(sprm::CCnf, {1, 1})), Bytes()) << "no condition";
}

TEST(PropertyRewriter, WhatNamesNothingIsDropped) {
    EXPECT_EQ(rewritten(sprm16(sprm::CRgFtc0, 99) + sprm16(sprm::CHps, 20)),
              sprm16(sprm::CHps, 20));
    EXPECT_EQ(rewritten(sprm32(sprm::CPicLocation, 99)), Bytes{});
}

TEST(PropertyRewriter, AnObjectComesWithItsMarks) {
    const Bytes marks = sprm8(sprm::CFOle2, 1) + sprm8(sprm::CFObj, 1) + sprm8(sprm::CFSpec, 1);
    EXPECT_EQ(rewritten(sprm32(sprm::CObjLocation, 5) + marks),
              sprm32(sprm::CObjLocation, 0x20005) + marks);
}

TEST(PropertyRewriter, MarksOfAnObjectThatIsNotThereGo) {
    const Bytes list = sprm32(sprm::CObjLocation, 99) + sprm8(sprm::CFOle2, 1) +
                       sprm8(sprm::CFObj, 1) + sprm8(sprm::CFSpec, 1);
    EXPECT_EQ(rewritten(list), sprm8(sprm::CFSpec, 1));
}

TEST(PropertyRewriter, ADamagedTailIsNotCarriedOn) {
    EXPECT_EQ(rewritten(sprm8(sprm::CFBold, 1) + Bytes{0x43, 0x4A, 1}), sprm8(sprm::CFBold, 1));
}

TEST(PropertyRewriter, EachDistinctListIsWorkedOnOnce) {
    PropertyLists source;
    PropertyLists target;
    Moved references;
    const PropertyListId id = source.intern(sprm16(sprm::CRgFtc0, 1));
    PropertyRewriter rewriter(source, target, references);
    EXPECT_EQ(rewriter.rewritten(id), rewriter.rewritten(id));
    EXPECT_EQ(references.questions, 1);
}

TEST(PropertyRewriter, AnEntryThatEndsBeforeWhatItNamesMeansNothing) {
    EXPECT_EQ(rewritten(variable(sprm::CPropRMark, {7, 1, 5, 0, 0, 0, 0, 0})),
              variable(sprm::CPropRMark, {7, 1, 0xF9, 1, 0, 0, 0, 0}));
    EXPECT_EQ(rewritten(variable(sprm::CPropRMark, {2, 1, 5})), Bytes());
}
