#include "whole/PlannersDesk.h"
#include "whole/RecordedPlanner.h"

using namespace qvnd;

namespace {

// Settings, custom pages, the finished document and the copies in the plans' folders: commands that
// replace or leave behind more than their names say. They do what their rules want, the step tells
// it, and the undo brings all back.
class LossySetting : public test::RecordedPlanner {
protected:
    using Form = format::BidSetForm;

    test::PlannersDesk desk{planner};

    history::Step inTheDialog(const std::function<void(Form&)>& work) {
        return record("施工方案设置", [&] { desk.settings(work); });
    }
    // As before the test, without a word in the history.
    void prepared(const QStringList& answers, const std::function<void(Form&)>& work) {
        outline::RecordedCommand recorded(planner.state(), planner.current(), "施工方案设置",
                                          planner.messages);
        desk.inputs.answers = answers;
        desk.settings(work);
    }
    QString valueOf(const QString& table, const QString& field) {
        return planner.state()
            .gDbBidSet->OpenRecordset("Select * from [" + table + "]")
            ->Get(field)
            .TextOrEmpty();
    }
    bool hasTable(const QString& table) {
        return planner.state().gDbBidSet->TableDefs().Contains(table);
    }
    QString told(const history::Step& step) { return changesOf(step).join('\n'); }
    static QString pageOf(const QString& name) { return "Sys/自定义/" + name + ".doc"; }
};

TEST_F(LossySetting, LookingAtASettingLibraryWritesItsBoxesAndOptionsIntoTheWorkingTables) {
    prepared({"常用"}, [](Form& form) { form.settingLibrary.cmdSaveSet.click(); });
    prepared({}, [](Form& form) {
        form.headerFooter.chkHeader.click();
        form.headerFooter.TxtHeaderCon.type("我的页眉");
        form.headerFooter.TxtHeaderCon.leave();
    });
    const QString mine = valueOf("页眉页脚表", "是否带页眉");
    const auto step = inTheDialog([](Form& form) { form.settingLibrary.lstSet.click(0); });
    EXPECT_NE(valueOf("页眉页脚表", "是否带页眉"), mine);
    EXPECT_EQ(valueOf("页眉页脚表", "页眉内容"), "我的页眉") << "texts wait for the user";
    EXPECT_TRUE(told(step).contains("改动 页眉、页脚及目录")) << told(step).toStdString();
    EXPECT_EQ(step.note, "显示“常用”时，其中的设置写入了现在的设置：是否带页眉由“否”改为“是”。\n"
                         "设置已保留，取消和关闭不撤回改动。");
}

TEST_F(LossySetting, SavingASettingLibraryShowsTheFirstOneOverWhatTheUserHasSet) {
    for (const char* name : {"常用", "另一"}) {
        prepared({name}, [](Form& form) { form.settingLibrary.cmdSaveSet.click(); });
    }
    const QString first = valueOf("常用眉脚", "是否带页眉");
    desk.inputs.answers = {"第三"};
    const auto step = inTheDialog([](Form& form) {
        form.settingLibrary.lstSet.click(1);
        form.headerFooter.chkHeader.click();
        form.settingLibrary.cmdSaveSet.click();
    });
    EXPECT_NE(valueOf("第三眉脚", "是否带页眉"), first);
    EXPECT_EQ(valueOf("页眉页脚表", "是否带页眉"), first);
    EXPECT_TRUE(told(step).contains("新建 设置 第三页面")) << told(step).toStdString();
    EXPECT_EQ(step.note, "显示“常用”时，其中的设置写入了现在的设置：是否带页眉由“否”改为“是”。");
}

TEST_F(LossySetting, LookingAtACoverLibraryWritesItsPictureIntoTheWorkingTable) {
    for (const char* picture : {"桥.bmp", "路.bmp"}) {
        planner.folder.write(QString("Sys/图片库/") + picture, "picture");
    }
    prepared({"封面甲"}, [](Form& form) {
        form.cover.cmbPic.setText("桥.bmp");
        form.coverLibrary.cmdSaveCover.click();
        form.cover.cmbPic.setText("路.bmp");
    });
    const auto step = inTheDialog([](Form& form) { form.coverLibrary.lstcover.click(0); });
    EXPECT_EQ(valueOf("封面表", "图片"), "桥.bmp");
    EXPECT_TRUE(told(step).contains("改动 封面设置")) << told(step).toStdString();
    EXPECT_EQ(step.note,
              "显示“封面甲”时，其中的设置写入了现在的设置：图片由“路.bmp”改为“桥.bmp”。\n"
              "设置已保留，取消和关闭不撤回改动。");
}

TEST_F(LossySetting, ASettingLibraryThatIsHalfThereGetsTheTablesBeforeTheOneThatIsTaken) {
    prepared({"常用页面"}, [](Form& form) { form.coverLibrary.cmdSaveCover.click(); });
    desk.inputs.answers = {"常用"};
    const auto step = inTheDialog([](Form& form) { form.settingLibrary.cmdSaveSet.click(); });
    EXPECT_TRUE(hasTable("常用章节"));
    EXPECT_FALSE(hasTable("常用眉脚"));
    EXPECT_TRUE(planner.state().gDbBidSet->OpenRecordset("Select * from 设置库")->Eof());
    EXPECT_TRUE(told(step).contains("新建 设置 常用章节")) << told(step).toStdString();
    EXPECT_EQ(step.note, "“常用”只存了一半，没有列入库中：请先撤消，再用别的名称存一次。");
}

TEST_F(LossySetting, ADeletedSettingLibraryThatLacksATableKeepsTheTablesBehindIt) {
    prepared({"常用"}, [](Form& form) { form.settingLibrary.cmdSaveSet.click(); });
    planner.state().gDbBidSet->TableDefs().Delete("常用眉脚");
    const auto step = inTheDialog([](Form& form) { form.settingLibrary.cmdDeleteSet.click(); });
    EXPECT_FALSE(hasTable("常用章节"));
    EXPECT_TRUE(hasTable("常用页面"));
    EXPECT_TRUE(planner.state().gDbBidSet->OpenRecordset("Select * from 设置库")->Eof());
    EXPECT_TRUE(told(step).contains("删去 设置 常用章节")) << told(step).toStdString();
    EXPECT_EQ(step.note, "“常用”没有删全：它缺少“常用眉脚”，删除到这里就停止了。\n"
                         "发现在程序外所做的改动，已先保留为操作历史中的一步，可以再回到它："
                         "外部改动[施工方案设置]");
}

TEST_F(LossySetting, DeletingASettingLibraryShowsTheFirstOfTheOthersOverWhatTheUserHasSet) {
    for (const char* name : {"常用", "另一"}) {
        prepared({name}, [](Form& form) { form.settingLibrary.cmdSaveSet.click(); });
    }
    const auto step = inTheDialog([](Form& form) {
        form.settingLibrary.lstSet.click(1);
        form.headerFooter.chkHeader.click();
        form.settingLibrary.cmdDeleteSet.click();
    });
    EXPECT_FALSE(hasTable("另一章节"));
    EXPECT_EQ(step.note, "显示“常用”时，其中的设置写入了现在的设置：是否带页眉由“否”改为“是”。");
}

TEST_F(LossySetting, DeletingACoverLibraryShowsTheFirstOfTheOthersAndWritesItsPicture) {
    for (const char* picture : {"桥.bmp", "路.bmp"}) {
        planner.folder.write(QString("Sys/图片库/") + picture, "picture");
        prepared({QString("封面") + picture[0]}, [&](Form& form) {
            form.cover.cmbPic.setText(picture);
            form.coverLibrary.cmdSaveCover.click();
        });
    }
    const auto step = inTheDialog([](Form& form) {
        form.coverLibrary.lstcover.click(1);
        form.coverLibrary.cmdDeleteCover.click();
    });
    EXPECT_EQ(valueOf("封面表", "图片"), "桥.bmp");
    EXPECT_TRUE(step.note.contains("图片由“路.bmp”改为“桥.bmp”")) << step.note.toStdString();
}

// Where no page of its name lies there, which the rules look for without folder and suffix.
TEST_F(LossySetting, DeletingACustomPageTakesAFileOfItsBareNameOutOfTheCurrentFolder) {
    prepared({"页"}, [](Form& form) { form.customPage.cmdSelfBld.click(); });
    planner.folder.write("工程文档管理/页", "mine");
    const QString here = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(planner.folder.path("工程文档管理")));
    const auto step = inTheDialog([](Form& form) { form.customPage.cmdSelfDel.click(); });
    EXPECT_TRUE(QDir::setCurrent(here));
    EXPECT_FALSE(planner.folder.exists("工程文档管理/页"));
    EXPECT_EQ(step.note, "删去了 1 个文件：页");
}

TEST_F(LossySetting, DeletingACustomPageInUsePutsTheFirstOfTheOthersInItsPlace) {
    for (const char* name : {"页", "另页"}) {
        prepared({name}, [](Form& form) { form.customPage.cmdSelfBld.click(); });
    }
    prepared({}, [](Form& form) {
        form.customPage.chkSelf.click();
        form.customPage.lstSelf.click(1);
    });
    const auto step = inTheDialog([](Form& form) {
        form.customPage.chkSelf.click();
        form.customPage.lstSelf.click(1);
        form.customPage.cmdSelfDel.click();
    });
    EXPECT_EQ(valueOf("当前自定义", "路径"), "页");
    EXPECT_EQ(step.note, "设置已保留，取消和关闭不撤回改动：自定义页由“另页”改为“页”。");
}

TEST_F(LossySetting, OpeningTheDialogPutsTheOpenPlansNameOnTheCover) {
    planner.newPlan("甲");
    {
        const auto cover = planner.state().gDbBidSet->OpenRecordset("Select * from 封面表");
        cover->Edit();
        cover->Set(u"工程名称", QString("手工题名"));
        cover->Update();
    }
    const auto step = inTheDialog([](Form&) {});
    EXPECT_EQ(valueOf("封面表", "工程名称"), "甲");
    EXPECT_TRUE(step.note.startsWith("打开设置时自动改动了：工程名称由“手工题名”改为“甲”"))
        << step.note.toStdString();
}

TEST_F(LossySetting, DecidingWithoutTheBoxOfALibraryGivesItUp) {
    prepared({"常用"}, [](Form& form) {
        form.settingLibrary.cmdSaveSet.click();
        form.settingLibrary.chkSet.click();
        form.cmdDecide();
    });
    const auto step = record("施工方案设置", [&] {
        desk.settings([](Form& form) { form.cmdDecide(); }, format::frmBidSet::Ended::decided);
    });
    EXPECT_EQ(valueOf("是否设置表", "是否设置"), "否");
    EXPECT_EQ(step.note, "没有选中“选用库”，生成时不再采用标书设置库中的设置。");
}

TEST_F(LossySetting, ANewCustomPageOverwritesTheDocumentThatADeletedOneHasLeft) {
    prepared({"页"}, [](Form& form) { form.customPage.cmdSelfBld.click(); });
    desk.writeDocument(pageOf("页"), u"我的封面");
    const QByteArray mine = planner.folder.read(pageOf("页"));
    prepared({}, [](Form& form) { form.customPage.cmdSelfDel.click(); });
    ASSERT_EQ(planner.folder.read(pageOf("页")), mine) << "the file stays";
    desk.inputs.answers = {"页"};
    const auto step = inTheDialog([](Form& form) { form.customPage.cmdSelfBld.click(); });
    EXPECT_NE(planner.folder.read(pageOf("页")), mine);
    EXPECT_EQ(step.note, "覆盖了 1 个文件：页.doc");
    EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
    EXPECT_EQ(planner.folder.read(pageOf("页")), mine);
}

TEST_F(LossySetting, AStepOfTheDialogBearsTheNameOfThePageThatWasChanged) {
    prepared({}, [](Form&) {}); // what the load itself changes
    const auto header = [](Form& form) { form.headerFooter.chkHeader.click(); };
    EXPECT_EQ(inTheDialog(header).title, "施工方案设置[页眉、页脚及目录]");
    const auto both = inTheDialog([&](Form& form) {
        header(form);
        form.page.txtPageupdis.type("3.1");
        form.page.txtPageupdis.leave();
    });
    EXPECT_EQ(both.title, "施工方案设置[页眉、页脚及目录等]");
    EXPECT_TRUE(changesOf(both).contains("改动 页面、正文设置")) << told(both).toStdString();
}

TEST_F(LossySetting, GenerationReplacesTheFinishedDocument) {
    planner.newPlan("甲");
    planner.click("甲");
    planner.addFolder(outline::AddMode::below, "章");
    planner.folder.write("工程文档管理/施工方案.doc", "changed by hand");
    const auto step = record("生成卷宗编制",
                             [&] { EXPECT_EQ(desk.generate(), generate::BuildOutcome::finished); });
    EXPECT_EQ(step.note, "覆盖了 1 个文件：施工方案.doc");
    EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
    EXPECT_EQ(planner.folder.read("工程文档管理/施工方案.doc"), "changed by hand");
}

TEST_F(LossySetting, ASimilarDocumentGoesIntoTheFileOfTheSelectedOne) {
    planner.newPlan("甲");
    desk.writeDocument("files/文.doc", u"自己的");
    planner.click("甲");
    planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
    planner.storeTemplate();
    planner.click("甲.1");
    const QByteArray own = planner.folder.read("Sys/用户模板/甲/甲.1.doc");
    const auto step = record("插入类似文档", [&] {
        planner.click("甲.1");
        EXPECT_TRUE(desk.insertSimilar(0));
    });
    EXPECT_NE(planner.folder.read("Sys/用户模板/甲/甲.1.doc"), own);
    EXPECT_TRUE(told(step).contains("改写文件")) << told(step).toStdString();
    EXPECT_EQ(step.note, "覆盖了 1 个文件：甲.1.doc");
}

// The copy in a plan's folder follows the central table, also where somebody has brought a newer
// one: it is bookkeeping, but the list of steps leads back to it.
TEST_F(LossySetting, LeavingAPlanReplacesTheOutlineInItsFolder) {
    planner.newPlan("乙");
    planner.newPlan("甲");
    test::OutlineWorld::add(*planner.state()
                                 .gWs->OpenDatabase(store::planDatabasePath(planner.state(), "甲"))
                                 ->OpenRecordset("Select * from 甲"),
                            {"甲.9", "别处加的"});
    const auto copied = [&] {
        return test::OutlineWorld::column(
            *planner.state().gWs->OpenDatabase(store::planDatabasePath(planner.state(), "甲")),
            "甲", u"Key");
    };
    ASSERT_EQ(copied(), (QStringList{"甲", "甲.9"}));
    recordAheadOfTheStart("打开方案", [&] { planner.clickPlan("乙"); });
    EXPECT_EQ(copied(), QStringList("甲"));
}

TEST_F(LossySetting, AFolderBroughtFromElsewhereUnderAListedNameKeepsTheCentralOutline) {
    planner.newPlan("甲");
    planner.exit();
    {
        jet::DBEngine engine;
        const auto own =
            engine.Workspaces(0).OpenDatabase(planner.folder.path("Sys/用户模板/甲/甲.mdb"));
        test::OutlineWorld::add(*own->OpenRecordset("Select * from 甲"), {"甲.9", "别处加的"});
    }
    planner.start();
    EXPECT_EQ(test::OutlineWorld::column(*planner.state().gDbUser, "甲", u"Key"),
              QStringList("甲"));
    const test::WorkSpaceState before = onDisk();
    planner.restart(); // whose end replaces the copy
    EXPECT_FALSE(onDisk() == before);
    std::int64_t brought = history::beginning;
    for (const history::Step& step : planner.state().History->steps()) {
        if (step.kind == history::StepKind::outside) {
            EXPECT_EQ(step.title, "外部改动[甲 文件夹中的大纲]");
            brought = step.id;
        }
    }
    outline::goToStep(planner.state(), planner.workbench(), planner.services(), brought);
    test::expectSame(onDisk(), before);
    EXPECT_EQ(test::OutlineWorld::column(*planner.state().gWs->OpenDatabase(
                                             store::planDatabasePath(planner.state(), "甲")),
                                         "甲", u"Key"),
              (QStringList{"甲", "甲.9"}));
}

} // namespace
