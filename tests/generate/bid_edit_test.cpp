#include "generate/BidEdit.h"

#include "generate/GenerationWorld.h"
#include "support/Errors.h"
#include "support/FakeDocumentConverter.h"
#include "support/FakeFilesInUse.h"
#include "support/FakeGenerationRecord.h"
#include "support/FakeLongRun.h"
#include "support/FakePdfPrinter.h"
#include "support/FakeShell.h"
#include "support/FakeWindowLookup.h"
#include "support/OutlineWorld.h"

#include <fstream>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;
using generate::BidEdit;
using generate::BuildOutcome;

namespace {

// The plan 工程 as the open one: a folder with a document, and a document at the end.
class PlanEdit : public GenerationWorld {
protected:
    PlanEdit() {
        program.gDbUser =
            workspace.CreateDatabase(program.gUserTplPath + u"Db_UsTemplate.mdb"_s, {});
        program.gDbUser->TableDefs().Append(OutlineWorld::nameTable("当前表"));
        OutlineWorld::makeTable(*program.gDbUser, "工程",
                                {{"工程", "工程"},
                                 {"工程.1", "概况"},
                                 {"工程.1.2", "说明", "是"},
                                 {"工程.3", "附则", "是"}});
        setCurrentPlan("工程");
    }

    void setCurrentPlan(const QString& name) {
        program.gDbUser->Execute("DELETE * FROM 当前表");
        const auto current = program.gDbUser->OpenRecordset("Select * from 当前表");
        current->AddNew();
        current->Set(u"名称", name);
        current->Update();
    }
    BidEdit& loaded(const QString& select = u"工程.3"_s) {
        edit = std::make_unique<BidEdit>(
            state(), generate::BidEditServices{services(), screen, shell, lookup, inUse, pdf,
                                               longRun, record, converter});
        edit->Load();
        edit->TrvEdit.Select(edit->TrvEdit.find(select));
        edit->NodeClick();
        return *edit;
    }
    void writeFinished() const { std::ofstream(place("work") / u"施工方案.doc") << "finished"; }
    void writeCompanion() const {
        std::filesystem::create_directories(place("app") / "sys" / u"文档柜");
        std::ofstream(place("app") / "sys" / u"文档柜" / u"文档柜.exe") << "program";
    }
    QString companion() const { return program.gAppPath + u"sys/文档柜/文档柜.exe"_s; }
    QString finished() const { return program.gWorkPath + u"施工方案.doc"_s; }

    FakeShell shell;
    FakeWindowLookup lookup;
    FakeFilesInUse inUse;
    FakePdfPrinter pdf;
    FakeLongRun longRun;
    FakeGenerationRecord record;
    FakeDocumentConverter converter;
    std::unique_ptr<BidEdit> edit;
};

} // namespace

// Load and enabling

TEST_F(PlanEdit, LoadFillsTheTreeByIdAndSelectsTheLastNode) {
    loaded();
    edit->TrvEdit.Select(nullptr);
    edit->Load();
    EXPECT_EQ(edit->TrvEdit.Count(), 4);
    EXPECT_EQ(edit->TrvEdit.Item(3).Parent()->Key(), u"工程.1"_s);
    EXPECT_EQ(edit->TrvEdit.SelectedItem()->Key(), u"工程.3"_s);
    EXPECT_TRUE(edit->openDocument);
    EXPECT_EQ(wholeLog(), "");
}

TEST_F(PlanEdit, LoadedAgainTheTreeShowsThePlanThatIsOpenThen) {
    loaded();
    OutlineWorld::makeTable(*program.gDbUser, "乙", {{"乙", "乙"}, {"乙.1", "章"}});
    setCurrentPlan("乙");
    edit->Load();
    EXPECT_EQ(edit->TrvEdit.Count(), 2);
    EXPECT_FALSE(edit->openDocument);
}

TEST_F(PlanEdit, OpeningADocumentIsOnOfferOnADocumentAlone) {
    EXPECT_TRUE(loaded(u"工程.1.2"_s).openDocument);
    EXPECT_FALSE(loaded(u"工程.1"_s).openDocument);
    EXPECT_FALSE(loaded(u"工程"_s).openDocument);
    edit->TrvEdit.Select(nullptr);
    edit->NodeClick();
    EXPECT_FALSE(edit->openDocument);
}

TEST_F(PlanEdit, WithoutAnOpenPlanAnEmptyTextIsShownAndTheLoadGoesOn) {
    program.gDbUser->Execute("DELETE * FROM 当前表");
    BidEdit fresh(state(),
                  {services(), screen, shell, lookup, inUse, pdf, longRun, record, converter});
    fresh.Load();
    ASSERT_EQ(log.lines.size(), 2U) << wholeLog();
    EXPECT_EQ(log.lines[0], "message [none] ");
    EXPECT_TRUE(log.lines[1].starts_with("message [none] "));
    EXPECT_GT(log.lines[1].size(), std::string("message [none] ").size());
    EXPECT_EQ(fresh.TrvEdit.Count(), 0);
}

TEST_F(PlanEdit, AnErrorOfTheLoadShowsItsDescription) {
    setCurrentPlan("没有");
    BidEdit fresh(state(),
                  {services(), screen, shell, lookup, inUse, pdf, longRun, record, converter});
    fresh.Load();
    ASSERT_EQ(log.lines.size(), 1U) << wholeLog();
    EXPECT_NE(log.lines[0].find("没有"), std::string::npos) << log.lines[0];
}

// Preview

TEST_F(PlanEdit, BrowsingShowsTheDocumentBroughtDownToThePane) {
    loaded(u"工程.1.2"_s).mnuBrowseDoc();
    EXPECT_EQ(wholeLog(), "preview on\npreview load plans/工程/工程.1.2.doc\npreview update\n"
                          "preview shrink\npreview scroll steps\n");
}

TEST_F(PlanEdit, ADoubleClickShowsTheDocumentAtItsSizeAndUpdatesBehindTheScrollBar) {
    loaded(u"工程.1.2"_s).DblClick();
    EXPECT_EQ(wholeLog(), "preview on\npreview load plans/工程/工程.1.2.doc\n"
                          "preview scroll steps\npreview update\n");
}

TEST_F(PlanEdit, OnAFolderBothTurnThePreviewOffWithoutAMessage) {
    loaded(u"工程.1"_s).mnuBrowseDoc();
    edit->DblClick();
    EXPECT_EQ(wholeLog(), "preview off\npreview off\n");
}

TEST_F(PlanEdit, ThePreviewsPlanIsTheFirstPartOfTheKey) {
    loaded();
    edit->TrvEdit.setText(edit->TrvEdit.Item(1), u"别名"_s);
    edit->mnuBrowseDoc();
    edit->DblClick();
    EXPECT_EQ(linesOf("preview load"),
              "preview load plans/工程/工程.3.doc\npreview load plans/工程/工程.3.doc\n");
}

TEST_F(PlanEdit, AnyErrorOfBrowsingShowsOneSentenceWithItsCauseAndTheDocument) {
    log.failAt("preview load", error::fileNotFound, u"找不到文件");
    loaded().mnuBrowseDoc();
    EXPECT_EQ(linesOf("message"), "message [exclamation] 打开文档时出现意外的错误！\n找不到文件\n"
                                  "文档：附则（工程.3）\n");
    log.lines.clear();
    edit->TrvEdit.Select(nullptr);
    edit->mnuBrowseDoc();
    EXPECT_EQ(linesOf("message"), "message [exclamation] 打开文档时出现意外的错误！\n"
                                  "没有选中节点，请先选中一个节点。\n");
}

TEST_F(PlanEdit, TheDoubleClickTellsOneErrorNumberAloneWithItsCauseAndTheDocument) {
    log.failAt("preview load", 31024, u"无法显示");
    log.failAt("preview load", error::fileNotFound, u"找不到文件"); // the one behind it
    loaded().DblClick();
    EXPECT_EQ(linesOf("message"),
              "message [information, 提示] 出现意外的错误。可能是你的系统不稳定，"
              "请退出程序重新进入或是重启计算机。\n无法显示\n"
              "文档：附则（工程.3）\n");
    edit->DblClick();
    edit->TrvEdit.Select(nullptr);
    edit->DblClick();
    EXPECT_EQ(log.lines.size(), 5U) << wholeLog();
}

TEST_F(PlanEdit, WhatTurnsOutBehindBrowsingIsToldAsWhatTurnsOutAtOnce) {
    loaded().mnuBrowseDoc();
    ASSERT_TRUE(screen.lateFailure);
    edit->TrvEdit.Select(nullptr);
    screen.lateFailure(RunTimeError(error::fileNotFound, u"找不到文件"));
    EXPECT_EQ(linesOf("message"), "message [exclamation] 打开文档时出现意外的错误！\n找不到文件\n"
                                  "文档：附则（工程.3）\n");
}

TEST_F(PlanEdit, WhatTurnsOutBehindTheDoubleClickIsToldByItsNumber) {
    loaded().DblClick();
    ASSERT_TRUE(screen.lateFailure);
    screen.lateFailure(RunTimeError(error::fileNotFound, u"找不到文件"));
    EXPECT_EQ(linesOf("message"), "");
    state().modMain.Command.run(
        [&] { EXPECT_FALSE(screen.lateFailure(RunTimeError(31024, u"无法显示"))); });
    EXPECT_EQ(linesOf("message"), "") << "not within another command";
    EXPECT_TRUE(screen.lateFailure(RunTimeError(31024, u"无法显示")));
    EXPECT_EQ(linesOf("message"),
              "message [information, 提示] 出现意外的错误。可能是你的系统不稳定，"
              "请退出程序重新进入或是重启计算机。\n无法显示\n"
              "文档：附则（工程.3）\n");
}

// Opening a document

TEST_F(PlanEdit, OpenOfThePopUpLeavesThePreviewAsItIs) {
    loaded().mnuDocOpen();
    EXPECT_EQ(wholeLog(), "preview load plans/工程/工程.3.doc\npreview activate\npreview shrink\n");
}

TEST_F(PlanEdit, OpenDocumentOfTheMenuTurnsThePreviewOffAtTheEnd) {
    loaded().mnuOpenDoc();
    EXPECT_EQ(wholeLog(), "preview on\npreview load plans/工程/工程.3.doc\npreview activate\n"
                          "preview update\npreview off\n");
}

TEST_F(PlanEdit, OpeningTakesThePlansNameFromTheRootsText) {
    loaded();
    edit->TrvEdit.setText(edit->TrvEdit.Item(1), u"别名"_s);
    edit->mnuDocOpen();
    edit->mnuOpenDoc();
    EXPECT_EQ(linesOf("preview load"),
              "preview load plans/别名/工程.3.doc\npreview load plans/别名/工程.3.doc\n");
}

TEST_F(PlanEdit, AFolderOrNothingSelectedOpensNothing) {
    loaded(u"工程.1"_s).mnuDocOpen();
    edit->mnuOpenDoc();
    edit->TrvEdit.Select(nullptr);
    edit->mnuDocOpen();
    EXPECT_EQ(wholeLog(), "");
}

TEST_F(PlanEdit, ANodeWithTheImageOfASelectedDocumentIsOpenedByThePopUpAlone) {
    using namespace outline;
    loaded();
    edit->TrvEdit.Select(&edit->TrvEdit.AddChild(u"工程"_s, u"工程.4"_s, u"附图"_s,
                                                 image::documentSelected, image::documentSelected));
    edit->mnuDocOpen();
    EXPECT_EQ(wholeLog(), "preview load plans/工程/工程.4.doc\npreview activate\npreview shrink\n");
    log.lines.clear();
    edit->mnuOpenDoc();
    EXPECT_EQ(wholeLog(), "");
    edit->DblClick();
    EXPECT_EQ(wholeLog(), "preview off\n");
    edit->NodeClick();
    EXPECT_FALSE(edit->openDocument);
}

TEST_F(PlanEdit, AFailedOpeningIsToldByThePopUpsCommandAndPassesFromTheMenus) {
    log.failAt("preview activate", 31031, u"没有可以打开此文件的程序");
    log.failAt("preview activate", 31031, u"没有可以打开此文件的程序"); // the one behind it
    loaded().mnuDocOpen();
    EXPECT_EQ(linesOf("message"), "message [none] 打开文档时出现意外的错误！\n"
                                  "没有可以打开此文件的程序\n"
                                  "文档：附则（工程.3）\n");
    EXPECT_EQ(errorNumberOf([&] { edit->mnuOpenDoc(); }), 31031);
}

TEST_F(PlanEdit, ADocumentThatThePreviewRefusesIsOpenedAllTheSame) {
    for (int opening = 0; opening < 3; ++opening)
        log.failAt("preview load", error::invalidCall, u"设有打开密码");
    writeFinished();
    loaded().mnuDocOpen();
    EXPECT_EQ(wholeLog(), "preview load plans/工程/工程.3.doc\npreview activate\npreview shrink\n");
    log.lines.clear();
    edit->mnuOpenDoc();
    EXPECT_EQ(wholeLog(), "preview on\npreview load plans/工程/工程.3.doc\npreview activate\n"
                          "preview update\npreview off\n");
    log.lines.clear();
    edit->mnuBrowsebid();
    EXPECT_EQ(wholeLog(), "preview on\npreview load work/施工方案.doc\npreview activate\n"
                          "preview update\n");
}

// The finished document

TEST_F(PlanEdit, WithoutAFinishedDocumentBothWaysOfBrowsingSaySo) {
    loaded().browseAsTemplate();
    edit->mnuBrowsebid();
    EXPECT_EQ(wholeLog(), "message [exclamation] 对不起，系统尚未生成标书！\n"
                          "message [exclamation] 对不起，系统尚未生成标书！\n");
    EXPECT_TRUE(shell.basedOn.isEmpty());
}

TEST_F(PlanEdit, TheKeyOpensANewDocumentBasedOnTheFinishedOne) {
    writeFinished();
    loaded().browseAsTemplate();
    EXPECT_EQ(shell.basedOn, QStringList{finished()});
    EXPECT_EQ(wholeLog(), "");
}

TEST_F(PlanEdit, TheMenuShowsTheFinishedFileItselfAndOpensIt) {
    writeFinished();
    loaded().mnuBrowsebid();
    EXPECT_TRUE(shell.basedOn.isEmpty());
    EXPECT_EQ(wholeLog(), "preview on\npreview load work/施工方案.doc\npreview activate\n"
                          "preview update\n");
}

// The companion tool

TEST_F(PlanEdit, TheMenuStartsTheCompanionWithoutAnyTest) {
    lookup.isThere = true;
    loaded().mnuBidData();
    EXPECT_EQ(shell.started, QStringList{companion()});
    EXPECT_TRUE(lookup.asked.isEmpty());
    shell.isBroken = true;
    EXPECT_EQ(errorNumberOf([&] { edit->mnuBidData(); }), error::fileNotFound);
    EXPECT_EQ(wholeLog(), "");
}

TEST_F(PlanEdit, TheKeyActivatesTheCompanionsWindow) {
    writeCompanion();
    lookup.isThere = true;
    loaded().showBidData();
    EXPECT_EQ(lookup.asked, QStringList({u"文档柜"_s, companion()}));
    EXPECT_TRUE(shell.started.isEmpty());
}

TEST_F(PlanEdit, TheKeyStartsTheCompanionThatHasNoWindow) {
    writeCompanion();
    loaded().showBidData();
    EXPECT_EQ(shell.started, QStringList{companion()});
}

TEST_F(PlanEdit, TheKeyNamesACompanionThatIsNotThere) {
    loaded().showBidData();
    EXPECT_EQ(wholeLog(), "message [information] 没找到" + companion().toStdString() + "\n");
    EXPECT_TRUE(shell.started.isEmpty());
}

// Generation

TEST_F(PlanEdit, TheFinishedDocumentStandsInThePreview) {
    EXPECT_EQ(loaded().mnuBuildbid(), BuildOutcome::finished);
    EXPECT_EQ(linesBetween("Application.Quit", "never"),
              "preview remove\npreview load work/施工方案.doc\npreview update\npreview off\n"
              "Application dropped\npointer normal\ndlgTB.unload\npreview on\n");
}

TEST_F(PlanEdit, AStoppedRunLeavesNoDialogAndNoHourglass) {
    stopAt("progress 0.95");
    EXPECT_EQ(loaded().mnuBuildbid(), BuildOutcome::stopped);
    EXPECT_EQ(linesBetween("Application dropped", "never"), "pointer normal\ndlgTB.unload\n");
}

TEST_F(PlanEdit, AVanishedWordProcessorLeavesNoDialogAndNoHourglass) {
    log.failAt("Selection.Font.Name = 黑体", error::automationServerGone, u"远程服务器不存在");
    EXPECT_EQ(loaded().mnuBuildbid(), BuildOutcome::stopped);
    EXPECT_EQ(linesBetween("Application dropped", "never"), "pointer normal\ndlgTB.unload\n");
    EXPECT_FALSE(logged("message"));
}

TEST_F(PlanEdit, ASecondRunInTheFirstIsRefusedAndTheFirstGoesOn) {
    loaded();
    BuildOutcome second = BuildOutcome::finished;
    log.at("Selection.InsertFile", [&] { second = edit->mnuBuildbid(); });
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::finished);
    EXPECT_EQ(second, BuildOutcome::refused);
    EXPECT_EQ(linesOf("message"), "message [exclamation] 对不起，请您先关闭Word文档。"
                                  "如不在任务栏显示请按Ctrl+Alt+Del ！\n");
    EXPECT_EQ(linesOf("create Word.Application"), "create Word.Application\n");
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::finished) << "the next one may run again";
}

TEST_F(PlanEdit, RebuildingTheContentsIsRefusedForAnEmptyWorkFolderAlone) {
    loaded().mnuBul();
    EXPECT_EQ(wholeLog(), "pointer hourglass\nmessage [exclamation] 还没生成标书!\n"
                          "pointer normal\n");
    writeFinished();
    windows.open = true; // no question about open documents here
    edit->mnuBul();
    EXPECT_TRUE(logged("TablesOfContents.Add"));
    EXPECT_EQ(log.lines.back(), "pointer normal");
}

TEST_F(PlanEdit, AGenerationWhileTheContentsAreRebuiltMeetsTheOpenWordProcessor) {
    writeFinished();
    loaded();
    BuildOutcome generated = BuildOutcome::finished;
    log.at("TablesOfContents.Add", [&] { generated = edit->mnuBuildbid(); });
    edit->mnuBul();
    EXPECT_EQ(generated, BuildOutcome::refused);
    EXPECT_EQ(linesOf("message"), "message [exclamation] 对不起，请您先关闭Word文档。"
                                  "如不在任务栏显示请按Ctrl+Alt+Del ！\n");
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::finished) << "behind it a run may begin";
}

TEST_F(PlanEdit, AFailedRebuildingTakesTheHourglassAwayAndPasses) {
    writeFinished();
    log.failAt("TablesOfContents(1).Delete", error::memberNotFound, u"集合所要求的成员不存在");
    EXPECT_EQ(errorNumberOf([&] { loaded().mnuBul(); }), error::memberNotFound);
    EXPECT_EQ(log.lines.back(), "pointer normal");
}

// The report

TEST_F(PlanEdit, AFinishedRunLeavesAReport) {
    record.lost = {{u"工程.3"_s, u"2 个脚注"_s}};
    record.pageCount = 7;
    record.estimated = u"没有安装办公套件。"_s;
    log.failAt("Selection.InsertFile plans/工程/工程.1.2.doc", 5174, u"找不到该文件");
    loaded();
    EXPECT_FALSE(edit->report());
    edit->mnuBuildbid();
    ASSERT_TRUE(edit->report());
    EXPECT_EQ(edit->report()->missing[0].key, u"工程.1.2"_s);
    EXPECT_EQ(edit->report()->leftOut[0].key, u"工程.3"_s);
    EXPECT_EQ(edit->report()->pages, 7);
    EXPECT_EQ(edit->report()->whyEstimated, u"没有安装办公套件。"_s);
    EXPECT_EQ(record.cleared, 1);
}

TEST_F(PlanEdit, ARefusedRunLeavesTheReportBeforeIt) {
    record.pageCount = 7;
    loaded().mnuBuildbid();
    record.pageCount = 9;
    windows.open = true;
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::refused);
    ASSERT_TRUE(edit->report());
    EXPECT_EQ(edit->report()->pages, 7);
}

TEST_F(PlanEdit, TheReportOfAStoppedRunIsItsOwnAndSaysThatItIsNotFinished) {
    record.pageCount = 7;
    loaded().mnuBuildbid();
    stopAt("progress 0.95");
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::stopped);
    ASSERT_TRUE(edit->report());
    EXPECT_EQ(edit->report()->pages, 0) << "those of the document that was not finished";
    EXPECT_TRUE(summaryOf(*edit->report())
                    .startsWith(u"最近一次生成中途停止，“施工方案.doc”没有完成。\n3 个节点"_s))
        << summaryOf(*edit->report()).toStdString();
}

TEST_F(PlanEdit, ARunThatStopsAheadOfTheWalkTellsOfNoNodeOfTheRunBefore) {
    loaded().mnuBuildbid();
    EXPECT_TRUE(edit->report()->missing.empty());
    log.failAt("Documents.Add", error::automationServerGone, u"远程服务器不存在");
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::stopped);
    EXPECT_EQ(edit->report()->missing.size(), 3U);
    EXPECT_EQ(edit->report()->headings, 0);
}

TEST_F(PlanEdit, TheReportOfAnUnsavedRunSaysSo) {
    loaded();
    log.failAt("ActiveDocument.SaveAs", 61, u"磁盘已满", 2);
    EXPECT_EQ(edit->mnuBuildbid(), BuildOutcome::notSaved);
    ASSERT_TRUE(edit->report());
    EXPECT_TRUE(summaryOf(*edit->report())
                    .startsWith(u"最近一次生成的“施工方案.doc”没有保存成功。\n3 个节点"_s))
        << summaryOf(*edit->report()).toStdString();
}

TEST_F(PlanEdit, AnotherPlanHasNoReportOfTheFormerOne) {
    loaded().mnuBuildbid();
    edit->Load();
    EXPECT_TRUE(edit->report()) << "the same plan, loaded again";
    OutlineWorld::makeTable(*program.gDbUser, "乙", {{"乙", "乙"}, {"乙.1", "章"}});
    setCurrentPlan("乙");
    edit->Load();
    EXPECT_FALSE(edit->report());
}

// The check

TEST_F(PlanEdit, TheCheckShowsHowFarItIsAndTellsWhatItHasFound) {
    const auto found = loaded().check();
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->empty());
    EXPECT_EQ(longRun.shown, QStringList({u"生成前检查 3"_s, u"概况"_s, u"说明"_s, u"附则"_s}));
    EXPECT_EQ(wholeLog(), "pointer hourglass\nevents\nevents\nevents\npointer normal\n");
    EXPECT_FALSE(longRun.running);
}

TEST_F(PlanEdit, WhatIsNoRunTimeErrorEndsTheCheckAndTheHourglass) {
    loaded();
    log.at(
        "events", [] { throw std::logic_error("odd"); }, 2);
    EXPECT_THROW(edit->check(), std::logic_error);
    EXPECT_EQ(log.lines.back(), "pointer normal");
    EXPECT_FALSE(longRun.running);
    EXPECT_TRUE(edit->check()) << "the next one";
}

TEST_F(PlanEdit, ACancelledCheckTellsNothing) {
    longRun.cancel = [this] { return longRun.shown.size() == 3; };
    EXPECT_FALSE(loaded().check());
    EXPECT_EQ(longRun.shown.last(), u"说明"_s);
    EXPECT_EQ(log.lines.back(), "pointer normal");
    EXPECT_FALSE(longRun.running);
}

TEST_F(PlanEdit, RebuildingTheContentsShowsItsProgressAndACancelIsNoFailure) {
    writeFinished();
    log.failAt("Documents.Open", error::invalidCall, u"转换已停止。");
    longRun.cancel = [] { return true; };
    EXPECT_FALSE(loaded().mnuBul());
    EXPECT_EQ(longRun.shown, QStringList({u"生成目录 0"_s, u"正在打开“施工方案.doc”……"_s}));
    EXPECT_FALSE(longRun.running);
    EXPECT_EQ(log.lines.back(), "pointer normal");
}

// The reading of a file cannot be broken off: it ends well, behind the cancel.
TEST_F(PlanEdit, RebuildingThatIsCancelledWhileTheFileIsReadChangesNothingAndIsNoSuccess) {
    writeFinished();
    longRun.cancel = [this] { return logged("Documents.Open"); };
    EXPECT_FALSE(loaded().mnuBul());
    EXPECT_FALSE(logged("TablesOfContents")) << wholeLog();
    EXPECT_TRUE(logged("Application.Quit"));
    EXPECT_FALSE(logged("message"));
    EXPECT_FALSE(word.isAtWork());
    EXPECT_EQ(log.lines.back(), "pointer normal");
}

TEST_F(PlanEdit, RebuildingThatIsCancelledWhileTheContentsAreMadeIsNoSuccessEither) {
    writeFinished();
    longRun.cancel = [this] { return logged("TablesOfContents.Add"); };
    EXPECT_FALSE(loaded().mnuBul());
    EXPECT_TRUE(logged("ActiveDocument.Saved = true")) << wholeLog();
    EXPECT_TRUE(logged("Application.Quit"));
    EXPECT_FALSE(logged("message"));
}

// PDF

TEST_F(PlanEdit, ThePdfOfTheFinishedDocumentStandsBesideIt) {
    writeFinished();
    EXPECT_EQ(loaded().printPdf(), program.gWorkPath + u"施工方案.pdf"_s);
    EXPECT_EQ(pdf.printed, QStringList({finished()}));
    QFile made(program.gWorkPath + u"施工方案.pdf"_s);
    ASSERT_TRUE(made.open(QIODevice::ReadOnly));
    EXPECT_EQ(made.readAll(), pdf.content);
    EXPECT_EQ(wholeLog(), "pointer hourglass\npointer normal\n");
}

TEST_F(PlanEdit, WithoutADocumentOrASuiteThereIsNoPdf) {
    EXPECT_EQ(loaded().printPdf(), QString());
    EXPECT_EQ(linesOf("message"), "message [exclamation] 对不起，系统尚未生成标书！\n");
    writeFinished();
    pdf.isInstalled = false;
    EXPECT_EQ(edit->printPdf(), QString());
    EXPECT_EQ(log.lines.back(),
              "message [exclamation, 提示] 输出 PDF 需要办公软件 LibreOffice，但没有找到。");
    EXPECT_TRUE(pdf.printed.isEmpty());
}

TEST_F(PlanEdit, AFailedPdfTakesTheHourglassAwayAndPasses) {
    writeFinished();
    pdf.failure = RunTimeError(error::invalidCall, u"办公套件无法转换文件");
    EXPECT_EQ(errorNumberOf([&] { loaded().printPdf(); }), error::invalidCall);
    EXPECT_EQ(wholeLog(), "pointer hourglass\npointer normal\n");
}

TEST_F(PlanEdit, WhatIsNoRunTimeErrorOfAPreviewIsToldInWordsToo) {
    for (int i = 0; i < 2; ++i)
        log.at("preview shrink", [] { throw std::logic_error("odd"); });
    const std::string told = "打开文档时出现意外的错误！\n"
                             "程序内部出错，这一步没有完成。（odd）\n文档：附则（工程.3）\n";
    loaded().mnuBrowseDoc();
    EXPECT_EQ(linesOf("message"), "message [exclamation] " + told);
    log.lines.clear();
    edit->mnuDocOpen();
    EXPECT_EQ(linesOf("message"), "message [none] " + told);
}

TEST_F(PlanEdit, ACancelledPdfIsNoFailure) {
    writeFinished();
    pdf.failure = RunTimeError(error::invalidCall, u"转换已停止。");
    longRun.cancel = [] { return true; };
    EXPECT_EQ(loaded().printPdf(), QString());
    EXPECT_EQ(wholeLog(), "pointer hourglass\npointer normal\n");
    EXPECT_FALSE(longRun.running);
}

// The toolbar's routine

TEST_F(PlanEdit, AnErrorOfTheToolbarTakesDownDialogAndPointerAndShowsItsDescription) {
    word.hold(factory.create());
    loaded().runOfToolbar([] { throw RunTimeError(error::fileNotFound, u"找不到文件"); });
    EXPECT_EQ(linesBetween("create Word.Application", "never"),
              "dlgTB.unload\npointer normal\nApplication dropped\ndlgTB.unload\n"
              "message [none] 找不到文件\n");
}

TEST_F(PlanEdit, WhatIsNoRunTimeErrorTakesDownDialogAndPointerToo) {
    loaded().runOfToolbar([] { throw std::logic_error("odd"); });
    EXPECT_EQ(wholeLog(), "dlgTB.unload\npointer normal\ndlgTB.unload\n"
                          "message [none] 程序内部出错，这一步没有完成。（odd）\n");
    writeFinished();
    log.at("Documents.Open", [] { throw std::logic_error("odd"); });
    EXPECT_THROW(edit->mnuBul(), std::logic_error);
    EXPECT_EQ(log.lines.back(), "pointer normal");
}

TEST_F(PlanEdit, ErrorZeroOfTheToolbarShowsNothing) {
    loaded().runOfToolbar([] { throw RunTimeError(0, u""); });
    EXPECT_EQ(wholeLog(), "dlgTB.unload\npointer normal\ndlgTB.unload\n");
}

TEST_F(PlanEdit, ACommandOfTheToolbarThatEndsWellIsLeftAlone) {
    int runs = 0;
    loaded().runOfToolbar([&] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(wholeLog(), "");
}
