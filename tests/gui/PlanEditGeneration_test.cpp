#include "gui/support/PlanEditWindow.h"

#include "generate/windows/FindingsWindow.h"
#include "outline/CurrentPlan.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/files/Paths.h"
#include "platform/history/History.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "startup/GenerationWord.h"
#include "startup/windows/PlanEditing.h"
#include "support/ChangedVariable.h"
#include "support/FakeOffice.h"

#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QTreeWidget>

namespace qvnd::test {
namespace {

const QString busy = "对不起，请您先关闭Word文档。如不在任务栏显示请按Ctrl+Alt+Del ！";

// The plan edit window on a running generation with our own engine.
class WindowGeneration : public PlanEditWindow {
protected:
    void stop() { dlgTB()->findChild<QPushButton*>("cmdStop")->click(); }
    int progress() { return dlgTB()->findChild<QProgressBar*>("PrgBid")->value(); }
    QString label() { return dlgTB()->findChild<QLabel*>("Label1")->text(); }
    // Whenever events run: at every step of the progress, as each moves the bar by a hundredth.
    void atEachYield(const std::function<void()>& act) {
        world.events.whileServed = [this, act] {
            if (dlgTB() && !isActing_) {
                const QScopedValueRollback acting(isActing_, true);
                act();
            }
        };
    }
    bool isAt(const QString& shown, int done) { return label() == shown && progress() == done; }
    QString textOfFinished() const {
        const auto data = word::readDocument(files::toPath(finished()));
        return QString::fromStdU16String(word::documentText(data.main, data.tables));
    }
    void expectWhole() const {
        const QString text = textOfFinished();
        for (const char* piece : {"目录", "第一章 工程概况", "依据正文", "部署正文"}) {
            EXPECT_TRUE(text.contains(piece)) << piece << " is not in\n" << text.toStdString();
        }
    }
    void expectBodyAlone() const {
        const QString text = textOfFinished();
        EXPECT_TRUE(text.contains("依据正文") && text.contains("部署正文")) << text.toStdString();
        EXPECT_FALSE(text.contains("目录"));
    }

private:
    bool isActing_ = false;
};

TEST_F(WindowGeneration, TheFinishedDocumentStandsInThePreview) {
    open();
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty());
    expectWhole();
    EXPECT_EQ(preview.shown.last(), finished());
    EXPECT_TRUE(control("OleEdit").isVisible());
    expectUsable();
}

TEST_F(WindowGeneration, TheStatusBarTellsWhereTheDocumentIsAndHowManyPagesItHas) {
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(frame.status, QStringList("已生成 " + finished() + "。")) << "their number unknown";
    record.pageCount = 3;
    choose("mnuBuildbid");
    EXPECT_EQ(frame.status.last(), "已生成 " + finished() + "，共 3 页。");
}

TEST_F(WindowGeneration, AStoppedRunTellsOfNoDocument) {
    open();
    atEachYield([this] { stop(); });
    choose("mnuBuildbid");
    EXPECT_TRUE(frame.status.isEmpty());
}

TEST_F(WindowGeneration, MenuAndKeyDoTheSame) {
    open();
    key("生成标书").trigger();
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, AFormerDocumentIsReplacedWhole) {
    open();
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    expectWhole();
}

TEST_F(WindowGeneration, APlanOfOnlyARootIsRefused) {
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key<>'T'");
    open();
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), QStringList{"没有内容去生成标书！"});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    expectUsable();
}

TEST_F(WindowGeneration, AnOpenDocumentOfThePlanStopsItBeforeAnythingChanges) {
    open();
    openDocuments.open = true;
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), QStringList{busy});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    EXPECT_EQ(openDocuments.asked.size(), 2);
    expectUsable();
}

TEST_F(WindowGeneration, ADialogOnTopShowsHowFarItIs) {
    open();
    QStringList labels;
    int highest = 0;
    atEachYield([&] {
        EXPECT_TRUE(dlgTB()->windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_FALSE(dlgTB()->isModal());
        EXPECT_EQ(dlgTB()->windowTitle(), "生成卷宗编制");
        EXPECT_EQ(dlgTB()->findChild<QPushButton*>("cmdStop")->text(), "停止");
        EXPECT_TRUE(hasHourglass());
        EXPECT_FALSE(preview.isFollowing) << "the document is written again and again";
        EXPECT_NE(dlgTB()->cursor().shape(), Qt::WaitCursor) << "its button can be pressed";
        if (labels.isEmpty() || labels.last() != label()) {
            labels << label();
        }
        highest = std::max(highest, progress());
    });
    choose("mnuBuildbid");
    EXPECT_TRUE(labels.contains("正在设置封面...")) << labels.join("|").toStdString();
    EXPECT_TRUE(labels.contains("正在设置页面格式...")) << labels.join("|").toStdString();
    EXPECT_GE(highest, 860);
    expectUsable();
}

// What is shown when the button is pressed, in the order of the run.
struct Yield {
    const char* name;
    const char* label;
    int progress;
};

class StopInTheWindow : public WindowGeneration, public testing::WithParamInterface<Yield> {};

TEST_P(StopInTheWindow, EndsTheRunWithTheBodyOnDiskAndTheWindowUsable) {
    open();
    atEachYield([this] {
        if (isAt(GetParam().label, GetParam().progress)) {
            stop();
        }
    });
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    expectBodyAlone();
    EXPECT_FALSE(world.state.StopRequested);
    expectUsable();
    world.events.whileServed = {};
    choose("mnuBuildbid");
    expectWhole();
}

INSTANTIATE_TEST_SUITE_P(Yields, StopInTheWindow,
                         testing::Values(Yield{"Start", "正在生成...", 50},
                                         Yield{"Settings", "正在生成...", 150},
                                         Yield{"FirstNode", "正在生成...", 163},
                                         Yield{"LastNode", "正在生成...", 488},
                                         Yield{"Cover", "正在设置封面...", 800},
                                         Yield{"Picture", "正在设置封面...", 810},
                                         Yield{"PageTable", "正在设置封面...", 830},
                                         Yield{"HeaderTable", "正在设置页面格式...", 860},
                                         Yield{"Contents", "正在设置页面格式...", 880},
                                         Yield{"ContentsDone", "正在设置页面格式...", 900},
                                         Yield{"Header", "正在设置页眉页脚...", 900},
                                         Yield{"HeaderDone", "正在设置页眉页脚...", 950},
                                         Yield{"End", "正在设置页眉页脚...", 1000}),
                         [](const auto& yield) { return std::string(yield.param.name); });

// The word processor of the program asks in a box.
class StopWithAQuestion : public WindowGeneration {
protected:
    void stopWithTheContentsIn() {
        generation = &asking.factory();
        open();
        atEachYield([this] {
            if (isAt("正在设置页眉页脚...", 900)) {
                stop();
            }
        });
        choose("mnuBuildbid");
        ASSERT_EQ(messages(), QStringList{"是否保存对“施工方案.doc”的更改？"});
    }

    startup::GenerationWord asking{world.messages, office::OfficeSuite({}, {}), world.longRun,
                                   world.events};
};

TEST_F(StopWithAQuestion, AnsweredNoTheFileStaysAsLastSaved) {
    stopWithTheContentsIn();
    expectBodyAlone();
    expectUsable();
}

TEST_F(StopWithAQuestion, AnsweredYesTheFileIsAsItWasAtTheStop) {
    world.messages.otherwise = desktop::Answer::yes;
    stopWithTheContentsIn();
    expectWhole();
    expectUsable();
}

TEST_F(StopWithAQuestion, ASecondRunInItIsRefusedAndOtherCommandsDoNothing) {
    bool isSecond = false;
    world.messages.whileOpen = [&] {
        if (!std::exchange(isSecond, true)) {
            choose("mnuBrowsebid");
            press("返回");
            choose("mnuBuildbid");
        }
    };
    generation = &asking.factory();
    open();
    atEachYield([this] {
        if (isAt("正在设置页眉页脚...", 950)) {
            stop();
        }
    });
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), (QStringList{"是否保存对“施工方案.doc”的更改？", busy}));
    EXPECT_TRUE(frame.asked.isEmpty() && preview.shown.isEmpty());
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, WhileAStoppedRunEndsASecondOneIsRefused) {
    open();
    bool isStopped = false;
    int yields = 0;
    world.events.whileServed = [&] {
        if (isStopped) {
            ++yields;
            choose("mnuBuildbid");
            choose("mnuBrowseDoc");
        } else if (dlgTB() && label() == "正在设置封面...") {
            const QScopedValueRollback once(world.events.whileServed, {});
            stop();
            isStopped = true;
        }
    };
    choose("mnuBuildbid");
    EXPECT_EQ(yields, 1);
    EXPECT_EQ(messages(), QStringList{busy});
    EXPECT_TRUE(preview.shown.isEmpty());
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, ClosingTheDialogStopsToo) {
    open();
    atEachYield([this] {
        if (label() == "正在设置封面...") {
            dlgTB()->close();
        }
    });
    choose("mnuBuildbid");
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, StopInTheBoxOfAFailedNodeLetsTheWalkEnd) {
    open();
    QFile::remove(fileOf("T.1.1"));
    world.messages.whileOpen = [this] {
        auto* dialog = form->findChild<generate::dlgTB*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_FALSE(dialog->isVisible()) << "the box stands alone";
        dialog->findChild<QPushButton*>("cmdStop")->click();
    };
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("T.1.1.doc"));
    const QString text = textOfFinished();
    EXPECT_TRUE(text.contains("部署正文")) << text.toStdString();
    EXPECT_FALSE(text.contains("目录"));
    expectUsable();
}

TEST_F(WindowGeneration, TheDialogStaysAwayBehindAFailedLastSaveAndNoStopIsLeftForTheNextRun) {
    open();
    atEachYield([this] {
        if (progress() == 1000) {
            QFile::remove(finished());
            world.folder.makeFolder("施工方案.doc/taken");
        }
    });
    world.messages.whileOpen = [this] {
        world.events.whileServed = [this] {
            if (dlgTB()) {
                stop();
            }
        };
    };
    choose("mnuBuildbid");
    EXPECT_FALSE(messages().isEmpty());
    EXPECT_FALSE(world.state.StopRequested);
    expectUsable();
    QDir(finished()).removeRecursively();
    world.messages.shown.clear();
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty());
    expectWhole();
}

// A second command

TEST_F(WindowGeneration, AtEveryYieldASecondRunMeetsTheOpenWordProcessor) {
    open();
    int yields = 0;
    atEachYield([&] {
        ++yields;
        choose("mnuBuildbid");
        press("生成标书");
    });
    choose("mnuBuildbid");
    EXPECT_GE(yields, 13) << "at each step of the progress";
    EXPECT_EQ(messages(), QStringList(2 * yields, busy));
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, AtEveryYieldNoOtherCommandTakesTheRunsGroundAway) {
    int settings = 0;
    showSettings = [&] { ++settings; };
    open();
    atEachYield([&] {
        for (const char* name :
             {"mnuBidSet", "mnuBul", "mnuBrowsebid", "mnuBack", "mnuBidData", "mnuBidLike",
              "mnuOpenDoc", "mnuDocOpen", "mnuBrowseDoc", "mnuCheck", "mnuReport", "mnuPdf"}) {
            item(name).setEnabled(true);
            choose(name);
        }
        for (const char* name :
             {"打开类似文档", "标书设置", "浏览", "返回", "资料库", "打开文档"}) {
            press(name);
        }
        click("T.1");
    });
    choose("mnuBuildbid");
    EXPECT_EQ(settings, 0);
    EXPECT_TRUE(frame.asked.isEmpty());
    EXPECT_TRUE(shell.opened.isEmpty() && shell.started.isEmpty() && shell.basedOn.isEmpty());
    EXPECT_EQ(preview.shown, QStringList{finished()});
    EXPECT_TRUE(pdf.printed.isEmpty());
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>(), nullptr) << "neither check nor report";
    EXPECT_TRUE(messages().isEmpty());
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, ASecondRunInABoxOfTheFirstIsRefusedToo) {
    open();
    QFile::remove(fileOf("T.2"));
    bool isSecond = false;
    world.messages.whileOpen = [&] {
        if (!std::exchange(isSecond, true)) {
            choose("mnuBuildbid");
        }
    };
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(messages()[1], busy);
    EXPECT_TRUE(textOfFinished().contains("目录"));
    expectUsable();
}

// Documents that do not come in

TEST_F(WindowGeneration, AMissingDocumentCostsOneBoxAndTheRestIsThere) {
    open();
    QFile::remove(fileOf("T.1.1"));
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("T.1.1.doc")) << messages()[0].toStdString();
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
    EXPECT_TRUE(textOfFinished().contains("部署正文"));
    EXPECT_TRUE(textOfFinished().contains("编制依据")) << "its heading";
    expectUsable();
}

TEST_F(WindowGeneration, ADamagedDocumentCostsOneBoxAndTheRestIsThere) {
    open();
    world.folder.write("用户模板/T/T.1.1.doc", "no document at all");
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("不是 Word 97-2003 格式的文档"))
        << messages()[0].toStdString();
    EXPECT_TRUE(textOfFinished().contains("部署正文"));
    expectUsable();
}

TEST_F(WindowGeneration, AnEncryptedDocumentCostsOneBoxAndTheRestIsThere) {
    QByteArray bytes = world.folder.read("用户模板/T/T.1.1.doc");
    const auto fib = bytes.indexOf(QByteArray("\xEC\xA5\xC1\x00", 4));
    ASSERT_GE(fib, 0);
    bytes[fib + 11] = static_cast<char>(bytes[fib + 11] | 0x01); // fEncrypted
    world.folder.write("用户模板/T/T.1.1.doc", bytes);
    open();
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("设有打开密码")) << messages()[0].toStdString();
    EXPECT_TRUE(textOfFinished().contains("部署正文"));
    expectUsable();
}

// Open in a word processor of this desktop or of a colleague's.
TEST_F(WindowGeneration, ALockedDocumentStopsItBeforeAnythingChangesAndTheCheckNamesIt) {
    desktop::SystemProcesses processes;
    desktop::LockFiles locks(processes);
    wordProcessorWindows = &locks;
    filesInUse = &locks;
    world.folder.write("用户模板/T/.~lock.T.1.1.doc#",
                       ",colleague,another-desk,01.05.2026 09:00,file:///home/colleague;");
    world.folder.write("施工方案.doc", "earlier");
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), QStringList{busy});
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    expectUsable();
    choose("mnuCheck");
    const auto& list = *form->findChild<QTreeWidget*>("lstFindings");
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(1)->text(0), "编制依据");
    EXPECT_TRUE(list.topLevelItem(1)->text(1).contains("打开着"));
    QFile::remove(world.folder.path("用户模板/T/.~lock.T.1.1.doc#"));
    choose("mnuBuildbid");
    expectWhole();
}

TEST_F(WindowGeneration, AFinishedDocumentThatIsOpenIsNotOverwritten) {
    desktop::SystemProcesses processes;
    desktop::LockFiles locks(processes);
    wordProcessorWindows = &locks;
    world.folder.write("施工方案.doc", "earlier");
    world.folder.write(".~lock.施工方案.doc#",
                       ",colleague,another-desk,01.05.2026 09:00,file:///home/colleague;");
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), QStringList{busy});
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    expectUsable();
}

// The report

TEST_F(WindowGeneration, TheReportIsOnOfferBehindARunAndShownWhenSomethingIsMissing) {
    open();
    EXPECT_FALSE(item("mnuReport").isEnabled());
    choose("mnuBuildbid");
    EXPECT_TRUE(item("mnuReport").isEnabled());
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>("dlgReport"), nullptr);
    QFile::remove(fileOf("T.1.1"));
    record.lost = {{"T.2", "2 个脚注"}};
    choose("mnuBuildbid");
    auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->isVisible());
    auto& list = *report->findChild<QTreeWidget*>();
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(0)->text(0), "编制依据");
    EXPECT_EQ(list.topLevelItem(0)->text(1), "没有放入");
    EXPECT_EQ(list.topLevelItem(1)->text(2), "2 个脚注");
    list.setCurrentItem(list.topLevelItem(0));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    report->close();
    choose("mnuReport");
    EXPECT_TRUE(report->isVisible());
    expectUsable();
    writeDocument("T.1.1", u"依据正文");
    record.lost.clear();
    choose("mnuBuildbid");
    EXPECT_FALSE(report->isVisible()) << "it told of the run before";
}

TEST_F(WindowGeneration,
       TheReportTellsConversionsAndOtherNumbersApartAndIsNotShownForNumbersAlone) {
    using Kind = generate::CollectedLosses::Kind;
    record.lost = {{"T.2", "脚注 2 个连续编号", Kind::changed}};
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>("dlgReport"), nullptr);
    record.lost = {{"T.2", "脚注 2 个连续编号", Kind::changed},
                   {"T.1.1", "原文件是RTF 文档", Kind::converted},
                   {"T.1.1", "宏未能带入"}};
    choose("mnuBuildbid");
    const auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    ASSERT_NE(report, nullptr);
    QStringList rows;
    const auto* list = report->findChild<QTreeWidget*>();
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        rows << list->topLevelItem(row)->text(1) + "：" + list->topLevelItem(row)->text(2);
    }
    EXPECT_EQ(rows, (QStringList{"没有原样带入：宏未能带入", "已转换：原文件是RTF 文档",
                                 "编号或名称有变：脚注 2 个连续编号"}));
    expectUsable();
}

TEST_F(WindowGeneration, AnotherPlanLoadedTakesTheListsOfTheFormerAway) {
    open();
    QFile::remove(fileOf("T.1.1"));
    choose("mnuBuildbid");
    choose("mnuCheck");
    const auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    const auto* findings = form->findChild<generate::FindingsWindow*>("dlgCheck");
    ASSERT_TRUE(report && findings);
    form->Load();
    EXPECT_TRUE(report->isVisible() && findings->isVisible()) << "it is the same plan";
    world.makePlan("乙", {{"乙", "乙"}, {"乙.1", "章"}});
    outline::setCurrentPlan(*world.state.gDbUser, "乙");
    form->Load();
    EXPECT_FALSE(report->isVisible());
    EXPECT_FALSE(findings->isVisible());
    EXPECT_FALSE(item("mnuReport").isEnabled());
}

// A result that cannot be written. A folder of its name cannot be replaced.

TEST_F(WindowGeneration, AResultThatCannotBeWrittenIsToldOnceAStatementAndNotOnceANode) {
    world.folder.makeFolder("施工方案.doc/taken");
    open();
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 3) << messages().join("|").toStdString();
    EXPECT_TRUE(messages()[0].contains("施工方案.doc")) << "the first save";
    EXPECT_EQ(messages()[1], messages()[0]) << "the last save";
    EXPECT_TRUE(messages()[2].contains("施工方案.doc")) << "the opening of what was saved";
    EXPECT_EQ(unsaved, 1) << "the word processor asks as it quits";
    expectUsable();
}

TEST_F(WindowGeneration, BehindAResultThatWasNotSavedTheReportIsShownAndNothingIsClaimed) {
    world.folder.makeFolder("施工方案.doc/taken");
    open();
    choose("mnuBuildbid");
    const auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->isVisible());
    const QString summary = report->findChild<QLabel*>("lblSummary")->text();
    EXPECT_TRUE(summary.startsWith("最近一次生成的“施工方案.doc”没有保存成功。"))
        << summary.toStdString();
    EXPECT_TRUE(frame.status.isEmpty()) << frame.status.join("|").toStdString();
    expectUsable();
}

// Disks. A file system of their own needs the right to mount one.

class SmallDisk {
public:
    SmallDisk(const QString& folder, const QString& options) : folder_(folder) {
        isMounted_ =
            QProcess::execute("mount", {"-t", "tmpfs", "-o", options, "qvnd", folder}) == 0;
    }
    ~SmallDisk() {
        if (isMounted_) {
            QProcess::execute("umount", {folder_});
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isMounted() const { return isMounted_; }
    bool makeReadOnly() const {
        return QProcess::execute("mount", {"-o", "remount,ro", folder_}) == 0;
    }

private:
    QString folder_;
    bool isMounted_ = false;
};

class WindowGenerationOnADisk : public WindowGeneration {
protected:
    TemporaryFolder work;
};

TEST_F(WindowGenerationOnADisk, AFullDiskIsToldAndAReadableDocumentStays) {
    const SmallDisk disk(work.path(), "size=128k");
    if (!disk.isMounted()) {
        GTEST_SKIP() << "no right to mount a small disk: the full disk was not tested";
    }
    writeDocument("T.2", std::u16string(100000, u'长'));
    world.state.gWorkPath = work.root();
    open();
    choose("mnuBuildbid");
    const QString full = "磁盘已满,无法写入文件“" + finished() + "”。";
    EXPECT_EQ(messages(), (QStringList{full, full})) << "of the long document and of the last save";
    EXPECT_NO_THROW(word::readDocument(files::toPath(finished())));
    expectUsable();
}

TEST_F(WindowGenerationOnADisk, OnADiskWithRoomForNothingMoreTheNextRunReplacesIt) {
    const SmallDisk disk(work.path(), "size=256k");
    if (!disk.isMounted()) {
        GTEST_SKIP() << "no right to mount a small disk: the full disk was not tested";
    }
    world.state.gWorkPath = work.root();
    open();
    choose("mnuBuildbid");
    expectWhole();
    QFile filler(work.path("别的.bin"));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(1024, 'x')) > 0) {
    }
    filler.close();
    choose("mnuBuildbid");
    const QString full = "磁盘已满,无法写入文件“" + finished() + "”。";
    EXPECT_EQ(messages(), QStringList(3, full));
    EXPECT_NO_THROW(word::readDocument(files::toPath(finished())));
    expectUsable();
    filler.remove();
    choose("mnuBuildbid");
    expectWhole();
}

TEST_F(WindowGenerationOnADisk, AReadOnlyWorkFolderIsToldAndTheFormerDocumentStays) {
    const SmallDisk disk(work.path(), "size=1m");
    work.write("施工方案.doc", "earlier");
    if (!disk.isMounted() || !disk.makeReadOnly()) {
        GTEST_SKIP() << "no right to mount a disk: the read-only work folder was not tested";
    }
    world.state.gWorkPath = work.root();
    open();
    choose("mnuBuildbid");
    const QString refused = "没有写入文件“" + finished() + "”的权限,或者文件正被其他程序使用。";
    EXPECT_EQ(messages(),
              (QStringList{"没有权限：" + finished(), refused, refused,
                           "不能打开文件“施工方案.doc”：不是 Word 97-2003 格式的文档。"}))
        << "of the deletion, of the first save and the last, and of the opening of what is there";
    EXPECT_EQ(work.read("施工方案.doc"), "earlier");
    expectUsable();
}

// The folder of the history is on another disk, as a folder of the network is.
TEST_F(WindowGenerationOnADisk, AReadOnlyDocumentThatStayedIsNoChangeInTheHistory) {
    world.folder.makeFolder("只读");
    const SmallDisk disk(world.folder.path("只读"), "size=1m");
    world.folder.write("只读/施工方案.doc", "earlier");
    if (!disk.isMounted() || !disk.makeReadOnly()) {
        GTEST_SKIP() << "no right to mount a disk: the read-only work folder was not tested";
    }
    world.state.gWorkPath = world.folder.path("只读/");
    world.state.History = std::make_unique<history::History>(
        world.state.gUserTplPath + ".~history",
        history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
        *world.state.gFso, "测试");
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(world.folder.read("只读/施工方案.doc"), "earlier");
    EXPECT_FALSE(world.state.History->undoable()) << "nothing was overwritten";
    form.reset();
}

TEST_F(WindowGeneration, TheReportOfAPlanThatIsDeletedMeanwhileIsRefusedInWords) {
    open();
    choose("mnuBuildbid");
    world.state.gDbUser->Execute("DROP TABLE T");
    choose("mnuBrowseDoc");
    ASSERT_EQ(tree().outline().tree().Count(), 0);
    world.messages.shown.clear();
    choose("mnuReport");
    EXPECT_EQ(messages(), QStringList{"方案已被删除，它的生成报告不能再显示。"});
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>("dlgReport"), nullptr);
    expectUsable();
}

// The office suite, which converts documents of other formats and draws the PDF

class WindowGenerationWithASuite : public WindowGeneration {
protected:
    void withSuite(const QByteArray& script, const office::OfficeSuite::Stop& isStopped = {}) {
        suite.setScript(script);
        const office::OfficeSuite office(suite.folder.path("profile"),
                                         suite.folder.path("office.sh"), isStopped);
        real = std::make_unique<startup::GenerationWord>(world.messages, office, world.longRun,
                                                         world.events);
        generation = &real->factory();
        generationRecord = real.get();
        suitePrinter = std::make_unique<office::SuitePdfPrinter>(office);
        printer = suitePrinter.get();
    }

    FakeOffice suite;
    std::unique_ptr<startup::GenerationWord> real;
    std::unique_ptr<office::SuitePdfPrinter> suitePrinter;
};

TEST_F(WindowGenerationWithASuite,
       ASuiteKilledWhileItConvertsADocumentCostsOneBoxAndTheRestIsThere) {
    withSuite("kill -9 $$\n");
    world.folder.write("用户模板/T/T.1.1.doc", "{\\rtf1 text}");
    open();
    choose("mnuBuildbid");
    EXPECT_GE(suite.starts(), 1);
    EXPECT_EQ(messages().size(), 1) << messages().join("|").toStdString();
    EXPECT_TRUE(textOfFinished().contains("部署正文"));
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
