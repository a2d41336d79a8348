#include "outline/BeyondAsked.h"

#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using history::Change;

namespace {

constexpr auto removed = Change::Kind::rowRemoved;
constexpr auto added = Change::Kind::rowAdded;
constexpr auto dropped = Change::Kind::tableDropped;
const QString plansFile = QStringLiteral("Db_UsTemplate.mdb");
const QString templatesFile = QStringLiteral("Db_Template.mdb");
const QString settingsFile = QStringLiteral("Db_BidSet.mdb");

Change row(Change::Kind kind, const QString& database, const QString& table, const QString& key,
           const QString& name) {
    return {kind, database, table, key, name, {}};
}
Change table(Change::Kind kind, const QString& database, const QString& name) {
    return {kind, database, name, {}, name, {}};
}

// What a command on the plan's selected node tells; the plan is 甲, and these are the rows that it
// has now.
QString toldOf(const QString& caption, const QString& selected, const QList<Change>& changes,
               const QList<std::pair<QString, QString>>& rows = {}) {
    return outline::beyondAsked({caption, "甲", selected, {}, {}, {}, {}}, changes,
                                [&](const QString& database, const QString& outline) {
                                    return database == plansFile && outline == "甲"
                                               ? rows
                                               : QList<std::pair<QString, QString>>();
                                });
}
QString ofDeletion(const QString& selected, const QList<Change>& changes) {
    return toldOf("删除", selected, changes);
}

TEST(BeyondAsked, ANodeOfATemplateThatGoesWithANodeOfThePlanIsTold) {
    const QList<Change> own{row(removed, plansFile, "甲", "甲.1", "章")};
    EXPECT_EQ(ofDeletion("甲.1", own), "");
    EXPECT_EQ(ofDeletion("甲.1", own + QList{row(removed, templatesFile, "甲", "甲.1", "模章")}),
              "同时移除了 1 个节点：模章");
}

TEST(BeyondAsked, TheNodeOfATemplateThatIsDeletedIsAskedFor) {
    EXPECT_EQ(ofDeletion("甲.2", {row(removed, templatesFile, "模", "模.1", "章"),
                                  row(removed, templatesFile, "模", "模.1.1", "节")}),
              "");
    EXPECT_EQ(ofDeletion("甲.2", {row(removed, templatesFile, "模", "模.1.1", "节"),
                                  row(removed, templatesFile, "模", "模.1", "章")}),
              "")
        << "in whatever order they went";
    // Also under the key of the plan's selected node.
    EXPECT_EQ(ofDeletion("甲.1", {row(removed, templatesFile, "甲", "甲.1", "章")}), "");
}

TEST(BeyondAsked, WhichNodeOfATemplateIsDeletedTheRowsTellThatWentFromItAlone) {
    const Change deleted = row(removed, templatesFile, "模", "模.1.1", "节");
    for (const Change& other : {row(removed, templatesFile, "样", "样.1", "样章"),
                                row(added, templatesFile, "模", "模.9", "新"),
                                row(Change::Kind::rowChanged, templatesFile, "模", "模", "模")}) {
        EXPECT_EQ(ofDeletion("甲.2", {deleted, other}), "");
    }
    EXPECT_EQ(ofDeletion("甲.2", {row(removed, templatesFile, "甲", "甲.11", "节"),
                                  row(removed, plansFile, "甲", "甲.3", "三")}),
              "同时移除了 1 个节点：三");
}

TEST(BeyondAsked, ARowThatCameInTheOtherLibraryIsNotTheOneThatWent) {
    const QList<Change> changes{row(removed, plansFile, "甲", "甲.2", "章"),
                                row(added, templatesFile, "甲", "甲.9", "章")};
    EXPECT_EQ(ofDeletion("甲.1", changes), "同时移除了 1 个节点：章");
}

TEST(BeyondAsked, ATemplateOfThePlansNameThatGoesWithThePlanIsTold) {
    const QList<Change> plan{table(dropped, plansFile, "甲"), table(dropped, plansFile, "甲Org"),
                             row(removed, plansFile, "甲", "甲", "甲"),
                             row(removed, plansFile, "遍历表", {}, "甲")};
    EXPECT_EQ(ofDeletion("甲", plan), "");
    EXPECT_EQ(ofDeletion("甲", plan + QList{table(dropped, templatesFile, "甲")}),
              "文件夹或数据已不在，因此不再列出：甲");
}

TEST(BeyondAsked, AnotherPlanThatGoesWithThePlanIsTold) {
    const QList<Change> both{table(dropped, plansFile, "甲"), table(dropped, plansFile, "甲Org"),
                             table(dropped, plansFile, "乙")};
    EXPECT_EQ(ofDeletion("甲", both), "文件夹或数据已不在，因此不再列出：乙");
    EXPECT_EQ(ofDeletion("", both), "文件夹或数据已不在，因此不再列出：乙");
    EXPECT_EQ(ofDeletion("甲.1", both), "文件夹或数据已不在，因此不再列出：甲、乙");
    EXPECT_EQ(toldOf("重命名", "甲", both), "文件夹或数据已不在，因此不再列出：甲、乙");
}

TEST(BeyondAsked, ATemplateThatIsDeletedAsAWholeIsAskedForUnlessAnotherGoesWithIt) {
    const QList<Change> one{table(dropped, templatesFile, "模"),
                            row(removed, templatesFile, "模", "模", "模"),
                            row(removed, templatesFile, "遍历表", {}, "模")};
    EXPECT_EQ(ofDeletion("甲.1", one), "");
    EXPECT_EQ(ofDeletion("甲.1", one + QList{table(dropped, templatesFile, "样")}),
              "文件夹或数据已不在，因此不再列出：模、样");
    EXPECT_EQ(ofDeletion("甲.1", {table(dropped, plansFile, "乙")}),
              "文件夹或数据已不在，因此不再列出：乙");
    EXPECT_EQ(
        ofDeletion("", {table(dropped, templatesFile, "甲"), table(dropped, templatesFile, "样")}),
        "文件夹或数据已不在，因此不再列出：甲、样")
        << "the plan's name makes no difference";
    EXPECT_EQ(ofDeletion("甲.1", {table(dropped, templatesFile, "模"),
                                  row(Change::Kind::rowChanged, plansFile, "甲", "甲.5", "五")}),
              "");
}

TEST(BeyondAsked, AnOutlineThatGoesWithANodeOfAnotherIsTold) {
    EXPECT_EQ(ofDeletion("甲.1", {row(removed, plansFile, "甲", "甲.1", "章"),
                                  table(dropped, plansFile, "乙")}),
              "文件夹或数据已不在，因此不再列出：乙");
}

TEST(BeyondAsked, TheTablesOfASettingLibraryAreNoOutlines) {
    EXPECT_EQ(ofDeletion("甲.1", {table(dropped, settingsFile, "常用章节"),
                                  table(dropped, settingsFile, "常用页面"),
                                  table(dropped, settingsFile, "常用眉脚")}),
              "");
}

TEST(BeyondAsked, AFileOfATemplateIsNotThatOfAPlansNodeOfTheSameKey) {
    const Change gone{Change::Kind::fileRemoved,     {},         {},
                      "/p/Sys/标书模板/甲/甲.1.doc", "甲.1.doc", {}};
    const QList<Change> moved{row(removed, plansFile, "甲", "甲.1", "章"),
                              row(added, plansFile, "甲", "甲.2", "章"), gone};
    EXPECT_EQ(toldOf("拖动", "甲.1", moved), "删去了 1 个文件：甲.1.doc");
}

Change keyTaken(const QString& key, const QString& before, const QString& name) {
    Change change = row(Change::Kind::rowReplaced, plansFile, "甲", key, name);
    change.nameBefore = before;
    return change;
}

TEST(BeyondAsked, TheNodeIsNamedWhoseKeyADraggedOneTook) {
    EXPECT_EQ(toldOf("拖放", "甲.2",
                     {row(removed, plansFile, "甲", "甲.1", "章"), keyTaken("甲.4", "旧", "章")}),
              "同时移除了 1 个节点：旧");
}

TEST(BeyondAsked, TheNodeIsNamedWhoseKeyAnAddedOneTook) {
    EXPECT_EQ(toldOf("添加同级文件夹", "甲.1", {keyTaken("甲.4", "旧", "新")}),
              "同时移除了 1 个节点：旧");
}

TEST(BeyondAsked, ANodeReplacedByOneOfItsNameIsGoneAllTheSame) {
    EXPECT_EQ(toldOf("拖放", "甲.2",
                     {row(removed, plansFile, "甲", "甲.1", "章"), keyTaken("甲.4", "章", "章")}),
              "同时移除了 1 个节点：章");
}

TEST(BeyondAsked, RowsOfTheScratchTableAreNoNodes) {
    Change scratch = row(Change::Kind::rowReplaced, plansFile, "temp", "甲.1", "章");
    scratch.nameBefore = "旧";
    EXPECT_EQ(toldOf("添加同级文件夹", "甲.1", {scratch}), "");
}

TEST(BeyondAsked, ARenamedNodeIsNotGone) {
    Change renamed = row(Change::Kind::rowChanged, plansFile, "甲", "甲.1", "新");
    renamed.nameBefore = "旧";
    EXPECT_EQ(toldOf("重命名", "甲.1", {renamed}), "");
}

TEST(BeyondAsked, TheDocumentOfANodeThatTookAKeyIsNotWithoutANode) {
    const Change file{Change::Kind::fileAdded, {}, {}, "/p/甲/甲.4.doc", "甲.4.doc", {}};
    EXPECT_EQ(
        toldOf("拖放", "甲.2",
               {row(removed, plansFile, "甲", "甲.1", "章"), keyTaken("甲.4", "旧", "章"), file}),
        "同时移除了 1 个节点：旧");
}

QString ofCommand(const QString& caption, const QList<Change>& changes,
                  const QList<std::pair<QString, QString>>& rows = {}) {
    return toldOf(caption, "甲.1", changes, rows);
}

Change file(Change::Kind kind, const QString& path) {
    return {kind, {}, {}, path, path.section('/', -1), {}};
}

TEST(BeyondAsked, OfMoreThanFiveNamesTheFirstFiveAreListed) {
    EXPECT_EQ(outline::listed({"1", "2", "3", "4", "5"}), "1、2、3、4、5");
    EXPECT_EQ(outline::listed({"1", "2", "3", "4", "5", "6"}), "1、2、3、4、5等");
    EXPECT_EQ(outline::listed({}), "");
}

TEST(BeyondAsked, OnlyTheStartTellsTheOutlinesThatItFound) {
    const auto made = Change::Kind::tableMade;
    const QList<Change> changes{table(made, plansFile, "乙"), table(made, plansFile, "乙Org"),
                                table(made, plansFile, "temp"), table(made, plansFile, "丙Org"),
                                table(made, templatesFile, "模")};
    EXPECT_EQ(ofCommand("启动", changes), "列入了文件夹中的方案或模板：乙、丙Org、模");
    EXPECT_EQ(ofCommand("存入方案模板", {table(made, templatesFile, "模"),
                                         row(added, templatesFile, "遍历表", {}, "模")}),
              "");
    EXPECT_EQ(ofCommand("启动", {table(made, plansFile, "temp")}), "");
}

TEST(BeyondAsked, AnOutlineThatNoListNamesIsTold) {
    const auto made = Change::Kind::tableMade;
    EXPECT_EQ(ofCommand("存入方案模板",
                        {table(made, templatesFile, "模"), table(made, templatesFile, "temp")}),
              "“模”只存了一半，没有列入方案模板：请先撤消，再存一次。");
    EXPECT_EQ(ofCommand("新建方案", {table(made, plansFile, "乙"), table(made, plansFile, "乙Org"),
                                     table(made, plansFile, "丙")}),
              "“乙”、“丙”只做了一半，没有列入用户方案：请先撤消，再做一次。");
}

TEST(BeyondAsked, ThePlanThatIsOpenIsNotListedByThatAlone) {
    EXPECT_EQ(ofCommand("新建方案", {table(Change::Kind::tableMade, plansFile, "乙"),
                                     row(added, plansFile, "当前表", {}, "乙")}),
              "“乙”只做了一半，没有列入用户方案：请先撤消，再做一次。");
    EXPECT_EQ(ofCommand("新建方案", {table(Change::Kind::tableMade, plansFile, "乙"),
                                     row(added, plansFile, "遍历表", {}, "乙")}),
              "");
}

TEST(BeyondAsked, ASettingLibraryIsToldWhereNoListNamesIt) {
    const auto made = Change::Kind::tableMade;
    const QList<Change> half{table(made, settingsFile, "常用章节"),
                             table(made, settingsFile, "常用页面")};
    const QString words = "“常用”只存了一半，没有列入库中：请先撤消，再用别的名称存一次。";
    EXPECT_EQ(ofCommand("施工方案设置", half), words);
    EXPECT_EQ(
        ofCommand("施工方案设置", half + QList{row(added, settingsFile, "设置库", {}, "常用")}),
        "");
    EXPECT_EQ(ofCommand("施工方案设置", {table(made, settingsFile, "封面甲")}),
              "“封面甲”只存了一半，没有列入库中：请先撤消，再用别的名称存一次。");
    EXPECT_EQ(ofCommand("施工方案设置", {table(made, settingsFile, "常用页面"),
                                         row(added, settingsFile, "封面库", {}, "常用页面")}),
              "")
        << "a cover library may bear such a name";
}

TEST(BeyondAsked, TheTableIsNamedAtWhichTheDeletionOfASettingLibraryStopped) {
    const QList<Change> whole{
        row(removed, settingsFile, "设置库", {}, "常用"), table(dropped, settingsFile, "常用章节"),
        table(dropped, settingsFile, "常用眉脚"), table(dropped, settingsFile, "常用页面")};
    EXPECT_EQ(ofCommand("施工方案设置", whole), "");
    EXPECT_EQ(ofCommand("施工方案设置", whole.mid(0, 3)),
              "“常用”没有删全：它缺少“常用页面”，删除到这里就停止了。");
    EXPECT_EQ(ofCommand("施工方案设置", whole.mid(0, 2)),
              "“常用”没有删全：它缺少“常用眉脚”，删除到这里就停止了。");
}

TEST(BeyondAsked, ANodeWhoseKeyAnotherOneTakesIsToldUnlessItStandsElsewhereNow) {
    Change taken = row(Change::Kind::rowReplaced, plansFile, "甲", "甲.4", "新");
    taken.nameBefore = "三";
    EXPECT_EQ(ofCommand("添加同级文件夹", {taken}), "同时移除了 1 个节点：三");
    Change renamed = row(Change::Kind::rowChanged, plansFile, "甲", "甲.4", "新");
    renamed.nameBefore = "三";
    EXPECT_EQ(ofCommand("重命名", {renamed}), "");
    Change swapped = row(Change::Kind::rowReplaced, plansFile, "甲", "甲.5", "三");
    swapped.nameBefore = "新";
    EXPECT_EQ(ofCommand("拖放", {taken, swapped}), "");
    EXPECT_EQ(ofCommand("拖放", {taken, row(added, plansFile, "甲", "甲.9", "三")}), "");
}

TEST(BeyondAsked, NodesThatHaveLostANodeAboveThemAreTold) {
    const QList<std::pair<QString, QString>> rows{
        {"甲", "甲"}, {"甲.20", "别"}, {"甲.2.1", "节"}, {"甲.2.1.1", "文"}};
    const Change gone = row(removed, plansFile, "甲", "甲.2", "章");
    EXPECT_EQ(ofCommand("拖动", {gone, row(added, plansFile, "甲", "甲.9", "章")}, rows),
              "2 个节点的上级已不在，大纲中不再显示：节、文");
    EXPECT_EQ(ofCommand("拖动", {gone, row(added, plansFile, "甲", "甲.2", "章")}, rows), "");
    EXPECT_EQ(ofCommand("拖动",
                        {row(removed, plansFile, "甲", "甲", "甲"),
                         row(added, plansFile, "甲", "甲.9", "甲")},
                        {{"甲.20", "别"}, {"甲.2.1", "节"}}),
              "2 个节点的上级已不在，大纲中不再显示：别、节");
    EXPECT_EQ(ofCommand("拖动", {gone}, rows), "同时移除了 1 个节点：章\n"
                                               "2 个节点的上级已不在，大纲中不再显示：节、文");
    EXPECT_EQ(ofCommand("拖动",
                        {row(removed, plansFile, "temp", "甲.2", "章"),
                         row(added, plansFile, "甲", "甲.9", "章")},
                        rows),
              "");
}

// An outline is shown up to the first node without one above it.
TEST(BeyondAsked, NodesBehindOneThatHasLostTheNodeAboveItAreToldToo) {
    const Change gone = row(removed, plansFile, "甲", "甲.2", "章");
    const auto told = [&](const QList<std::pair<QString, QString>>& rows) {
        return ofCommand("拖动", {gone, row(added, plansFile, "甲", "甲.9", "章")}, rows);
    };
    EXPECT_EQ(told({{"甲", "甲"}, {"甲.2.1", "节"}, {"甲.20", "别"}, {"甲.9", "章"}}),
              "1 个节点的上级已不在，大纲中不再显示：节\n"
              "排在后面的 2 个节点也不再显示，也不会生成：别、章");
    EXPECT_EQ(told({{"甲", "甲"}, {"甲.7.1", "旧"}, {"甲.2.1", "节"}, {"甲.20", "别"}}),
              "1 个节点的上级已不在，大纲中不再显示：节")
        << "they were hidden before";
}

TEST(BeyondAsked, TheRowsOfAnOutlineThatIsForgottenAreToldWithItAlone) {
    const QList<Change> changes{table(dropped, plansFile, "乙"),
                                row(removed, plansFile, "乙", "乙.1", "章")};
    EXPECT_EQ(ofCommand("刷新", changes), "文件夹或数据已不在，因此不再列出：乙");
}

TEST(BeyondAsked, ANameThatLeavesTheListWithoutATableIsAForgottenOutline) {
    EXPECT_EQ(ofCommand("刷新", {row(removed, plansFile, "遍历表", {}, "乙"),
                                 row(removed, templatesFile, "遍历表", {}, "模"),
                                 row(removed, plansFile, "当前表", {}, "丙")}),
              "文件夹或数据已不在，因此不再列出：乙、模");
}

TEST(BeyondAsked, FilesThatWereReplacedOrWentOrCameWithoutANodeAreTold) {
    const auto came = Change::Kind::fileAdded;
    const auto went = Change::Kind::fileRemoved;
    const auto replaced = Change::Kind::fileReplaced;
    EXPECT_EQ(ofCommand("拖动", {file(replaced, "/p/甲/甲.3.doc"), file(went, "/p/甲/甲.4.doc"),
                                 file(came, "/p/甲/.doc")}),
              "覆盖了 1 个文件：甲.3.doc\n删去了 1 个文件：甲.4.doc\n留下了没有节点的文件：.doc");
    EXPECT_EQ(ofCommand("删除", {file(went, "/p/甲/甲.4.doc")}), "");
    EXPECT_EQ(
        ofCommand("拖动", {row(added, plansFile, "甲", "甲.5", "文"), file(came, "/p/甲/甲.5.doc"),
                           file(came, "/p/甲/甲.mdb"), file(came, "/p/别处/甲.6.doc")}),
        "");
    EXPECT_EQ(ofCommand("拖动", {file(came, "/p/乙/乙.1.DOC")}), "留下了没有节点的文件：乙.1.DOC");
}

TEST(BeyondAsked, OfADeletionInATemplateTheFilesAreToldThatAreNoNodes) {
    const QString folder = "/p/Sys/标书模板/模/";
    const QList<Change> node{row(removed, templatesFile, "模", "模.1", "章"),
                             file(Change::Kind::fileRemoved, folder + "模.1.doc")};
    EXPECT_EQ(toldOf("删除模板", "", node), "");
    EXPECT_EQ(toldOf("删除模板", "",
                     node + QList{file(Change::Kind::fileRemoved, folder + "模.12.doc"),
                                  file(Change::Kind::fileRemoved, folder + "模.1.bak")}),
              "同时删去了 2 个没有节点的文件：模.12.doc、模.1.bak");
}

TEST(BeyondAsked, OfAnOutlineThatGoesWholeWhatItsFormerNodesLeftIsNotTold) {
    const QString folder = "/p/Sys/标书模板/模/";
    const QList<Change> whole{table(dropped, templatesFile, "模"),
                              row(removed, templatesFile, "模", "模", "模"),
                              file(Change::Kind::fileRemoved, folder + "模.7.doc")};
    EXPECT_EQ(toldOf("删除模板", "", whole), "");
    EXPECT_EQ(
        toldOf("删除模板", "", whole + QList{file(Change::Kind::fileRemoved, folder + "说明.doc")}),
        "同时删去了 1 个没有节点的文件：说明.doc");
}

} // namespace
