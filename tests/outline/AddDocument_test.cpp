#include "outline/AddDocument.h"

#include "outline/OutlineKeys.h"
#include "platform/files/Paths.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "store/OutlineFolders.h"
#include "support/Commits.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <stdexcept>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct AddDocuments : testing::Test, OutlineWorld {
    AddDocument command{state, workbench, services()};

    void choose(const QString& name, const QByteArray& content = "document") {
        folder.write("来源/" + name, content);
        dialogs.chosen = folder.path("来源/" + name);
    }
    Added beside(const QString& selectedKey) {
        openPlan("T", selectedKey);
        return command.mnuEQDoc();
    }
    Added below(const QString& selectedKey) {
        openPlan("T", selectedKey);
        return command.mnuLTDoc();
    }
    QByteArray documentOf(const QString& key) { return folder.read("用户模板/T/" + key + ".doc"); }
    QStringList names() { return column(*state.gDbUser, "T", u"名称"); }
    void expectOnly(const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, icon);
        EXPECT_EQ(messages.shown[0].title, title);
    }
};

TEST_F(AddDocuments, ADocumentThatCannotBeReadComesInAndIsRemarkedOnByItsName) {
    makePlan({"T", "T.1"});
    choose("说明.doc", "no document");
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(documentOf(command.newKey()), "no document");
    const QStringList told{"“说明.doc”已加入大纲，但生成时不能照原样放入："
                           "不是 Word 97-2003 格式的文档。"};
    EXPECT_EQ(state.Remarks, told);
    EXPECT_TRUE(messages.shown.empty());
    choose("其他.doc", "no document");
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(state.Remarks.size(), 2);
}

TEST_F(AddDocuments, ADocumentThatGenerationConvertsIsRemarkedOnWithWhatItNeeds) {
    makePlan({"T", "T.1"});
    choose("说明.doc", "{\\rtf1 text}");
    EXPECT_EQ(below("T.1"), Added::added);
    const QStringList told{"“说明.doc”已加入大纲；它不是 Word 97-2003 文档，而是RTF 文档，"
                           "生成时由办公套件转换，没有安装办公套件时不能放入。"};
    EXPECT_EQ(state.Remarks, told);
}

TEST_F(AddDocuments, ASoundDocumentAndARefusedOneNeedNoRemark) {
    makePlan({"T", "T.1"});
    choose("说明.doc");
    word::DocumentWriter().saveAs(files::toPath(folder.path("来源/说明.doc")),
                                  word::normalTemplate());
    EXPECT_EQ(below("T.1"), Added::added);
    choose("说明.doc", "no document");
    EXPECT_EQ(below("T.1"), Added::duplicateName);
    EXPECT_EQ(state.Remarks, QStringList());
}

TEST(DocumentNames, TheStoredNameIsTheTitleWithoutItsExtension) {
    EXPECT_EQ(storedName("甲.doc"), "甲");
    EXPECT_EQ(storedName("甲.乙.doc"), "甲.乙");
    EXPECT_EQ(storedName("甲.乙.丙.doc"), "甲.乙.丙");
    EXPECT_EQ(storedName(" 甲.doc "), "甲");
}

TEST(DocumentNames, TheComparedNameIsOnePartShorter) {
    EXPECT_EQ(comparedName("甲.doc"), "甲");
    EXPECT_EQ(comparedName("甲.乙.doc"), "甲");
    EXPECT_EQ(comparedName("甲.乙.丙.doc"), "甲.乙");
    EXPECT_EQ(comparedName(" 甲.doc"), " 甲");
}

TEST(DocumentNames, ATitleWithoutAPointIsKeptWholeInBoth) {
    EXPECT_EQ(storedName("甲"), "甲");
    EXPECT_EQ(comparedName("甲"), "甲");
}

// Whatever the node was when the command began

TEST_F(AddDocuments, TheTreeMayBeFilledAnewWhileTheDialogIsOpen) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.doc");
    dialogs.whileOpen = [this] { openPlan("T", "T.2"); };
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.1.1"}));
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.4", "T.2", "T.1.1"}));
}

TEST_F(AddDocuments, TheTreeMayBeFilledAnewWhileAQuestionIsOpen) {
    makePlan({"T", "T.1", "T.2"});
    dialogs.chosen = folder.path("没有.doc");
    messages.otherwise = desktop::Answer::yes;
    messages.whileOpen = [this] { openPlan("T", "T.2"); };
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.1.1"}));
}

TEST_F(AddDocuments, ANodeThatIsGoneBehindTheDialogIsTold) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.doc");
    dialogs.whileOpen = [this] { workbench.TrvCurrent.Remove("T.1"); };
    EXPECT_EQ(beside("T.1"), Added::failed);
    expectOnly("节点“名T.1”（T.1）已不存在", desktop::Icon::exclamation, "提示");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2"}));
}

// Beside the selected node

TEST_F(AddDocuments, BesideANodeTheDocumentStandsRightBehindIt) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    choose("说明.doc");
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(command.newKey(), "T.4");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.4", "T.2", "T.3"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "5", "6", "7"}));
    EXPECT_EQ(names()[2], "说明");
    EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档")[2], "是");
    EXPECT_EQ(documentOf("T.4"), "document");
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1", "T.4", "T.2", "T.3"}));
    EXPECT_EQ(workbench.TrvCurrent.Item("T.4").Image(), 5);
    EXPECT_EQ(selectedKey(), "T.4");
    EXPECT_TRUE(messages.shown.empty());
}

// A process killed in between would leave the rows behind the place out of the table.
TEST_F(AddDocuments, TheRowsThatMakeRoomLastTogetherWithTheNewOne) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    choose("说明.doc");
    test::Commits commits(state.gDbUser->Name());
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(AddDocuments, APlanNameThatNeedsBracketsIsToldAndNotTakenForAnotherTable) {
    makePlan({"T", "T.1"});
    makePlan({"T 乙", "T 乙.1", "T 乙.2"});
    choose("说明.doc");
    for (const bool isBelow : {false, true}) {
        messages.shown.clear();
        openPlan("T 乙", "T 乙.1");
        EXPECT_EQ(isBelow ? command.mnuLTDoc() : command.mnuEQDoc(), Added::failed);
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_TRUE(messages.shown[0].text.contains("T 乙"))
            << messages.shown[0].text.toStdString();
        EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
        EXPECT_EQ(keys("T 乙"), QStringList({"T 乙", "T 乙.1", "T 乙.2"}));
    }
}

TEST_F(AddDocuments, BesideANodeThePlansCopyTakesTheRowAtItsEnd) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.doc");
    beside("T.1");
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.1", "T.2", "T.3"}));
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(AddDocuments, BesideTheLastRowTheScratchTableStaysEmpty) {
    makePlan({"T", "T.1"});
    choose("说明.doc");
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_TRUE(keys("temp").isEmpty());
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(AddDocuments, AMissingScratchTableIsNoError) {
    makePlan({"T", "T.1", "T.2"});
    state.gDbUser->TableDefs().Delete("temp");
    choose("说明.doc");
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(AddDocuments, BesideANodeTheDialogBearsTheMisspeltLabel) {
    makePlan({"T", "T.1"});
    EXPECT_EQ(beside("T.1"), Added::cancelled);
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(dialogs.asked[0].title, "打开文档");
    EXPECT_EQ(dialogs.asked[0].filter, "Word 文档 (*.doc)|*.doc|RTF  格式 (*.rft)|*.rtf");
    EXPECT_EQ(dialogs.asked[0].defaultExtension, "doc");
}

TEST_F(AddDocuments, ACancelledDialogChangesNothingAndSaysNothing) {
    makePlan({"T", "T.1", "T.2"});
    EXPECT_EQ(beside("T.1"), Added::cancelled);
    EXPECT_EQ(below("T.1"), Added::cancelled);
    EXPECT_EQ(keys("T").size(), 3);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(AddDocuments, WithNothingSelectedNothingIsAsked) {
    makePlan({"T"});
    openPlan("T");
    EXPECT_EQ(command.mnuEQDoc(), Added::nothingSelected);
    EXPECT_EQ(command.mnuLTDoc(), Added::nothingSelected);
    EXPECT_TRUE(dialogs.asked.empty());
}

TEST_F(AddDocuments, BesideANodeADocumentOfTheComparedNameIsRefused) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲", "是"}, {"T.2", "乙"}});
    choose("甲.doc");
    EXPECT_EQ(beside("T.2"), Added::duplicateName);
    expectOnly("对不起，命名重复！", desktop::Icon::information, "警告！");
    EXPECT_EQ(keys("T").size(), 3);
    EXPECT_FALSE(folder.exists("用户模板/T/T.3.doc"));
}

TEST_F(AddDocuments, BesideANodeATitleOfTwoPartsIsComparedByTheFirst) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲", "是"}, {"T.2", "乙"}});
    choose("甲.乙.doc");
    EXPECT_EQ(beside("T.2"), Added::duplicateName);
}

TEST_F(AddDocuments, BesideANodeTheStoredNameItselfIsNotCompared) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲.乙", "是"}, {"T.2", "乙"}});
    choose("甲.乙.doc");
    EXPECT_EQ(beside("T.2"), Added::added);
    EXPECT_EQ(names().count("甲.乙"), 2);
}

TEST_F(AddDocuments, AFolderOfTheSameNameIsNoDuplicate) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲"}});
    choose("甲.doc");
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"), QStringList({"T", "甲", "甲"}));
}

TEST_F(AddDocuments, BelowANodeAFolderOfTheSameNameIsNoDuplicateEither) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲"}});
    choose("甲.doc");
    EXPECT_EQ(below("T"), Added::added);
}

TEST_F(AddDocuments, BlanksAroundANameCountInTheComparison) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲 ", "是"}});
    choose("甲.doc");
    EXPECT_EQ(beside("T.1"), Added::added);
}

TEST_F(AddDocuments, BesideANodeTheDepthIsNotTested) {
    const QString ninth = "T.1.1.1.1.1.1.1.1.1";
    QStringList rows{"T"};
    while (rows.last() != ninth + ".1") {
        rows << rows.last() + ".1";
    }
    makePlan(rows);
    choose("深.doc");
    EXPECT_EQ(beside(ninth + ".1"), Added::added);
    EXPECT_EQ(depthOfKey(command.newKey()), 10);
}

TEST_F(AddDocuments, BesideANodeAFileThatIsMissingMayBeMadeFromTheNormalTemplate) {
    makePlan({"T", "T.1"});
    folder.write("Word/Templates/Normal.dot", "normal");
    dialogs.chosen = folder.path("来源/新.doc");
    messages.answers = {desktop::Answer::yes};
    EXPECT_EQ(beside("T.1"), Added::added);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, *dialogs.chosen + "\n此文件不存在。要创建此文件吗？");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::question);
    EXPECT_EQ(messages.shown[0].buttons, desktop::Buttons::yesNo);
    EXPECT_EQ(documentOf("T.2"), "normal");
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(AddDocuments, WithoutTheNormalTemplateTheWordProcessorMakesTheFile) {
    makePlan({"T", "T.1"});
    dialogs.chosen = folder.path("来源/新.doc");
    messages.otherwise = desktop::Answer::yes;
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(log.lines, std::vector<std::string>({"create Word.Application", "Documents.Add",
                                                   "ActiveDocument.SaveAs 用户模板/T/T.2.doc",
                                                   "Application.Quit", "Application dropped"}));
    EXPECT_EQ(events.served, 2);
}

TEST_F(AddDocuments, BesideANodeAnAnswerOfNoLeavesTheRowsBehindItInTheScratchTable) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    dialogs.chosen = folder.path("来源/新.doc");
    EXPECT_EQ(beside("T.1"), Added::answeredNo);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(keys("temp"), QStringList({"T.2", "T.3"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1", "T.2", "T.3"}));
    EXPECT_EQ(copiedKeys("T").size(), 4);
}

TEST_F(AddDocuments, AnRtfIsNeverCopiedButPassesThroughTheWordProcessor) {
    makePlan({"T", "T.1"});
    choose("说明.rtf");
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(below("T.1"), Added::added);
    ASSERT_EQ(log.lines.size(), 10U);
    EXPECT_EQ(log.lines[1], "Documents.Open 来源/说明.rtf");
    EXPECT_EQ(log.lines[2], "OpenedDocument.SaveAs 用户模板/T/T.2.doc");
    EXPECT_EQ(log.lines[3], "Application.Quit");
    EXPECT_EQ(log.lines[7], "OpenedDocument.SaveAs 用户模板/T/T.1.1.doc");
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "说明", "说明"}));
    EXPECT_EQ(events.served, 4);
}

TEST_F(AddDocuments, AConversionShowsItsProgressAndEndsIt) {
    makePlan({"T", "T.1"});
    choose("说明.rtf");
    bool isShown = false;
    log.at("Documents.Open", [&] { isShown = longRun.running; });
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(longRun.shown, QStringList({"添加文档 0", "正在转换“说明.rtf”……"}));
    EXPECT_TRUE(isShown);
    EXPECT_FALSE(longRun.running);
}

TEST_F(AddDocuments, ACancelledConversionLeavesThePlanAsItWasWithoutAWord) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    choose("说明.rtf");
    longRun.cancel = [this] { return log.lines.size() > 1; };
    log.failAt("Documents.Open", error::invalidCall, u"转换已停止。");
    EXPECT_EQ(beside("T.1"), Added::cancelled);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.3"}));
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "名T.2", "名T.3"}));
    EXPECT_EQ(below("T.1"), Added::cancelled) << "also where the reading has ended well";
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.3"}));
    EXPECT_TRUE(messages.shown.empty());
    for (const std::string& line : log.lines) {
        EXPECT_EQ(line.find("SaveAs"), std::string::npos) << line;
    }
    EXPECT_FALSE(longRun.running);
}

TEST_F(AddDocuments, ACancelledAdditionBesideANodeCostsNoNumbers) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    choose("说明.rtf");
    longRun.cancel = [] { return true; };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(beside("T.1"), Added::cancelled);
        EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4"}));
        EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档"), QStringList(4, "否"));
    }
    longRun.cancel = nullptr;
    EXPECT_EQ(beside("T.1"), Added::added);
    EXPECT_EQ(command.newKey(), "T.4") << "as without the others";
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.4", "T.2", "T.3"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "5", "6", "7"}));
}

TEST_F(AddDocuments, WhatIsNoRunTimeErrorIsToldInWordsToo) {
    makePlan({"T", "T.1"});
    choose("说明.rtf");
    log.at("Documents.Open", [] { throw std::logic_error("odd"); });
    EXPECT_EQ(below("T.1"), Added::failed);
    expectOnly("程序内部出错，这一步没有完成。（odd）", desktop::Icon::exclamation, "提示");
    EXPECT_FALSE(longRun.running);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(below("T.1"), Added::added) << "the next one";
}

TEST_F(AddDocuments, WhateverACancelledConversionEndsWithIsNoFailure) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.rtf");
    bool isPressed = false;
    longRun.cancel = [&] { return isPressed; };
    log.at("Documents.Open", [&] {
        isPressed = true;
        throw std::logic_error("odd");
    });
    EXPECT_EQ(beside("T.1"), Added::cancelled);
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(AddDocuments, AConversionOffersToCancelAndTheCheckOfAnAddedDocumentDoesNot) {
    makePlan({"T", "T.1"});
    choose("说明.rtf");
    log.at("Documents.Open", [&] { EXPECT_TRUE(longRun.canCancel); });
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_TRUE(longRun.canCancel);
    choose("别的.doc", "no document");
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_FALSE(longRun.canCancel) << "the file is read to its end";
    EXPECT_EQ(state.Remarks.size(), 1);
}

#ifdef Q_OS_UNIX
// Puts a pipe in the place of the copy: whoever reads it waits until somebody else opens it, too.
class PipesForCopies : public files::DiskFileSystem {
public:
    void CopyFile(const QString&, const QString& target, bool) override {
        EXPECT_EQ(mkfifo(QFile::encodeName(target).constData(), 0600), 0);
    }
};

TEST_F(AddDocuments, ACopiedDocumentIsReadBesideTheDesktopsEvents) {
    makePlan({"T", "T.1"});
    choose("说明.doc");
    state.gFso = std::make_unique<PipesForCopies>();
    const QByteArray copy = QFile::encodeName(folder.path("用户模板/T/T.1.1.doc"));
    bool isRead = false;
    longRun.cancel = [&] {
        const int pipe = isRead ? -1 : ::open(copy.constData(), O_WRONLY | O_NONBLOCK);
        if (pipe >= 0) {
            isRead = true;
            QFile::remove(QFile::decodeName(copy));
            folder.write("用户模板/T/T.1.1.doc", "no document");
            ::close(pipe);
        }
        return false;
    };
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_TRUE(isRead) << "by another thread, which waited for this one";
    EXPECT_EQ(longRun.shown,
              (QStringList{"添加文档 0", "“说明.doc”已加入大纲，正在检查它能否照原样放入……"}));
    EXPECT_EQ(state.Remarks.size(), 1);
    EXPECT_FALSE(longRun.running);
}
#endif

TEST_F(AddDocuments, TheExtensionIsComparedWithoutCaseByItsLastThreeCharacters) {
    makePlan({"T", "T.1"});
    choose("一.DoC", "one");
    EXPECT_EQ(below("T"), Added::added);
    EXPECT_EQ(documentOf("T.2"), "one");
    choose("文件doc", "two");
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(documentOf("T.1.1"), "two");
    EXPECT_EQ(names().last(), "文件doc");
}

TEST_F(AddDocuments, BesideARootFailsWithTheAbsentObject) {
    makePlan({"T", "T.1"});
    choose("说明.doc");
    EXPECT_EQ(beside("T"), Added::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(keys("T").size(), 2);
}

TEST_F(AddDocuments, BesideANodeAFailureLeavesWhatWasDone) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.rtf");
    log.failAt("Documents.Open", 5174, u"无法转换此文件");
    EXPECT_EQ(beside("T.1"), Added::failed);
    expectOnly("无法转换此文件", desktop::Icon::exclamation, "提示");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(keys("temp"), QStringList({"T.2"}));
}

TEST_F(AddDocuments, BesideANodeWhoseRowIsGoneNothingIsMovedOut) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.doc");
    openPlan("T", "T.1");
    state.gDbUser->Execute("Delete * from T where Key='T.1'");
    EXPECT_EQ(command.mnuEQDoc(), Added::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(folder.names("用户模板/T"), QStringList({"T.mdb"}));
}

TEST_F(AddDocuments, AKeyThatIsTakenIsRefusedByTheStore) {
    makePlan({"T", "T.3", "T.9"});
    choose("说明.doc");
    EXPECT_EQ(beside("T.3"), Added::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(documentOf("T.3"), "document");
}

TEST_F(AddDocuments, MissingFoldersAreMade) {
    makePlan({"T", "T.1"});
    QDir(folder.path("Sys/标书模板")).removeRecursively();
    EXPECT_EQ(beside("T.1"), Added::cancelled);
    EXPECT_TRUE(folder.exists("Sys/标书模板"));
    EXPECT_TRUE(folder.exists("Sys/用户模板"));
    QDir(folder.path("Sys/标书模板")).removeRecursively();
    QDir(folder.path("用户模板/T")).removeRecursively();
    EXPECT_EQ(below("T.1"), Added::cancelled);
    EXPECT_TRUE(folder.exists("Sys/标书模板"));
    EXPECT_TRUE(folder.exists("用户模板/T"));
}

// Under the selected node

TEST_F(AddDocuments, BelowANodeTheRowGoesToTheTablesEnd) {
    makePlan({"T", "T.1", "T.1.5", "T.2"});
    choose("说明.doc");
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(command.newKey(), "T.1.2");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.5", "T.2", "T.1.2"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(copiedKeys("T"), keys("T"));
    EXPECT_EQ(documentOf("T.1.2"), "document");
    EXPECT_EQ(selectedKey(), "T.1.2");
    EXPECT_EQ(workbench.TrvCurrent.Item("T.1.2").SelectedImage(), 6);
}

TEST_F(AddDocuments, BelowANodeTheTreeIsNotRebuilt) {
    makePlan({"T", "T.1", "T.2"});
    choose("说明.doc");
    openPlan("T", "T.1");
    workbench.TrvCurrent.Expand(workbench.TrvCurrent.Item("T.2"));
    const OutlineNode* before = &workbench.TrvCurrent.Item("T.2");
    EXPECT_EQ(command.mnuLTDoc(), Added::added);
    EXPECT_EQ(&workbench.TrvCurrent.Item("T.2"), before);
    EXPECT_TRUE(before->Expanded());
}

TEST_F(AddDocuments, BothCommandsRefreshTheUsersLibraryTree) {
    makePlan({"T", "T.1"});
    choose("说明.doc");
    below("T.1");
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"T", "T.1", "T.1.1"}));
    choose("其他.doc");
    beside("T.1");
    EXPECT_EQ(shown(workbench.TrvTemplate_Us).size(), 4);
}

TEST_F(AddDocuments, BelowANodeTheDialogBearsTheRightLabel) {
    makePlan({"T", "T.1"});
    below("T.1");
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(dialogs.asked[0].title, "打开文档");
    EXPECT_EQ(dialogs.asked[0].filter, "Word文档 (*.doc)|*.doc|RTF格式 (*.rtf)|*.rtf");
}

TEST_F(AddDocuments, BelowANodeAnAnswerOfNoChangesNothing) {
    makePlan({"T", "T.1", "T.2"});
    dialogs.chosen = folder.path("来源/新.doc");
    EXPECT_EQ(below("T.1"), Added::answeredNo);
    EXPECT_EQ(messages.shown[0].text, *dialogs.chosen + "\n此文件不存在。要创建此文件？");
    EXPECT_EQ(keys("T").size(), 3);
    EXPECT_FALSE(folder.exists("用户模板/T/T.1.1.doc"));
}

TEST_F(AddDocuments, BelowANodeARefusedDepthLeavesTheFile) {
    const QString ninth = "T.1.1.1.1.1.1.1.1.1";
    QStringList rows{"T"};
    while (rows.last() != ninth) {
        rows << rows.last() + ".1";
    }
    makePlan(rows);
    choose("深.doc");
    EXPECT_EQ(below(ninth), Added::tooDeep);
    expectOnly("对不起，系统最多支持九级深度！", desktop::Icon::information, "警告！");
    EXPECT_EQ(documentOf(command.newKey()), "document");
    EXPECT_EQ(keys("T").size(), 10);
}

TEST_F(AddDocuments, TheNinthLevelIsTheDeepestBelowANode) {
    const QString eighth = "T.1.1.1.1.1.1.1.1";
    QStringList rows{"T"};
    while (rows.last() != eighth) {
        rows << rows.last() + ".1";
    }
    makePlan(rows);
    choose("深.doc");
    EXPECT_EQ(below(eighth), Added::added);
    EXPECT_EQ(depthOfKey(command.newKey()), 9);
    EXPECT_EQ(keys("T").last(), command.newKey());
}

TEST_F(AddDocuments, BelowANodeADuplicateNameLeavesTheFile) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲.乙", "是"}});
    choose("甲.乙.doc");
    EXPECT_EQ(below("T"), Added::duplicateName);
    expectOnly("对不起，命名重复！", desktop::Icon::information, "警告！");
    EXPECT_EQ(documentOf(command.newKey()), "document");
    EXPECT_EQ(keys("T").size(), 2);
}

TEST_F(AddDocuments, BelowANodeTheShortComparedNameDoesNotCount) {
    makePlan("T", {{"T", "T"}, {"T.1", "甲", "是"}});
    choose("甲.乙.doc");
    EXPECT_EQ(below("T"), Added::added);
}

TEST_F(AddDocuments, ADocumentMayStandUnderAndBesideADocument) {
    makePlan({"T", "T.1d"});
    choose("一.doc");
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(keys("T").last(), "T.1.1");
    choose("二.doc");
    EXPECT_EQ(beside("T.1.1"), Added::added);
    EXPECT_EQ(depthOfKey(command.newKey()), 2);
}

TEST_F(AddDocuments, APlanDatabaseThatIsStillOpenIsClosedFirst) {
    makePlan({"T", "T.1"});
    state.gDbPlan = state.gWs->OpenDatabase(store::planDatabasePath(state, "T"));
    choose("说明.doc");
    EXPECT_EQ(below("T.1"), Added::added);
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(AddDocuments, AMissingPlanDatabaseFailsBehindTheRow) {
    makePlan({"T", "T.1"});
    QFile::remove(folder.path("用户模板/T/T.mdb"));
    choose("说明.doc");
    EXPECT_EQ(below("T.1"), Added::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(keys("T").last(), "T.1.1");
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1"}));
}

} // namespace
