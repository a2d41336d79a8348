#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"

#include <gtest/gtest.h>

// Each rule about the style sheet: one thing broken breaks that rule and no other.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

class StyleRules : public ::testing::Test {
protected:
    StyleDefinition& style(std::size_t istd) { return *document.styles.styles.at(istd); }
    Rules rules() const { return brokenRules(document.bytes()); }

    SoundDocument document;
};

TEST_F(StyleRules, BaseMustExistAndBeOfItsKind) {
    style(16).basedOn = 18;
    EXPECT_EQ(rules(), Rules{"style.base"});
    style(16).basedOn = 15;
    EXPECT_EQ(rules(), Rules{"style.base"});
}

TEST_F(StyleRules, BasesMustNotRunInACircle) {
    style(1).basedOn = 16;
    style(16).basedOn = 1;
    EXPECT_EQ(rules(), Rules{"style.cycle"});
}

TEST_F(StyleRules, NextStyleMustExist) {
    style(16).next = 18;
    EXPECT_EQ(rules(), Rules{"style.next"});
}

TEST_F(StyleRules, LinkedStyleMustExist) {
    style(16).link = 18;
    EXPECT_EQ(rules(), Rules{"style.link"});
}

TEST_F(StyleRules, NamesMustBeThereAndBeUnique) {
    style(16).name = u"Strong";
    EXPECT_EQ(rules(), Rules{"style.unique"});
    style(16).name.clear();
    EXPECT_EQ(rules(), Rules{"style.name"});
}

TEST_F(StyleRules, AliasesMustNotBeNamesOfOthers) {
    style(16).aliases = u"text,Plain";
    EXPECT_EQ(rules(), Rules{});
    style(16).aliases = u"text,Strong";
    EXPECT_EQ(rules(), Rules{"style.unique"});
    style(16).aliases = u"text";
    style(1).aliases = u"h1,text";
    EXPECT_EQ(rules(), Rules{"style.unique"});
}

TEST_F(StyleRules, PropertiesAreChecked) {
    style(16).character = document.lists.intern(withSprm16({}, sprm::CRgFtc0, 9));
    EXPECT_EQ(rules(), Rules{"sprm.font"});
    style(16).character = PropertyListId::empty;
    style(16).paragraph = document.lists.intern(withSprm8({}, sprm::CFBold, 1));
    EXPECT_EQ(rules(), Rules{"sprm.group"});
}

TEST_F(StyleRules, WhatHoldsUnderAConditionIsChecked) {
    // Of a header row: the condition, then a list of its own.
    const auto conditional = [](const Bytes& list) {
        LittleEndianWriter operand;
        operand.u8(static_cast<unsigned>(2 + list.size()));
        operand.u16(1);
        operand.bytes(list);
        return withSprm({}, sprm::CCnf, operand.data());
    };
    const auto rulesWith = [&](const Bytes& list) {
        style(16).character = document.lists.intern(conditional(list));
        return rules();
    };
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CRgFtc0, 1)), Rules{});
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CRgFtc0, 9)), Rules{"sprm.font"});
    EXPECT_EQ(rulesWith(withSprm8({}, sprm::PFKeep, 1)), Rules{"sprm.group"});
    EXPECT_EQ(rulesWith({1, 0x4A, 0x4F}), Rules{"sprm.parse"});
}

// The entry of style 16 in the written sheet: where its STD begins.
std::size_t styleAt(const Bytes& sheet, std::size_t istd) {
    std::size_t at = 2 + (sheet[0] | (sheet[1] << 8));
    for (std::size_t i = 0; i < istd; ++i) {
        const std::size_t size = sheet[at] | (sheet[at + 1] << 8);
        at += 2 + size + size % 2;
    }
    return at + 2;
}

TEST_F(StyleRules, ParagraphPropertiesMustNameTheirStyle) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    const std::size_t at = styleAt(sheet, 16);
    put16(sheet, at + 18 + 2 + 2 * 4 + 2 + 2, 3); // Stdf, the name "Body", cbUpx
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(rules(), Rules{"style.papx"});
}

TEST_F(StyleRules, EntryMustBeWhole) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    put16(sheet, styleAt(sheet, 16) + 18, 0x7000); // the name's length
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(rules(), Rules{"style.parse"});
}

TEST_F(StyleRules, HeadMustCountEnoughStyles) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    put16(sheet, 4, 0x0C); // cbSTDBaseInFile
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(rules().count("style.head"), 1U);
}

TEST_F(StyleRules, NormalStyleMustExist) {
    document.styles.styles[0].reset();
    EXPECT_EQ(rules().count("style.normal"), 1U);
}

TEST_F(StyleRules, FontsOfTheHeadMustExist) {
    document.styles.defaultFonts[2] = 1;
    EXPECT_EQ(rules(), Rules{});
    document.styles.defaultFonts[2] = 2;
    EXPECT_EQ(rules(), Rules{"style.font"});
}

TEST_F(StyleRules, EveryPropertyListOfItsKindMustBeThere) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    sheet.at(styleAt(sheet, 0) + 4) &= 0xF1; // cupx, of two lists
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(rules(), Rules{"style.lists"});
}

TEST_F(StyleRules, SizeMustBeThatOfTheEntry) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    put16(sheet, styleAt(sheet, 0) + 6, 3); // bchUpe
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(rules(), Rules{"style.size"});
}

TEST_F(StyleRules, BuiltInStyleMustStandOnceAndAtItsPlace) {
    style(15).sti = 88;
    EXPECT_EQ(rules(), Rules{});
    style(15).sti = 65;
    EXPECT_EQ(rules(), Rules{"style.number"}) << "the default paragraph font stands at 10";
    style(15).sti = 87;
    style(10).sti = 0;
    EXPECT_EQ(rules(), Rules{"style.number"});
}

} // namespace
} // namespace qvnd::test
