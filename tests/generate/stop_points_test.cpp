#include "generate/GenerationWorld.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::generate::BuildOutcome;

namespace {

class StopPoints : public GenerationWorld {
protected:
    StopPoints() { smallPlan(); }

    // What is written behind the line at which stop was pressed.
    std::string stoppedAt(const std::string& line, int occurrence = 1) {
        stopAt(line, occurrence);
        std::size_t pressed = 0;
        log.at(
            line, [&] { pressed = log.lines.size(); }, occurrence);
        EXPECT_EQ(build(), BuildOutcome::stopped);
        std::string behind;
        for (std::size_t i = pressed; i < log.lines.size(); ++i)
            behind += log.lines[i] + "\n";
        return behind;
    }
};

} // namespace

TEST_F(StopPoints, PressedInTheWalkTheWalkEndsAndTheCoversFirstTestStops) {
    EXPECT_EQ(stoppedAt("ActiveDocument.Save", 2),
              std::string("progress 0.8\nlabel 正在设置封面...\nParagraphs.First.Range.Select\n") +
                  stopPath);
}

TEST_F(StopPoints, PressedAtTheFirstNodeTheOtherNodesStillCome) {
    stoppedAt("Selection.TypeText 第一章");
    EXPECT_TRUE(logged("Selection.InsertFile"));
    EXPECT_EQ(linesOf("ActiveDocument.Save"),
              "ActiveDocument.SaveAs work/施工方案.doc\nActiveDocument.Save\n");
    EXPECT_FALSE(logged("Selection.Font.Bold"));
}

TEST_F(StopPoints, AfterTheProjectNameWhenEventsRan) {
    EXPECT_EQ(stoppedAt("events", 1), stopPath);
    EXPECT_FALSE(logged("progress 0.81"));
}

TEST_F(StopPoints, AfterTheCoverBreak) {
    EXPECT_EQ(stoppedAt("Selection.InsertBreak 7", 2), std::string("progress 0.83\n") + stopPath);
}

TEST_F(StopPoints, WithThePageTableOpenWhenEventsRan) {
    EXPECT_EQ(stoppedAt("events", 2), stopPath);
    EXPECT_TRUE(logged("Selection.TypeText 目录"));
    EXPECT_FALSE(logged("progress 0.86"));
}

TEST_F(StopPoints, WithTheHeaderTableNamedWhenEventsRan) {
    EXPECT_EQ(stoppedAt("events", 3), stopPath);
    EXPECT_TRUE(logged("PageSetup.FooterDistance"));
    EXPECT_FALSE(logged("progress 0.88"));
}

TEST_F(StopPoints, AfterTheContents) {
    EXPECT_EQ(stoppedAt("TablesOfContents(1).TabLeader"), std::string("progress 0.9\n") + stopPath);
}

TEST_F(StopPoints, WithHeaderAndFooterCleared) {
    EXPECT_EQ(stoppedAt("Selection.Delete", 2), stopPath);
    EXPECT_FALSE(logged("label 正在设置页眉页脚..."));
}

TEST_F(StopPoints, WithHeaderAndFooterDone) {
    EXPECT_EQ(stoppedAt("Sections(1).Footers(1).PageNumbers.Add"),
              std::string("progress 0.95\n") + stopPath);
}

TEST_F(StopPoints, AfterTheBreakOfLevelOne) {
    EXPECT_EQ(stoppedAt("ActiveWindow.ActivePane.View.SeekView = 0"),
              std::string("progress 1\n") + stopPath);
}

TEST_F(StopPoints, PressedAfterTheLastTestTheDocumentIsFinished) {
    stopAt("dlgTB.unload");
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_FALSE(logged("ActiveDocument.Close"));
    EXPECT_TRUE(program.StopRequested);
}

TEST_F(StopPoints, ACustomPageSkipsTheTestsOfTheBuiltInCover) {
    putTable(settings(), u"是否设置表"_s, {selectionRow(u"否", nullptr, u"否", nullptr, u"是")});
    putTable(settings(), u"当前自定义"_s, {{{u"路径"_s, u"甲"}}});
    EXPECT_EQ(stoppedAt("progress 0.8"),
              std::string("label 正在设置封面...\nParagraphs.First.Range.Select\n"
                          "Selection.InsertFile app/sys/自定义/甲.doc\n"
                          "Selection.InsertBreak 7\nprogress 0.83\n") +
                  stopPath);
}

TEST_F(StopPoints, TheStopPathIgnoresErrorsAndTakesTheRequestBack) {
    log.at("ActiveDocument.Close", [] { throw std::invalid_argument("two of one name"); });
    log.failAt("Application.Quit", 462, u"远程服务器不存在");
    EXPECT_EQ(stoppedAt("progress 1"), stopPath);
    EXPECT_FALSE(logged("message"));
    EXPECT_FALSE(program.StopRequested);
    EXPECT_EQ(window.LevelCounters.at(1), 0);
    EXPECT_FALSE(word.held());
}

TEST_F(StopPoints, TheStopPathLeavesTheProgressDialogToTheStopButton) {
    stoppedAt("progress 1");
    EXPECT_FALSE(logged("dlgTB.unload"));
}
