#pragma once

#include "outline/RecordedCommand.h"
#include "outline/TakeBack.h"
#include "platform/history/StepWords.h"
#include "support/Planner.h"
#include "support/Text.h"
#include "whole/model/Snapshot.h"

#include <gtest/gtest.h>

#include <functional>

namespace qvnd::test {

// A planner whose commands are recorded. Each is taken back behind a restart and done again.
class RecordedPlanner : public testing::Test {
protected:
    RecordedPlanner() { planner.start(); }
    ~RecordedPlanner() override {
        if (planner.program) {
            planner.exit();
        }
    }

    // Runs the command as the window does. An undo behind a restart brings every row, number and
    // file back to the state before it, and redo to the one behind it, in which it ends.
    history::Step record(const QString& caption, const std::function<void()>& command) {
        const model::Snapshot before = onDisk();
        outline::RecordedCommand recorded(planner.state(), planner.current(), caption,
                                          planner.messages);
        command();
        const auto step = recorded.finish();
        const model::Snapshot behind = onDisk();
        EXPECT_TRUE(step) << "nothing was recorded";
        planner.restart();
        EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
        expectSame(onDisk(), before);
        EXPECT_TRUE(outline::redo(planner.state(), planner.workbench(), planner.services()));
        expectSame(onDisk(), behind);
        return step.value_or(history::Step{});
    }
    QStringList changesOf(const history::Step& step) {
        QStringList lines;
        for (const history::Change& change : planner.state().History->changesOf(step.id)) {
            lines << history::lineOf(change);
        }
        return lines;
    }

    // Rows with their numbers, and files with their texts. The trees on the screen may be older.
    model::Snapshot onDisk() {
        model::Snapshot snapshot = model::RealSnapshots(planner).take();
        for (const char* tree : {"TrvCurrent", "TrvTemplate", "TrvTemplate_Us"}) {
            snapshot.remove(tree);
        }
        return snapshot;
    }
    static void expectSame(const model::Snapshot& now, const model::Snapshot& then) {
        for (const QString& name : now.keys() + then.keys()) {
            EXPECT_EQ(now.value(name, {"not there"}), then.value(name, {"not there"}))
                << name.toStdString();
        }
    }

    Planner planner;
};

} // namespace qvnd::test
