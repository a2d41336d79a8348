#include "support/Qvndctl.h"

using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan T with the folders T.1 and T.2, the document T.1.1 and the document T.4, and a template M
// made of a plan's folder, in a program folder of its own.
class OutlineDragTool : public Qvndctl {
protected:
    OutlineDragTool() {
        writeDocument("说明.doc");
        makePlan("M");
        QDir().rename(folder.path("home/Sys/用户模板/M"), folder.path("home/Sys/标书模板/M"));
        makePlan("T");
    }

    void makePlan(const QString& name) {
        expectDoneInSilence({"plan", "create", name});
        expectDoneInSilence({"outline", "add-folder", name, name, "章", "--below"});
        expectDoneInSilence({"outline", "add-folder", name, name, "节", "--below"});
        add(name, name + ".1");
        add(name, name);
    }
    void add(const QString& plan, const QString& key) {
        expectDoneInSilence(
            {"outline", "add-document", plan, key, folder.path("说明.doc"), "--below"});
    }
    QString shown() {
        expectDoneInSilence({"outline", "show", "T"});
        return out;
    }
    QStringList documents() const { return folder.names("home/Sys/用户模板/T").filter(".doc"); }
};

TEST_F(OutlineDragTool, MovesANodeAndPrintsItsNewKey) {
    ASSERT_EQ(documents(), QStringList({"T.1.1.doc", "T.4.doc"}));
    expectDoneInSilence({"outline", "move", "T", "T.4", "T.2"});
    EXPECT_EQ(out, "T.2.1\n");
    EXPECT_EQ(shown(), "T  [T]\n  章  [T.1]\n    说明  [T.1.1]  文档\n  节  [T.2]\n"
                       "    说明  [T.2.1]  文档\n");
    EXPECT_EQ(folder.read("home/Sys/用户模板/T/T.2.1.doc"), folder.read("说明.doc"));
    expectDoneInSilence({"--json", "outline", "move", "T", "T.1", "T.2"});
    EXPECT_EQ(out, "\"T.2.4\"\n");
    EXPECT_EQ(documents(), QStringList({"T.2.1.doc", "T.2.4.1.doc"}));
}

TEST_F(OutlineDragTool, WhatCannotBeMovedIsToldAndRefused) {
    EXPECT_EQ(qvndctl({"outline", "move", "T", "T", "T.1"}), ExitStatus::refused);
    EXPECT_EQ(err, "根节点不能移动，节点也不能移到自己上\n");
    EXPECT_EQ(qvndctl({"outline", "move", "T", "T.1", "T.1"}), ExitStatus::refused);
    EXPECT_EQ(qvndctl({"outline", "move", "T", "T.9", "T.1"}), ExitStatus::refused);
    EXPECT_EQ(err, "方案“T”中没有键为“T.9”的节点\n");
    EXPECT_EQ(qvndctl({"outline", "move", "T", "T.1"}), ExitStatus::wrongUsage);
    EXPECT_EQ(documents(), QStringList({"T.1.1.doc", "T.4.doc"}));
}

TEST_F(OutlineDragTool, CopiesATemplatesNodeAndPrintsTheNewKeys) {
    expectDoneInSilence({"outline", "copy", "T", "T.2", "M.1"});
    EXPECT_EQ(out, "T.2.1\nT.2.1.1\n");
    EXPECT_EQ(folder.read("home/Sys/用户模板/T/T.2.1.1.doc"), folder.read("说明.doc"));
    expectDoneInSilence({"--json", "outline", "copy", "T", "T.2", "M.4"});
    EXPECT_EQ(out, "[\"T.2.2\"]\n");
}

TEST_F(OutlineDragTool, ACopyThatIsRefusedIsTold) {
    EXPECT_EQ(qvndctl({"outline", "copy", "T", "T", "M.1"}), ExitStatus::refused);
    EXPECT_EQ(err, "提示: [ 章 ]已存在,无法复制!\n");
    EXPECT_EQ(qvndctl({"outline", "copy", "T", "T", "M.4"}), ExitStatus::refused);
    EXPECT_TRUE(err.startsWith("提示: [ 说明 ]已存在，是否覆盖？\n"));
    EXPECT_EQ(qvndctl({"outline", "copy", "T", "T.1", "T.2"}), ExitStatus::refused);
    EXPECT_EQ(err, "标书模板中没有键为“T.2”的节点\n");
    EXPECT_EQ(documents(), QStringList({"T.1.1.doc", "T.4.doc"}));
}

TEST_F(OutlineDragTool, AnOverwriteIsDoneWithYes) {
    folder.write("home/Sys/标书模板/M/M.4.doc", "newer");
    EXPECT_EQ(qvndctl({"--yes", "outline", "copy", "T", "T", "M.4"}), ExitStatus::done);
    EXPECT_EQ(out, "");
    EXPECT_EQ(folder.read("home/Sys/用户模板/T/T.4.doc"), "newer");
}

} // namespace
