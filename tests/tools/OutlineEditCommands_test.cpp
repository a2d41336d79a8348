#include "support/HeldLock.h"
#include "support/Qvndctl.h"

using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan 甲 with 甲.1 (folder), 甲.1.1 (document) and 甲.3 (folder).
class EditTool : public Qvndctl {
protected:
    EditTool() {
        folder.write("a.doc", "text");
        qvndctl({"plan", "create", "甲"});
        qvndctl({"outline", "add-folder", "甲", "甲", "章", "--below"});
        qvndctl({"outline", "add-document", "甲", "甲.1", folder.path("a.doc"), "--below"});
        qvndctl({"outline", "add-folder", "甲", "甲", "尾", "--below"});
        EXPECT_EQ(keys(), QStringList({"甲", "甲.1", "甲.1.1", "甲.3"}));
    }
    QStringList column(const QString& field, const QStringList& options = {}) {
        qvndctl(QStringList{"--json", "outline", "show", "甲"} + options);
        QStringList values;
        for (const auto& row : json().toArray()) {
            values << row.toObject()[field].toString();
        }
        return values;
    }
    QStringList keys() { return column("Key"); }
    QString plans() {
        qvndctl({"plan", "list"});
        return out;
    }
    bool exists(const QString& name) const { return folder.exists("home/Sys/用户模板/" + name); }
};

TEST_F(EditTool, DeleteTakesASubtreeFromTheOutlineAndItsCopyAndLeavesTheFile) {
    EXPECT_EQ(qvndctl({"--yes", "outline", "delete", "甲", "甲.1"}), ExitStatus::done);
    EXPECT_EQ(out, "甲.1\n");
    EXPECT_EQ(keys(), QStringList({"甲", "甲.3"}));
    EXPECT_EQ(column("Key", {"--copy"}), QStringList({"甲", "甲.3"}));
    EXPECT_TRUE(exists("甲/甲.1.1.doc"));
}

TEST_F(EditTool, DeleteAsksAndTakesNoForTheAnswer) {
    EXPECT_EQ(qvndctl({"outline", "delete", "甲", "甲.1"}), ExitStatus::refused);
    EXPECT_TRUE(err.startsWith("真的要删除[章]吗？")) << err.toStdString();
    EXPECT_EQ(keys().size(), 4);
}

TEST_F(EditTool, DeletingTheRootDeletesThePlan) {
    EXPECT_EQ(qvndctl({"--yes", "outline", "delete", "甲", "甲"}), ExitStatus::done);
    EXPECT_EQ(plans(), "");
    EXPECT_FALSE(exists("甲"));
}

TEST_F(EditTool, DeletingAPlanInUseIsRefusedWithTheReason) {
    const test::HeldLock lock(folder.path("home/Sys/用户模板/甲/甲.1.1.doc"),
                              test::LockKind::record);
    EXPECT_EQ(qvndctl({"--yes", "outline", "delete", "甲", "甲"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("提示: 请先关闭正在使用与此工程相关的内容！")) << err.toStdString();
    EXPECT_TRUE(exists("甲/甲.1.1.doc"));
    EXPECT_TRUE(exists("甲/甲.mdb"));
}

TEST_F(EditTool, DeleteAndRenameNameANodeThatIsNotThere) {
    for (const QStringList& words : {QStringList{"outline", "delete", "甲", "甲.9"},
                                     {"outline", "rename", "甲", "甲.9", "新"}}) {
        EXPECT_EQ(qvndctl(QStringList{"--yes"} + words), ExitStatus::refused);
        EXPECT_EQ(err, "方案“甲”中没有键为“甲.9”的节点\n");
    }
    EXPECT_EQ(qvndctl({"--yes", "outline", "delete", "乙", "乙.1"}), ExitStatus::refused);
    EXPECT_EQ(err, "没有名为“乙”的方案\n");
}

TEST_F(EditTool, RenameChangesTheNameAndTellsIt) {
    EXPECT_EQ(qvndctl({"outline", "rename", "甲", "甲.1.1", "新 名"}), ExitStatus::done);
    EXPECT_EQ(out, "新 名\n");
    EXPECT_EQ(err, "");
    EXPECT_EQ(column("名称"), QStringList({"甲", "章", "新 名", "尾"}));
    EXPECT_EQ(keys(), QStringList({"甲", "甲.1", "甲.1.1", "甲.3"}));
    EXPECT_TRUE(exists("甲/甲.1.1.doc"));
    qvndctl({"--json", "outline", "rename", "甲", "甲.1", "另"});
    EXPECT_EQ(json().toObject(), (QJsonObject{{"Key", "甲.1"}, {"名称", "另"}}));
}

TEST_F(EditTool, ARenameReachesThePlansCopyAtTheOrderlyExit) {
    qvndctl({"outline", "rename", "甲", "甲.1", "新"});
    EXPECT_EQ(column("名称", {"--copy"}), QStringList({"甲", "新", "a", "尾"}));
}

TEST_F(EditTool, ARootCannotBeRenamedAndNothingCanBeNamedEmpty) {
    EXPECT_EQ(qvndctl({"outline", "rename", "甲", "甲", "新"}), ExitStatus::refused);
    EXPECT_EQ(err, "根节点不能重命名\n");
    EXPECT_EQ(qvndctl({"outline", "rename", "甲", "甲.1", ""}), ExitStatus::refused);
    EXPECT_EQ(err, "对不起，名称不能为空\n");
    EXPECT_EQ(column("名称"), QStringList({"甲", "章", "a", "尾"}));
}

TEST_F(EditTool, PlanDeleteTakesThePlanAltogether) {
    qvndctl({"plan", "create", "乙"});
    EXPECT_EQ(qvndctl({"--yes", "plan", "delete", "甲"}), ExitStatus::done);
    EXPECT_EQ(out, "甲\n");
    EXPECT_FALSE(exists("甲"));
    EXPECT_EQ(plans(), "乙\n");
    EXPECT_EQ(qvndctl({"plan", "create", "甲"}), ExitStatus::done);
}

TEST_F(EditTool, PlanDeleteAsksAndTakesNoForTheAnswer) {
    EXPECT_EQ(qvndctl({"plan", "delete", "甲"}), ExitStatus::refused);
    EXPECT_TRUE(err.startsWith("提示: 确实要删除工程 [ 甲 ]")) << err.toStdString();
    EXPECT_EQ(plans(), "甲\n");
    EXPECT_EQ(qvndctl({"--yes", "plan", "delete", "丙"}), ExitStatus::refused);
    EXPECT_EQ(err, "没有名为“丙”的方案\n");
}

TEST_F(EditTool, APlanWhoseFolderIsInUseIsToldAndComesBack) {
    {
        const test::HeldLock lock(folder.path("home/Sys/用户模板/甲/甲.1.1.doc"),
                                  test::LockKind::whole);
        EXPECT_EQ(qvndctl({"--yes", "plan", "delete", "甲"}), ExitStatus::refused);
        EXPECT_TRUE(err.contains("文件夹没有删除")) << err.toStdString();
    }
    EXPECT_EQ(plans(), "甲\n");
    EXPECT_EQ(keys(), QStringList({"甲", "甲.1", "甲.1.1", "甲.3"}));
}

TEST_F(EditTool, WrongUsageIsToldApart) {
    for (const QStringList& words : {QStringList{"outline", "delete", "甲"},
                                     {"outline", "rename", "甲", "甲.1"},
                                     {"plan", "delete"},
                                     {"plan", "delete", "甲", "乙"}}) {
        EXPECT_EQ(qvndctl(words), ExitStatus::wrongUsage) << words.join(' ').toStdString();
    }
}

} // namespace
