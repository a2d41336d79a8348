#include "whole/RecordedPlanner.h"

using namespace qvnd;

namespace {

// Commands that take more than their names say: they do what their rules want, the user is told,
// and one undo brings all back, also after a restart. Plan 甲 with twelve folders 甲.1 to 甲.12, of
// which 甲.1 has a child, and a document 甲.14 behind them.
class LossyRule : public test::RecordedPlanner {
protected:
    LossyRule() {
        planner.newPlan("甲");
        planner.messages.otherwise = desktop::Answer::yes;
        for (int i = 1; i <= 12; ++i) {
            planner.click("甲");
            planner.addFolder(outline::AddMode::below, "章" + QString::number(i));
        }
        planner.click("甲.1");
        planner.addFolder(outline::AddMode::below, "节");
        planner.folder.write("files/文.doc", "text");
        planner.click("甲");
        planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
        documentKey = planner.current().Item(planner.current().Count()).Key();
    }

    // What the user is told.
    QString noteOf(const QString& caption, const std::function<void()>& command) {
        return record(caption, command).note;
    }
    QString fileOf(const QString& key) const { return "Sys/用户模板/甲/" + key + ".doc"; }

    QString documentKey;
};

TEST_F(LossyRule, DeletingAKeyTakesTheKeysThatBeginWithItAlong) {
    planner.click("甲.1");
    const QString note = noteOf("删除", [&] { planner.deleteNode(); });
    // 甲.10 to 甲.12 and 甲.14; the child of 甲.1 goes as was asked.
    EXPECT_EQ(note, "同时移除了 4 个节点：章10、章11、章12、文");
}

TEST_F(LossyRule, NoToAMissingFileLeavesTheFollowingRowsOut) {
    planner.click("甲.2");
    const QString note = noteOf("同级", [&] {
        planner.addDocument(outline::AddMode::beside, planner.folder.path("files/没有.doc"), false);
    });
    EXPECT_TRUE(note.startsWith("同时移除了 ")) << note.toStdString();
    EXPECT_TRUE(note.contains("章3")) << note.toStdString();
}

// The rows that were left out stand in the scratch table alone, which the next insertion makes
// anew.
TEST_F(LossyRule, RowsThatWereLeftOutComeBackAlsoWhenTheScratchTableHasLostThem) {
    planner.click("甲.2");
    const test::WorkSpaceState before = onDisk();
    const auto recorded = [&](const std::function<void()>& command) {
        outline::RecordedCommand frame(planner.state(), planner.current(), "添加同级",
                                       planner.messages);
        command();
    };
    recorded([&] {
        planner.addDocument(outline::AddMode::beside, planner.folder.path("files/没有.doc"), false);
    });
    recorded([&] { planner.addFolder(outline::AddMode::beside, "新"); });
    EXPECT_EQ(planner.state().gDbUser->OpenRecordset("Select * from temp")->RecordCount(), 0);
    planner.restart();
    outline::undo(planner.state(), planner.workbench(), planner.services());
    outline::undo(planner.state(), planner.workbench(), planner.services());
    test::expectSame(onDisk(), before);
}

TEST_F(LossyRule, ADocumentWithoutItsFileLosesItsNode) {
    QFile::remove(planner.folder.path(fileOf(documentKey)));
    planner.click(documentKey);
    EXPECT_EQ(noteOf("浏览", [&] { planner.doubleClick(); }), "同时移除了 1 个节点：文");
}

TEST_F(LossyRule, ANewPlanOverAnOldOneTakesItsFiles) {
    const QString note = noteOf("新建方案", [&] { planner.newPlan("甲", true); });
    EXPECT_TRUE(note.contains("删去了 1 个文件：" + documentKey + ".doc")) << note.toStdString();
}

TEST_F(LossyRule, ARefreshForgetsAnOutlineWhoseFolderIsGone) {
    planner.newPlan("乙");
    QDir(planner.folder.path("Sys/用户模板/甲")).removeRecursively();
    planner.click("乙");
    const QString note = noteOf("下级", [&] {
        planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    });
    EXPECT_TRUE(note.contains("不再列出：甲")) << note.toStdString();
}

TEST_F(LossyRule, ARefusedDocumentLeavesItsCopyBehind) {
    planner.click("甲");
    const QString note = noteOf("下级", [&] {
        planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    });
    EXPECT_TRUE(note.startsWith("留下了没有节点的文件：")) << note.toStdString();
}

TEST_F(LossyRule, AFileThatStandsInTheWayIsOverwritten) {
    planner.click("甲");
    planner.addFolder(outline::AddMode::below, "探");
    const QString last = planner.current().Item(planner.current().Count()).Key();
    planner.click(last);
    planner.deleteNode();
    // The same count gives the same key again.
    planner.folder.write(fileOf(last), "mine");
    planner.folder.write("files/新.doc", "new");
    planner.click("甲");
    const QString note = noteOf("下级", [&] {
        planner.addDocument(outline::AddMode::below, planner.folder.path("files/新.doc"));
    });
    // Its three letters are no document, which is told, too.
    EXPECT_EQ(note, "覆盖了 1 个文件：" + last +
                        ".doc\n“新.doc”已加入大纲，但生成时不能照原样"
                        "放入：不是 Word 97-2003 格式的文档。");
}

TEST_F(LossyRule, AFolderDroppedOnItsOwnChildIsGone) {
    const QString child = [&] {
        for (int i = 1; i <= planner.current().Count(); ++i) {
            if (planner.current().Item(i).Text() == u"节") {
                return planner.current().Item(i).Key();
            }
        }
        return QString();
    }();
    planner.click("甲.1");
    const QString note = noteOf("拖放", [&] { planner.drag("甲.1", child); });
    EXPECT_TRUE(note.contains("大纲中不再显示")) << note.toStdString();
}

TEST_F(LossyRule, WhatIsBelowADocumentWithoutItsFileStaysInTheTableUnseen) {
    planner.click(documentKey);
    planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    QFile::remove(planner.folder.path(fileOf(documentKey)));
    planner.click(documentKey);
    EXPECT_EQ(noteOf("浏览", [&] { planner.doubleClick(); }),
              "同时移除了 1 个节点：文\n1 个节点的上级已不在，大纲中不再显示：文");
}

// An outline is shown up to the first node whose parent is not there.
TEST_F(LossyRule, WhatLiesBehindANodeWithoutItsParentIsNotShownEither) {
    planner.click(documentKey);
    planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    for (const char* name : {"末", "终"}) {
        planner.click("甲");
        planner.addFolder(outline::AddMode::below, name);
    }
    QFile::remove(planner.folder.path(fileOf(documentKey)));
    planner.click(documentKey);
    EXPECT_EQ(noteOf("浏览", [&] { planner.doubleClick(); }),
              "同时移除了 1 个节点：文\n1 个节点的上级已不在，大纲中不再显示：文\n"
              "排在后面的 2 个节点也不再显示，也不会生成：末、终");
}

TEST_F(LossyRule, AFolderThatIsRefusedForItsDepthLeavesTheFollowingRowsOut) {
    QString deepest = "甲.12";
    const auto rows = planner.state().gDbUser->OpenRecordset("Select * from 甲");
    for (int depth = 2; depth <= 10; ++depth) {
        deepest += ".1";
        test::OutlineWorld::add(*rows, {deepest, "深", "否"});
    }
    test::OutlineWorld::add(*rows, {"甲.90", "末", "否"});
    planner.clickPlan("甲");
    ASSERT_TRUE(planner.click(deepest));
    const QString note =
        noteOf("添加同级文件夹", [&] { planner.addFolder(outline::AddMode::beside, "更深"); });
    EXPECT_EQ(note, "同时移除了 1 个节点：末");
}

TEST_F(LossyRule, APlanStoredOverAFolderThatIsThereOverwritesItsFiles) {
    planner.folder.write("Sys/标书模板/甲/" + documentKey + ".doc", "mine");
    const QString note = noteOf("存入方案模板", [&] { planner.storeTemplate(); });
    EXPECT_TRUE(note.contains("覆盖了 1 个文件：" + documentKey + ".doc")) << note.toStdString();
}

TEST_F(LossyRule, DeletingANodeOfATemplateTakesKeysThatBeginWithItsKeyAndTheirFiles) {
    planner.storeTemplate();
    planner.pressTemplate("甲.1");
    const QString note = noteOf("删除模板", [&] { planner.deleteTemplate(); });
    EXPECT_EQ(note, "同时移除了 4 个节点：章10、章11、章12、文");
    EXPECT_FALSE(planner.folder.names("Sys/标书模板/甲").contains(documentKey + ".doc"));
}

TEST_F(LossyRule, DeletingThePlanWithoutItsRootSelectedLeavesTablesThatTheNextRefreshForgets) {
    planner.newPlan("乙");
    planner.clickPlan("甲");
    planner.click("甲.2");
    const test::WorkSpaceState before = onDisk();
    {
        outline::RecordedCommand recorded(planner.state(), planner.current(), "删除当前方案",
                                          planner.messages);
        planner.deletePlan();
    }
    EXPECT_TRUE(planner.state().gDbUser->TableDefs().Contains("甲"));
    std::optional<history::Step> step;
    {
        outline::RecordedCommand recorded(planner.state(), planner.current(), "添加下级文档",
                                          planner.messages);
        planner.clickPlan("乙");
        planner.click("乙");
        planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
        step = recorded.finish();
    }
    ASSERT_TRUE(step);
    EXPECT_TRUE(step->note.contains("不再列出：甲")) << step->note.toStdString();
    planner.restart();
    outline::undo(planner.state(), planner.workbench(), planner.services());
    outline::undo(planner.state(), planner.workbench(), planner.services());
    test::expectSame(onDisk(), before);
}

// The next start finds the folder and lists its plan again.
TEST_F(LossyRule, ANameWithoutATableIsForgottenByARefresh) {
    planner.newPlan("乙");
    planner.click("乙");
    planner.state().gDbUser->TableDefs().Delete("甲");
    const auto step = recordAheadOfTheStart("添加下级文档", [&] {
        planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    });
    EXPECT_TRUE(step.note.contains("不再列出：甲")) << step.note.toStdString();
}

TEST_F(LossyRule, ARefreshForgetsATemplateWhoseFolderIsGone) {
    planner.storeTemplate();
    planner.newPlan("乙");
    QDir(planner.folder.path("Sys/标书模板/甲")).removeRecursively();
    planner.click("乙");
    const QString note = noteOf("存入方案模板", [&] { planner.storeTemplate(); });
    EXPECT_TRUE(note.contains("不再列出：甲")) << note.toStdString();
    EXPECT_FALSE(planner.state().gDbTemplate->TableDefs().Contains("甲"));
}

TEST_F(LossyRule, ATemplateWithoutItsTableLosesItsOwnDatabase) {
    planner.storeTemplate();
    planner.newPlan("乙");
    planner.click("乙");
    planner.state().gDbTemplate->TableDefs().Delete("甲");
    const QString note = noteOf("存入方案模板", [&] { planner.storeTemplate(); });
    EXPECT_TRUE(note.contains("不再列出：甲")) << note.toStdString();
    EXPECT_FALSE(planner.folder.exists("Sys/标书模板/甲/甲.mdb"));
}

TEST_F(LossyRule, AFolderOfATemplateThatTheStartFindsIsListed) {
    planner.storeTemplate();
    planner.pressTemplate("甲");
    const QDir templates(planner.folder.path("Sys/标书模板"));
    ASSERT_TRUE(QDir().rename(templates.filePath("甲"), planner.folder.path("甲")));
    planner.restart(); // forgets it
    planner.exit();
    ASSERT_TRUE(QDir().rename(planner.folder.path("甲"), templates.filePath("甲")));
    planner.start();
    const history::Step step = planner.state().History->undoable().value_or(history::Step{});
    EXPECT_EQ(step.note, "列入了文件夹中的方案或模板：甲");
    EXPECT_TRUE(planner.state().gDbTemplate->TableDefs().Contains("甲"));
    EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
    EXPECT_FALSE(planner.state().gDbTemplate->TableDefs().Contains("甲"));
    EXPECT_TRUE(templates.exists("甲/" + documentKey + ".doc"));
}

TEST_F(LossyRule, ATemplateDocumentWithoutItsFileLosesItsRow) {
    planner.storeTemplate();
    QFile::remove(planner.folder.path("Sys/标书模板/甲/" + documentKey + ".doc"));
    planner.pressTemplate(documentKey);
    EXPECT_EQ(noteOf("浏览", [&] { planner.browseTemplate(); }), "同时移除了 1 个节点：文");
}

TEST_F(LossyRule, AFolderOfPlansThatTheStartFindsIsListed) {
    planner.newPlan("乙");
    planner.exit();
    const QDir plans(planner.folder.path("Sys/用户模板"));
    ASSERT_TRUE(QDir().rename(plans.filePath("甲"), planner.folder.path("甲")));
    planner.start();
    planner.exit();
    ASSERT_TRUE(QDir().rename(planner.folder.path("甲"), plans.filePath("甲")));
    planner.start();
    const history::Step step = planner.state().History->undoable().value_or(history::Step{});
    EXPECT_EQ(step.title, "启动[甲]");
    EXPECT_EQ(step.note, "列入了文件夹中的方案或模板：甲");
    EXPECT_TRUE(planner.state().gDbUser->TableDefs().Contains("甲"));
    EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
    EXPECT_FALSE(planner.state().gDbUser->TableDefs().Contains("甲"));
    EXPECT_TRUE(plans.exists("甲/" + documentKey + ".doc"));
}

TEST_F(LossyRule, ADropBesideTheTreeHasTheNextDropOfATemplateMoveThatNode) {
    planner.storeTemplate();
    planner.drag("甲.3", std::nullopt);
    const QString note = noteOf("拖放", [&] { planner.dragTemplate("甲.5", "甲.2"); });
    EXPECT_EQ(note, "移动的是上次拖到空白处的“章3”，没有复制模板的内容。");
    EXPECT_EQ(planner.current().find("甲.3"), nullptr);
    planner.drag("甲.4", "甲.2");
    EXPECT_EQ(planner.state().Remarks, QStringList()) << "the user drags that one";
}

TEST_F(LossyRule, APasteStopsAtAFolderWhoseNameIsThereAndKeepsWhatCameBefore) {
    planner.storeTemplate();
    planner.click("甲.12");
    planner.addFolder(outline::AddMode::below, "章3");
    planner.pressTemplate("甲");
    planner.copy();
    planner.click("甲.12");
    const QString note = noteOf("粘贴", [&] { planner.paste(true); });
    EXPECT_EQ(note,
              "复制到“章3”停止了，没有复制 11 项（连同它们的下级）：章3、章4、章5、章6、章7等");
}

TEST_F(LossyRule, AMovedDocumentOverwritesAFileOfItsNewName) {
    planner.folder.write(fileOf("甲.2.1"), "mine");
    const QString note = noteOf("拖放", [&] { planner.drag(documentKey, "甲.2"); });
    EXPECT_TRUE(note.startsWith("覆盖了 1 个文件：")) << note.toStdString();
}

TEST_F(LossyRule, ATemplateDocumentCopiedOverOneOfItsNameReplacesItsFileAndLeavesAStrayCopy) {
    planner.storeTemplate();
    planner.folder.write(fileOf(documentKey), "mine");
    planner.pressTemplate(documentKey);
    planner.copy();
    planner.click("甲");
    EXPECT_EQ(noteOf("粘贴", [&] { planner.paste(true); }),
              "覆盖了 1 个文件：" + documentKey + ".doc\n留下了没有节点的文件：12.doc");
    EXPECT_EQ(planner.folder.read(fileOf(documentKey)), "text");
    EXPECT_EQ(planner.folder.read("Sys/用户模板/甲/12.doc"), "text");
}

TEST_F(LossyRule, AStrayCopyOverwritesTheFileOfItsNumber) {
    planner.storeTemplate();
    planner.folder.write("Sys/用户模板/甲/12.doc", "mine");
    planner.pressTemplate(documentKey);
    planner.copy();
    planner.click("甲");
    const QString note = noteOf("粘贴", [&] { planner.paste(true); });
    EXPECT_TRUE(note.contains("12.doc")) << note.toStdString();
    EXPECT_EQ(planner.folder.read("Sys/用户模板/甲/12.doc"), "text");
}

TEST_F(LossyRule, AMovedDocumentLeavesWhatIsBelowItUnseen) {
    planner.click(documentKey);
    planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    const QString note = noteOf("拖放", [&] { planner.drag(documentKey, "甲.2"); });
    EXPECT_EQ(note, "1 个节点的上级已不在，大纲中不再显示：文");
}

} // namespace
