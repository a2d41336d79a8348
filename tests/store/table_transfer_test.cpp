#include "store/TableTransfer.h"

#include "platform/files/DiskFileSystem.h"
#include "store/CentralDatabases.h"
#include "store/DatabaseCreation.h"
#include "store/PlanTables.h"
#include "support/Commits.h"
#include "support/FakeMessageBoxes.h"

namespace qvnd::store {

class FakeSplash : public desktop::SplashScreen {
public:
    void show() override {}
    void tell(const QString&) override {}
    void unload() override { ++unloaded; }
    int unloaded = 0;
};

class TableTransfer : public test::CentralDatabases {
protected:
    ImportSurroundings surroundings() {
        return {[this] { ++refreshed_; }, splash_, messages_};
    }
    void importPlans() { ImportPlanFolders(state_, surroundings()); }
    void importTemplates() { ImportTemplateFolders(state_, surroundings()); }

    static QString fileOf(const QString& parent, const QString& name) {
        return parent + name + u'/' + name + u".mdb"_qs;
    }
    QString planFile(const QString& name) const { return fileOf(state_.gUserTplPath, name); }
    QString templatesFolder() const { return state_.gSysPath + u"标书模板/"_qs; }

    std::unique_ptr<jet::Database> folderWithDatabase(const QString& parent, const QString& name) {
        QDir().mkpath(parent + name);
        return state_.gWs->CreateDatabase(fileOf(parent, name),
                                          QString::fromUtf16(jet::dbLangGeneral));
    }
    // A folder with an outline of a root and one node, and the information table.
    void layPlan(const QString& parent, const QString& name) {
        const auto db = folderWithDatabase(parent, name);
        db->TableDefs().Append(outlineTable(name));
        addRows(*db, name, {name, name + u".1"_qs});
        db->TableDefs().Append(informationTable(name));
        const auto information = db->OpenRecordset(name + u"Org"_qs);
        information->AddNew();
        information->Set(u"编制人", u"张三"_qs);
        information->Update();
    }
    void list(jet::Database& db, const QString& name) {
        const auto rows = db.OpenRecordset(u"遍历表"_qs);
        rows->AddNew();
        rows->Set(u"名称", name);
        rows->Update();
    }
    QStringList listed(jet::Database& db) { return rowsOf(db, u"select * from 遍历表"_qs); }

    FakeSplash splash_;
    test::FakeMessageBoxes messages_;
    int refreshed_ = 0;
};

TEST_F(TableTransfer, APlanFolderThatIsNotListedIsListedAndItsTwoTablesComeIn) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    EXPECT_EQ(listed(*state_.gDbUser), QStringList{u"工程甲"_qs});
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select Key,ID from 工程甲 order by ID"_qs),
              (QStringList{u"工程甲|1"_qs, u"工程甲.1|2"_qs}));
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select 编制人 from 工程甲Org"_qs), QStringList{u"张三"_qs});
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(TableTransfer, TablesThatCameInHaveNoIndexes) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    EXPECT_TRUE(state_.gDbUser->TableDefs()[u"工程甲"_qs].Indexes.empty());
}

TEST_F(TableTransfer, APlanThatIsListedKeepsItsCentralTables) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    list(*state_.gDbUser, u"工程甲"_qs);
    state_.gDbUser->TableDefs().Append(outlineTable(u"工程甲"_qs));
    addRows(*state_.gDbUser, u"工程甲"_qs, {u"工程甲"_qs, u"工程甲.7"_qs});
    importPlans();
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select Key from 工程甲"_qs),
              (QStringList{u"工程甲"_qs, u"工程甲.7"_qs}));
    EXPECT_EQ(listed(*state_.gDbUser).size(), 1);
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(TableTransfer, SeveralPlansSomeListedSomeNotAreAllLookedUpFromTheFirstRow) {
    for (const QString& name : {u"a"_qs, u"b"_qs, u"c"_qs}) {
        layPlan(state_.gUserTplPath, name);
    }
    list(*state_.gDbUser, u"c"_qs);
    list(*state_.gDbUser, u"a"_qs);
    importPlans();
    EXPECT_EQ(listed(*state_.gDbUser), (QStringList{u"c"_qs, u"a"_qs, u"b"_qs}));
}

TEST_F(TableTransfer, AFolderWithoutItsDatabaseIsIgnoredAlsoWhenItIsListed) {
    QDir().mkpath(state_.gUserTplPath + u"空"_qs);
    QDir().mkpath(state_.gUserTplPath + u"旧"_qs);
    list(*state_.gDbUser, u"旧"_qs);
    importPlans();
    EXPECT_EQ(listed(*state_.gDbUser), QStringList{u"旧"_qs});
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(TableTransfer, ADatabaseOfAnotherNameMakesNoPlan) {
    layPlan(state_.gUserTplPath, u"甲"_qs);
    QDir().rename(state_.gUserTplPath + u"甲"_qs, state_.gUserTplPath + u"乙"_qs);
    importPlans();
    EXPECT_TRUE(listed(*state_.gDbUser).isEmpty());
}

TEST_F(TableTransfer, NamesAreLookedUpWithTheirCase) {
    layPlan(state_.gUserTplPath, u"plan"_qs);
    list(*state_.gDbUser, u"PLAN"_qs);
    importPlans();
    EXPECT_EQ(listed(*state_.gDbUser), (QStringList{u"PLAN"_qs, u"plan"_qs}));
}

TEST_F(TableTransfer, AFolderNameWithABlankIsListedButItsCopyFailsOnTheBareName) {
    layPlan(state_.gUserTplPath, u"甲 乙"_qs);
    importPlans();
    EXPECT_EQ(listed(*state_.gDbUser), QStringList{u"甲 乙"_qs});
    EXPECT_FALSE(state_.gDbUser->TableDefs().Contains(u"甲 乙"_qs));
    EXPECT_EQ(messages_.shown.size(), 1U);
}

TEST_F(TableTransfer, APlanWhoseDatabaseCannotBeOpenedIsListedAndTheOthersStillComeIn) {
    QDir().mkpath(state_.gUserTplPath + u"坏"_qs);
    QFile bad(planFile(u"坏"_qs));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("no database");
    bad.close();
    layPlan(state_.gUserTplPath, u"好"_qs);
    importPlans();
    QStringList both = listed(*state_.gDbUser);
    both.sort();
    QStringList expected{u"坏"_qs, u"好"_qs};
    expected.sort();
    EXPECT_EQ(both, expected);
    EXPECT_TRUE(state_.gDbUser->TableDefs().Contains(u"好"_qs));
    EXPECT_FALSE(state_.gDbUser->TableDefs().Contains(u"坏"_qs));
    EXPECT_EQ(messages_.shown.size(), 1U);
}

TEST_F(TableTransfer, ADatabaseWithoutATableOfItsNameIsListedAndReportedOnceWithTheLastError) {
    folderWithDatabase(state_.gUserTplPath, u"甲"_qs)->Close();
    importPlans();
    EXPECT_EQ(listed(*state_.gDbUser), QStringList{u"甲"_qs});
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_TRUE(messages_.shown[0].text.contains(u"甲Org"_qs));
    EXPECT_EQ(messages_.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_TRUE(messages_.shown[0].title.isEmpty());
}

TEST_F(TableTransfer, WithoutTheListTheTablesStillComeInAndTheErrorIs91WithItsCause) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    state_.gDbUser->TableDefs().Delete(u"遍历表"_qs);
    importPlans();
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select Key from 工程甲"_qs).size(), 2);
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, u"方案列表或收入的数据库没有打开，没有全部收入。\n"
                                       "找不到表『遍历表』，请确认它存在，且名称拼写正确。"_qs);
}

TEST_F(TableTransfer, WithoutTheFolderOfThePlansTheTreeIsRefreshedAndTheErrorShown) {
    state_.gUserTplPath = pathOf(u"没有/"_qs);
    importPlans();
    EXPECT_EQ(refreshed_, 1);
    EXPECT_EQ(messages_.shown.size(), 1U);
}

TEST_F(TableTransfer, AnErrorOfTheRefreshIsShownToo) {
    ImportPlanFolders(state_,
                      {[] { throw RunTimeError(35602, u"关键字不唯一"); }, splash_, messages_});
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, u"关键字不唯一"_qs);
    EXPECT_EQ(splash_.unloaded, 1);
}

TEST_F(TableTransfer, ImportingPlansRefreshesTheTreeAndTakesTheSplashDownEvenAfterErrors) {
    folderWithDatabase(state_.gUserTplPath, u"甲"_qs)->Close();
    importPlans();
    EXPECT_EQ(refreshed_, 1);
    EXPECT_EQ(splash_.unloaded, 1);
}

TEST_F(TableTransfer, ImportingClosesThePlansDatabase) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    EXPECT_EQ(state_.gDbPlan, nullptr);
    layPlan(templatesFolder(), u"模板"_qs);
    importTemplates();
    EXPECT_EQ(state_.gDbPlan, nullptr);
}

TEST_F(TableTransfer, ACopiedPlanFolderIsAPlan) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    // Elsewhere, under a program of its own.
    QDir().mkpath(pathOf(u"别处/工程甲"_qs));
    ASSERT_TRUE(QFile::copy(planFile(u"工程甲"_qs), pathOf(u"别处/工程甲/工程甲.mdb"_qs)));
    modMain other;
    other.gWs = &other.DBEngine.Workspaces(0);
    other.gFso = std::make_unique<files::DiskFileSystem>();
    other.gUserTplPath = pathOf(u"别处/"_qs);
    CreateUserDb(other, other.gUserTplPath + u"Db_UsTemplate.mdb"_qs);
    ImportPlanFolders(other, surroundings());
    EXPECT_EQ(rowsOf(*other.gDbUser, u"select Key from 工程甲"_qs).size(), 2);
}

TEST_F(TableTransfer, APlanUnderAFolderWithAnApostropheComesInToo) {
    state_.gDbUser->Close();
    QDir().mkpath(pathOf(u"O'Brien's/plans"_qs));
    state_.gUserTplPath = pathOf(u"O'Brien's/plans/"_qs);
    CreateUserDb(state_, state_.gUserTplPath + u"Db_UsTemplate.mdb"_qs);
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    EXPECT_TRUE(messages_.shown.empty());
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select Key from 工程甲"_qs).size(), 2);
}

TEST_F(TableTransfer, ATemplateFolderComesInWithItsOutlineAlone) {
    layPlan(templatesFolder(), u"模板"_qs);
    importTemplates();
    EXPECT_EQ(listed(*state_.gDbTemplate), QStringList{u"模板"_qs});
    EXPECT_EQ(state_.gDbTemplate->TableDefs().Names(), (QStringList{u"遍历表"_qs, u"模板"_qs}));
    EXPECT_EQ(refreshed_, 1);
    EXPECT_EQ(splash_.unloaded, 1);
}

// A killed process must not leave a listed name without its tables: the next refresh would forget
// it, and with a template its database.
TEST_F(TableTransfer, NameAndTablesOfAnAdoptedFolderLastTogether) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    layPlan(templatesFolder(), u"模板"_qs);
    test::Commits ofPlans(state_.gDbUser->Name());
    test::Commits ofTemplates(state_.gDbTemplate->Name());
    importPlans();
    importTemplates();
    EXPECT_EQ(ofPlans.count(), 1);
    EXPECT_EQ(ofTemplates.count(), 1);
    EXPECT_FALSE(state_.gWs->InTransaction());
}

TEST_F(TableTransfer, ManyFoldersAreAdoptedInOneCommit) {
    for (const QString& name : {u"工程甲"_qs, u"工程乙"_qs, u"工程丙"_qs}) {
        layPlan(state_.gUserTplPath, name);
        layPlan(templatesFolder(), name);
    }
    test::Commits ofPlans(state_.gDbUser->Name());
    test::Commits ofTemplates(state_.gDbTemplate->Name());
    importPlans();
    importTemplates();
    EXPECT_EQ(listed(*state_.gDbUser).size(), 3);
    EXPECT_EQ(listed(*state_.gDbTemplate).size(), 3);
    EXPECT_EQ(ofPlans.count(), 1);
    EXPECT_EQ(ofTemplates.count(), 1);
}

TEST_F(TableTransfer, TheFirstErrorWithATemplateEndsTheWorkAndGoesToTheMessage) {
    folderWithDatabase(templatesFolder(), u"a"_qs)->Close();
    layPlan(templatesFolder(), u"b"_qs);
    importTemplates();
    EXPECT_EQ(listed(*state_.gDbTemplate), QStringList{u"a"_qs});
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_TRUE(messages_.shown[0].title.isEmpty());
    EXPECT_EQ(refreshed_, 0);
    EXPECT_EQ(splash_.unloaded, 0);
}

TEST_F(TableTransfer, LeavingAPlanReplacesTheOutlineInItsFolder) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    addRows(*state_.gDbUser, u"工程甲"_qs, {u"工程甲.2"_qs});
    SaveCurrentPlanTables(state_, u"工程甲"_qs);
    const auto folder = state_.gWs->OpenDatabase(planFile(u"工程甲"_qs));
    EXPECT_EQ(rowsOf(*folder, u"select Key,ID from 工程甲 order by ID"_qs),
              (QStringList{u"工程甲|1"_qs, u"工程甲.1|2"_qs, u"工程甲.2|3"_qs}));
}

// A process killed in between would leave the folder without its outline.
TEST_F(TableTransfer, TheOldOutlineInTheFolderGoesAtOneStrokeWithTheComingOfTheNewOne) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    test::Commits commits(planFile(u"工程甲"_qs));
    SaveCurrentPlanTables(state_, u"工程甲"_qs);
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(state_.gWs->InTransaction());
}

TEST_F(TableTransfer, LeavingAPlanDoesNotWriteItsInformation) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    state_.gDbUser->Execute(u"delete * from 工程甲Org"_qs);
    SaveCurrentPlanTables(state_, u"工程甲"_qs);
    const auto folder = state_.gWs->OpenDatabase(planFile(u"工程甲"_qs));
    EXPECT_EQ(rowsOf(*folder, u"select 编制人 from 工程甲Org"_qs), QStringList{u"张三"_qs});
}

TEST_F(TableTransfer, LeavingWithoutATreeWritesNothing) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    addRows(*state_.gDbUser, u"工程甲"_qs, {u"工程甲.2"_qs});
    SaveCurrentPlanTables(state_, std::nullopt);
    const auto folder = state_.gWs->OpenDatabase(planFile(u"工程甲"_qs));
    EXPECT_EQ(rowsOf(*folder, u"select Key from 工程甲"_qs).size(), 2);
}

TEST_F(TableTransfer, LeavingAPlanWhoseDatabaseIsMissingEndsWithoutAWordAndMakesNone) {
    state_.gDbUser->TableDefs().Append(outlineTable(u"工程甲"_qs));
    SaveCurrentPlanTables(state_, u"工程甲"_qs);
    EXPECT_FALSE(QFile::exists(planFile(u"工程甲"_qs)));
    EXPECT_TRUE(state_.gDbUser->TableDefs().Contains(u"工程甲"_qs));
}

TEST_F(TableTransfer, LeavingAPlanWhoseNameNeedsBracketsEndsAtTheBareDrop) {
    layPlan(state_.gUserTplPath, u"甲 乙"_qs);
    state_.gDbUser->TableDefs().Append(outlineTable(u"甲 乙"_qs));
    SaveCurrentPlanTables(state_, u"甲 乙"_qs);
    const auto folder = state_.gWs->OpenDatabase(planFile(u"甲 乙"_qs));
    EXPECT_EQ(rowsOf(*folder, u"select Key from [甲 乙]"_qs).size(), 2);
}

TEST_F(TableTransfer, TheFoldersDatabaseIsCompleteByItselfAfterLeaving) {
    layPlan(state_.gUserTplPath, u"工程甲"_qs);
    importPlans();
    SaveCurrentPlanTables(state_, u"工程甲"_qs);
    EXPECT_EQ(QDir(state_.gUserTplPath + u"工程甲"_qs).entryList(QDir::Files),
              QStringList{u"工程甲.mdb"_qs});
}

} // namespace qvnd::store
