#include "outline/DeleteNode.h"

#include "support/FailingFiles.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;

namespace {

// The deletion of a plan, whose folder another program keeps from being deleted.
struct StayingFolder : testing::Test, test::OutlineWorld {
    StayingFolder() {
        auto failing = std::make_unique<test::FailingFiles>();
        failing->deletingFolder.emplace(error::permissionDenied, u"没有权限");
        state.gFso = std::move(failing);
        messages.otherwise = desktop::Answer::yes;
    }
    Deleted remove(const QString& plan, const QString& key) {
        openPlan(plan, key);
        return mnuEditDelete(state, workbench, services());
    }
};

TEST_F(StayingFolder, IsToldWithWhatCanBeDone) {
    makePlan({"T", "T.1"});
    makeTable(*state.gDbUser, "TOrg", {});
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    EXPECT_EQ(state.Remarks, QStringList("“T”的大纲已删去，文件夹没有删去：请先撤消，关闭文档"
                                         "以后再删除。"));
    EXPECT_EQ(messages.shown.back().text, "请先关闭正在使用与此工程相关的内容！");
}

TEST_F(StayingFolder, IsNotToldOfAPlanThatHasKeptItsTable) {
    makePlan({"甲'乙"});
    EXPECT_EQ(remove("甲'乙", "甲'乙"), Deleted::failed);
    EXPECT_TRUE(state.gDbUser->TableDefs().Contains("甲'乙"));
    EXPECT_TRUE(state.Remarks.isEmpty());
}

TEST_F(StayingFolder, IsNotToldOfANodeThatCannotBeDeleted) {
    makePlan({"T", "T.1"});
    QFile::remove(folder.path("用户模板/T/T.mdb"));
    EXPECT_EQ(remove("T", "T.1"), Deleted::failed);
    EXPECT_TRUE(state.Remarks.isEmpty());
}

} // namespace
