#include "whole/RecordedPlanner.h"

#include "format/frmBidSet.h"
#include "support/FakeFonts.h"
#include "support/FakeInputBoxes.h"
#include "support/FakeShell.h"
#include "support/PlainSqlite.h"

using namespace qvnd;

namespace {

struct Kind {
    const char* label;
    std::function<void(test::Planner&)> command;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.label; }

// Plan 甲 has the folder 甲.1 and the document 甲.2, and so has the template 模.
const QString node = QStringLiteral("甲.1");
const QString documentNode = QStringLiteral("甲.2");

void changeSettings(test::Planner& planner) {
    test::FakeInputBoxes inputs;
    test::FakeFonts fonts;
    test::FakeShell shell;
    inputs.answers = {"常用"};
    format::frmBidSet dialog(
        planner.state(), {planner.messages, inputs, planner.dialogs, fonts, shell, planner.word});
    dialog.form().settingLibrary.cmdSaveSet.click();
}

void pasteFromTemplate(test::Planner& planner) {
    planner.click(node);
    planner.pressTemplate(planner.templates().Item(3).Key());
    planner.copy();
    planner.paste(true);
}

std::vector<Kind> kinds() {
    using test::Planner;
    const auto document = [](const Planner& planner) {
        return planner.folder.path("files/文.doc");
    };
    return {
        {"NewPlan", [](Planner& planner) { planner.newPlan("乙"); }},
        {"NewPlanOverAnOldFolder", [](Planner& planner) { planner.newPlan("甲", true); }},
        {"DeletePlan",
         [](Planner& planner) {
             planner.click("甲");
             planner.deletePlan();
         }},
        {"AddFolder",
         [](Planner& planner) {
             planner.click(node);
             planner.addFolder(outline::AddMode::beside, "新");
         }},
        {"AddDocument",
         [document](Planner& planner) {
             planner.click(node);
             planner.addDocument(outline::AddMode::below, document(planner));
         }},
        {"DeleteNode",
         [](Planner& planner) {
             planner.click(node);
             planner.deleteNode();
         }},
        {"DeleteRoot",
         [](Planner& planner) {
             planner.click("甲");
             planner.deleteNode();
         }},
        {"Rename",
         [](Planner& planner) {
             planner.click(node);
             planner.rename("改了");
         }},
        {"Drag", [](Planner& planner) { planner.drag(documentNode, node); }},
        {"Paste", pasteFromTemplate},
        {"StoreTemplate", [](Planner& planner) { planner.storeTemplate(); }},
        {"DeleteTemplate",
         [](Planner& planner) {
             planner.pressTemplate("模");
             planner.deleteTemplate();
         }},
        {"DeleteNodeOfATemplate",
         [](Planner& planner) {
             planner.pressTemplate(planner.templates().Item(2).Key());
             planner.deleteTemplate();
         }},
        {"Settings", changeSettings},
    };
}

// The history was written to until the program ended; behind the start its folder is out of reach.
class UnwritableHistory : public test::RecordedPlanner, public testing::WithParamInterface<Kind> {
protected:
    UnwritableHistory() {
        for (const char* name : {"模", "甲"}) {
            planner.newPlan(name);
            planner.click(name);
            planner.addFolder(outline::AddMode::below, "章");
            planner.folder.write("files/文.doc", QByteArray("text of ") + name);
            planner.click(name);
            planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
            if (planner.folder.exists("Sys/用户模板/模")) {
                planner.storeTemplate();
                planner.click(name);
                planner.deletePlan();
            }
        }
        planner.restart();
        before = onDisk();
        outline::RecordedCommand recorded(planner.state(), planner.current(), "操作",
                                          planner.messages);
        GetParam().command(planner);
        EXPECT_TRUE(recorded.finish());
        behind = onDisk();
        EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
        planner.exit();
    }
    // The user's answer to each box about the history.
    void runWithout(desktop::Answer answer) {
        planner.messages.shown.clear();
        planner.start();
        asked.otherwise = answer;
        run();
        ASSERT_EQ(asked.shown.size(), 1U);
        EXPECT_TRUE(asked.shown[0].text.startsWith("操作历史不能写入，“删除”做了就不能撤消："))
            << asked.shown[0].text.toStdString();
    }
    void run() {
        outline::RecordedCommand recorded(planner.state(), planner.current(), "删除(&D)...", asked);
        try {
            GetParam().command(planner);
        } catch (const RunTimeError&) {
            // A command tells its failures itself, in its window.
        }
        EXPECT_FALSE(recorded.finish());
        wasRefused = recorded.wasRefused();
    }
    QString historyFolder() const { return planner.folder.path("Sys/用户模板/.~history"); }
    void putAFileInItsPlace() {
        QDir(historyFolder()).removeRecursively();
        planner.folder.write("Sys/用户模板/.~history", "in the way");
    }

    model::Snapshot before;
    model::Snapshot behind;
    test::FakeMessageBoxes asked;
    bool wasRefused = false;
};

TEST_P(UnwritableHistory, ACommandThatTheUserDoesNotWantThenChangesNothing) {
    putAFileInItsPlace();
    runWithout(desktop::Answer::no);
    EXPECT_TRUE(wasRefused);
    expectSame(onDisk(), before);
}

TEST_P(UnwritableHistory, ACommandThatTheUserWantsAllTheSameIsDoneWhole) {
    putAFileInItsPlace();
    runWithout(desktop::Answer::yes);
    EXPECT_FALSE(wasRefused);
    expectSame(onDisk(), behind);
}

TEST_P(UnwritableHistory, AHistoryThatCannotBeReadRefusesCommandsToo) {
    QFile::remove(historyFolder() + "/history.db");
    planner.folder.write("Sys/用户模板/.~history/history.db", QByteArray(8192, 'x'));
    runWithout(desktop::Answer::no);
    EXPECT_TRUE(wasRefused);
    ASSERT_FALSE(planner.messages.shown.empty());
    EXPECT_TRUE(planner.messages.shown[0].text.startsWith("操作历史不能使用："));
    expectSame(onDisk(), before);
}

TEST_P(UnwritableHistory, ACommandThatCannotBeRecordedAtItsEndIsTakenBack) {
    planner.start();
    const QString file = historyFolder() + "/history.db";
    test::PlainSqlite(file).rows(
        "CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); END");
    run();
    EXPECT_TRUE(wasRefused);
    ASSERT_EQ(asked.shown.size(), 1U);
    EXPECT_TRUE(asked.shown[0].text.startsWith("“删除”没有执行，因为操作历史不能写入"))
        << asked.shown[0].text.toStdString();
    expectSame(onDisk(), before);
    test::PlainSqlite(file).rows("DROP TRIGGER full");
    outline::RecordedCommand recorded(planner.state(), planner.current(), "操作", planner.messages);
    outline::showTables(planner.state(), planner.workbench(), planner.services(), {});
    GetParam().command(planner);
    EXPECT_TRUE(recorded.finish()) << "the next command is recorded again";
    expectSame(onDisk(), behind);
}

INSTANTIATE_TEST_SUITE_P(Each, UnwritableHistory, testing::ValuesIn(kinds()),
                         [](const auto& tested) { return std::string(tested.param.label); });

} // namespace
