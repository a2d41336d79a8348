#include "outline/OtherPrograms.h"

#include "outline/CurrentPlan.h"
#include "outline/NodeCommands.h"
#include "support/OutlineWorld.h"
#include "support/PlainSqlite.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <functional>

using namespace qvnd;
using namespace qvnd::test;

namespace {

// Another program locks a database once its changes have been noticed and before its rows are read:
// at the first question for a plan's folder.
class LockingFiles : public files::DiskFileSystem {
public:
    explicit LockingFiles(const QString& database)
        : theirs_(std::make_unique<PlainSqlite>(database)) {}

    bool FolderExists(const QString& path) override {
        if (theirs_) {
            theirs_->rows("BEGIN EXCLUSIVE");
        }
        return DiskFileSystem::FolderExists(path);
    }
    void release() { theirs_.reset(); }

private:
    std::unique_ptr<PlainSqlite> theirs_;
};

// A workbench with the plan T open and another program at work on the same databases.
class OtherPrograms : public testing::Test {
protected:
    OtherPrograms() {
        world.makePlan("T", {{"T", "T"}, {"T.1", "一"}, {"T.2", "二"}});
        world.makePlan("U", {{"U", "U"}});
        outline::setCurrentPlan(*world.state.gDbUser, "T");
        outline::loadWorkbench(world.state, world.workbench, world.messages, world.splash);
        select("T.2");
    }

    outline::OutlineTree& tree() { return world.workbench.TrvCurrent; }
    void select(const QString& key) { tree().Select(&tree().Item(key)); }
    QString selected() {
        return tree().SelectedItem() == nullptr ? QString() : tree().SelectedItem()->Key();
    }
    // What another program does to the plans' database.
    void theyDo(const std::function<void(jet::Database&)>& act) {
        jet::DBEngine theirs;
        act(*theirs.Workspaces(0).OpenDatabase(world.state.gDbUser->Name()));
    }
    void theyAdd(const QString& table, const OutlineRowText& row) {
        theyDo([&](jet::Database& db) {
            OutlineWorld::add(*db.OpenRecordset("Select * from [" + table + "]"), row);
        });
    }
    QString currentPlan() {
        return world.state.gDbUser->OpenRecordset("Select * from 当前表")->Get(u"名称").ToText();
    }

    OutlineWorld world;
    outline::OtherPrograms others{world.state, world.workbench};
};

TEST_F(OtherPrograms, ThatChangeNothingLeaveTheTreesAsTheyAre) {
    const outline::OutlineNode* before = &tree().Item("T.1");
    EXPECT_FALSE(others.look());
    world.state.gDbUser->Execute("Delete * from 当前表");
    EXPECT_FALSE(others.look());
    EXPECT_EQ(&tree().Item("T.1"), before);
}

TEST_F(OtherPrograms, HaveThePlanKeptOpenOnceForEachChangeOfTheirs) {
    const auto forgetPlan = [](jet::Database& db) { db.Execute("Delete * from 当前表"); };
    theyDo(forgetPlan);
    others.keepPlanOpen();
    EXPECT_EQ(currentPlan(), "T");
    forgetPlan(*world.state.gDbUser);
    others.keepPlanOpen();
    EXPECT_TRUE(world.state.gDbUser->OpenRecordset("Select * from 当前表")->Eof());
}

TEST_F(OtherPrograms, HaveNothingKeptOpenWhereNoPlanIs) {
    tree().Clear();
    theyDo([](jet::Database& db) { outline::setCurrentPlan(db, "U"); });
    others.keepPlanOpen();
    EXPECT_EQ(currentPlan(), "U");
}

TEST_F(OtherPrograms, ThatChangeAPlanThatIsNotOpenAreNewsOfTheLibrary) {
    theyAdd("U", {"U.1", "一"});
    EXPECT_TRUE(others.look());
    EXPECT_NE(world.workbench.TrvTemplate_Us.find("U.1"), nullptr);
    EXPECT_EQ(selected(), "T.2");
}

TEST_F(OtherPrograms, ThatChangeATemplateAreNewsOfTheLibrary) {
    world.folder.makeFolder("Sys/标书模板/M");
    OutlineWorld::makeTable(*world.state.gDbTemplate, "M", {{"M", "M"}});
    world.registerName(*world.state.gDbTemplate, "M");
    jet::DBEngine theirs;
    const auto templates = theirs.Workspaces(0).OpenDatabase(world.state.gDbTemplate->Name());
    OutlineWorld::add(*templates->OpenRecordset("Select * from M"), {"M.1", "一"});
    EXPECT_TRUE(others.look());
    EXPECT_NE(world.workbench.TrvTemplate.find("M.1"), nullptr);
    EXPECT_FALSE(others.look());
}

TEST_F(OtherPrograms, ThatAddANodeHaveItShownWithTheSelectionKept) {
    theyAdd("T", {"T.3", "三"});
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(tree()), (QStringList{"T", "T.1", "T.2", "T.3"}));
    EXPECT_EQ(selected(), "T.2");
    EXPECT_FALSE(others.look());
}

TEST_F(OtherPrograms, ThatChangeTheOpenPlanLeaveItsCommandsOpen) {
    outline::Workbench& workbench = world.workbench;
    workbench.clickedKey = "T.2";
    workbench.mnuDelete = true;
    workbench.mnuPaste = true;
    workbench.TbarBid[9] = true;
    const bool mayEdit = workbench.cmdEdit;
    theyAdd("T", {"T.3", "三"});
    EXPECT_TRUE(others.look());
    EXPECT_EQ(workbench.clickedKey, "T.2");
    EXPECT_TRUE(workbench.mnuDelete);
    EXPECT_TRUE(workbench.mnuPaste);
    EXPECT_TRUE(workbench.TbarBid[9]);
    EXPECT_EQ(workbench.cmdEdit, mayEdit);
}

TEST_F(OtherPrograms, ThatRenameANodeHaveItsNameShown) {
    theyDo([](jet::Database& db) {
        const auto row = db.OpenRecordset("Select * from T where Key='T.1'");
        row->Edit();
        row->Set(u"名称", u"另一个名称");
        row->Update();
    });
    EXPECT_TRUE(others.look());
    EXPECT_EQ(tree().Item("T.1").Text(), "另一个名称");
}

TEST_F(OtherPrograms, ThatMakeANodeADocumentHaveItShownAsOne) {
    theyDo([](jet::Database& db) {
        const auto row = db.OpenRecordset("Select * from T where Key='T.1'");
        row->Edit();
        row->Set(u"是否文档", u"是");
        row->Update();
    });
    EXPECT_TRUE(others.look());
    EXPECT_EQ(tree().Item("T.1").Image(), outline::image::document);
}

TEST_F(OtherPrograms, ThatDeleteTheSelectedNodeHaveTheRootSelectedAndExpanded) {
    theyDo([](jet::Database& db) { db.Execute("Delete * from T where Key='T.2'"); });
    EXPECT_TRUE(others.look());
    EXPECT_EQ(selected(), "T");
    EXPECT_TRUE(tree().Item("T").Expanded());
}

TEST_F(OtherPrograms, ThatDeleteTheOpenPlanLeaveTheTreeEmptyAndItsCommandsClosed) {
    theyDo([](jet::Database& db) {
        db.TableDefs().Delete("T");
        db.Execute("Delete * from 遍历表 where 名称='T'");
    });
    EXPECT_TRUE(others.look());
    EXPECT_EQ(tree().Count(), 0);
    EXPECT_FALSE(world.workbench.cmdEdit);
    EXPECT_FALSE(world.workbench.mnuEdit);
    EXPECT_EQ(OutlineWorld::shown(world.workbench.TrvTemplate_Us), QStringList{"U"});
}

TEST_F(OtherPrograms, ThatDeleteTheOpenPlanCloseEveryCommandOfANode) {
    outline::Workbench& workbench = world.workbench;
    workbench.pasteArmed = true;
    select("T");
    outline::followSelection(world.state, workbench, world.messages);
    select("T.2");
    outline::followSelection(world.state, workbench, world.messages);
    ASSERT_TRUE(workbench.mnuRename && workbench.mnuDelete && workbench.TbarBid[1]);
    world.state.gSelectedPlan = "T";
    theyDo([](jet::Database& db) { db.TableDefs().Delete("T"); });
    EXPECT_TRUE(others.look());
    for (const bool isOpen :
         {workbench.mnuBrowseDoc, workbench.mnuEQFolder, workbench.mnuLTFolder, workbench.mnuAddDoc,
          workbench.mnuEQDoc, workbench.mnuLTDoc, workbench.mnuRename, workbench.mnuEditDelete,
          workbench.mnuSaveTemplate, workbench.mnuDelete, workbench.mnuPaste}) {
        EXPECT_FALSE(isOpen);
    }
    for (const std::size_t button : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12}) {
        EXPECT_FALSE(workbench.TbarBid[button]) << button;
    }
    EXPECT_EQ(workbench.clickedKey, "");
    EXPECT_EQ(world.state.gSelectedPlan, "");
}

TEST_F(OtherPrograms, ThatChangeAPlanThatNoListNamesAreNewsOfTheTreeAlone) {
    theyDo([](jet::Database& db) { db.Execute("Delete * from 遍历表 where 名称='T'"); });
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(tree()), QStringList({"T", "T.1", "T.2"}));
    theyAdd("T", {"T.3", "三"});
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(tree()), QStringList({"T", "T.1", "T.2", "T.3"}));
}

TEST_F(OtherPrograms, ThatOpenAnotherPlanDoNotTakeTheOneThatIsShown) {
    theyDo([](jet::Database& db) { outline::setCurrentPlan(db, "U"); });
    EXPECT_EQ(currentPlan(), "U");
    EXPECT_FALSE(others.look());
    EXPECT_EQ(currentPlan(), "U") << "a look writes nothing";
    others.keepPlanOpen();
    EXPECT_EQ(currentPlan(), "T");
}

TEST_F(OtherPrograms, ThatRenameTheRootDoNotLoseThePlan) {
    theyDo([](jet::Database& db) {
        const auto row = db.OpenRecordset("Select * from T where Key='T'");
        row->Edit();
        row->Set(u"名称", u"新名");
        row->Update();
    });
    EXPECT_TRUE(others.look());
    theyAdd("T", {"T.3", "三"});
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(tree()), (QStringList{"T", "T.1", "T.2", "T.3"}));
}

TEST_F(OtherPrograms, ThatHoldTheDatabaseAreSeenAgainBehindAReadingThatFailed) {
    auto files = std::make_unique<LockingFiles>(world.state.gDbUser->Name());
    LockingFiles& theirs = *files;
    world.state.gFso = std::move(files);
    theyAdd("T", {"T.3", "三"});
    EXPECT_THROW(others.look(), RunTimeError);
    EXPECT_EQ(OutlineWorld::shown(tree()), (QStringList{"T", "T.1", "T.2"}));
    theirs.release();
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(tree()), (QStringList{"T", "T.1", "T.2", "T.3"}));
}

TEST_F(OtherPrograms, ThatTookAFolderAwayHaveNothingDroppedByALook) {
    world.registerName(*world.state.gDbTemplate, "M");
    OutlineWorld::makeTable(*world.state.gDbTemplate, "M", {{"M", "M"}});
    ASSERT_TRUE(QDir(store::planFolder(world.state, "U")).removeRecursively());
    theyAdd("T", {"T.3", "三"});
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(world.workbench.TrvTemplate_Us),
              (QStringList{"T", "T.1", "T.2", "T.3"}));
    EXPECT_EQ(world.registered(*world.state.gDbUser), (QStringList{"T", "U"}));
    EXPECT_EQ(world.registered(*world.state.gDbTemplate), QStringList{"M"});
    EXPECT_TRUE(world.state.gDbUser->TableDefs().Contains("U"));
    EXPECT_TRUE(world.state.gDbTemplate->TableDefs().Contains("M"));
    EXPECT_TRUE(world.messages.shown.empty());
}

TEST_F(OtherPrograms, ThatLeaveATableThatIsNoOutlineDoNotHoldUpTheLook) {
    theyDo([this](jet::Database& db) {
        db.TableDefs().Append(OutlineWorld::nameTable("V"));
        world.registerName(db, "V");
    });
    theyAdd("T", {"T.3", "三"});
    world.folder.makeFolder("用户模板/V");
    EXPECT_TRUE(others.look());
    EXPECT_FALSE(others.look());
    EXPECT_EQ(OutlineWorld::shown(world.workbench.TrvTemplate_Us),
              (QStringList{"T", "T.1", "T.2", "T.3", "U"}));
}

TEST_F(OtherPrograms, ThatMakeAPlanHaveItListed) {
    theyDo([this](jet::Database& db) {
        OutlineWorld::makeTable(db, "V", {{"V", "V"}});
        world.registerName(db, "V");
    });
    world.folder.makeFolder("用户模板/V");
    EXPECT_TRUE(others.look());
    EXPECT_EQ(OutlineWorld::shown(world.workbench.TrvTemplate_Us),
              (QStringList{"T", "T.1", "T.2", "U", "V"}));
    EXPECT_EQ(selected(), "T.2");
}

} // namespace
