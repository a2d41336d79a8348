#include "gui/support/PlanEditWindow.h"

#include "generate/windows/FindingsWindow.h"

#include "platform/files/Paths.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "startup/GenerationWord.h"
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
    // Whenever events run.
    void atEachYield(const std::function<void()>& act) {
        world.events.whileServed = [this, act] {
            if (dlgTB() && !isActing_) {
                const QScopedValueRollback acting(isActing_, true);
                act();
            }
        };
    }
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
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
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

// The three points of the cover, the page and the header where events run, by what has been shown.
struct Yield {
    const char* name;
    const char* label;
    int progress;
};

class StopInTheWindow : public WindowGeneration, public testing::WithParamInterface<Yield> {};

TEST_P(StopInTheWindow, EndsTheRunWithTheBodyOnDiskAndTheWindowUsable) {
    open();
    atEachYield([this] {
        if (label() == GetParam().label && progress() == GetParam().progress) {
            stop();
        }
    });
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().size() <= 1) << messages().join("|").toStdString();
    expectBodyAlone();
    EXPECT_FALSE(world.state.StopRequested);
    expectUsable();
    world.events.whileServed = {};
    choose("mnuBuildbid");
    expectWhole();
}

INSTANTIATE_TEST_SUITE_P(Yields, StopInTheWindow,
                         testing::Values(Yield{"Cover", "正在设置封面...", 800},
                                         Yield{"PageTable", "正在设置封面...", 830},
                                         Yield{"HeaderTable", "正在设置页面格式...", 860}),
                         [](const auto& yield) { return std::string(yield.param.name); });

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
    EXPECT_GE(yields, 4);
    EXPECT_EQ(messages(), QStringList(2 * yields, busy));
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, AtEveryYieldNoOtherCommandTakesTheRunsGroundAway) {
    int settings = 0;
    showSettings = [&] { ++settings; };
    open();
    atEachYield([&] {
        for (const char* name : {"mnuBidSet", "mnuBul", "mnuBrowsebid", "mnuBack", "mnuBidData",
                                 "mnuBidLike", "mnuOpenDoc", "mnuDocOpen", "mnuBrowseDoc"}) {
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
    ASSERT_FALSE(messages().isEmpty());
    EXPECT_TRUE(messages()[0].contains("磁盘")) << messages()[0].toStdString();
    EXPECT_NO_THROW(word::readDocument(files::toPath(finished())));
    expectUsable();
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
    EXPECT_FALSE(messages().isEmpty());
    EXPECT_EQ(work.read("施工方案.doc"), "earlier");
    expectUsable();
}

// The office suite that tells the page numbers

class WindowGenerationWithASuite : public WindowGeneration {
protected:
    void withSuite(const QByteArray& script, const office::OfficeSuite::Stop& isStopped = {}) {
        suite.setScript(script);
        real = std::make_unique<startup::GenerationWord>(
            world.messages, office::OfficeSuite(suite.folder.path("profile"),
                                                suite.folder.path("office.sh"), isStopped));
        generation = &real->factory();
    }

    FakeOffice suite;
    std::unique_ptr<startup::GenerationWord> real;
};

TEST_F(WindowGenerationWithASuite, ASuiteThatIsKilledLeavesTheEstimate) {
    withSuite("kill -9 $$\n");
    open();
    choose("mnuBuildbid");
    EXPECT_GE(suite.starts(), 1);
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    expectWhole();
    expectUsable();
}

TEST_F(WindowGenerationWithASuite, WhileTheSuiteWorksTheWindowStaysAliveAndRefusesASecondRun) {
    int yields = 0;
    withSuite("sleep 1\n", [&] {
        ++yields;
        choose("mnuBuildbid");
        return false;
    });
    open();
    choose("mnuBuildbid");
    EXPECT_GE(suite.starts(), 1);
    EXPECT_GE(yields, 2);
    EXPECT_EQ(messages(), QStringList(yields, busy));
    expectWhole();
    expectUsable();
}

} // namespace
} // namespace qvnd::test
