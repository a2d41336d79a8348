#include "gui/support/WindowGeneration.h"

#include "generate/windows/FindingsWindow.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/history/History.h"

#include <QProcess>
#include <QTreeWidget>

namespace qvnd::test {
namespace {

// Documents that do not come in

// The one box of a run that goes on without the document of T.1.1.
struct WithoutOneDocument : WindowGeneration {
    void expectOneBox(const QString& text) {
        ASSERT_EQ(messages(), QStringList{text + "\n文档：编制依据（T.1.1）"});
        EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
        EXPECT_EQ(world.messages.shown[0].title, QString());
    }
};

TEST_F(WithoutOneDocument, AMissingOneCostsOneBoxAndTheFormerDocumentIsReplacedByAllTheRest) {
    open();
    writeEarlier();
    QFile::remove(fileOf("T.1.1"));
    choose("mnuBuildbid");
    expectOneBox("找不到文件“" + fileOf("T.1.1") + "”。");
    expectWholeBesidesTheFirst();
    expectUsable();
}

TEST_F(WithoutOneDocument, ADamagedOneCostsOneBoxAndTheFormerDocumentIsReplacedByAllTheRest) {
    open();
    writeEarlier();
    world.folder.write("用户模板/T/T.1.1.doc", "no document at all");
    choose("mnuBuildbid");
    expectOneBox("不能打开文件“T.1.1.doc”：不是 Word 97-2003 格式的文档。");
    expectWholeBesidesTheFirst();
    expectUsable();
}

TEST_F(WithoutOneDocument, AnEncryptedOneCostsOneBoxAndTheFormerDocumentIsReplacedByAllTheRest) {
    QByteArray bytes = world.folder.read("用户模板/T/T.1.1.doc");
    const auto fib = bytes.indexOf(QByteArray("\xEC\xA5\xC1\x00", 4));
    ASSERT_GE(fib, 0);
    bytes[fib + 11] = static_cast<char>(bytes[fib + 11] | 0x01); // fEncrypted
    world.folder.write("用户模板/T/T.1.1.doc", bytes);
    open();
    writeEarlier();
    choose("mnuBuildbid");
    expectOneBox("不能打开文件“T.1.1.doc”：设有打开密码，请去掉密码后再试。");
    expectWholeBesidesTheFirst();
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
    EXPECT_EQ(frame.status, QStringList{"最近一次生成的“施工方案.doc”没有保存成功。"});
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

TEST_F(WindowGenerationOnADisk, AFullDiskIsToldAndTheFormerDocumentIsReplacedByWhatWasSaved) {
    const SmallDisk disk(work.path(), "size=128k");
    if (!disk.isMounted()) {
        GTEST_SKIP() << "no right to mount a small disk: the full disk was not tested";
    }
    writeDocument("T.2", std::u16string(100000, u'长'));
    world.state.gWorkPath = work.root();
    open();
    writeEarlier();
    choose("mnuBuildbid");
    const QString full = "磁盘已满,无法写入文件“" + finished() + "”。";
    EXPECT_EQ(messages(), (QStringList{full + "\n文档：施工部署（T.2）", full}))
        << "of the long document and of the last save";
    expectHas({"第一章 工程概况", "依据正文"});
    expectHasNot({"先前的正文", "长", "目录"});
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
    EXPECT_EQ(messages(), (QStringList{full + "\n文档：编制依据（T.1.1）",
                                       full + "\n文档：施工部署（T.2）", full}));
    expectHasNot({"目录", "部署正文"});
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

} // namespace
} // namespace qvnd::test
