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

// What the deletion of the plan's selected node tells; the plan is 甲.
QString ofDeletion(const QString& selected, const QList<Change>& changes) {
    return outline::beyondAsked(
        {"删除", "甲", selected, {}, {}, {}, {}}, changes,
        [](const QString&, const QString&) { return QList<std::pair<QString, QString>>(); });
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
    // Also under the key of the plan's selected node.
    EXPECT_EQ(ofDeletion("甲.1", {row(removed, templatesFile, "甲", "甲.1", "章")}), "");
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
              "文件夹或表已不在，因此不再记录大纲：甲");
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
    const history::CommandFrame moving{"拖动", "甲", "甲.1", {}, {}, {}, {}};
    const auto noRows = [](const QString&, const QString&) {
        return QList<std::pair<QString, QString>>();
    };
    const QList<Change> moved{row(removed, plansFile, "甲", "甲.1", "章"),
                              row(added, plansFile, "甲", "甲.2", "章"), gone};
    EXPECT_EQ(outline::beyondAsked(moving, moved, noRows), "删去了 1 个文件：甲.1.doc");
}

} // namespace
