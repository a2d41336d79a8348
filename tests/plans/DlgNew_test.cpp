#include "plans/DlgNew.h"

#include "plans/PlanInformation.h"
#include "store/OutlineFolders.h"
#include "support/Commits.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::plans;
using test::OutlineWorld;

namespace {

// Fails to delete folders, as one in use does.
class FolderInUse : public files::DiskFileSystem {
public:
    void DeleteFolder(const QString&, bool) override {
        throw RunTimeError(error::permissionDenied, u"没有权限");
    }
};

struct NewPlan : testing::Test, OutlineWorld {
    bool create(const QString& name) {
        DlgNew dialog(state, workbench, messages, splash, ShowMode::newPlan);
        dialog.form = {name, " 甲方 ", " 乙方", "李明 ", "王 建国", QDate(2026, 2, 10), " 注 释 "};
        return dialog.BtnOk();
    }
    std::unique_ptr<jet::Database> planDatabase(const QString& plan) {
        return state.gWs->OpenDatabase(store::planDatabasePath(state, plan));
    }
    bool hasTable(const QString& name) { return state.gDbUser->TableDefs().Contains(name); }
    QStringList current() { return registered(*state.gDbUser, "当前表"); }
    void expectOnly(const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, icon);
        EXPECT_EQ(messages.shown[0].title, title);
    }
};

TEST_F(NewPlan, ANewPlanHasItsRootRowAloneInBothDatabases) {
    EXPECT_TRUE(create("工程甲"));
    EXPECT_EQ(keys("工程甲"), QStringList({"工程甲"}));
    EXPECT_EQ(column(*state.gDbUser, "工程甲", u"名称"), QStringList({"工程甲"}));
    EXPECT_EQ(column(*state.gDbUser, "工程甲", u"是否文档"), QStringList({"否"}));
    EXPECT_EQ(copiedKeys("工程甲"), QStringList({"工程甲"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(NewPlan, ANameThatCanBeNoFoldersIsRefusedBeforeAnythingIsWritten) {
    ASSERT_TRUE(create("工程甲"));
    for (const char* name : {"CON", "nul", "COM1"}) {
        messages.shown.clear();
        EXPECT_FALSE(create(name));
        expectOnly(QString("“%1”不能用作文件夹的名称，请换一个名称。").arg(name),
                   desktop::Icon::exclamation, "");
        EXPECT_EQ(current(), QStringList{"工程甲"});
        EXPECT_FALSE(hasTable(name));
        EXPECT_FALSE(folder.exists(QString("用户模板/") + name));
    }
}

// Tables that a killed process left without their row would refuse the name ever after. Before
// them the plan is made the current one.
TEST_F(NewPlan, AllThatANewPlanWritesLastsTogether) {
    test::Commits commits(state.gDbUser->Name());
    create("工程甲");
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(NewPlan, ItsInformationIsTrimmedInBothDatabases) {
    create("工程甲");
    const auto copy = planDatabase("工程甲");
    for (jet::Database* db : {state.gDbUser.get(), copy.get()}) {
        PlanInformation read;
        EXPECT_EQ(readInformation(*db, "工程甲", read), QStringList());
        EXPECT_EQ(read.client, "甲方");
        EXPECT_EQ(read.contractor, "乙方");
        EXPECT_EQ(read.author, "李明");
        EXPECT_EQ(read.approver, "王 建国");
        EXPECT_EQ(read.date, QDate(2026, 2, 10));
        EXPECT_EQ(read.explanation, "注 释");
    }
}

TEST_F(NewPlan, ItIsRegisteredAndCurrentAndShown) {
    create("工程甲");
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"工程甲"}));
    EXPECT_EQ(current(), QStringList({"工程甲"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"工程甲"}));
    EXPECT_EQ(workbench.TrvCurrent.Item(1).Image(), 1);
    EXPECT_EQ(workbench.TrvCurrent.Item(1).SelectedImage(), 2);
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"工程甲"}));
    EXPECT_TRUE(workbench.cmdEdit && workbench.mnuEdit && workbench.TbarBid[12]);
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(NewPlan, TheNameIsTrimmed) {
    EXPECT_TRUE(create("  工程甲 "));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"工程甲"}));
    EXPECT_TRUE(folder.exists("用户模板/工程甲/工程甲.mdb"));
}

TEST_F(NewPlan, ANewPlanTakesThePlaceOfTheOpenOne) {
    create("工程甲");
    create("工程乙");
    EXPECT_EQ(current(), QStringList({"工程乙"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"工程乙"}));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"工程甲", "工程乙"}));
}

TEST_F(NewPlan, ABlankNameCreatesNothing) {
    EXPECT_FALSE(create("   "));
    expectOnly("对不起，名称不能为空!", desktop::Icon::exclamation, "警告！");
    EXPECT_TRUE(current().isEmpty());
    EXPECT_EQ(folder.names("用户模板"), QStringList({"Db_UsTemplate.mdb"}));
}

TEST_F(NewPlan, AnExistingFolderIsAskedAbout) {
    folder.makeFolder("用户模板/工程甲");
    EXPECT_FALSE(create("工程甲"));
    expectOnly(state.gUserTplPath + "下已存在 工程甲，是否覆盖？", desktop::Icon::question, "提示");
    EXPECT_EQ(messages.shown[0].buttons, desktop::Buttons::yesNo);
}

TEST_F(NewPlan, NoLeavesThePlanNamedAsTheCurrentOneAndNothingElse) {
    folder.write("用户模板/工程甲/留.doc", "x");
    create("工程甲");
    EXPECT_EQ(current(), QStringList({"工程甲"}));
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_FALSE(hasTable("工程甲"));
    EXPECT_TRUE(folder.exists("用户模板/工程甲/留.doc"));
}

TEST_F(NewPlan, YesReplacesAFolderThatHasNoTables) {
    folder.write("用户模板/工程甲/旧.doc", "x");
    messages.otherwise = desktop::Answer::yes;
    EXPECT_TRUE(create("工程甲"));
    EXPECT_EQ(folder.names("用户模板/工程甲"), QStringList({"工程甲.mdb"}));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"工程甲"}));
}

TEST_F(NewPlan, OverwritingAPlanStopsAtItsTablesAndLeavesTheFolderEmpty) {
    create("工程甲");
    folder.write("用户模板/工程甲/工程甲.1.doc", "x");
    messages.otherwise = desktop::Answer::yes;
    EXPECT_FALSE(create("工程甲"));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].icon, desktop::Icon::none);
    EXPECT_EQ(messages.shown[1].title, "");
    EXPECT_TRUE(messages.shown[1].text.contains("工程甲Org"))
        << messages.shown[1].text.toStdString();
    EXPECT_TRUE(folder.exists("用户模板/工程甲"));
    EXPECT_TRUE(folder.names("用户模板/工程甲").isEmpty());
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"工程甲"}));
    EXPECT_EQ(keys("工程甲"), QStringList({"工程甲"}));
}

TEST_F(NewPlan, AFolderInUseIsToldInItsOwnWords) {
    folder.makeFolder("用户模板/工程甲");
    state.gFso = std::make_unique<FolderInUse>();
    messages.otherwise = desktop::Answer::yes;
    EXPECT_FALSE(create("工程甲"));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].text, "没有权限");
    EXPECT_EQ(messages.shown[1].icon, desktop::Icon::none);
    EXPECT_FALSE(hasTable("工程甲Org"));
}

TEST_F(NewPlan, ANameOfDigitsOnlyIsTakenBackButItsFolderStays) {
    EXPECT_FALSE(create("2026"));
    expectOnly("对不起，工程名称不合法！", desktop::Icon::exclamation, "提示");
    EXPECT_FALSE(hasTable("2026"));
    EXPECT_FALSE(hasTable("2026Org"));
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_TRUE(current().isEmpty());
    EXPECT_TRUE(folder.exists("用户模板/2026/2026.mdb"));
    EXPECT_EQ(workbench.TrvCurrent.Count(), 0);
}

TEST_F(NewPlan, ANameWithABlankIsNotTestedForButTheRefreshForgetsIt) {
    EXPECT_TRUE(create("工程 甲"));
    EXPECT_TRUE(hasTable("工程 甲"));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"工程 甲"}));
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_TRUE(shown(workbench.TrvTemplate_Us).isEmpty());
}

TEST_F(NewPlan, ATableNameThatIsTakenStopsBehindTheInformationTable) {
    EXPECT_FALSE(create("temp"));
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(hasTable("tempOrg"));
    EXPECT_TRUE(folder.exists("用户模板/temp"));
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_EQ(current(), QStringList({"temp"}));
}

TEST_F(NewPlan, AFolderThatCannotBeMadeStopsBehindTheCurrentPlan) {
    folder.write("用户模板/工程甲", "a file in the place of the folder");
    EXPECT_FALSE(create("工程甲"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(current(), QStringList({"工程甲"}));
    EXPECT_FALSE(hasTable("工程甲"));
}

TEST_F(NewPlan, ANameWithAnIllegalCharacterReachesNeitherDatabaseNorFolder) {
    for (const char* name :
         {"甲/乙", "1.0版", "..", "甲\\乙", "甲'乙", "[甲]", "甲_乙", "甲\n乙"}) {
        messages.shown.clear();
        EXPECT_FALSE(create(name)) << name;
        ASSERT_EQ(messages.shown.size(), 1U) << name;
        EXPECT_TRUE(messages.shown[0].text.startsWith("对不起，输入字符非法！\n")) << name;
        EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
        EXPECT_EQ(messages.shown[0].title, "");
    }
    EXPECT_TRUE(current().isEmpty());
    EXPECT_EQ(folder.names("用户模板"), QStringList({"Db_UsTemplate.mdb"}));
}

TEST_F(NewPlan, TheRefusalNamesEachIllegalCharacterOnce) {
    create("1.0.2/甲");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.endsWith("不能有：“.”、“/”"))
        << messages.shown[0].text.toStdString();
    create("甲\t乙");
    EXPECT_TRUE(messages.shown[1].text.endsWith("不能有：U+0009"))
        << messages.shown[1].text.toStdString();
}

TEST_F(NewPlan, APlanDatabaseThatIsStillOpenIsClosed) {
    create("工程甲");
    state.gDbPlan = planDatabase("工程甲");
    EXPECT_TRUE(create("工程乙"));
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(NewPlan, ThePlansOfMissingFoldersAreKeptInTheRegister) {
    create("工程甲");
    QDir(folder.path("用户模板/工程甲")).removeRecursively();
    create("工程乙");
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"工程甲", "工程乙"}));
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"工程乙"}));
}

struct Information : NewPlan {
    DlgNew dialog{state, workbench, messages, splash, ShowMode::information};

    Information() { create("工程甲"); }

    static PlanInformation read(jet::Database& db) {
        PlanInformation information;
        readInformation(db, "工程甲", information);
        return information;
    }
    void makeNull(const QString& plan, const QString& field) {
        const auto rs = state.gDbUser->OpenRecordset("Select * from " + plan + "Org");
        rs->Edit();
        rs->Set(field, jet::Value());
        rs->Update();
    }
};

TEST_F(Information, AFieldThatHoldsNothingLeavesTheOtherControlsTheirValues) {
    const QStringList fields = {"建设单位", "施工单位", "编制人", "审批人", "编制日期", "注释"};
    for (const QString& empty : fields) {
        const QString plan = "无" + empty;
        create(plan);
        makeNull(plan, empty);
        messages.shown.clear();
        DlgNew opened(state, workbench, messages, splash, ShowMode::information);
        opened.Load();
        const auto unless = [&](const char* field, const QString& text) {
            return empty == QString(field) ? QString() : text;
        };
        const bool isDateEmpty = empty == "编制日期";
        const QDate date = isDateEmpty ? QDate::currentDate() : QDate(2026, 2, 10);
        EXPECT_EQ(opened.form.TxtName, plan);
        EXPECT_EQ(opened.form.TxtBldOffice, unless("建设单位", "甲方"));
        EXPECT_EQ(opened.form.TxtConOffice, unless("施工单位", "乙方"));
        EXPECT_EQ(opened.form.TxtEdit, unless("编制人", "李明"));
        EXPECT_EQ(opened.form.TxtDecide, unless("审批人", "王 建国"));
        EXPECT_EQ(opened.form.DTP, date);
        EXPECT_EQ(opened.form.RtfExplain, unless("注释", "注 释"));
        expectOnly("更新失败！", desktop::Icon::exclamation, "提示");
    }
}

TEST_F(Information, OkBehindAFieldThatHeldNothingWritesTheOthersBackAsTheyWere) {
    makeNull("工程甲", "编制日期");
    dialog.Load();
    EXPECT_TRUE(dialog.BtnOk());
    EXPECT_EQ(read(*state.gDbUser).client, "甲方");
    EXPECT_EQ(read(*state.gDbUser).explanation, "注 释");
    EXPECT_EQ(read(*state.gDbUser).date, QDate::currentDate());
}

TEST_F(Information, TheLoadFillsTheFormOfTheOpenPlan) {
    dialog.Load();
    EXPECT_EQ(dialog.form.TxtName, "工程甲");
    EXPECT_EQ(dialog.form.TxtBldOffice, "甲方");
    EXPECT_EQ(dialog.form.TxtConOffice, "乙方");
    EXPECT_EQ(dialog.form.TxtEdit, "李明");
    EXPECT_EQ(dialog.form.TxtDecide, "王 建国");
    EXPECT_EQ(dialog.form.DTP, QDate(2026, 2, 10));
    EXPECT_EQ(dialog.form.RtfExplain, "注 释");
}

TEST_F(Information, ANewPlansFormIsNotFilled) {
    DlgNew fresh(state, workbench, messages, splash, ShowMode::newPlan);
    fresh.Load();
    EXPECT_EQ(fresh.form.TxtName, "");
}

TEST_F(Information, OkWritesBothDatabasesWithoutTrimmingAndEndsTheTransaction) {
    dialog.Load();
    dialog.form.TxtBldOffice = " 新甲方 ";
    dialog.form.DTP = QDate(2026, 3, 1);
    EXPECT_TRUE(dialog.BtnOk());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(state.gWs->InTransaction());
    EXPECT_EQ(read(*state.gDbUser).client, " 新甲方 ");
    const auto copy = planDatabase("工程甲");
    EXPECT_EQ(read(*copy).client, " 新甲方 ");
    EXPECT_EQ(read(*copy).date, QDate(2026, 3, 1));
}

TEST_F(Information, AFailureIsToldTheDialogGoesAndTheTransactionStaysOpen) {
    dialog.Load();
    dialog.form.TxtBldOffice = "新甲方";
    QFile::remove(folder.path("用户模板/工程甲/工程甲.mdb"));
    EXPECT_TRUE(dialog.BtnOk());
    expectOnly("更新失败！", desktop::Icon::exclamation, "提示");
    EXPECT_TRUE(state.gWs->InTransaction());
    EXPECT_EQ(read(*state.gDbUser).client, "新甲方");
}

TEST_F(Information, WithoutAnOpenPlanTheLoadFails) {
    workbench.TrvCurrent.Clear();
    dialog.Load();
    expectOnly("更新失败！", desktop::Icon::exclamation, "提示");
}

TEST_F(Information, WithoutItsTableTheNameShowsAllTheSame) {
    state.gDbUser->TableDefs().Delete("工程甲Org");
    dialog.Load();
    EXPECT_EQ(dialog.form.TxtName, "工程甲");
    expectOnly("更新失败！", desktop::Icon::exclamation, "提示");
}

TEST_F(Information, ANameThatNeedsBracketsCannotBeRead) {
    create("工程 甲");
    messages.shown.clear();
    EXPECT_FALSE(dialog.LoadOrSavePlanInfo(2));
    expectOnly("更新失败！", desktop::Icon::exclamation, "提示");
}

TEST_F(Information, AnyOtherModeDoesNothing) {
    EXPECT_TRUE(dialog.LoadOrSavePlanInfo(1));
    EXPECT_EQ(dialog.form.TxtName, "");
}

} // namespace
