#include "outline/AddFiles.h"

#include "outline/AddDocument.h"

#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct AddingFiles : testing::Test, OutlineWorld {
    AddingFiles() {
        makePlan({"T", "T.1", "T.2"});
        openPlan("T", "T.2");
    }
    QString file(const QString& name) {
        folder.write("来源/" + name, "document");
        return folder.path("来源/" + name);
    }
    FilesAdded addBelow(const QString& key, const QStringList& files) {
        return addFiles(state, workbench, services(), key, files);
    }
    QStringList namesBelow(const QString& key) const {
        QStringList names;
        for (const OutlineNode* child : workbench.TrvCurrent.Item(key).childList()) {
            names << child->Text();
        }
        return names;
    }
    QString onlyBox() {
        EXPECT_EQ(messages.shown.size(), 1U);
        return messages.shown.empty() ? QString() : messages.shown.back().text;
    }
};

TEST_F(AddingFiles, AllComeInTheirOrderAndNothingIsTold) {
    const FilesAdded done = addBelow("T.1", {file("乙.doc"), file("甲.doc")});
    EXPECT_EQ(namesBelow("T.1"), QStringList({"乙", "甲"}));
    EXPECT_EQ(done.newKeys.size(), 2);
    EXPECT_EQ(selectedKey(), done.newKeys.back());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(dialogs.asked.empty());
}

TEST_F(AddingFiles, BesideANodeTheyStandBehindItInTheirOrder) {
    addFiles(state, workbench, services(), "T.1", {file("乙.doc"), file("甲.doc")},
             AddMode::beside);
    EXPECT_EQ(namesBelow("T"), QStringList({"名T.1", "乙", "甲", "名T.2"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(AddingFiles, OfSeveralThatAreChosenInTheDialogAllComeIn) {
    dialogs.chosen = file("甲.doc");
    dialogs.several = {file("乙.doc")};
    AddDocument command(state, workbench, services());
    EXPECT_EQ(command.mnuLTDoc(), Added::added);
    EXPECT_EQ(namesBelow("T.2"), QStringList({"甲", "乙"}));
    EXPECT_EQ(selectedKey(), command.newKey());
    EXPECT_EQ(dialogs.asked.size(), 1U);
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(QString("T.1")));
    EXPECT_EQ(AddDocument(state, workbench, services()).mnuEQDoc(), Added::added);
    EXPECT_EQ(namesBelow("T"), QStringList({"名T.1", "甲", "乙", "名T.2"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(AddingFiles, OfSeveralThatAreChosenTheRefusedOnesAreToldTogether) {
    dialogs.chosen = file("甲.doc");
    dialogs.several = {file("甲.doc"), file("乙.doc")};
    EXPECT_EQ(AddDocument(state, workbench, services()).mnuLTDoc(), Added::added);
    EXPECT_EQ(onlyBox(), "已添加 2 个文档。\n下列 1 个没有添加：\n甲.doc：对不起，命名重复！");
}

TEST_F(AddingFiles, OfSeveralThatAreChosenAndAllRefusedNoneComesIn) {
    dialogs.chosen = folder.path("来源/一.doc");
    dialogs.several = {folder.path("来源/二.doc")};
    EXPECT_EQ(AddDocument(state, workbench, services()).mnuLTDoc(), Added::failed);
    EXPECT_EQ(onlyBox(), "没有添加任何文档。\n下列 2 个没有添加：\n一.doc、二.doc：文件已不存在。");
    EXPECT_EQ(namesBelow("T.2"), QStringList());
}

TEST_F(AddingFiles, OneBoxAtTheEndListsWhatWasRefusedAndWhyEachReasonOnce) {
    folder.makeFolder("来源/图纸");
    addBelow("T.1", {file("甲.doc"), file("甲.doc"), folder.path("来源/图纸"), file("乙.doc"),
                     file("乙.doc"), folder.path("来源/没有.doc")});
    EXPECT_EQ(onlyBox(),
              "已添加 2 个文档。\n下列 4 个没有添加：\n甲.doc、乙.doc：对不起，命名重复！\n"
              "图纸：这是文件夹，请打开它，拖放其中的文件。\n没有.doc：文件已不存在。");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(namesBelow("T.1"), QStringList({"甲", "乙"}));
}

TEST_F(AddingFiles, ADroppedFolderAloneIsToldToo) {
    folder.makeFolder("来源/图纸");
    addBelow("T.1", {folder.path("来源/图纸")});
    EXPECT_EQ(onlyBox(), "没有添加任何文档。\n下列 1 个没有添加：\n"
                         "图纸：这是文件夹，请打开它，拖放其中的文件。");
    EXPECT_EQ(keys("T").size(), 3);
}

TEST_F(AddingFiles, AFailureIsListedByItsDescriptionAndTheNextFileFollows) {
    folder.write("用户模板/T/T.1.1.doc/in the way", "");
    const FilesAdded done = addBelow("T.1", {file("甲.doc"), file("乙.doc")});
    EXPECT_EQ(done.newKeys.size() + static_cast<qsizetype>(done.refused.size()), 2);
    EXPECT_FALSE(done.refused.empty());
    EXPECT_FALSE(done.refused[0].reason.isEmpty());
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(AddingFiles, ManyNamesOfOneReasonAreCountedSoThatTheBoxStaysOnTheScreen) {
    QStringList files;
    for (int i = 0; i < 31; ++i) {
        files << folder.path(QStringLiteral("来源/%1.doc").arg(i));
    }
    addBelow("T.1", files);
    EXPECT_TRUE(onlyBox().contains("18.doc、19.doc 等 31 个文件：文件已不存在。"))
        << onlyBox().toStdString();
}

TEST_F(AddingFiles, TwentyNamesOfOneReasonAreAllListedAndNotCounted) {
    QStringList files;
    for (int i = 0; i < 20; ++i) {
        files << folder.path(QStringLiteral("来源/%1.doc").arg(i));
    }
    addBelow("T.1", files);
    EXPECT_TRUE(onlyBox().contains("18.doc、19.doc：文件已不存在。")) << onlyBox().toStdString();
}

TEST_F(AddingFiles, FilesThatCannotBeReadAreRemarkedOnTheFirstFiveByName) {
    QStringList files;
    for (int i = 0; i < 5; ++i) {
        files << file(QString::number(i) + ".doc");
    }
    addBelow("T.1", files);
    ASSERT_EQ(state.Remarks.size(), 5);
    EXPECT_TRUE(state.Remarks[4].startsWith("“4.doc”已加入大纲"));
    EXPECT_TRUE(messages.shown.empty());
    state.Remarks = QStringList("早先的");
    addBelow("T.2", files + QStringList({file("5.doc"), file("6.doc")}));
    ASSERT_EQ(state.Remarks.size(), 7);
    EXPECT_EQ(state.Remarks.first(), "早先的");
    EXPECT_EQ(state.Remarks.last(), "另有 2 个文件也不能照原样放入。");
    state.Remarks.clear();
    addBelow("T", files + QStringList(file("5.doc")));
    ASSERT_EQ(state.Remarks.size(), 6);
    EXPECT_EQ(state.Remarks.last(), "另有 1 个文件也不能照原样放入。");
}

TEST_F(AddingFiles, TheProgressNamesEachFileAndEnds) {
    addBelow("T.1", {file("甲.doc"), file("乙.doc")});
    EXPECT_EQ(longRun.shown,
              QStringList({"添加文档 2", "正在添加 甲.doc（1/2）", "正在添加 乙.doc（2/2）"}));
    EXPECT_FALSE(longRun.running);
}

TEST_F(AddingFiles, CancellingLeavesTheRestAndSaysHowMany) {
    longRun.cancel = [this] { return longRun.shown.size() > 2; };
    const FilesAdded done = addBelow("T.1", {file("甲.doc"), file("乙.doc"), file("丙.doc")});
    EXPECT_EQ(done.left, 2);
    EXPECT_EQ(namesBelow("T.1"), QStringList({"甲"}));
    EXPECT_EQ(onlyBox(), "已添加 1 个文档。\n已取消，其余 2 个没有添加。");
}

TEST_F(AddingFiles, AFileThatIsDoneAsTheUserCancelsIsNotAmongTheRest) {
    bool pressed = false;
    longRun.cancel = [&] { return pressed; };
    log.at("OpenedDocument.SaveAs", [&] { pressed = true; });
    const FilesAdded done = addBelow("T.1", {file("甲.rtf"), file("乙.doc")});
    EXPECT_EQ(done.newKeys.size(), 1);
    EXPECT_EQ(done.left, 1);
    EXPECT_EQ(onlyBox(), "已添加 1 个文档。\n已取消，其余 1 个没有添加。");
}

TEST_F(AddingFiles, AConversionThatIsCancelledIsNotToldAsRefused) {
    bool pressed = false;
    longRun.cancel = [&] { return pressed; };
    log.at("Documents.Open", [&] { pressed = true; });
    log.failAt("Documents.Open", error::invalidCall, u"转换已停止。");
    const FilesAdded done = addBelow("T.1", {file("甲.rtf"), file("乙.doc")});
    EXPECT_TRUE(done.refused.empty());
    EXPECT_EQ(done.left, 2);
    EXPECT_EQ(onlyBox(), "没有添加任何文档。\n已取消，其余 2 个没有添加。");
}

TEST_F(AddingFiles, AFileThatFailsUnexpectedlyIsListedAndTheNextOneFollows) {
    log.at("Documents.Open", [] { throw std::logic_error("odd"); });
    const FilesAdded done = addBelow("T.1", {file("甲.rtf"), file("乙.doc")});
    EXPECT_EQ(done.newKeys.size(), 1);
    EXPECT_EQ(onlyBox(), "已添加 1 个文档。\n下列 1 个没有添加：\n"
                         "甲.rtf：程序内部出错，这一步没有完成。（odd）");
}

TEST_F(AddingFiles, TheCheckOfAFileLeavesItToTheWholeWhetherItCanBeCancelled) {
    addBelow("T.1", {file("甲.doc"), file("乙.doc")});
    EXPECT_TRUE(longRun.canCancel);
}

TEST_F(AddingFiles, AConversionBesideANodeThatIsCancelledLeavesTheNodesBehindIt) {
    bool pressed = false;
    longRun.cancel = [&] { return pressed; };
    log.at("Documents.Open", [&] { pressed = true; });
    addFiles(state, workbench, services(), "T.1", {file("甲.rtf")}, AddMode::beside);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3"}));
    EXPECT_EQ(onlyBox(), "没有添加任何文档。\n已取消，其余 1 个没有添加。");
}

// A listed plan whose name no statement can hold lets every refresh of the library fail.
TEST_F(AddingFiles, WhatFailsBehindAnAdditionIsListedInTheOneBoxAtTheEnd) {
    folder.makeFolder("用户模板/坏'名");
    registerName(*state.gDbUser, "坏'名");
    const FilesAdded done = addBelow("T.1", {file("甲.doc"), file("乙.doc")});
    EXPECT_EQ(done.newKeys.size(), 2);
    EXPECT_EQ(onlyBox(), "已添加 2 个文档。\n下列 2 个已添加，但随后出错：\n"
                         "甲.doc、乙.doc：更新标书模板库时发生错误!");
}

TEST_F(AddingFiles, TheProgressGoesWhenAnErrorEndsTheCommand) {
    longRun.cancel = []() -> bool { throw RunTimeError(error::storeFailed, u"读写出错"); };
    EXPECT_THROW(addBelow("T.1", {file("甲.doc")}), RunTimeError);
    EXPECT_FALSE(longRun.running);
}

TEST_F(AddingFiles, ATargetThatGoesInBetweenIsTold) {
    longRun.cancel = [this] {
        if (longRun.shown.size() == 3 && workbench.TrvCurrent.find("T.1")) {
            workbench.TrvCurrent.Remove("T.1");
        }
        return false;
    };
    const FilesAdded done = addBelow("T.1", {file("甲.doc"), file("乙.doc")});
    EXPECT_EQ(done.newKeys.size(), 1);
    EXPECT_EQ(onlyBox(),
              "已添加 1 个文档。\n下列 1 个没有添加：\n乙.doc：要添加到的节点已不存在。");
}

} // namespace
