#include "platform/layout/PagedDocument.h"

#include <algorithm>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
namespace sprm = word::sprm;

class ParagraphBorders : public test::PagedDocument {};

TEST_F(ParagraphBorders, BordersBesideAParagraphStandAsFarFromItsTextAsTheySay) {
    // Half a point wide, single, black, ten points away.
    Bytes list = withSprm32({}, sprm::PBrcLeft80, 0x0A010104);
    list = withSprm32(list, sprm::PBrcRight80, 0x0A010104);
    type(u"甲\r", list);
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.rules.size(), 2U);
    EXPECT_DOUBLE_EQ(page.layer.rules[0].x1, 1000 - 200);
    EXPECT_DOUBLE_EQ(page.layer.rules[1].x1, 3000 + 200);
    EXPECT_DOUBLE_EQ(page.layer.rules[1].x2, 3000 + 200);
}

TEST_F(ParagraphBorders, ABorderTakesTheRoomOfAllItsStrokes) {
    // The stroke is 20 twips wide: single, double, a thick and a thin one with each gap, outset.
    for (const auto& [kind, room] : {std::pair(1U, 20), std::pair(3U, 60), std::pair(11U, 50),
                                     std::pair(14U, 40), std::pair(17U, 65), std::pair(26U, 55)}) {
        main = {};
        type(u"甲\r");
        type(u"乙\r", withSprm32({}, sprm::PBrcTop80, 0x00010008U | (kind << 8U)));
        const Page page = pages().at(0);
        EXPECT_DOUBLE_EQ(textAt(page, u"乙").baseline - textAt(page, u"甲").baseline, 200 + room);
    }
}

TEST_F(ParagraphBorders, TheStrokesOfADoubleBorderStandOutsideTheText) {
    Bytes list = withSprm32({}, sprm::PBrcLeft80, 0x00010308);
    list = withSprm32(list, sprm::PBrcTop80, 0x00010308);
    type(u"甲\r", list);
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.rules.size(), 4U);
    EXPECT_DOUBLE_EQ(page.layer.rules[0].x1, 1000);
    EXPECT_DOUBLE_EQ(page.layer.rules[1].x1, 1000 - 40);
    EXPECT_DOUBLE_EQ(page.layer.rules[2].y1, 1000 + 60);
    EXPECT_DOUBLE_EQ(page.layer.rules[3].y1, 1000 + 60 - 40);
}

TEST_F(ParagraphBorders, ParagraphsWithTheSameBordersShareOneBox) {
    Bytes boxed;
    for (const auto side : {sprm::PBrcTop80, sprm::PBrcLeft80, sprm::PBrcBottom80}) {
        boxed = withSprm32(boxed, side, 0x00010108); // one point
    }
    type(u"甲\r", withSprm16(boxed, sprm::PDyaAfter, 100));
    type(u"乙\r", boxed);
    type(u"丙\r");
    const auto across = [](const Page& page) {
        std::vector<double> found;
        for (const Rule& rule : page.layer.rules) {
            if (rule.y1 == rule.y2) {
                found.push_back(rule.y1);
            }
        }
        std::sort(found.begin(), found.end());
        return found;
    };
    const Page page = pages().at(0);
    EXPECT_EQ(across(page), (std::vector<double>{1020, 1020 + 200 + 100 + 200}));
    EXPECT_DOUBLE_EQ(textAt(page, u"乙").baseline - textAt(page, u"甲").baseline, 300);
    double lowest = 0;
    for (const Rule& rule : page.layer.rules) {
        lowest = rule.x1 == rule.x2 && rule.y1 < 1100 ? std::max(lowest, rule.y2) : lowest;
    }
    EXPECT_DOUBLE_EQ(lowest, 1000 + 20 + 300) << "its side reaches to the next paragraph";
    main.paragraphs[1].properties =
        intern(withSprm32(boxed, sprm::PBrcBottom80, 0x00010110)); // two points
    EXPECT_EQ(across(pages().at(0)).size(), 4U);
}

TEST_F(ParagraphBorders, ABorderMayStandBetweenParagraphsOfOneBox) {
    Bytes boxed = withSprm32({}, sprm::PBrcTop80, 0x00010108);
    boxed = withSprm32(boxed, sprm::PBrcBetween80, 0x00010108);
    type(u"甲\r乙\r丙\r", boxed);
    const Page page = pages().at(0);
    EXPECT_EQ(page.layer.rules.size(), 3U) << "on the top and twice between";
    EXPECT_DOUBLE_EQ(textAt(page, u"乙").baseline - textAt(page, u"甲").baseline, 220);
}

} // namespace
} // namespace qvnd::layout
