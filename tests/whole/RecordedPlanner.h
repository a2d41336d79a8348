#pragma once

#include "outline/RecordedCommand.h"
#include "outline/TakeBack.h"
#include "platform/history/StepWords.h"
#include "support/Planner.h"
#include "support/Text.h"
#include "whole/WorkSpaceState.h"

#include <gtest/gtest.h>

#include <functional>

namespace qvnd::test {

// A planner whose commands are recorded. Each is taken back behind a restart and done again.
class RecordedPlanner : public testing::Test {
protected:
    RecordedPlanner() { planner.start(); }
    ~RecordedPlanner() override {
        if (planner.program) {
            planner.messages.otherwise = desktop::Answer::no; // to what the exit may ask
            planner.exit();
        }
    }

    // Runs the command as the window does. An undo behind a restart brings every row, number and
    // file back to the state before it, and redo to the one behind it, in which it ends.
    history::Step record(const QString& caption, const std::function<void()>& command) {
        return recordAndTakeBack(caption, command, [this](const history::Step&) {
            planner.restart();
            EXPECT_TRUE(outline::undo(planner.state(), planner.workbench(), planner.services()));
        });
    }
    // The same for a command behind which the start itself finds something to do, which then is the
    // last step: the list of the steps leads to before the command.
    history::Step recordAheadOfTheStart(const QString& caption,
                                        const std::function<void()>& command) {
        return recordAndTakeBack(caption, command, [this](const history::Step& step) {
            planner.restart();
            outline::goToStep(planner.state(), planner.workbench(), planner.services(),
                              step.parent);
        });
    }
    QStringList changesOf(const history::Step& step) {
        QStringList lines;
        for (const history::Change& change : planner.state().History->changesOf(step.id)) {
            lines << history::lineOf(change);
        }
        return lines;
    }

    WorkSpaceState onDisk() {
        planner.state().gWs->Settle();
        return disk.state();
    }

private:
    history::Step recordAndTakeBack(const QString& caption, const std::function<void()>& command,
                                    const std::function<void(const history::Step&)>& takeBack) {
        const WorkSpaceState before = onDisk();
        const auto bytesBefore = disk.databases();
        outline::RecordedCommand recorded(planner.state(), planner.current(), caption,
                                          planner.messages);
        command();
        const auto step = recorded.finish();
        const WorkSpaceState behind = onDisk();
        const auto bytesBehind = disk.databases();
        EXPECT_TRUE(step) << "nothing was recorded";
        if (!step) {
            return {};
        }
        takeBack(*step);
        expectSame(onDisk(), before);
        EXPECT_EQ(disk.databases(), bytesBefore);
        outline::goToStep(planner.state(), planner.workbench(), planner.services(), step->id);
        expectSame(onDisk(), behind);
        EXPECT_EQ(disk.databases(), bytesBehind);
        return *step;
    }

protected:
    Planner planner;
    WorkSpaceReader disk{planner.folder.path()};
};

} // namespace qvnd::test
