#include "outline/CurrentPlan.h"

#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;

namespace {

// Folders that came from elsewhere, with a database that anyone may have made.
struct Adoption : testing::Test, test::OutlineWorld {
    const std::vector<test::OutlineRowText> rows{
        {"甲", "甲"}, {"甲.1", "章"}, {"甲./../../外", "外", "是"}, {"乙.2", "他人", "是"}};

    void dropIn(const QString& folderName) {
        folder.makeFolder(folderName);
        makeTable(*create(folder.path(folderName + "/甲.mdb")), "甲", rows);
    }
    QStringList toldOf(const QString& part) const {
        QStringList texts;
        for (const auto& message : messages.shown) {
            if (message.text.contains(part)) {
                texts << message.text;
            }
        }
        return texts;
    }
    const QString told =
        "收入的“甲”中，下列 2 个节点的编号不合规则，它们没有对应的文件，"
        "不能浏览、复制或生成：\n外（甲./../../外）\n他人（乙.2）\n"
        "“甲”中有 2 个节点没有显示，从“外（甲./../../外）”起：它的上级不在大纲中。";
};

TEST_F(Adoption, OfAPlanTellsTheRowsWhoseKeysAreNoKeysOnce) {
    dropIn("用户模板/甲");
    adoptPlanFolders(state, workbench, messages, splash);
    EXPECT_EQ(keys("甲").size(), 4);
    EXPECT_EQ(toldOf("编号"), QStringList(told));
    messages.shown.clear();
    adoptPlanFolders(state, workbench, messages, splash);
    EXPECT_TRUE(toldOf("编号").isEmpty());
}

TEST_F(Adoption, ThatFailsEndsTheSplashAndTellsWhy) {
    splash.up = true;
    state.gDbUser->Execute("DROP TABLE 当前表");
    loadWorkbench(state, workbench, messages, splash);
    EXPECT_FALSE(splash.up);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(messages.shown[0].title, "提示");
}

TEST_F(Adoption, OfATemplateTellsThemToo) {
    dropIn("Sys/标书模板/甲");
    adoptTemplateFolders(state, workbench, messages, splash);
    EXPECT_EQ(toldOf("编号"), QStringList(told));
}

TEST_F(Adoption, OfAnOutlineWithKeysAloneTellsNothing) {
    folder.makeFolder("Sys/标书模板/丙");
    makeTable(*create(folder.path("Sys/标书模板/丙/丙.mdb")), "丙",
              {{"丙", "丙"}, {"丙.1", "章"}, {"丙.1.12", "文", "是"}});
    adoptTemplateFolders(state, workbench, messages, splash);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Adoption, OfAnOutlineWithAMissingParentTellsHowManyRowsDoNotShow) {
    folder.makeFolder("用户模板/丁");
    makeTable(*create(folder.path("用户模板/丁/丁.mdb")), "丁",
              {{"丁", "丁"}, {"丁.1", "章"}, {"丁.7.1", "节"}, {"丁.2", "章二"}});
    adoptPlanFolders(state, workbench, messages, splash);
    EXPECT_EQ(toldOf("没有显示"), QStringList("“丁”中有 2 个节点没有显示，从“节（丁.7.1）”起："
                                              "它的上级不在大纲中。"));
}

// The tree refuses a key of digits alone: then no row is shown, and none lacks its parent.
TEST_F(Adoption, OfAnOutlineWhoseRootTheTreeRefusesTellsOfNoMissingParent) {
    folder.makeFolder("用户模板/2026");
    makeTable(*create(folder.path("用户模板/2026/2026.mdb")), "2026",
              {{"2026", "2026"}, {"2026.1", "章"}});
    adoptPlanFolders(state, workbench, messages, splash);
    EXPECT_EQ(registered(*state.gDbUser), QStringList{"2026"});
    EXPECT_TRUE(toldOf("没有显示").isEmpty());
}

TEST_F(Adoption, OfACentralDatabaseOfAnOlderInstallationTellsTheFaultsOfItsOutlinesAtTheStart) {
    makePlan("甲", rows);
    setCurrentPlan(*state.gDbUser, "甲");
    loadWorkbench(state, workbench, messages, splash);
    EXPECT_TRUE(toldOf("编号").isEmpty());
    state.LegacyTakeovers = {{"Db_UsTemplate.mdb", store::LegacyKind::plan},
                             {"Db_BidSet.mdb", store::LegacyKind::central}};
    loadWorkbench(state, workbench, messages, splash);
    EXPECT_TRUE(toldOf("编号").isEmpty());
    state.LegacyTakeovers = {{"Db_UsTemplate.mdb", store::LegacyKind::central}};
    loadWorkbench(state, workbench, messages, splash);
    EXPECT_EQ(toldOf("编号"), QStringList(told));
}

// A list that comes with a shared work space may name anything.
TEST_F(Adoption, ANameInTheListThatLeadsOutOfTheFolderShowsNothingAndLosesNothing) {
    folder.write("外/外.mdb", "outside");
    for (const char* name : {"../外", "..", "甲/..", "NUL"}) {
        registerName(*state.gDbUser, name);
        registerName(*state.gDbTemplate, name);
    }
    makeTable(*state.gDbUser, "NUL", {{"NUL", "NUL"}, {"NUL.1", "章"}});
    adoptTemplateFolders(state, workbench, messages, splash);
    adoptPlanFolders(state, workbench, messages, splash);
    EXPECT_EQ(workbench.TrvTemplate.Count(), 0);
    EXPECT_EQ(workbench.TrvTemplate_Us.Count(), 0);
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"../外", "..", "甲/..", "NUL"}));
    EXPECT_EQ(state.gDbUser->OpenRecordset("select * from NUL")->RecordCount(), 1);
    EXPECT_TRUE(folder.exists("外/外.mdb"));
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
