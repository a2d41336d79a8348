#include "platform/word/layout/PageModel.h"

#include "platform/word/layout/PageFloats.h"
#include "platform/word/layout/ParagraphBorders.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <vector>

namespace qvnd::layout {
namespace {

Fill fillAt(double x, double y, double height) { return {x, y, 5, height, 0}; }

PlacedPicture placedPicture(double x, double y, double height) {
    PlacedPicture picture;
    picture.x = x;
    picture.y = y;
    picture.height = height;
    return picture;
}

PlacedText placedText(double x, double baseline) {
    PlacedText text;
    text.x = x;
    text.baseline = baseline;
    return text; // of 200 twips
}

// Below 1000, between 10 and 50.
void cut(Layer& layer) { layer.cutBelow(1000, 10, 50); }

TEST(LayerBelow, FillsEndThereAndThoseThatBeginThereGo) {
    Layer layer;
    layer.fills = {fillAt(10, 999, 20), fillAt(10, 1000, 20), fillAt(49, 900, 100),
                   fillAt(50, 999, 20), fillAt(9.5, 1000, 20)};
    cut(layer);
    ASSERT_EQ(layer.fills.size(), 4U);
    EXPECT_DOUBLE_EQ(layer.fills[0].height, 1);
    EXPECT_DOUBLE_EQ(layer.fills[1].height, 100);
    EXPECT_DOUBLE_EQ(layer.fills[2].height, 20) << "beside the cell";
    EXPECT_DOUBLE_EQ(layer.fills[3].height, 20);
}

TEST(LayerBelow, PicturesEndThereAndThoseThatBeginThereGo) {
    Layer layer;
    layer.pictures = {placedPicture(10, 990, 10), placedPicture(10, 990, 11),
                      placedPicture(10, 1000, 5), placedPicture(50, 1000, 5),
                      placedPicture(10, 900, 200)};
    layer.pictures[4].endsAt = 950;
    cut(layer);
    ASSERT_EQ(layer.pictures.size(), 4U);
    EXPECT_EQ(layer.pictures[0].endsAt, std::nullopt);
    EXPECT_EQ(layer.pictures[1].endsAt, 1000);
    EXPECT_EQ(layer.pictures[2].endsAt, std::nullopt);
    EXPECT_EQ(layer.pictures[3].endsAt, 950) << "it was cut higher up";
}

TEST(LayerBelow, TextsEndThereAndThoseThatBeginThereGo) {
    Layer layer;
    layer.texts = {placedText(10, 930), placedText(10, 931), placedText(10, 1199),
                   placedText(10, 1200), placedText(9, 1200)};
    cut(layer);
    ASSERT_EQ(layer.texts.size(), 4U);
    EXPECT_EQ(layer.texts[0].endsAt, std::nullopt) << "its letters reach down to 1000";
    EXPECT_EQ(layer.texts[1].endsAt, 1000);
    EXPECT_EQ(layer.texts[2].endsAt, 1000);
    EXPECT_EQ(layer.texts[3].endsAt, std::nullopt);
}

TEST(LayerBelow, RulesEndThereAndThoseThatStandBelowGo) {
    const auto rule = [](double x1, double y1, double x2, double y2) {
        return Rule{x1, y1, x2, y2, 10, {}};
    };
    Layer layer;
    layer.rules = {rule(10, 900, 10, 1100),  rule(10, 1000, 50, 1000), rule(10, 1001, 50, 1001),
                   rule(10, 1001, 10, 1100), rule(50, 900, 50, 1100),  rule(60, 1200, 9, 1200)};
    cut(layer);
    ASSERT_EQ(layer.rules.size(), 4U);
    EXPECT_DOUBLE_EQ(layer.rules[0].y1, 900);
    EXPECT_DOUBLE_EQ(layer.rules[0].y2, 1000);
    EXPECT_DOUBLE_EQ(layer.rules[1].y1, 1000) << "the lower side of the cell itself";
    EXPECT_DOUBLE_EQ(layer.rules[2].y2, 1100) << "beside the cell";
    EXPECT_DOUBLE_EQ(layer.rules[3].y1, 1200) << "it begins beside the cell";
}

TEST(LayerBelow, OutlinesThatStandBelowGo) {
    const auto outline = [](double x, double y) {
        Outline mark;
        mark.path.moveTo({x + 5, y});
        mark.path.lineTo({x, y + 5});
        return mark;
    };
    Layer layer;
    layer.outlines = {outline(10, 999), outline(10, 1000), outline(9, 1000), outline(50, 1000)};
    cut(layer);
    ASSERT_EQ(layer.outlines.size(), 3U);
    EXPECT_DOUBLE_EQ(layer.outlines[0].path.points[0].y, 999);
    EXPECT_DOUBLE_EQ(layer.outlines[1].path.points[1].x, 9) << "beside the cell";
}

TEST(Layers, AllThatIsAppendedMovesAsAWhole) {
    Layer part;
    part.fills = {fillAt(1, 2, 3)};
    part.textArt.resize(1);
    part.outlines.resize(1);
    part.outlines[0].path.lineTo({1, 2});
    part.outlines[0].path.lineTo({3, 4});
    part.pictures = {placedPicture(5, 6, 7)};
    part.pictures[0].endsAt = 10;
    part.rules = {{1, 2, 3, 4, 10, {}}};
    part.texts = {placedText(8, 9)};
    part.texts[0].endsAt = 20;
    Layer page;
    page.append(part, 100, 1000);
    page.append(part, 0, 0);
    EXPECT_DOUBLE_EQ(page.fills.at(0).x, 101);
    EXPECT_DOUBLE_EQ(page.fills.at(0).y, 1002);
    EXPECT_DOUBLE_EQ(page.textArt.at(0).x, 100);
    EXPECT_DOUBLE_EQ(page.textArt.at(0).y, 1000);
    EXPECT_EQ(page.outlines.at(0).path.points, (std::vector<PathPoint>{{101, 1002}, {103, 1004}}));
    EXPECT_DOUBLE_EQ(page.pictures.at(0).x, 105);
    EXPECT_DOUBLE_EQ(page.pictures.at(0).y, 1006);
    EXPECT_EQ(page.pictures.at(0).endsAt, 1010);
    EXPECT_DOUBLE_EQ(page.rules.at(0).x1, 101);
    EXPECT_DOUBLE_EQ(page.rules.at(0).y1, 1002);
    EXPECT_DOUBLE_EQ(page.rules.at(0).x2, 103);
    EXPECT_DOUBLE_EQ(page.rules.at(0).y2, 1004);
    EXPECT_DOUBLE_EQ(page.texts.at(0).x, 108);
    EXPECT_DOUBLE_EQ(page.texts.at(0).baseline, 1009);
    EXPECT_EQ(page.texts.at(0).endsAt, 1020);
    EXPECT_DOUBLE_EQ(page.texts.at(1).x, 8);
    EXPECT_EQ(page.fills.size(), 2U);
}

TEST(PageFloats, OneOfACellIsPlacedInItsCell) {
    AnchoredFloat floating;
    floating.layer.fills = {fillAt(0, 0, 50)};
    floating.place.width = 100;
    floating.place.top = 7;
    floating.place.alignAcross = FloatPlace::Align::end;
    floating.x = 50;
    floating.y = 20;
    FloatFrame frame;
    frame.column = {1000, 0, 3000, 0};
    frame.anchorTop = 500;
    Page page;
    putOn(page, floating, frame);
    EXPECT_DOUBLE_EQ(page.layer.fills.at(0).x, 2900) << "at the column's end";
    EXPECT_DOUBLE_EQ(page.layer.fills.at(0).y, 527);
    floating.columnWidth = 300;
    putOn(page, floating, frame);
    EXPECT_DOUBLE_EQ(page.layer.fills.at(1).x, 1000 + 50 + 300 - 100);
}

TEST(PageFloats, TheirFrameIsThePaperItsMarginsAndTheColumn) {
    word::SectionPaper paper;
    paper.width = 4000;
    paper.height = 6000;
    paper.left = 500;
    paper.right = 700;
    paper.top = 300;
    paper.bottom = 900;
    const FloatFrame frame = frameOn(paper, 600, 800, 1234);
    EXPECT_DOUBLE_EQ(frame.page.right, 4000);
    EXPECT_DOUBLE_EQ(frame.page.bottom, 6000);
    EXPECT_DOUBLE_EQ(frame.margins.left, 500);
    EXPECT_DOUBLE_EQ(frame.margins.right, 3300);
    EXPECT_DOUBLE_EQ(frame.margins.top, 300);
    EXPECT_DOUBLE_EQ(frame.margins.bottom, 5100);
    EXPECT_DOUBLE_EQ(frame.column.left, 600);
    EXPECT_DOUBLE_EQ(frame.column.right, 1400);
    EXPECT_DOUBLE_EQ(frame.anchorTop, 1234);
}

TEST(SharedBoxes, ParagraphsShareOneWhereAllThatMakesItIsTheSame) {
    using Format = word::ResolvedParagraph;
    Format boxed;
    EXPECT_FALSE(shareBox(boxed, boxed)) << "without a border there is none";
    boxed.leftSide.visible = true;
    EXPECT_TRUE(shareBox(boxed, boxed));
    const std::vector<std::function<void(Format&)>> changes{
        [](Format& other) { other.topSide.visible = true; },
        [](Format& other) { other.leftSide.width = 20; },
        [](Format& other) { other.bottomSide.visible = true; },
        [](Format& other) { other.rightSide.visible = true; },
        [](Format& other) { other.between.visible = true; },
        [](Format& other) { other.left.twips = 10; },
        [](Format& other) { other.right.characters = 10; },
        [](Format& other) { other.frame.emplace(); },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        Format other = boxed;
        changes[i](other);
        EXPECT_FALSE(shareBox(boxed, other)) << i;
    }
    Format same = boxed;
    same.before = 100;
    same.firstLine.twips = 200;
    EXPECT_TRUE(shareBox(boxed, same));
    for (const auto side : {&Format::topSide, &Format::bottomSide, &Format::rightSide}) {
        Format one;
        (one.*side).visible = true;
        EXPECT_TRUE(shareBox(one, one));
    }
}

} // namespace
} // namespace qvnd::layout
