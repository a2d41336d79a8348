#include "support/Qvndctl.h"

using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan 工程 with a folder and two documents, each command a run of its own.
class TemplateTool : public Qvndctl {
protected:
    TemplateTool() {
        for (const char* name : {"编制说明", "管理目标"}) {
            folder.write(QString(name) + ".doc", name);
        }
        qvndctl({"plan", "create", "工程"});
        first = add("add-document", "工程", "编制说明.doc");
        below = add("add-folder", "工程", "施工部署");
        second = add("add-document", below, "管理目标.doc");
    }
    QString add(const QString& command, const QString& key, const QString& what) {
        const QString file = what.endsWith(".doc") ? folder.path(what) : what;
        EXPECT_EQ(qvndctl({"outline", command, "工程", key, file, "--below"}), ExitStatus::done)
            << err.toStdString();
        return out.trimmed();
    }
    QJsonArray rows(const QStringList& words) { return json(words).toArray(); }
    QStringList values(const QJsonArray& rows, const QString& name) {
        QStringList found;
        for (const auto& row : rows) {
            found << row.toObject()[name].toString();
        }
        return found;
    }

    QString first;
    QString below;
    QString second;
};

TEST_F(TemplateTool, APlanIsStoredListedAndShown) {
    EXPECT_EQ(qvndctl({"template", "list"}), ExitStatus::done);
    EXPECT_EQ(out, "");
    EXPECT_EQ(qvndctl({"template", "store", "工程"}), ExitStatus::done) << err.toStdString();
    EXPECT_EQ(err, "");
    EXPECT_EQ(rows({"template", "list"}), QJsonArray{"工程"});
    EXPECT_EQ(values(rows({"template", "show", "工程"}), "Key"),
              values(rows({"outline", "show", "工程"}), "Key"));
    EXPECT_EQ(folder.read("home/Sys/标书模板/工程/" + second + ".doc"), "管理目标");
}

TEST_F(TemplateTool, APlanIsStoredOnce) {
    qvndctl({"template", "store", "工程"});
    EXPECT_EQ(qvndctl({"template", "store", "工程"}), ExitStatus::refused);
    EXPECT_EQ(err, "提示: 标书模板中已存在 [ 工程 ] ！\n");
}

TEST_F(TemplateTool, DeletingAsksAndWithoutAnAnswerChangesNothing) {
    qvndctl({"template", "store", "工程"});
    EXPECT_EQ(qvndctl({"template", "delete", below}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("您真的要删除‘施工部署’吗？")) << err.toStdString();
    EXPECT_EQ(rows({"template", "show", "工程"}).size(), 4);
}

TEST_F(TemplateTool, ANodeIsDeletedWithItsFilesAndTheRootWithEverything) {
    qvndctl({"template", "store", "工程"});
    EXPECT_EQ(qvndctl({"--yes", "template", "delete", below}), ExitStatus::done);
    EXPECT_EQ(values(rows({"template", "show", "工程"}), "Key"), QStringList({"工程", first}));
    EXPECT_FALSE(folder.exists("home/Sys/标书模板/工程/" + second + ".doc"));
    EXPECT_TRUE(folder.exists("home/Sys/用户模板/工程/" + second + ".doc"));
    EXPECT_EQ(qvndctl({"--yes", "template", "delete", "工程"}), ExitStatus::done);
    EXPECT_EQ(rows({"template", "list"}), QJsonArray());
    EXPECT_FALSE(folder.exists("home/Sys/标书模板/工程"));
    EXPECT_EQ(rows({"plan", "list"}), QJsonArray{"工程"});
}

TEST_F(TemplateTool, WhatIsNotThereIsNamed) {
    EXPECT_EQ(qvndctl({"template", "store", "无"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("无"));
    EXPECT_EQ(qvndctl({"template", "show", "无"}), ExitStatus::refused);
    EXPECT_EQ(err, "没有名为“无”的模板\n");
    EXPECT_EQ(qvndctl({"--yes", "template", "delete", "无.1"}), ExitStatus::refused);
    EXPECT_EQ(err, "模板库中没有键为“无.1”的节点\n");
    EXPECT_EQ(qvndctl({"similar", "工程", "工程.99"}), ExitStatus::refused);
    EXPECT_EQ(err, "方案“工程”中没有键为“工程.99”的节点\n");
    EXPECT_EQ(qvndctl({"template", "store"}), ExitStatus::wrongUsage);
    EXPECT_EQ(qvndctl({"similar", "工程"}), ExitStatus::wrongUsage);
}

TEST_F(TemplateTool, SimilarListsTextAndPathInListOrder) {
    qvndctl({"template", "store", "工程"});
    qvndctl({"plan", "create", "乙"});
    qvndctl({"outline", "add-document", "乙", "乙", folder.path("管理目标.doc"), "--below"});
    qvndctl({"template", "store", "乙"});
    const QJsonArray found = rows({"similar", "工程", second});
    const QString templates = "home/Sys/标书模板/";
    EXPECT_EQ(values(found, "text"), QStringList({"管理目标", "管理目标"}));
    EXPECT_EQ(values(found, "path"),
              QStringList({folder.path(templates + "乙/乙.1.doc"),
                           folder.path(templates + "工程/" + second + ".doc")}));
    EXPECT_EQ(found[0].toObject().keys(), QStringList({"path", "text"}));
    EXPECT_EQ(rows({"similar", "工程", below}), QJsonArray());
}

} // namespace
