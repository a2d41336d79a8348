#pragma once

#include "outline/CurrentPlan.h"
#include "outline/DeleteNode.h"
#include "outline/PutBack.h"
#include "outline/RecordedCommand.h"
#include "outline/RenameNode.h"
#include "outline/TakeBack.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"
#include "support/TracedProcess.h"

#include <gtest/gtest.h>

#include <functional>

namespace qvnd::test {

// Plan T with a folder, a document and a document below a document, whose commands are recorded.
class RecordedPlan : public testing::Test {
protected:
    RecordedPlan() {
        world.makePlan("T", {{"T", "T"},
                             {"T.1", "章"},
                             {"T.1.1", "文", "是"},
                             {"T.1.1.1", "附", "是"},
                             {"T.2", "节"}});
        for (const char* key : {"T.1.1", "T.1.1.1"}) {
            world.folder.write(file(key), key);
        }
        outline::setCurrentPlan(*world.state.gDbUser, "T");
        openHistory();
        world.openPlan("T");
        world.messages.otherwise = desktop::Answer::yes;
    }
    void TearDown() override { world.state.History.reset(); }

    void openHistory() {
        world.state.History = std::make_unique<history::History>(
            world.state.gUserTplPath + ".~history",
            history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
            *world.state.gFso, "测试");
    }
#ifdef __linux__
    // The last step undone by another process that is killed at one of its changes; with 0 it lives
    // to its end. The number of its changes; negative where processes cannot be traced.
    int undoneByAnother(int deadly) {
        world.state.History.reset(); // the other process would begin with what is open here
        const int changes = TracedProcess::run(
            [this] {
                jet::DBEngine engine;
                files::DiskFileSystem files;
                history::History theirs(
                    world.state.gUserTplPath + ".~history",
                    history::Places(world.state.gUserTplPath, {world.folder.root()}),
                    engine.Workspaces(0), files, "另一个程序");
                theirs.undo();
            },
            deadly);
        openHistory();
        return changes;
    }
#endif
    static QString file(const QString& key) { return "用户模板/T/" + key + ".doc"; }
    std::int64_t run(const QString& caption, const std::function<void()>& command) {
        outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, caption,
                                          world.messages);
        command();
        const auto step = recorded.finish();
        EXPECT_TRUE(step);
        return step ? step->id : history::beginning;
    }
    std::int64_t deleteNode(const QString& key) {
        return run("删除", [&] {
            world.workbench.TrvCurrent.Select(&world.workbench.TrvCurrent.Item(key));
            outline::mnuEditDelete(world.state, world.workbench, world.services());
        });
    }
    std::int64_t rename(const QString& key, const QString& name) {
        return run("重命名", [&] {
            world.workbench.clickedKey = key;
            world.workbench.TrvCurrent.Select(&world.workbench.TrvCurrent.Item(key));
            outline::AfterLabelEdit(world.state, world.workbench, world.messages, name);
        });
    }
    history::Change changeOf(std::int64_t step, const QString& key) {
        for (const history::Change& change : world.state.History->changesOf(step)) {
            if (change.key == key) {
                return change;
            }
        }
        ADD_FAILURE() << "no change of " << key.toStdString();
        return {};
    }
    outline::PutBack putBack(std::int64_t step, const QString& key) {
        outline::PutBack done;
        run("放回", [&] {
            done = outline::putBackAndShow(world.state, world.workbench, world.services(), step,
                                           changeOf(step, key));
        });
        return done;
    }
    void addRow(const OutlineRowText& row) {
        OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"), row);
    }

    OutlineWorld world;
};

} // namespace qvnd::test
