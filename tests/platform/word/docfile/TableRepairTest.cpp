#include "platform/word/docfile/text/TableRepair.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::joined;

Bytes flag(SprmOpcode opcode) { return withSprm8({}, opcode, 1); }

Bytes cell(unsigned depth = 1) {
    return joined({flag(sprm::PFInTable), withSprm32({}, sprm::PItap, depth)});
}

class TableRepair : public ::testing::Test {
protected:
    void add(std::u16string_view text, const Bytes& properties) {
        story.text += text;
        story.paragraphs.push_back({static_cast<Cp>(text.size()), 0, lists.intern(properties)});
    }
    Bytes propertiesOf(std::size_t paragraph) const {
        const ByteView list = lists[story.paragraphs.at(paragraph).properties];
        return {list.begin(), list.end()};
    }

    Story story;
    PropertyLists lists;
};

TEST_F(TableRepair, SoundTablesStayAsTheyAre) {
    add(u"a\a", cell());
    add(u"in\r", joined({cell(2), flag(sprm::PFInnerTableCell)}));
    add(u"\r", joined({cell(2), flag(sprm::PFInnerTtp)}));
    add(u"b\a", cell());
    add(u"\a", joined({cell(), flag(sprm::PFTtp)}));
    add(u"end\r", {});
    const std::vector<ParagraphRun> before = story.paragraphs;

    EXPECT_EQ(repairTables(story, lists), 0);
    EXPECT_EQ(story.paragraphs, before);
    EXPECT_EQ(story.text, u"a\ain\r\rb\a\aend\r");
}

TEST_F(TableRepair, RowWithoutAnEndBecomesOrdinaryParagraphs) {
    add(u"a\a", joined({cell(), withSprm8({}, sprm::PJc, 1)}));
    add(u"b\r", cell());
    add(u"end\r", {});

    EXPECT_EQ(repairTables(story, lists), 2);
    EXPECT_EQ(story.text, u"a\rb\rend\r");
    EXPECT_EQ(propertiesOf(0), withSprm8({}, sprm::PJc, 1)); // what is not the table's stays
    EXPECT_EQ(propertiesOf(1), Bytes{});
}

TEST_F(TableRepair, OnlyTheRowWithoutAnEndIsTakenOut) {
    add(u"a\a", cell());
    add(u"\a", joined({cell(), flag(sprm::PFTtp)}));
    add(u"b\a", cell());

    EXPECT_EQ(repairTables(story, lists), 1);
    EXPECT_EQ(story.text, u"a\a\ab\r");
    EXPECT_EQ(propertiesOf(0), cell());
}

TEST_F(TableRepair, InnerRowWithoutAnEndBecomesTextOfTheOuterCell) {
    add(u"in\r", joined({cell(2), flag(sprm::PFInnerTableCell)}));
    add(u"b\a", cell());
    add(u"\a", joined({cell(), flag(sprm::PFTtp)}));

    EXPECT_EQ(repairTables(story, lists), 1);
    EXPECT_EQ(propertiesOf(0), cell(1));
    EXPECT_EQ(story.text, u"in\rb\a\a");
}

TEST_F(TableRepair, TheEndOfAnInnerRowEndsNoRowOfTheOutermostTable) {
    add(u"a\r", joined({cell(), flag(sprm::PFInnerTtp)}));
    add(u"end\r", {});

    EXPECT_EQ(repairTables(story, lists), 1);
    EXPECT_EQ(propertiesOf(0), Bytes{});
}

TEST_F(TableRepair, CellMarkOutsideOfTablesBecomesAParagraphMark) {
    add(u"a\a", {});
    EXPECT_EQ(repairTables(story, lists), 1);
    EXPECT_EQ(story.text, u"a\r");
}

} // namespace
} // namespace qvnd::word
