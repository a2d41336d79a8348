#include "support/PlainSqlite.h"
#include "support/Qvndctl.h"

#include <QDate>

using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan 甲 with two folders and a document, each command a run of the tool of its own. Questions
// are answered with yes.
struct HistoryTool : Qvndctl {
    HistoryTool() {
        folder.write("a.doc", "text");
        expectDone({"plan", "create", "甲"});
        expectDone({"outline", "add-folder", "甲", "甲", "施工部署", "--below"});
        expectDone({"outline", "add-document", "甲", "甲.1", folder.path("a.doc"), "--below"});
    }
    ExitStatus qvndctl(const QStringList& words) {
        return Qvndctl::qvndctl(QStringList{"--yes"} + words);
    }
    QStringList keys() {
        QStringList values;
        for (const auto& row : json({"outline", "show", "甲"}).toArray()) {
            values << row.toObject()["Key"].toString();
        }
        return values;
    }
    // Without a run of the program, which would ask at its end about a history out of reach.
    QStringList keysOnDisk() const {
        return test::PlainSqlite(folder.path("home/Sys/用户模板/Db_UsTemplate.mdb"))
            .rows("SELECT Key FROM 甲 ORDER BY ID");
    }
    QJsonArray list() { return json({"history", "list"}).toArray(); }
    QString lastTitle() { return list().last().toObject()["操作"].toString(); }
    QString historyFile() const { return folder.path("home/Sys/用户模板/.~history/history.db"); }
    QByteArray document() const { return folder.read("home/Sys/用户模板/甲/甲.1.1.doc"); }
};

TEST_F(HistoryTool, ListTellsWhatWasDoneAndMarksTheStateThatIs) {
    const QJsonArray steps = list();
    ASSERT_GE(steps.size(), 3);
    EXPECT_EQ(steps[0].toObject()["操作"].toString(), "新建方案[甲]");
    EXPECT_EQ(steps[1].toObject()["操作"].toString(), "添加下级文件夹[施工部署]");
    EXPECT_EQ(steps[2].toObject()["操作"].toString(), "添加下级文档[a]");
    EXPECT_EQ(qvndctl({"history", "list", "没有"}), ExitStatus::done);
    EXPECT_EQ(out.trimmed(), QString());
}

// Whoever reads the list, or a menu of the program, must not tell where a command was run.
TEST_F(HistoryTool, StepsBearTheNamesThatTheCommandsHaveInTheMenus) {
    folder.write("b.doc", "text");
    const QString b = folder.path("b.doc");
    expectDone({"outline", "add-document", "甲", "甲.1.1", b, "--beside"});
    EXPECT_EQ(lastTitle(), "添加同级文档[b]");
    expectDone({"outline", "add-folder", "甲", "甲.1", "进度", "--beside"});
    const QString folderKey = out.trimmed();
    EXPECT_EQ(lastTitle(), "添加同级文件夹[进度]");
    expectDone({"outline", "rename", "甲", folderKey, "计划"});
    EXPECT_EQ(lastTitle(), "重命名[计划]");
    EXPECT_EQ(qvndctl({"outline", "delete", "甲", folderKey}), ExitStatus::done);
    EXPECT_EQ(lastTitle(), "删除[计划]");
    expectDone({"outline", "move", "甲", "甲.1.2", "甲.1.1"});
    EXPECT_EQ(lastTitle(), "拖放[b]");
    expectDone({"template", "store", "甲"});
    EXPECT_EQ(lastTitle(), "存入方案模板[甲]");
    EXPECT_EQ(qvndctl({"template", "delete", "甲.1"}), ExitStatus::done);
    EXPECT_TRUE(lastTitle().startsWith("删除模板[")) << lastTitle().toStdString();
    expectDone({"format", "set", "封面表", "工程名称", "甲工程"});
    EXPECT_EQ(lastTitle(), "施工方案设置[封面设置]");
    expectDone({"format", "library", "save", "set", "常用"});
    EXPECT_TRUE(lastTitle().startsWith("施工方案设置[")) << lastTitle().toStdString();
    qvndctl({"generate", "甲"});
    EXPECT_EQ(lastTitle(), "生成卷宗编制[施工方案.doc]");
}

TEST_F(HistoryTool, UndoTakesADeletionBackAndRedoDoesItAgain) {
    qvndctl({"outline", "delete", "甲", "甲.1"});
    EXPECT_EQ(keys(), QStringList({"甲"}));
    EXPECT_EQ(qvndctl({"history", "undo"}), ExitStatus::done);
    EXPECT_TRUE(out.contains("[施工部署]")) << out.toStdString();
    EXPECT_EQ(keys(), QStringList({"甲", "甲.1", "甲.1.1"}));
    EXPECT_EQ(qvndctl({"history", "redo"}), ExitStatus::done);
    EXPECT_EQ(keys(), QStringList({"甲"}));
    EXPECT_EQ(qvndctl({"history", "redo"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("没有可以恢复的操作"));
}

TEST_F(HistoryTool, ADeletedPlanComesBackWithItsDocuments) {
    EXPECT_EQ(qvndctl({"plan", "delete", "甲"}), ExitStatus::done);
    EXPECT_FALSE(folder.exists("home/Sys/用户模板/甲"));
    EXPECT_EQ(qvndctl({"history", "undo"}), ExitStatus::done);
    EXPECT_EQ(document(), "text");
    EXPECT_EQ(keys(), QStringList({"甲", "甲.1", "甲.1.1"}));
}

// Each start lists a plan's folder that it finds; undo goes on to the commands before it.
TEST_F(HistoryTool, UndoGoesBackBeyondWhatAStartHasFound) {
    expectDone({"plan", "create", "乙"});
    expectDone({"plan", "open", "甲"});
    ASSERT_TRUE(QDir().rename(folder.path("home/Sys/用户模板/乙"), folder.path("乙")));
    expectDone({"plan", "list"});
    ASSERT_TRUE(QDir().rename(folder.path("乙"), folder.path("home/Sys/用户模板/乙")));
    expectDone({"plan", "list"});
    EXPECT_EQ(list().last().toObject()["操作"].toString(), "启动[乙]");
    QStringList taken;
    while (qvndctl({"history", "undo"}) == ExitStatus::done) {
        taken << out.trimmed();
    }
    EXPECT_EQ(taken.size(), 6) << taken.join(' ').toStdString();
    EXPECT_TRUE(taken.last().startsWith("新建方案[甲]"));
}

TEST_F(HistoryTool, ShowNamesTheNodesAndTellsWhatElseADeletionTook) {
    for (int i = 0; i < 9; ++i) {
        qvndctl({"outline", "add-folder", "甲", "甲", "章" + QString::number(i), "--below"});
    }
    const QStringList before = keys();
    ASSERT_TRUE(before.contains("甲.10"));
    qvndctl({"outline", "delete", "甲", "甲.1"});
    EXPECT_TRUE(err.contains("同时移除了")) << err.toStdString();
    const int step = list().last().toObject()["步"].toInt();
    qvndctl({"history", "show", QString::number(step)});
    EXPECT_TRUE(out.contains("移除 施工部署（甲.1）")) << out.toStdString();
    EXPECT_TRUE(out.contains("同时移除了")) << out.toStdString();
    qvndctl({"history", "undo"});
    EXPECT_EQ(keys(), before);
}

TEST_F(HistoryTool, RestoreGoesToAnyState) {
    const QJsonArray steps = list();
    const QStringList all = keys();
    const QString first = QString::number(steps[0].toObject()["步"].toInt());
    const QString last = QString::number(steps.last().toObject()["步"].toInt());
    EXPECT_EQ(qvndctl({"history", "restore", first}), ExitStatus::done);
    EXPECT_EQ(keys(), QStringList({"甲"}));
    EXPECT_EQ(qvndctl({"history", "restore", last}), ExitStatus::done);
    EXPECT_EQ(keys(), all);
    EXPECT_EQ(document(), "text");
    EXPECT_EQ(qvndctl({"history", "restore", "9999"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("没有这一步：9999"));
    EXPECT_EQ(qvndctl({"history", "restore", "x"}), ExitStatus::wrongUsage);
}

TEST_F(HistoryTool, RestoreBeforeAStepTakesItBackToo) {
    const QJsonArray steps = list();
    const QString second = QString::number(steps[1].toObject()["步"].toInt());
    EXPECT_EQ(qvndctl({"history", "restore", second, "--before"}), ExitStatus::done);
    EXPECT_EQ(keys(), QStringList({"甲"}));
    EXPECT_EQ(qvndctl({"history", "redo"}), ExitStatus::done);
    EXPECT_EQ(keys(), QStringList({"甲", "甲.1"}));
}

TEST_F(HistoryTool, ListFindsStepsByNodeCommandPlanAndTime) {
    qvndctl({"plan", "create", "乙"});
    const auto found = [&](const QStringList& words) {
        QStringList titles;
        for (const auto& step : json(QStringList{"history", "list"} + words).toArray()) {
            titles << step.toObject()["操作"].toString();
        }
        return titles;
    };
    EXPECT_EQ(found({"--find", "施工部署"}).size(), 1);
    EXPECT_EQ(found({"--command", "新建方案"}), QStringList({"新建方案[甲]", "新建方案[乙]"}));
    EXPECT_EQ(found({"甲", "--find", "施工部署"}).size(), 1);
    EXPECT_EQ(found({"乙", "--find", "施工部署"}).size(), 0);
    const QDate today = QDate::currentDate();
    EXPECT_EQ(found({"--since", today.toString(Qt::ISODate)}), found({}));
    EXPECT_EQ(found({"--since", today.addDays(1).toString(Qt::ISODate)}).size(), 0);
    EXPECT_EQ(found({"--until", today.addDays(-1).toString(Qt::ISODate)}).size(), 0);
    EXPECT_EQ(qvndctl({"history", "list", "--since", "gestern"}), ExitStatus::wrongUsage);
}

// As thinning leaves it.
TEST_F(HistoryTool, ListFindsAStepOfAWholeDayByEachOfItsCommandsAndPlans) {
    const QString last = QString::number(list().last().toObject()["步"].toInt());
    test::PlainSqlite file(historyFile());
    file.rows("INSERT INTO joined_steps VALUES(" + last + ",'添加[a]\n删除[人、移动料]')");
    file.rows("UPDATE steps SET title='添加[a]等',plan='甲\n乙' WHERE id=" + last);
    const auto finds = [&](const QStringList& filter) {
        const QJsonArray steps = json(QStringList{"history", "list"} + filter).toArray();
        return !steps.isEmpty() && steps.last().toObject()["操作"].toString() == "添加[a]等";
    };
    EXPECT_TRUE(finds({"--command", "添加"}));
    EXPECT_TRUE(finds({"--command", "删除"}));
    EXPECT_FALSE(finds({"--command", "移动"}));
    EXPECT_TRUE(finds({"--find", "移动料"}));
    EXPECT_TRUE(finds({"甲"}));
    EXPECT_TRUE(finds({"乙"}));
    EXPECT_FALSE(finds({"丙"}));
    EXPECT_EQ(list().last().toObject()["方案"].toString(), "甲、乙");
}

TEST_F(HistoryTool, ACommandStandsUnderThePlanThatItIsAbout) {
    expectDone({"plan", "create", "乙"});
    const auto planOfLast = [&] { return list().last().toObject()["方案"].toString(); };
    EXPECT_EQ(planOfLast(), "乙");
    expectDone({"outline", "add-folder", "甲", "甲", "章", "--below"});
    EXPECT_EQ(planOfLast(), "甲");
    expectDone({"outline", "add-folder", "乙", "乙", "章", "--below"});
    EXPECT_EQ(planOfLast(), "乙");
    qvndctl({"generate", "甲"});
    EXPECT_EQ(planOfLast(), "甲");
    qvndctl({"plan", "delete", "甲"});
    EXPECT_EQ(planOfLast(), "甲");
}

TEST_F(HistoryTool, ADocumentThatCannotBeReadIsToldAndNotedInItsStep) {
    folder.write("坏.doc", "text");
    expectDone({"outline", "add-document", "甲", "甲.1", folder.path("坏.doc"), "--below"});
    const QString told = "“坏.doc”已加入大纲，但生成时不能照原样放入：";
    EXPECT_TRUE(err.contains(told)) << err.toStdString();
    EXPECT_EQ(err.count(told), 1);
    qvndctl({"history", "show", QString::number(list().last().toObject()["步"].toInt())});
    EXPECT_TRUE(out.contains(told)) << out.toStdString();
}

TEST_F(HistoryTool, AStepBearsTheMeaningOfACommandThatNoMenuHasWithoutTheDetails) {
    ASSERT_EQ(qvndctl({"plan", "delete", "甲"}), ExitStatus::done);
    EXPECT_EQ(lastTitle(), "删除方案[甲]");
}

TEST_F(HistoryTool, RedoIsOfferedBehindAStartThatFindsAnOutlineAndTellsThatThisGoesBack) {
    expectDone({"plan", "create", "乙"});
    expectDone({"plan", "open", "甲"});
    ASSERT_TRUE(QDir().rename(folder.path("home/Sys/用户模板/乙"), folder.path("乙")));
    ASSERT_EQ(qvndctl({"outline", "delete", "甲", "甲.1"}), ExitStatus::done);
    expectDone({"history", "undo"});
    ASSERT_TRUE(QDir().rename(folder.path("乙"), folder.path("home/Sys/用户模板/乙")));
    expectDone({"plan", "list"});
    EXPECT_EQ(list().last().toObject()["种类"].toString(), "程序自动");
    ASSERT_EQ(qvndctl({"history", "redo"}), ExitStatus::done) << err.toStdString();
    EXPECT_TRUE(out.contains("[施工部署]")) << out.toStdString();
    EXPECT_TRUE(err.contains("自动做的也一并收回了")) << err.toStdString();
    EXPECT_EQ(keys(), QStringList({"甲"}));
}

TEST_F(HistoryTool, UndoTellsWhatAnotherProgramHasChanged) {
    expectDone({"outline", "rename", "甲", "甲.1", "部署"});
    test::PlainSqlite(folder.path("home/Sys/用户模板/Db_UsTemplate.mdb"))
        .rows("UPDATE 甲 SET 名称='手改' WHERE Key='甲.1.1'");
    EXPECT_EQ(qvndctl({"history", "undo"}), ExitStatus::done);
    EXPECT_TRUE(err.contains("外部改动[用户方案]")) << err.toStdString();
    EXPECT_EQ(list().last().toObject()["种类"].toString(), "外部改动");
}

// A history that no write of some kind gets into any more.
class FailingHistory {
public:
    FailingHistory(const QString& file, const QString& write) : file_(file) {
        test::PlainSqlite(file_).rows("CREATE TRIGGER full BEFORE " + write +
                                      " BEGIN SELECT RAISE(ABORT,'full'); END");
    }
    ~FailingHistory() { test::PlainSqlite(file_).rows("DROP TRIGGER full"); }
    FailingHistory(const FailingHistory&) = delete;
    FailingHistory& operator=(const FailingHistory&) = delete;

private:
    QString file_;
};

TEST_F(HistoryTool, ACommandThatTheHistoryFailsUnderSaysSoDoesNothingAndHasNoResult) {
    const QStringList before = keys();
    for (const QString write : {"INSERT ON steps", "INSERT ON changes"}) {
        {
            const FailingHistory failing(historyFile(), write);
            for (const QStringList& command :
                 {QStringList{"outline", "delete", "甲", "甲.1"},
                  QStringList{"outline", "add-folder", "甲", "甲", "新", "--below"},
                  QStringList{"plan", "delete", "甲"}}) {
                SCOPED_TRACE((write + ": " + command.join(' ')).toStdString());
                EXPECT_EQ(qvndctl(command), ExitStatus::refused);
                EXPECT_EQ(out, "");
                EXPECT_TRUE(err.contains("没有执行，因为操作历史不能写入")) << err.toStdString();
            }
        }
        EXPECT_EQ(keys(), before);
        EXPECT_EQ(document(), "text");
    }
}

TEST_F(HistoryTool, ACommandWhoseFirstChangeCannotBeRecordedIsRefusedUnlessTheUserWantsIt) {
    const QStringList before = keys();
    const QStringList command{"outline", "add-folder", "甲", "甲", "新", "--below"};
    const QString inTheWay = QFileInfo(historyFile()).path() + "/running";
    ASSERT_TRUE(QDir().mkdir(inTheWay));
    EXPECT_EQ(Qvndctl::qvndctl(QStringList{"--no"} + command), ExitStatus::refused);
    EXPECT_EQ(out, "");
    EXPECT_TRUE(err.contains("操作历史")) << err.toStdString();
    EXPECT_TRUE(err.contains("不能写入")) << err.toStdString();
    EXPECT_EQ(keysOnDisk(), before);
    EXPECT_EQ(qvndctl(command), ExitStatus::done);
    ASSERT_TRUE(QDir().rmdir(inTheWay));
    EXPECT_EQ(keys(), before + QStringList{"甲.3"});
}

TEST_F(HistoryTool, AnUndoThatTheHistoryFailsUnderSaysSoAndChangesNothing) {
    qvndctl({"outline", "delete", "甲", "甲.1"});
    {
        const FailingHistory failing(historyFile(), "INSERT ON pending");
        EXPECT_EQ(qvndctl({"history", "undo"}), ExitStatus::refused);
        EXPECT_EQ(out, "");
        EXPECT_TRUE(err.contains("改动没有成功")) << err.toStdString();
    }
    EXPECT_EQ(keys(), QStringList({"甲"}));
}

TEST_F(HistoryTool, TakePutsASingleNodeBackAndLeavesTheRest) {
    qvndctl({"outline", "delete", "甲", "甲.1"});
    const QString deletion = QString::number(list().last().toObject()["步"].toInt());
    qvndctl({"outline", "add-folder", "甲", "甲", "后来", "--below"});
    const QStringList later = keys();
    EXPECT_EQ(qvndctl({"history", "take", deletion, "没有"}), ExitStatus::refused);
    EXPECT_EQ(keys(), later);
    EXPECT_EQ(qvndctl({"history", "take", deletion, "施工部署"}), ExitStatus::done);
    EXPECT_EQ(out.trimmed(), "施工部署\na");
    EXPECT_EQ(keys().size(), later.size() + 2);
    EXPECT_EQ(list().last().toObject()["操作"].toString(), "放回[施工部署]");
}

TEST_F(HistoryTool, TakeToAFileCopiesTheDocumentAsItWas) {
    qvndctl({"plan", "delete", "甲"});
    const QString deletion = QString::number(list().last().toObject()["步"].toInt());
    EXPECT_EQ(qvndctl({"history", "take", deletion, "甲.1.1", "--to", folder.path("旧.doc")}),
              ExitStatus::done);
    EXPECT_EQ(folder.read("旧.doc"), "text");
    EXPECT_FALSE(folder.exists("home/Sys/用户模板/甲"));
}

TEST_F(HistoryTool, TakeToAFileElsewhereIsNoStep) {
    qvndctl({"plan", "delete", "甲"});
    const qsizetype steps = list().size();
    const QString deletion = QString::number(list().last().toObject()["步"].toInt());
    expectDone({"history", "take", deletion, "甲.1.1", "--to", folder.path("旧.doc")});
    EXPECT_EQ(list().size(), steps);
}

TEST_F(HistoryTool, TakeFindsANodeByTheNameThatItHadBefore) {
    expectDone({"outline", "rename", "甲", "甲.1", "部署"});
    const QString step = QString::number(list().last().toObject()["步"].toInt());
    expectDone({"history", "take", step, "施工部署"});
    EXPECT_TRUE(qvndctl({"outline", "show", "甲"}) == ExitStatus::done && out.contains("施工部署"))
        << out.toStdString();
}

TEST_F(HistoryTool, AFolderHasNoFileToTake) {
    qvndctl({"outline", "delete", "甲", "甲.1"});
    const QString deletion = QString::number(list().last().toObject()["步"].toInt());
    EXPECT_EQ(qvndctl({"history", "take", deletion, "甲.1", "--to", folder.path("旧.doc")}),
              ExitStatus::refused);
    EXPECT_TRUE(err.contains("“施工部署”在这一步以前没有文件")) << err.toStdString();
    EXPECT_FALSE(folder.exists("旧.doc"));
}

TEST_F(HistoryTool, TakeToAFileThatExistsReplacesItOnlyWithYes) {
    qvndctl({"plan", "delete", "甲"});
    const QString deletion = QString::number(list().last().toObject()["步"].toInt());
    folder.write("旧.doc", "mine");
    const QStringList take{"history", "take", deletion, "甲.1.1", "--to", folder.path("旧.doc")};
    EXPECT_EQ(Qvndctl::qvndctl(take), ExitStatus::refused);
    EXPECT_TRUE(err.contains("旧.doc”已经存在，要替换它吗？")) << err.toStdString();
    EXPECT_EQ(folder.read("旧.doc"), "mine");
    EXPECT_EQ(qvndctl(take), ExitStatus::done);
    EXPECT_EQ(folder.read("旧.doc"), "text");
}

TEST_F(HistoryTool, ACommandThatTheHistoryCannotTakeIsRefusedAndGoesOnWithYes) {
    QDir(folder.path("home/Sys/用户模板/.~history")).removeRecursively();
    folder.write("home/Sys/用户模板/.~history", "in the way");
    const QStringList words{"outline", "add-folder", "甲", "甲", "章", "--below"};
    const QStringList before = keysOnDisk();
    EXPECT_EQ(Qvndctl::qvndctl(words), ExitStatus::refused);
    EXPECT_TRUE(err.contains("操作历史不能写入")) << err.toStdString();
    EXPECT_EQ(keysOnDisk(), before);
    EXPECT_EQ(qvndctl(words), ExitStatus::done);
    EXPECT_EQ(keysOnDisk().size(), before.size() + 1);
}

struct EmptyHistoryTool : Qvndctl {};

TEST_F(EmptyHistoryTool, WithoutAnyStepThereIsNothingToUndo) {
    EXPECT_EQ(qvndctl({"history", "undo"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("没有可以撤消的操作"));
}

} // namespace
