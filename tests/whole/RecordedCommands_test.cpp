#include "whole/RecordedPlanner.h"

#include "format/frmBidSet.h"
#include "generate/SimilarDocuments.h"
#include "platform/word/engine/EngineApplication.h"

#include "support/FakeFonts.h"
#include "support/FakeInputBoxes.h"
#include "support/FakeShell.h"
#include "support/FakeWordProcessorWindows.h"
#include "support/FixedFonts.h"
#include "support/recording/RecordingDesk.h"

using namespace qvnd;

namespace {

// Plan 甲 with a folder and a document in it, and template 模 of the same shape.
class RecordedCommands : public test::RecordedPlanner {
protected:
    RecordedCommands() {
        for (const char* name : {"模", "甲"}) {
            planner.newPlan(name);
            planner.click(name);
            planner.addFolder(outline::AddMode::below, "章");
            planner.folder.write("files/文.doc", QByteArray("text of ") + name);
            planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
            if (planner.folder.exists("Sys/用户模板/模")) {
                planner.storeTemplate();
                planner.deletePlan();
            }
        }
        planner.restart();
        document = planner.current().Item(3).Key();
        folder = planner.current().Item(2).Key();
    }
    static QString fileOf(const QString& key) { return "Sys/用户模板/甲/" + key + ".doc"; }
    bool hasLine(const history::Step& step, const QString& text) {
        return changesOf(step).join('\n').contains(text);
    }

    QString folder;
    QString document;
};

TEST_F(RecordedCommands, NewPlan) {
    const auto step = record("新建方案", [&] { planner.newPlan("乙"); });
    EXPECT_EQ(step.title, "新建方案[乙]");
    EXPECT_TRUE(hasLine(step, "新建 大纲 乙"));
    EXPECT_TRUE(hasLine(step, "新建 乙 的工程信息"));
    EXPECT_TRUE(hasLine(step, "加入 乙（方案列表）"));
}

TEST_F(RecordedCommands, DeletePlan) {
    planner.click("甲");
    const auto step = record("删除当前方案", [&] { planner.deletePlan(); });
    EXPECT_EQ(step.note, QString()) << "all that went was asked for";
    EXPECT_TRUE(hasLine(step, "删去文件")) << changesOf(step).join('\n').toStdString();
}

TEST_F(RecordedCommands, PlanInformation) {
    const auto step = record("工程信息", [&] {
        plans::DlgNew dialog(planner.state(), planner.workbench(), planner.messages, planner.splash,
                             plans::ShowMode::information);
        dialog.Load();
        dialog.form.TxtEdit = "别人";
        dialog.BtnOk();
    });
    EXPECT_TRUE(hasLine(step, "改动 甲 的工程信息")) << changesOf(step).join('\n').toStdString();
}

TEST_F(RecordedCommands, Rename) {
    planner.click(folder);
    const auto step = record("重命名", [&] { planner.rename("改了"); });
    EXPECT_EQ(step.title, "重命名[改了]");
    EXPECT_EQ(changesOf(step), QStringList("改名 改了（" + folder + "），原名 章"));
}

TEST_F(RecordedCommands, DragWithTheFilesThatItRenames) {
    const auto step = record("拖放", [&] { planner.drag(document, folder); });
    EXPECT_TRUE(hasLine(step, "新文件")) << changesOf(step).join('\n').toStdString();
    EXPECT_EQ(step.note, QString()) << "a moved node is not gone";
}

TEST_F(RecordedCommands, StoreTemplate) {
    const auto step = record("存入方案模板", [&] { planner.storeTemplate(); });
    EXPECT_TRUE(hasLine(step, "新建 大纲 甲"));
    EXPECT_TRUE(hasLine(step, "加入 甲（模板列表）"));
}

TEST_F(RecordedCommands, DeleteTemplate) {
    planner.pressTemplate("模");
    const auto step = record("删除", [&] { planner.deleteTemplate(); });
    EXPECT_EQ(step.note, QString()) << "all that went was asked for";
}

TEST_F(RecordedCommands, DeleteANodeOfATemplate) {
    const QString key = planner.templates().Item(2).Key();
    planner.pressTemplate(key);
    const auto step = record("删除", [&] { planner.deleteTemplate(); });
    EXPECT_EQ(step.note, QString()) << "all that went was asked for";
    EXPECT_TRUE(hasLine(step, "移除 章"));
}

TEST_F(RecordedCommands, FilesWithoutANodeThatGoWithATemplateOrANodeOfItAreTold) {
    const QString key = planner.templates().Item(2).Key();
    for (const QString& name : {key + ".9.doc", key + ".bak", QString("说明.txt")}) {
        planner.folder.write("Sys/标书模板/模/" + name, "mine");
    }
    planner.pressTemplate(key);
    const auto node = record("删除模板", [&] { planner.deleteTemplate(); });
    EXPECT_EQ(node.note, QString("同时删去了 2 个没有节点的文件：%1.9.doc、%1.bak").arg(key));
    planner.pressTemplate("模");
    const auto whole = record("删除模板", [&] { planner.deleteTemplate(); });
    EXPECT_EQ(whole.note, "同时删去了 1 个没有节点的文件：说明.txt");
}

TEST_F(RecordedCommands, FilesOfAUserThatGoWithAPlanAreToldAndLeftoversOfItsNodesAreNot) {
    planner.click(document);
    planner.deleteNode();
    planner.folder.write("Sys/用户模板/甲/清单.xls", "mine");
    planner.click("甲");
    const auto step = record("删除当前方案", [&] { planner.deletePlan(); });
    EXPECT_EQ(step.note, "同时删去了 1 个没有节点的文件：清单.xls\n"
                         "发现在程序外所做的改动，已先保留为操作历史中的一步，可以再回到它："
                         "外部改动[甲 文件夹中的大纲]");
}

TEST_F(RecordedCommands, TheStrayCopyOfAnOverwrite) {
    planner.click(folder);
    planner.pressTemplate(planner.templates().Item(3).Key());
    planner.copy();
    const auto step = record("粘贴", [&] { planner.paste(true); });
    EXPECT_TRUE(hasLine(step, "改写文件")) << changesOf(step).join('\n').toStdString();
    EXPECT_EQ(step.note, "覆盖了 1 个文件：" + document + ".doc\n留下了没有节点的文件：.doc");
}

TEST_F(RecordedCommands, OpeningAPlanLevelsTheCopyOfTheFormerOneAndIsBookkeeping) {
    planner.newPlan("乙");
    planner.click("乙");
    planner.addFolder(outline::AddMode::below, "章");
    planner.rename("未平");
    outline::RecordedCommand recorded(planner.state(), planner.current(), "打开方案",
                                      planner.messages);
    planner.clickPlan("甲");
    const auto step = recorded.finish();
    ASSERT_TRUE(step);
    EXPECT_TRUE(step->isMinor);
    EXPECT_NE(planner.state().History->undoable()->id, step->id);
}

TEST_F(RecordedCommands, ForgettingByTheStart) {
    const QDir plans(planner.folder.path("Sys/用户模板"));
    planner.exit();
    ASSERT_TRUE(QDir().rename(plans.filePath("甲"), planner.folder.path("甲")));
    planner.start();
    const history::Step step = planner.state().History->undoable().value_or(history::Step{});
    EXPECT_EQ(step.title, "启动[甲]");
    EXPECT_EQ(step.note, "文件夹或数据已不在，因此不再列出：甲");
    EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
    EXPECT_TRUE(planner.state().gDbUser->TableDefs().Contains("甲"));
}

TEST_F(RecordedCommands, SettingsAndTheirLibraries) {
    test::FakeInputBoxes inputs;
    test::FakeFonts fonts;
    test::FakeShell shell;
    inputs.answers = {"常用"};
    const auto step = record("施工方案设置", [&] {
        format::frmBidSet dialog(planner.state(), {planner.messages, inputs, planner.dialogs, fonts,
                                                   shell, planner.word});
        dialog.form().headerFooter.chkHeader.click();
        dialog.form().settingLibrary.cmdSaveSet.click();
    });
    EXPECT_TRUE(hasLine(step, "新建 设置 常用页面")) << changesOf(step).join('\n').toStdString();
    EXPECT_TRUE(hasLine(step, "改动 页眉、页脚及目录"));
    EXPECT_TRUE(hasLine(step, "加入 常用（标书设置库）"));
    EXPECT_EQ(step.title, "施工方案设置[常用]");
}

// The word processor of the insertion is our own engine, which writes the file by itself.
class RecordedInsertion : public RecordedCommands,
                          private word::ImportReport,
                          private word::UnsavedChangesQuestion {
protected:
    void notCarried(const std::filesystem::path&, std::u16string_view) override {}
    bool save(const std::filesystem::path&) override { return false; }

    void writeDocument(const QString& file, std::u16string_view text) {
        word::EngineApplication writer({pages, *this, *this});
        word::Document& made = writer.documents().Add();
        writer.Selection().TypeText(text);
        made.SaveAs(files::toPath(planner.folder.path(file)));
    }

    test::FixedPageNumbers pages;
    word::EngineApplicationFactory engine{{pages, *this, *this}};
};

TEST_F(RecordedInsertion, OfASimilarDocument) {
    writeDocument(fileOf(document), u"自己的");
    writeDocument("Sys/标书模板/模/" + planner.templates().Item(3).Key() + ".doc", u"模板的");
    test::FakeWordProcessorWindows windows;
    test::RecordingScreen screen(planner.log);
    generate::WordSession session;
    const auto step = record("插入类似文档", [&] {
        planner.click(document);
        generate::SimilarDocuments dialog(
            planner.state(), planner.current(),
            {planner.messages, planner.dialogs, windows, engine, session, screen, planner.longRun});
        dialog.Load();
        dialog.select(0);
        EXPECT_TRUE(dialog.cmdInsert());
    });
    EXPECT_EQ(changesOf(step).size(), 1);
    EXPECT_TRUE(hasLine(step, "改写文件"));
}

} // namespace
