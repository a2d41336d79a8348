#include "gui/support/WindowGeneration.h"

#include "startup/windows/PlanEditing.h"
#include "support/ChangedVariable.h"

#include <QThread>

namespace qvnd::test {
namespace {

TEST_F(WindowGenerationWithASuite,
       ASuiteKilledWhileItConvertsADocumentCostsOneBoxAndTheRestIsThere) {
    withSuite("kill -9 $$\n");
    world.folder.write("用户模板/T/T.1.1.doc", "{\\rtf1 text}");
    open();
    writeEarlier();
    choose("mnuBuildbid");
    EXPECT_GE(suite.starts(), 1);
    EXPECT_EQ(messages(),
              QStringList{"不能打开文件“T.1.1.doc”：不是 Word 97-2003 格式的文档，而是RTF 文档。"
                          "办公套件无法转换文件“" +
                          fileOf("T.1.1") +
                          "”。请用相应的程序打开后另存为 Word 97-2003 文档。\n"
                          "文档：编制依据（T.1.1）"});
    expectWholeBesidesTheFirst();
    expectUsable();
}

// As the program itself is put together.
TEST_F(WindowGenerationWithASuite, StopEndsASuiteThatHangsAndTellsNothingOfTheDocuments) {
    suite.setScript("sleep 600\n");
    QFile::rename(suite.folder.path("office.sh"), suite.folder.path("soffice"));
    const ChangedVariable path("PATH", suite.folder.path().toUtf8() + ":" + qgetenv("PATH"));
    const ChangedVariable cache("XDG_CACHE_HOME", suite.folder.path("cache").toUtf8());
    preview::PageConversion conversion(suite.settings());
    startup::DesktopPlanEditing editing(world.messages, world.events, world.longRun, conversion,
                                        [this] { return world.state.StopRequested; });
    generation = &editing.services().generation;
    world.folder.write("用户模板/T/T.1.1.doc", "{\\rtf1 text}");
    world.folder.write("用户模板/T/T.2.doc", "{\\rtf1 text}");
    open();
    atEachYield([this] {
        if (suite.starts() > 0) {
            stop();
        }
    });
    choose("mnuBuildbid");
    EXPECT_EQ(suite.starts(), 1) << "behind the stop no other document is converted";
    EXPECT_EQ(messages(), QStringList{"是否保存对“施工方案.doc”的更改？"});
    EXPECT_FALSE(world.state.StopRequested);
    expectUsable();
}

TEST_F(WindowGenerationWithASuite, ThePageNumbersAreOurOwnAndNoEstimates) {
    withSuite("kill -9 $$\n");
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(suite.starts(), 0);
    EXPECT_EQ(world.longRun.shown[0], "计算目录的页码 0");
    EXPECT_FALSE(world.longRun.running);
    expectWhole();
    expectUsable();
    choose("mnuReport");
    const QString summary = form->findChild<QLabel*>("lblSummary")->text();
    EXPECT_FALSE(summary.contains("估计")) << summary.toStdString();
}

// Behind progress 1.0 the pages of the whole document are laid out: the longest time of a run, and
// the only one without the dialog of the generation.
struct WhilePagesAreLaidOut : WindowGenerationWithASuite {
    WhilePagesAreLaidOut() {
        withSuite("kill -9 $$\n");
        // The windows have been left alone long enough for events to be served at the next page.
        world.longRun.atNext = [this] {
            if (world.longRun.shown.last().startsWith("正在排版")) {
                QThread::msleep(31);
            }
        };
    }
};

TEST_F(WhilePagesAreLaidOut, ASecondRunMeetsTheOpenWordProcessorAndOtherCommandsDoNothing) {
    showSettings = [this] { ++settingsShown; };
    open();
    int yields = 0;
    world.events.whileServed = [&] {
        if (world.longRun.running) {
            ++yields;
            EXPECT_EQ(dlgTB(), nullptr);
            EXPECT_TRUE(hasHourglass());
            choose("mnuBuildbid");
            press("生成标书");
            chooseAllOthers();
        }
    };
    choose("mnuBuildbid");
    EXPECT_GE(yields, 1);
    EXPECT_EQ(messages(), QStringList(2 * yields, busy));
    expectNoneOfTheOthers();
    expectWhole();
    expectUsable();
}

TEST_F(WhilePagesAreLaidOut, ACancelMakesTheOtherNumbersEstimatesAndTheReportSaysSo) {
    world.longRun.cancel = [this] { return world.longRun.shown.last().startsWith("已排 "); };
    open();
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    expectWhole();
    const auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    ASSERT_NE(report, nullptr) << "such numbers are worth a look";
    EXPECT_TRUE(report->isVisible());
    const QString summary = report->findChild<QLabel*>("lblSummary")->text();
    EXPECT_TRUE(summary.endsWith("\n目录的页码是估计的：排版在第 1 页之后被取消，"
                                 "其后的页码按已排的篇幅推算。"))
        << summary.toStdString();
    expectUsable();
    world.longRun.cancel = nullptr;
    choose("mnuBuildbid");
    EXPECT_FALSE(report->isVisible()) << "its numbers are exact";
    choose("mnuReport");
    EXPECT_FALSE(report->findChild<QLabel*>("lblSummary")->text().contains("估计"));
}

TEST_F(WindowGenerationWithASuite, ARunWithoutContentsTellsNoPagesOfTheRunBefore) {
    withSuite("kill -9 $$\n");
    open();
    choose("mnuBuildbid");
    EXPECT_TRUE(frame.status.last().contains("，共 ")) << frame.status.last().toStdString();
    world.state.gDbBidSet->Execute("DELETE * FROM 页眉页脚表");
    choose("mnuBuildbid");
    ASSERT_EQ(frame.status.size(), 2);
    EXPECT_FALSE(frame.status.last().contains("，共 ")) << frame.status.last().toStdString();
}

TEST_F(WindowGenerationWithASuite, AGenerationWhileTheContentsAreRebuiltMeetsTheOpenWordProcessor) {
    int yields = 0;
    withSuite("sleep 0.3\n", [&] {
        ++yields;
        choose("mnuBuildbid");
        press("生成标书");
        return false;
    });
    world.folder.write("施工方案.doc", "{\\rtf1 text}");
    open();
    choose("mnuBul");
    EXPECT_GE(yields, 1);
    EXPECT_EQ(messages().count(busy), 2 * yields);
    EXPECT_EQ(world.folder.read("施工方案.doc"), "{\\rtf1 text}");
    expectUsable();
}

TEST_F(WindowGenerationWithASuite, KilledWhileItDrawsThePdfTheFormerPdfStays) {
    withSuite("mkdir -p \"$out\"; printf part > \"$out/document.pdf\"; kill -9 $$\n");
    world.folder.write("施工方案.doc", "finished");
    world.folder.write("施工方案.pdf", "earlier");
    open();
    choose("mnuPdf");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].startsWith("办公套件无法转换文件")) << messages()[0].toStdString();
    EXPECT_EQ(world.folder.read("施工方案.pdf"), "earlier");
    expectUsable();
}

TEST_F(WindowGenerationWithASuite, WhileItDrawsThePdfNoOtherCommandRuns) {
    int yields = 0;
    withSuite("sleep 0.2\n" + FakeOffice::makePdf(), [&] {
        ++yields;
        choose("mnuBuildbid");
        choose("mnuPdf");
        press("返回");
        return false;
    });
    world.folder.write("施工方案.doc", "finished");
    open();
    choose("mnuPdf");
    EXPECT_GE(yields, 2);
    EXPECT_EQ(suite.starts(), 1);
    EXPECT_TRUE(frame.asked.isEmpty());
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].endsWith("施工方案.pdf"));
    expectUsable();
}

TEST_F(WindowGenerationWithASuite, WhileTheSuiteWorksTheWindowStaysAliveAndRefusesASecondRun) {
    int yields = 0;
    withSuite("sleep 1\n", [&] {
        ++yields;
        choose("mnuBuildbid");
        return false;
    });
    world.folder.write("用户模板/T/T.1.1.doc", "{\\rtf1 text}");
    open();
    choose("mnuBuildbid");
    EXPECT_GE(suite.starts(), 1);
    EXPECT_GE(yields, 2);
    EXPECT_EQ(messages().count(busy), yields);
    EXPECT_TRUE(textOfFinished().contains("部署正文"));
    expectUsable();
}

} // namespace
} // namespace qvnd::test
