#include "support/HeldLock.h"
#include "whole/PlannersDesk.h"
#include "whole/RecordedPlanner.h"

using namespace qvnd;
using outline::Added;
using outline::AddMode;

namespace {

// Commands that fail on their way: what was done before the failure stays, the user is told, and
// the undo brings all back.
class HalfDone : public test::RecordedPlanner {
protected:
    HalfDone() {
        planner.newPlan("甲");
        planner.messages.otherwise = desktop::Answer::yes;
        planner.folder.write("files/新.doc", "new");
    }

    // The rows behind the root, in this order, and a file for each document.
    void haveRows(const std::vector<test::OutlineRowText>& rows) {
        const auto table = planner.state().gDbUser->OpenRecordset("Select * from 甲");
        for (const test::OutlineRowText& row : rows) {
            test::OutlineWorld::add(*table, row);
            if (row.isDocument == "是") {
                planner.folder.write(fileOf(row.key), row.name.toUtf8());
            }
        }
        planner.clickPlan("甲");
    }
    void havePlanWithThreeFolders() { haveRows({{"甲.1", "一"}, {"甲.2", "二"}, {"甲.3", "三"}}); }
    // As when the file has been deleted by hand.
    void loseThePlansDatabase() { QFile::remove(planner.folder.path("Sys/用户模板/甲/甲.mdb")); }
    static QString fileOf(const QString& key) { return "Sys/用户模板/甲/" + key + ".doc"; }
    QStringList keys() {
        return test::OutlineWorld::column(*planner.state().gDbUser, "甲", u"Key");
    }
    Added addDocument(AddMode mode, const QString& file = "files/新.doc") {
        planner.messages.shown.clear();
        return planner.addDocument(mode, planner.folder.path(file));
    }
    Added addFolder() {
        planner.messages.shown.clear();
        return planner.addFolder(AddMode::beside, "新");
    }
    QString told() const {
        return planner.messages.shown.empty() ? QString() : planner.messages.shown.back().text;
    }
};

TEST_F(HalfDone, AFolderWhoseKeyIsTakenLeavesTheFollowingRowsOut) {
    haveRows({{"甲.5", "前"}, {"甲.1", "一"}, {"甲.2", "二"}, {"甲.3", "三"}});
    planner.click("甲.1");
    const auto step = record("添加同级文件夹", [&] { EXPECT_EQ(addFolder(), Added::failed); });
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.5", "甲.1"}));
    EXPECT_EQ(step.note, "同时移除了 2 个节点：二、三");
}

TEST_F(HalfDone, AFolderWhoseKeyAFollowingRowHasTakesThatRowsPlace) {
    haveRows({{"甲.1", "一"}, {"甲.3", "二"}, {"甲.4", "三"}});
    planner.click("甲.1");
    const auto step = record("添加同级文件夹", [&] { EXPECT_EQ(addFolder(), Added::failed); });
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.1", "甲.4", "甲.3"}));
    EXPECT_TRUE(changesOf(step).contains("替换 三（甲.4），现为 新"))
        << changesOf(step).join('\n').toStdString();
    EXPECT_EQ(step.note, "同时移除了 1 个节点：三");
}

TEST_F(HalfDone, AFolderOfAPlanWithoutItsDatabaseStandsInTheCentralTableAlone) {
    havePlanWithThreeFolders();
    loseThePlansDatabase();
    planner.click("甲.1");
    const auto step = record("添加同级文件夹", [&] { EXPECT_EQ(addFolder(), Added::failed); });
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.1", "甲.4", "甲.2", "甲.3"}));
    EXPECT_EQ(step.note, QString()) << "no row is lost";
}

TEST_F(HalfDone, ADocumentBesideWhoseKeyIsTakenOverwritesThatFileAndLeavesTheFollowingRowsOut) {
    haveRows({{"甲.5", "前", "是"}, {"甲.1", "一"}, {"甲.2", "二"}, {"甲.3", "三"}});
    planner.click("甲.1");
    const auto step =
        record("添加同级文档", [&] { EXPECT_EQ(addDocument(AddMode::beside), Added::failed); });
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.5", "甲.1"}));
    EXPECT_EQ(planner.folder.read(fileOf("甲.5")), "new");
    EXPECT_EQ(step.note, "同时移除了 2 个节点：二、三\n覆盖了 1 个文件：甲.5.doc");
}

TEST_F(HalfDone, ADocumentBelowWhoseKeyIsTakenOverwritesThatFile) {
    haveRows({{"甲.3", "前", "是"}, {"甲.1", "一"}});
    planner.click("甲");
    const auto step =
        record("添加下级文档", [&] { EXPECT_EQ(addDocument(AddMode::below), Added::failed); });
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(planner.folder.read(fileOf("甲.3")), "new");
    EXPECT_EQ(step.note, "覆盖了 1 个文件：甲.3.doc");
}

TEST_F(HalfDone, ADocumentThatCannotBeConvertedLeavesTheFollowingRowsOut) {
    havePlanWithThreeFolders();
    planner.folder.write("files/新.rtf", "no document");
    test::PlannersDesk desk(planner);
    planner.click("甲.1");
    const auto step = record("添加同级文档", [&] {
        planner.dialogs.chosen = planner.folder.path("files/新.rtf");
        outline::AddDocument command(planner.state(), planner.workbench(), desk.services());
        EXPECT_EQ(command.mnuEQDoc(), Added::failed);
    });
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.1"}));
    EXPECT_EQ(step.note, "同时移除了 2 个节点：二、三");
}

TEST_F(HalfDone, ADocumentBesideOfAPlanWithoutItsDatabaseLeavesTheFollowingRowsOut) {
    havePlanWithThreeFolders();
    loseThePlansDatabase();
    planner.click("甲.1");
    const auto step =
        record("添加同级文档", [&] { EXPECT_EQ(addDocument(AddMode::beside), Added::failed); });
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.1", "甲.4"}));
    EXPECT_EQ(planner.folder.read(fileOf("甲.4")), "new");
    EXPECT_EQ(step.note, "同时移除了 2 个节点：二、三");
}

TEST_F(HalfDone, ADocumentThatIsTooDeepLeavesItsFile) {
    std::vector<test::OutlineRowText> rows;
    QString deepest = "甲";
    for (int depth = 1; depth <= 9; ++depth) {
        deepest += ".1";
        rows.push_back({deepest, "深"});
    }
    haveRows(rows);
    planner.click(deepest);
    const auto step =
        record("添加下级文档", [&] { EXPECT_EQ(addDocument(AddMode::below), Added::tooDeep); });
    EXPECT_EQ(told(), "对不起，系统最多支持九级深度！");
    EXPECT_EQ(step.note, "留下了没有节点的文件：" + deepest + ".1.doc");
}

TEST_F(HalfDone, APlanOfWhichADocumentIsOpenLosesItsTablesAndKeepsItsFolder) {
    haveRows({{"甲.1", "文", "是"}});
    const test::HeldLock open(planner.folder.path(fileOf("甲.1")), test::LockKind::whole);
    planner.click("甲");
    planner.messages.shown.clear();
    const auto step = recordAheadOfTheStart(
        "删除", [&] { EXPECT_EQ(planner.deleteNode(), outline::Deleted::failed); });
    EXPECT_EQ(step.note, "“甲”的大纲已删去，文件夹没有删去：请先撤消，关闭文档以后再删除。");
    EXPECT_EQ(told(), "请先关闭正在使用与此工程相关的内容！");
    EXPECT_FALSE(planner.state().gDbUser->TableDefs().Contains("甲"));
    EXPECT_TRUE(planner.folder.exists(fileOf("甲.1")));
}

TEST_F(HalfDone, ADeletedPlanOfWhichADocumentIsOpenKeepsItsFolder) {
    haveRows({{"甲.1", "文", "是"}});
    const test::HeldLock open(planner.folder.path(fileOf("甲.1")), test::LockKind::whole);
    planner.click("甲");
    const auto step = recordAheadOfTheStart("删除当前方案", [&] { planner.deletePlan(); });
    EXPECT_TRUE(
        step.note.startsWith("文件夹没有删除，其中可能有文件正在使用；下次启动时会重新列入："))
        << step.note.toStdString();
    EXPECT_FALSE(planner.state().gDbUser->TableDefs().Contains("甲"));
    EXPECT_TRUE(planner.folder.exists(fileOf("甲.1")));
}

TEST_F(HalfDone, ASubtreeOfAPlanWithoutItsDatabaseIsGoneFromTheTableAlone) {
    havePlanWithThreeFolders();
    loseThePlansDatabase();
    planner.click("甲.2");
    planner.messages.shown.clear();
    const auto step = record("删除", [&] {
        EXPECT_EQ(planner.deleteNode(), outline::Deleted::failed);
        EXPECT_EQ(planner.current().find("甲.2"), nullptr);
    });
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(step.note, QString());
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.1", "甲.3"}));
}

TEST_F(HalfDone, InformationOfAPlanWithoutItsDatabaseStandsInTheCentralTableAlone) {
    loseThePlansDatabase();
    const auto step = record("工程信息", [&] { test::PlannersDesk(planner).information("别人"); });
    EXPECT_EQ(told(), "更新失败！");
    EXPECT_TRUE(changesOf(step).join('\n').contains("改动 甲 的工程信息"));
    EXPECT_EQ(step.title, "工程信息[甲]");
    EXPECT_EQ(step.note, QString());
}

TEST_F(HalfDone, ANameOfDigitsTakesTheFolderOfThatNameAndLeavesAnother) {
    planner.folder.write("Sys/用户模板/10/图.doc", "mine");
    const auto step =
        recordAheadOfTheStart("新建方案", [&] { EXPECT_FALSE(planner.newPlan("10", true)); });
    EXPECT_EQ(told(), "对不起，工程名称不合法！");
    EXPECT_EQ(step.note, "删去了 1 个文件：图.doc\n方案没有建成，它的文件夹留了下来：" +
                             planner.state().gUserTplPath + "10");
    EXPECT_EQ(planner.folder.names("Sys/用户模板/10"), QStringList("10.mdb"));
    EXPECT_EQ(planner.state().gDbUser->OpenRecordset("Select * from 当前表")->RecordCount(), 0);
}

TEST_F(HalfDone, APlanWhoseFolderIsNotToBeReplacedIsTheOpenOneAllTheSame) {
    planner.newPlan("乙");
    planner.clickPlan("甲");
    const auto openPlan = [&] {
        return planner.state()
            .gDbUser->OpenRecordset("Select * from 当前表")
            ->Get(u"名称")
            .TextOrEmpty();
    };
    const auto step =
        recordAheadOfTheStart("新建方案", [&] { EXPECT_FALSE(planner.newPlan("乙", false)); });
    EXPECT_EQ(step.note, QString());
    EXPECT_TRUE(step.isMinor);
    EXPECT_EQ(openPlan(), "乙");
}

TEST_F(HalfDone, APlanWhoseTemplateFolderCannotBeMadeLeavesATableThatNoListNames) {
    haveRows({{"甲.1", "文", "是"}});
    planner.folder.write("Sys/标书模板/甲", "in the way");
    const auto step = record("存入方案模板", [&] {
        EXPECT_EQ(planner.storeTemplate().result, outline::Stored::failed);
    });
    EXPECT_EQ(step.note, "“甲”只存了一半，没有列入方案模板：请先撤消，再存一次。");
    EXPECT_TRUE(planner.state().gDbTemplate->TableDefs().Contains("甲"));
    EXPECT_TRUE(planner.state().gDbTemplate->OpenRecordset("Select * from 遍历表")->Eof());
    EXPECT_EQ(planner.storeTemplate().result, outline::Stored::alreadyThere);
    outline::undo(planner.state(), planner.workbench(), planner.services());
    QFile::remove(planner.folder.path("Sys/标书模板/甲"));
    EXPECT_EQ(planner.storeTemplate().result, outline::Stored::stored) << "as the note says";
}

TEST_F(HalfDone, ANodeMovedToAKeyThatIsTakenTakesThePlaceAndTheFileOfTheOther) {
    haveRows({{"甲.1", "一"}, {"甲.2", "文", "是"}, {"甲.1.2", "旧", "是"}});
    const auto step = record("拖放", [&] { planner.drag("甲.2", "甲.1"); });
    EXPECT_EQ(keys(), (QStringList{"甲", "甲.1", "甲.1.2"}));
    EXPECT_EQ(planner.folder.read(fileOf("甲.1.2")), "文");
    EXPECT_EQ(step.note, "同时移除了 1 个节点：旧\n覆盖了 1 个文件：甲.1.2.doc");
    EXPECT_TRUE(changesOf(step).contains("替换 旧（甲.1.2），现为 文"))
        << changesOf(step).join('\n').toStdString();
}

} // namespace
