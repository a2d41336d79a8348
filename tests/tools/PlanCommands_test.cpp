#include "platform/files/WorkSpaceTurn.h"
#include "platform/jet/DBEngine.h"
#include "support/Qvndctl.h"

#include <functional>
#include <utility>

using namespace qvnd;
using namespace qvnd::tools;

namespace {

class Tool : public Qvndctl {
protected:
    QString home(const QString& name) const { return folder.path("home/" + name); }
};

TEST_F(Tool, InitLaysOutAFreshProgramFolderAndNamesItsFolders) {
    const QJsonObject named = json({"init"}).toObject();
    EXPECT_EQ(named.keys(),
              QStringList({"gAppPath", "gSysPath", "gUserTplPath", "gWordRoot", "gWorkPath"}));
    EXPECT_EQ(named["gAppPath"].toString(), files::withSeparator(home("")));
    EXPECT_EQ(named["gSysPath"].toString(), files::withSeparator(home("Sys")));
    EXPECT_EQ(named["gWorkPath"].toString(), files::withSeparator(home("工程文档管理")));
    EXPECT_EQ(named["gUserTplPath"].toString(), files::withSeparator(home("Sys/用户模板")));
    EXPECT_TRUE(folder.exists("home/Sys/标书模板"));
    EXPECT_TRUE(folder.exists("home/Sys/图片库"));
    EXPECT_TRUE(folder.exists("home/Sys/自定义"));
    expectDoneInSilence({"init"});
    EXPECT_TRUE(out.startsWith("gAppPath="));
}

TEST_F(Tool, TheRegistryFileInTheProgramFolderNamesTheWorkFolder) {
    folder.makeFolder("工作");
    folder.makeFolder("home/sys");
    folder.write("config/cfgpath", "work\n" + folder.path("工作").toUtf8() + "\n");
    folder.write("home/registry.reg",
                 "REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH]\n\"cfg\"=\"" +
                     folder.path("config").toUtf8() + "\"\n");
    EXPECT_EQ(json({"init"}).toObject()["gWorkPath"].toString(),
              files::withSeparator(folder.path("工作")));
}

TEST_F(Tool, AFailedStartIsToldAndRefused) {
    folder.makeFolder("工作");
    folder.write("config/cfgpath", "work\n" + folder.path("工作").toUtf8() + "\n");
    folder.write("home/registry.reg",
                 "REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH]\n\"cfg\"=\"" +
                     folder.path("config").toUtf8() + "\"\n");
    EXPECT_EQ(qvndctl({"plan", "list"}), ExitStatus::refused);
    EXPECT_TRUE(err.startsWith("提示: 76路径未找到")) << err.toStdString();
    EXPECT_EQ(out, "");
}

TEST_F(Tool, APlanIsCreatedListedAndTold) {
    expectDoneInSilence({"plan", "create", "工程甲", "--client", "甲方", "--contractor", "乙方",
                         "--author", "李明", "--approver", "王建国", "--date", "2026-02-10",
                         "--note", "备注"});
    EXPECT_EQ(out, "工程甲\n");
    expectDoneInSilence({"plan", "create", "工程乙"});
    EXPECT_EQ(json({"plan", "list"}).toArray(), QJsonArray({"工程甲", "工程乙"}));
    const QJsonObject told = json({"plan", "info", "工程甲"}).toObject();
    EXPECT_EQ(told["名称"].toString(), "工程甲");
    EXPECT_EQ(told["建设单位"].toString(), "甲方");
    EXPECT_EQ(told["施工单位"].toString(), "乙方");
    EXPECT_EQ(told["编制人"].toString(), "李明");
    EXPECT_EQ(told["审批人"].toString(), "王建国");
    EXPECT_EQ(told["编制日期"].toString(), "2026-02-10");
    EXPECT_EQ(told["注释"].toString(), "备注");
}

// A standard error that somebody reads: `heard` is called at the first thing said.
struct ReadError : std::stringbuf {
    std::function<void()> heard;

    std::streamsize xsputn(const char* text, std::streamsize count) override {
        if (heard) {
            std::exchange(heard, nullptr)();
        }
        return std::stringbuf::xsputn(text, count);
    }
};

TEST_F(Tool, ACommandSaysAtOnceForWhichProgramItWaitsAndItsResultStaysClean) {
    expectDone({"plan", "create", "工程甲"});
    files::WorkSpaceTurn theirs(home(""));
    theirs.take();
    ReadError standardError;
    standardError.heard = [&] { theirs.giveBack(); };
    std::ostringstream standardOut;
    std::ostream error(&standardError);
    EXPECT_EQ(run({"--home", folder.path("home"), "--json", "plan", "list"}, standardOut, error),
              ExitStatus::done);
    const QString said = QString::fromStdString(standardError.str());
    EXPECT_TRUE(said.startsWith("正在等待：『") && said.endsWith("使用。\n")) << said.toStdString();
    EXPECT_EQ(said.count('\n'), 1);
    EXPECT_EQ(standardOut.str(), "[\"工程甲\"]\n");
}

TEST_F(Tool, RefusalsAreToldAsTitleAndTextWithStatusOne) {
    EXPECT_EQ(qvndctl({"plan", "create", " "}), ExitStatus::refused);
    EXPECT_EQ(err, "警告！: 对不起，名称不能为空!\n");
    EXPECT_EQ(qvndctl({"plan", "create", "2026"}), ExitStatus::refused);
    EXPECT_TRUE(
        err.startsWith("提示: 对不起，工程名称不合法！\n方案没有建成，它的文件夹留了下来："))
        << err.toStdString();
    EXPECT_EQ(qvndctl({"plan", "info", "没有"}), ExitStatus::refused);
    EXPECT_EQ(err, "没有名为“没有”的方案\n");
}

TEST_F(Tool, AQuestionIsAnsweredWithNoUnlessYesIsGiven) {
    folder.write("home/Sys/用户模板/工程甲/旧.doc", "x");
    folder.makeFolder("home/Sys/标书模板");
    EXPECT_EQ(qvndctl({"plan", "create", "工程甲"}), ExitStatus::refused);
    EXPECT_TRUE(err.startsWith("提示: " + files::withSeparator(home("Sys/用户模板")) +
                               "下已存在 工程甲，是否覆盖？"))
        << err.toStdString();
    EXPECT_TRUE(folder.exists("home/Sys/用户模板/工程甲/旧.doc"));
    EXPECT_EQ(qvndctl({"--yes", "plan", "create", "工程甲"}), ExitStatus::done);
    EXPECT_FALSE(folder.exists("home/Sys/用户模板/工程甲/旧.doc"));
}

TEST_F(Tool, APlanNameNeverLeavesThePlansFolder) {
    expectDoneInSilence({"init"});
    for (const char* name : {"..", ".", "../甲", "a/b", "a\\b", " .. "}) {
        EXPECT_EQ(qvndctl({"--yes", "plan", "create", name}), ExitStatus::refused) << name;
        EXPECT_TRUE(err.startsWith("对不起，输入字符非法！\n")) << err.toStdString();
    }
    EXPECT_EQ(folder.names("home/Sys/用户模板"), QStringList({"Db_UsTemplate.mdb", "qvnd.lock"}));
}

TEST_F(Tool, ANameWithAnIllegalCharacterIsRefusedAndTheCharacterNamed) {
    EXPECT_EQ(qvndctl({"plan", "create", "1.0版"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("“.”")) << err.toStdString();
    EXPECT_EQ(json({"plan", "list"}).toArray(), QJsonArray());
}

TEST_F(Tool, ThePlansInformationShowsWhatThereIs) {
    expectDoneInSilence({"plan", "create", "工程甲", "--client", "甲方", "--note", "备注"});
    {
        jet::DBEngine engine;
        const auto db = engine.Workspaces(0).OpenDatabase(home("Sys/用户模板/Db_UsTemplate.mdb"));
        const auto rs = db->OpenRecordset("Select * from 工程甲Org");
        rs->Edit();
        rs->Set(u"编制日期", jet::Value());
        rs->Update();
    }
    const QJsonObject told = json({"plan", "info", "工程甲"}).toObject();
    EXPECT_EQ(told["建设单位"].toString(), "甲方");
    EXPECT_TRUE(told["编制日期"].isNull());
    EXPECT_EQ(told["注释"].toString(), "备注");
}

TEST_F(Tool, ANewPortableProgramFolderIsLaidOutBesideTheExecutable) {
    folder.write("home/qvnd.portable", "");
    folder.write("home/qvndctl", "the executable");
    std::ostringstream standardOut;
    std::ostringstream standardError;
    EXPECT_EQ(run({"plan", "create", "工程甲"}, standardOut, standardError, folder.path("home")),
              ExitStatus::done)
        << standardError.str();
    EXPECT_TRUE(folder.exists("home/Sys/标书模板"));
    EXPECT_TRUE(folder.exists("home/sys/用户模板/工程甲/工程甲.mdb") ||
                folder.exists("home/Sys/用户模板/工程甲/工程甲.mdb"));
}

TEST_F(Tool, ADateOfAnotherFormIsWrongUsage) {
    EXPECT_EQ(qvndctl({"plan", "create", "工程甲", "--date", "10.2.2026"}), ExitStatus::wrongUsage);
    EXPECT_TRUE(err.contains("YYYY-MM-DD"));
    EXPECT_FALSE(folder.exists("home"));
}

TEST_F(Tool, FoldersAndDocumentsAreAddedAndShown) {
    writeDocument("说明.doc");
    expectDoneInSilence({"plan", "create", "T"});
    expectDoneInSilence({"outline", "add-folder", "T", "T", "第一章", "--below"});
    EXPECT_EQ(out, "T.1\n");
    expectDoneInSilence({"outline", "add-folder", "T", "T.1", "第二章", "--beside"});
    EXPECT_EQ(out, "T.2\n");
    EXPECT_EQ(json({"outline", "add-document", "T", "T.1", folder.path("说明.doc"), "--below"})
                  .toString(),
              "T.1.1");
    expectDoneInSilence(
        {"outline", "add-document", "T", "T.1", folder.path("说明.doc"), "--beside"});
    EXPECT_EQ(out, "T.4\n");
    const QJsonArray rows = json({"outline", "show", "T"}).toArray();
    ASSERT_EQ(rows.size(), 5);
    const QJsonObject third = rows[2].toObject();
    EXPECT_EQ(third.keys().size(), 5);
    EXPECT_EQ(third["ID"].toInt(), 5);
    EXPECT_EQ(third["Key"].toString(), "T.4");
    EXPECT_EQ(third["名称"].toString(), "说明");
    EXPECT_EQ(third["是否文档"].toString(), "是");
    EXPECT_EQ(third["depth"].toInt(), 1);
    EXPECT_EQ(rows[4].toObject()["depth"].toInt(), 2);
    expectDoneInSilence({"outline", "show", "T"});
    EXPECT_EQ(out, "T  [T]\n  第一章  [T.1]\n    说明  [T.1.1]  文档\n  说明  [T.4]  文档\n"
                   "  第二章  [T.2]\n");
    EXPECT_EQ(folder.read("home/Sys/用户模板/T/T.4.doc"), folder.read("说明.doc"));
}

TEST_F(Tool, EveryCommandEndsWithTheOrderlyExitSoTheCopyIsLevel) {
    writeDocument("说明.doc");
    expectDoneInSilence({"plan", "create", "T"});
    expectDoneInSilence({"outline", "add-folder", "T", "T", "章", "--below"});
    expectDoneInSilence({"outline", "add-folder", "T", "T", "节", "--below"});
    expectDoneInSilence(
        {"outline", "add-document", "T", "T.1", folder.path("说明.doc"), "--beside"});
    const QJsonArray rows = json({"outline", "show", "T"}).toArray();
    EXPECT_EQ(json({"outline", "show", "T", "--copy"}).toArray(), rows);
}

TEST_F(Tool, AnAnswerOfNoLeavesTheRowsOutOfTheTable) {
    expectDoneInSilence({"plan", "create", "T"});
    expectDoneInSilence({"outline", "add-folder", "T", "T", "章", "--below"});
    expectDoneInSilence({"outline", "add-folder", "T", "T", "节", "--below"});
    EXPECT_EQ(qvndctl({"outline", "add-document", "T", "T.1", folder.path("无.doc"), "--beside"}),
              ExitStatus::refused);
    EXPECT_TRUE(err.contains("此文件不存在。要创建此文件吗？"));
    EXPECT_EQ(json({"outline", "show", "T"}).toArray().size(), 2);
}

TEST_F(Tool, AMissingFileIsMadeAsAnEmptyDocumentWhenWanted) {
    expectDoneInSilence({"plan", "create", "T"});
    EXPECT_EQ(qvndctl({"--yes", "outline", "add-document", "T", "T", folder.path("新"), "--below"}),
              ExitStatus::done);
    EXPECT_TRUE(err.contains("新.doc\n此文件不存在。要创建此文件？")) << err.toStdString();
    EXPECT_TRUE(folder.read("home/Sys/用户模板/T/T.1.doc").startsWith("\xD0\xCF\x11\xE0"));
}

TEST_F(Tool, WhatTheWindowsWouldNotOfferIsRefused) {
    writeDocument("说明.doc");
    expectDoneInSilence({"plan", "create", "T"});
    EXPECT_EQ(qvndctl({"outline", "add-folder", "T", "T", "章", "--beside"}), ExitStatus::refused);
    EXPECT_EQ(err, "此节点不能添加同级文件夹\n");
    EXPECT_EQ(qvndctl({"outline", "add-document", "T", "T", folder.path("说明.doc"), "--beside"}),
              ExitStatus::refused);
    EXPECT_EQ(err, "此节点不能添加同级文档\n");
    expectDoneInSilence({"outline", "add-document", "T", "T", folder.path("说明.doc"), "--below"});
    EXPECT_EQ(qvndctl({"outline", "add-folder", "T", "T.1", "章", "--below"}), ExitStatus::refused);
    EXPECT_EQ(err, "文档下面不能添加文件夹\n");
    EXPECT_EQ(json({"outline", "show", "T"}).toArray().size(), 2);
}

TEST_F(Tool, AnUnknownNodeOrAMissingChoiceIsTold) {
    expectDoneInSilence({"plan", "create", "T"});
    EXPECT_EQ(qvndctl({"outline", "add-folder", "T", "T.9", "章", "--below"}), ExitStatus::refused);
    EXPECT_EQ(err, "方案“T”中没有键为“T.9”的节点\n");
    EXPECT_EQ(qvndctl({"outline", "add-folder", "T", "T", "章"}), ExitStatus::wrongUsage);
    EXPECT_EQ(qvndctl({"outline", "add-folder", "T", "T", "章", "--below", "--beside"}),
              ExitStatus::wrongUsage);
    EXPECT_EQ(qvndctl({"outline", "show", "没有"}), ExitStatus::refused);
}

TEST_F(Tool, AnOpenedPlanStaysTheCurrentOneForTheNextCommands) {
    expectDoneInSilence({"plan", "create", "甲"});
    expectDoneInSilence({"plan", "create", "乙"});
    expectDoneInSilence({"plan", "open", "甲"});
    EXPECT_EQ(out, "甲\n");
    expectDoneInSilence({"outline", "add-folder", "乙", "乙", "章", "--below"});
    EXPECT_EQ(json({"outline", "show", "乙"}).toArray().size(), 2);
    EXPECT_EQ(qvndctl({"plan", "open", "没有"}), ExitStatus::refused);
}

TEST_F(Tool, ACopiedPlanFolderIsAPlan) {
    expectDoneInSilence({"plan", "create", "甲"});
    expectDoneInSilence({"outline", "add-folder", "甲", "甲", "章", "--below"});
    test::TemporaryFolder elsewhere;
    elsewhere.makeFolder("Sys/用户模板/甲");
    elsewhere.makeFolder("Sys/标书模板");
    ASSERT_TRUE(
        QFile::copy(home("Sys/用户模板/甲/甲.mdb"), elsewhere.path("Sys/用户模板/甲/甲.mdb")));
    EXPECT_EQ(qvndctl({"--home", elsewhere.path(), "outline", "show", "甲"}), ExitStatus::done);
    EXPECT_EQ(out, "甲  [甲]\n  章  [甲.1]\n");
}

} // namespace
