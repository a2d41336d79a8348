#include "generate/GenerationWorld.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::jet::Value;

namespace {

class HeaderAndFooter : public GenerationWorld {
protected:
    HeaderAndFooter() { smallPlan(); }

    void set(const QString& field, const Value& value) {
        change(settings(), u"页眉页脚表"_s, field, value);
    }
    std::string clearing() const { return linesBetween("progress 0.9", "label"); }
    std::string texts() const {
        return linesBetween("label 正在设置页眉页脚...", "Sections(1).Headers(1)");
    }
    std::string pageNumber() const { return linesOf("Sections(1).Footers(1)"); }
};

} // namespace

TEST_F(HeaderAndFooter, ASplitWindowsSecondPaneIsClosedBeforeTheClearing) {
    factory.settings.splitSpecial = 1;
    build();
    EXPECT_TRUE(clearing().starts_with(
        "ActiveWindow.View.SplitSpecial -> 1\nActiveWindow.Panes(2).Close\n"));
}

TEST_F(HeaderAndFooter, OtherViewsAreTurnedToThePageView) {
    using qvnd::word::ViewType;
    for (const ViewType type : {ViewType::normal, ViewType::outline, ViewType::master}) {
        log.lines.clear();
        factory.settings.viewType = type;
        build();
        EXPECT_TRUE(logged("ActiveWindow.ActivePane.View.Type = 3"));
    }
}

TEST_F(HeaderAndFooter, WhenTheFirstStoryIsNoHeaderTheSecondClearingIsInTheHeader) {
    factory.settings.headerFooterIsHeader = false;
    build();
    EXPECT_EQ(clearing(),
              R"(ActiveWindow.View.SplitSpecial -> 0
ActiveWindow.ActivePane.View.Type -> 3
ActiveWindow.ActivePane.View.SeekView = 9
Selection.Delete 5000
Selection.HeaderFooter.IsHeader -> false
ActiveWindow.ActivePane.View.SeekView = 9
Selection.Delete 5000
)");
}

TEST_F(HeaderAndFooter, ClearingHappensAlsoWithoutARow) {
    putEmptyTable(settings(), u"页眉页脚表"_s, headerFooterRow());
    build();
    EXPECT_EQ(linesOf("Selection.Delete"), "Selection.Delete 5000\nSelection.Delete 5000\n");
}

TEST_F(HeaderAndFooter, PositionsAreLeftMiddleAndRight) {
    set(u"页眉位置"_s, u"中");
    set(u"页脚位置"_s, u"右");
    build();
    EXPECT_EQ(texts(), R"(Selection.Font.Name = 仿宋_GB2312
Selection.Font.Size = 9
ActiveWindow.ActivePane.View.SeekView = 9
Selection.TypeText 页眉
Selection.ParagraphFormat.Alignment = 1
Selection.Font.Name = 黑体
Selection.Font.Size = 10.5
ActiveWindow.ActivePane.View.SeekView = 10
Selection.TypeText 页脚
Selection.ParagraphFormat.Alignment = 2
)");
}

TEST_F(HeaderAndFooter, OnlyTheWantedTextsAreTyped) {
    set(u"是否带页眉"_s, u"否");
    build();
    EXPECT_EQ(texts(), R"(Selection.Font.Name = 黑体
Selection.Font.Size = 10.5
ActiveWindow.ActivePane.View.SeekView = 10
Selection.TypeText 页脚
Selection.ParagraphFormat.Alignment = 1
)");
    log.lines.clear();
    set(u"是否带页脚"_s, Value());
    build();
    EXPECT_EQ(texts(), "");
}

TEST_F(HeaderAndFooter, ACentredFooterPushesThePageNumberToTheRight) {
    build();
    EXPECT_EQ(pageNumber(), "Sections(1).Footers(1).PageNumbers.Add 2, false\n");
}

TEST_F(HeaderAndFooter, ThePageNumberGoesByTheFootersPlaceEvenWithoutAFooter) {
    set(u"是否带页脚"_s, u"否");
    build();
    EXPECT_EQ(pageNumber(), "Sections(1).Footers(1).PageNumbers.Add 2, false\n");
}

TEST_F(HeaderAndFooter, AnyOtherFooterLeavesThePageNumberInTheMiddle) {
    for (const char16_t* position : {u"左", u"右", u""}) {
        log.lines.clear();
        set(u"页脚位置"_s, position);
        build();
        EXPECT_EQ(pageNumber(), "Sections(1).Footers(1).PageNumbers.Add 1, false\n");
    }
}

TEST_F(HeaderAndFooter, PageNumbersComeWhateverTheContentsShow) {
    set(u"是否显示页码"_s, u"否");
    build();
    EXPECT_EQ(pageNumber(), "Sections(1).Footers(1).PageNumbers.Add 2, false\n");
}

TEST_F(HeaderAndFooter, WithoutARowOnlyThePageNumbersComeInTheMiddle) {
    putEmptyTable(settings(), u"页眉页脚表"_s, headerFooterRow());
    build();
    EXPECT_EQ(texts(), "");
    EXPECT_EQ(linesBetween("Sections(1).Headers(1).PageNumbers.StartingNumber", "progress"),
              "Sections(1).Footers(1).PageNumbers.Add 1, false\n");
}
