#include "outline/RecordedCommand.h"
#include "outline/TakeBack.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "support/Planner.h"
#include "support/Text.h"
#include "whole/WorkSpaceState.h"
#include "whole/model/OutsideWork.h"
#include "whole/model/RandomDesk.h"
#include "whole/model/Steps.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QSet>

#include <algorithm>
#include <functional>

namespace qvnd::model {

namespace {

const QStringList planNames = {"甲", "甲乙", "工程", "10", "甲Org"};
const QStringList texts = {"章", "节", "说明", "1", "甲", "😀"};

template <typename List>
auto pick(const List& list, unsigned number) {
    return list[static_cast<int>(number % static_cast<unsigned>(list.size()))];
}

// A planner at work whose commands are recorded. Choices are made among what the trees show.
class RandomHistory : public testing::TestWithParam<int> {
protected:
    RandomHistory() { planner.start(); }
    void TearDown() override {
        if (planner.program) {
            planner.exit();
        }
    }

    static QString nodeOf(const outline::OutlineTree& tree, unsigned number) {
        const int count = tree.Count();
        return count == 0
                   ? QString()
                   : tree.Item(static_cast<int>(number % static_cast<unsigned>(count)) + 1).Key();
    }
    void perform(const Step& step) {
        switch (step.kind) {
        case Step::newPlan:
            planner.newPlan(pick(planNames, step.b), step.yes);
            return;
        case Step::deletePlan:
            planner.deletePlan(step.yes);
            return;
        case Step::clickPlan:
            planner.clickPlan(nodeOf(planner.plans(), step.a));
            return;
        case Step::storeTemplate:
            planner.storeTemplate();
            return;
        case Step::paste:
            planner.paste(step.yes);
            return;
        default:
            planner.click(nodeOf(planner.current(), step.a));
            performOnNode(step);
        }
    }
    void performOnNode(const Step& step) {
        const auto mode = step.flag ? outline::AddMode::beside : outline::AddMode::below;
        const QString target = nodeOf(planner.current(), step.b);
        switch (step.kind) {
        case Step::addFolder:
            planner.addFolder(mode, pick(texts, step.b));
            return;
        case Step::addDocument:
            planner.addDocument(mode, file(step.b), step.yes);
            return;
        case Step::deleteNode:
            planner.deleteNode(step.yes);
            return;
        case Step::rename:
            planner.rename(pick(texts, step.b));
            return;
        case Step::doubleClick:
            planner.doubleClick();
            return;
        case Step::drag:
            planner.drag(nodeOf(planner.current(), step.a), target);
            return;
        case Step::dropOutside:
            planner.drag(nodeOf(planner.current(), step.a), std::nullopt);
            return;
        case Step::dragTemplate:
            planner.dragTemplate(nodeOf(planner.templates(), step.a), target, step.yes);
            return;
        default:
            performOnTemplate(step);
        }
    }
    void performOnTemplate(const Step& step) {
        planner.pressTemplate(nodeOf(planner.templates(), step.a));
        if (step.kind == Step::copyPaste) {
            planner.copy();
            planner.paste(step.yes);
        } else if (step.kind == Step::deleteTemplate) {
            planner.deleteTemplate(step.yes);
        } else {
            planner.browseTemplate();
        }
    }
    // Every fifth is not there. Half of the others are documents; the rest have a text that no
    // other has and that no word processor reads.
    QString file(unsigned number) {
        const QString name = QString("files/%1.doc").arg(++files);
        if (number % 5 != 0) {
            planner.folder.write(name, number % 2 == 0 ? pick(documents(), number / 2)
                                                       : "text " + QByteArray::number(files));
        }
        return planner.folder.path(name);
    }
    // A few, written once for all.
    const QList<QByteArray>& documents() {
        static const QList<QByteArray> written = [this] {
            QList<QByteArray> bytes;
            for (const char16_t* text : {u"一", u"二", u"三", u"四"}) {
                test::PlannersDesk(planner).writeDocument("files/document.doc", text);
                bytes << planner.folder.read("files/document.doc");
            }
            return bytes;
        }();
        return written;
    }

    void run(const Step& step) {
        done << QString::number(step.kind);
        if (step.kind == Step::restart) { // which records its own two halves
            planner.restart();
        } else {
            recorded([&] { perform(step); });
        }
    }
    // True when the command has made a step.
    bool recorded(const std::function<void()>& command) {
        planner.messages.shown.clear();
        outline::RecordedCommand recorded(planner.state(), planner.current(), "操作",
                                          planner.messages);
        try {
            command();
        } catch (const RunTimeError&) {
            done << "failed";
        }
        return recorded.finish().has_value();
    }
    // False when there is nothing to take back or do again.
    bool takeBackOrDoAgain() {
        modMain& state = planner.state();
        const unsigned kind = random() % 5;
        std::optional<history::Step> step;
        if (kind < 2) {
            done << "undo";
            step = outline::undo(state, planner.workbench(), planner.services());
            expectSelected(step ? step->selectedBefore : QString());
        } else if (kind < 4) {
            done << "redo";
            step = outline::redo(state, planner.workbench(), planner.services());
            expectSelected(step ? step->selectedAfter : QString());
        } else {
            const std::int64_t target = pick(states.keys(), random());
            done << "to " + QString::number(target);
            outline::goToStep(state, planner.workbench(), planner.services(), target);
            return true;
        }
        return step.has_value();
    }
    void expectSelected(const QString& key) {
        const outline::OutlineNode* selected = planner.current().SelectedItem();
        if (!key.isEmpty() && planner.current().find(key) != nullptr) {
            EXPECT_EQ(selected->Key(), key);
        }
    }
    // A tree as the rows of the listed outlines make it.
    QStringList treeOf(jet::Database& db, const QStringList& outlines) {
        outline::OutlineTree tree("tree");
        for (const QString& name : outlines) {
            ignoringErrors([&] { // a table of another shape shows nothing
                const auto rows = db.OpenRecordset("Select * from [" + name + "] order by ID asc");
                outline::FillOutlineTree(*rows, tree);
            });
        }
        return linesOf(tree);
    }
    static QStringList linesOf(const outline::OutlineTree& tree) {
        QStringList lines;
        for (const QString& key : test::OutlineWorld::shown(tree)) {
            const outline::OutlineNode& node = tree.Item(key);
            lines << key + '|' + node.Text() + '|' + QString::number(node.Image());
        }
        return lines;
    }
    static QStringList namesIn(jet::Database& db, const QString& table) {
        QStringList names;
        for (const auto rs = db.OpenRecordset("Select * from " + table); !rs->Eof();
             rs->MoveNext()) {
            names << rs->Get(u"名称").TextOrEmpty();
        }
        return names;
    }
    QStringList there(jet::Database& db, QStringList names, const QString& folder) {
        names.removeIf([&](const QString& name) {
            return !planner.folder.exists(folder + '/' + name) || !db.TableDefs().Contains(name);
        });
        return names;
    }
    // Behind a step back or forth the open plan is that of the tables, and so is what stands in the
    // three trees.
    void compareTrees() {
        jet::Database& user = *planner.state().gDbUser;
        jet::Database& library = *planner.state().gDbTemplate;
        const QString plans = "Sys/用户模板";
        EXPECT_EQ(linesOf(planner.current()),
                  treeOf(user, there(user, namesIn(user, "当前表"), plans)));
        EXPECT_EQ(linesOf(planner.plans()),
                  treeOf(user, there(user, namesIn(user, "遍历表"), plans)));
        EXPECT_EQ(linesOf(planner.templates()),
                  treeOf(library, there(library, namesIn(library, "遍历表"), "Sys/标书模板")));
        ASSERT_FALSE(HasFailure()) << done.join(" ").toStdString();
    }

    // A state is noted when it is first reached, and compared ever after.
    void compare() {
        const std::int64_t head = planner.state().History->head();
        planner.state().gWs->Settle();
        const test::WorkSpaceState now = disk.state();
        if (!states.contains(head)) {
            states[head] = now;
            return;
        }
        SCOPED_TRACE("step " + std::to_string(head) + "\n" + done.join(" ").toStdString());
        test::expectSame(others.without(now), others.without(states[head]));
    }

    // Others save documents and change rows meanwhile; a database then is written to by the next
    // command, or met by a step back or forth.
    void workOutside() {
        if (random() % 2 == 0) {
            done << (others.saveFile() ? "file outside" : "");
            return;
        }
        const QString plan = namesIn(*planner.state().gDbUser, "当前表").value(0);
        const QString database = others.changeRow(plan);
        if (database.isEmpty()) {
            return;
        }
        done << "row outside";
        if (random() % 2 == 0) {
            takeBackOrDoAgain();
        }
        if (QFile::exists(database)) {
            recorded([&] { others.writeTo(database, plan); });
        }
        others.expectRowKept(database);
        outline::showTables(planner.state(), planner.workbench(), planner.services(), {});
    }

    test::Planner planner;
    test::WorkSpaceReader disk{planner.folder.path(), test::WorkSpaceReader::Databases::bytes};
    QMap<std::int64_t, test::WorkSpaceState> states;
    std::mt19937 random{static_cast<unsigned>(GetParam())};
    RandomDesk desk{planner, random};
    OutsideWork others{planner, random};
    QStringList done;
    int files = 0;
};

TEST_P(RandomHistory, UndoAndRedoAmongAllCommandsGiveTheRecordedStatesAndLoseNothingOfOthers) {
    int taken = 0;
    QSet<QString> stepsOfTheDesk; // their commands
    compare();
    const int count = numberAskedFor("QVND_HISTORY_STEPS", 500);
    for (const Step& step : randomSteps(static_cast<unsigned>(GetParam()) + 5000, count)) {
        if (step.kind == Step::loseFile) {
            continue; // no command
        }
        if (random() % 5 == 0) {
            QString act;
            if (recorded([&] { done << (act = desk.act()); })) {
                stepsOfTheDesk << act;
            }
        } else {
            run(step);
        }
        others.expectFilesKept();
        compare();
        if (random() % 10 == 0) {
            workOutside();
            compare();
        }
        if (!HasFatalFailure() && random() % 4 == 0) {
            const bool isTaken = takeBackOrDoAgain();
            others.expectFilesKept();
            compare();
            if (isTaken) {
                compareTrees();
            }
            ++taken;
        }
        if (HasFatalFailure()) {
            return;
        }
    }
    EXPECT_GT(taken, count / 10);
    EXPECT_GE(stepsOfTheDesk.size(), std::min(5, count / 100));
    // A few seeds replace none of the files, or none of the rows.
    EXPECT_GE(others.filesKept + others.rowsKept, count / 500);
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomHistory,
                         testing::Range(0, numberAskedFor("QVND_HISTORY_SEEDS", 10)));

} // namespace

} // namespace qvnd::model
