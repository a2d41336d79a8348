#include "platform/word/engine/EngineFixture.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "support/Errors.h"

#include <optional>

namespace qvnd::test {
namespace {

using namespace qvnd::word;

// A page of 4000 by 4000 twips, with margins that leave the text so much room.
class SmallPage : public EngineTest {
protected:
    void makePage(unsigned across, unsigned down = 2000) {
        Bytes list = withSprm16({}, sprm::SXaPage, 4000);
        list = withSprm16(list, sprm::SYaPage, 4000);
        list = withSprm16(list, sprm::SDxaLeft, 1000);
        list = withSprm16(list, sprm::SDxaRight, 3000 - across);
        list = withSprm16(list, sprm::SDyaTop, 1000);
        list = withSprm16(list, sprm::SDyaBottom, 3000 - down);
        WorkingDocument& content = document().change();
        content.sections().setProperties(0, content.tables().lists.intern(list));
    }
    std::uint32_t value(SprmOpcode opcode) {
        return sprmValue(lists()[document().read().sections().properties(0)], opcode, 0);
    }
    // In points, of 20 twips.
    std::optional<long> errorOfLeft(float points) {
        return errorNumberOf([&] { document().pageSetup().setLeftMargin(points); });
    }
};

TEST_F(SmallPage, MarginsLeaveTheTextHalfAnInch) {
    makePage(2000);
    EXPECT_EQ(errorOfLeft(114), std::nullopt); // 2280 twips: 720 are left
    EXPECT_EQ(value(sprm::SDxaLeft), 2280U);
    EXPECT_EQ(errorOfLeft(114.1F), 4608);
    EXPECT_EQ(value(sprm::SDxaLeft), 2280U);
    makePage(2000);
    PageSetup& setup = document().pageSetup();
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(114); }), std::nullopt);
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(114.1F); }), 4608);
    EXPECT_EQ(value(sprm::SDyaTop), 2280U);
}

TEST_F(SmallPage, OfOneThatHasLessRoomTheMarginsMayLeaveMore) {
    makePage(2000, 400);
    PageSetup& setup = document().pageSetup();
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(45); }), std::nullopt); // 500 twips are left
    EXPECT_EQ(value(sprm::SDyaTop), 900U);
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(46); }), 4608);
    EXPECT_EQ(value(sprm::SDyaTop), 900U);
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(45); }), std::nullopt) << "as it is";
    EXPECT_EQ(errorNumberOf([&] { setup.setHeaderDistance(10); }), std::nullopt);
    EXPECT_EQ(value(sprm::SDyaHdrTop), 200U);
}

TEST_F(SmallPage, AMarginCountsAtTheSideOfTheGutter) {
    makePage(2000);
    PageSetup& setup = document().pageSetup();
    setup.setGutter(64); // 1280 twips: 720 are left at the side
    EXPECT_EQ(errorOfLeft(51), 4608);
    EXPECT_EQ(value(sprm::SDxaLeft), 1000U);
    setup.setGutterOnTop(true);
    EXPECT_EQ(errorOfLeft(51), std::nullopt);
    EXPECT_EQ(value(sprm::SDxaLeft), 1020U);
}

TEST_F(SmallPage, LengthsReachUpToTwentyTwoInches) {
    PageSetup& setup = document().pageSetup();
    EXPECT_EQ(errorNumberOf([&] { setup.setHeaderDistance(1584); }), std::nullopt);
    EXPECT_EQ(value(sprm::SDyaHdrTop), 31680U);
    EXPECT_EQ(errorNumberOf([&] { setup.setHeaderDistance(1584.1F); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setFooterDistance(1584); }), std::nullopt);
    EXPECT_EQ(value(sprm::SDyaHdrBottom), 31680U);
    EXPECT_EQ(value(sprm::SDyaHdrTop), 31680U);
}

} // namespace
} // namespace qvnd::test
