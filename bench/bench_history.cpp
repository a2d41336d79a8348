// What recording a command costs beside the command itself, on plans of 200 and 2,000 documents:
// a folder is added beside the first node, which moves every row behind it, and taken back.

#include "outline/DeleteNode.h"
#include "outline/RecordedCommand.h"
#include "outline/TakeBack.h"
#include "outline/dlgAddDoc.h"
#include "support/OutlineWorld.h"
#include "support/PlainSqlite.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>

namespace {

using namespace qvnd;

enum class History { kept, none };

class LargePlan {
public:
    LargePlan(int documents, History history) {
        std::vector<test::OutlineRowText> rows{{"T", "T"}};
        for (int i = 1; i <= documents; ++i) {
            const QString key = "T." + QString::number(i);
            rows.push_back({key, "施工部署" + QString::number(i), "是"});
            world.folder.write("用户模板/T/" + key + ".doc", "text");
        }
        world.makePlan("T", rows);
        test::OutlineWorld::makeTable(*world.state.gDbUser, "TOrg", {});
        if (history == History::kept) {
            openHistory();
        }
        world.openPlan("T", "T.1");
    }
    ~LargePlan() { world.state.History.reset(); }

    // Commands behind the first one, spread evenly over the days up to now, that changed nothing.
    void haveEarlierSteps(int steps, int days) {
        world.state.History.reset();
        const QString count = QString::number(steps);
        test::PlainSqlite file(world.state.gUserTplPath + ".~history/history.db");
        file.rows("WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<=" + count +
                  ") INSERT INTO steps SELECT i,i-1,0,strftime('%Y-%m-%dT%H:%M:%S.000','now',"
                  "'localtime','-'||((" +
                  count + "+1-i)*1.0*" + QString::number(days) + "/" + count +
                  ")||' days'),'添加[新]','T','bench','',0,'T.1','T.1' FROM n");
        // Each with what the first has changed.
        for (const char* table : {"changes", "file_steps", "database_steps"}) {
            file.rows(QString("CREATE TEMP TABLE first AS SELECT * FROM %1 WHERE step=(SELECT "
                              "min(id) FROM steps); UPDATE first SET step=0")
                          .arg(table));
            copyToAll(file, table, count);
            file.rows("DROP TABLE first");
        }
        file.rows("UPDATE state SET head=" + count + "+1,tip=" + count + "+1,last=" + count + "+1");
        openHistory();
    }

    void deletePlan() {
        world.messages.otherwise = desktop::Answer::yes;
        outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, "删除",
                                          world.messages);
        world.workbench.TrvCurrent.Select(&world.workbench.TrvCurrent.Item("T"));
        outline::mnuEditDelete(world.state, world.workbench, world.services());
        recorded.finish();
    }

    // Seconds that the command takes.
    double addFolder() {
        QElapsedTimer time;
        time.start();
        outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, "添加",
                                          world.messages);
        world.workbench.TrvCurrent.Select(&world.workbench.TrvCurrent.Item("T.1"));
        outline::dlgAddDoc(world.state, world.workbench, world.services(), outline::AddMode::beside)
            .OK("新" + QString::number(++number_));
        world.state.gWs->Settle();
        recorded.finish();
        return static_cast<double>(time.nsecsElapsed()) / 1e9;
    }

    test::OutlineWorld world;

private:
    static void copyToAll(test::PlainSqlite& file, const QString& table, const QString& steps) {
        const QString columns = file.rows("SELECT group_concat(name) FROM pragma_table_info('" +
                                          table + "') WHERE name<>'step'")
                                    .join(QString());
        file.rows("WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<=" + steps +
                  ") INSERT OR IGNORE INTO " + table + "(step," + columns + ") SELECT i," +
                  columns + " FROM n,first");
    }
    void openHistory() {
        world.state.History = std::make_unique<history::History>(
            world.state.gUserTplPath + ".~history",
            history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
            *world.state.gFso, "bench");
    }

    int number_ = 0;
};

// What is left when the time of the same command without a history is taken off.
void recording(benchmark::State& state) {
    const int documents = static_cast<int>(state.range(0));
    LargePlan recorded(documents, History::kept);
    LargePlan plain(documents, History::none);
    for (auto _ : state) {
        const double alone = plain.addFolder();
        state.SetIterationTime(std::max(0.0, recorded.addFolder() - alone));
    }
}
BENCHMARK(recording)->Arg(200)->Arg(2000)->UseManualTime()->Unit(benchmark::kMillisecond);

void undoAndRedo(benchmark::State& state) {
    LargePlan plan(static_cast<int>(state.range(0)), History::kept);
    plan.addFolder();
    for (auto _ : state) {
        outline::undo(plan.world.state, plan.world.workbench, plan.world.services());
        outline::redo(plan.world.state, plan.world.workbench, plan.world.services());
    }
}
BENCHMARK(undoAndRedo)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

// An undo at the end of a month of 300 commands a day.
void undoBehindAMonth(benchmark::State& state) {
    LargePlan plan(200, History::kept);
    plan.addFolder();
    plan.haveEarlierSteps(9000, 29);
    plan.addFolder();
    for (auto _ : state) {
        outline::undo(plan.world.state, plan.world.workbench, plan.world.services());
        outline::redo(plan.world.state, plan.world.workbench, plan.world.services());
    }
}
BENCHMARK(undoBehindAMonth)->Unit(benchmark::kMillisecond);

// A plan is deleted with its folder, that is taken back, and done again.
void deletionUndoneAndRedone(benchmark::State& state) {
    LargePlan plan(static_cast<int>(state.range(0)), History::kept);
    plan.deletePlan();
    if (plan.world.folder.exists("用户模板/T")) {
        state.SkipWithError("the plan is still there");
    }
    for (auto _ : state) {
        outline::undo(plan.world.state, plan.world.workbench, plan.world.services());
        outline::redo(plan.world.state, plan.world.workbench, plan.world.services());
    }
}
BENCHMARK(deletionUndoneAndRedone)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

// What the exit does when the steps of a day become old, and when there is nothing to do.
void thinning(benchmark::State& state) {
    for (auto _ : state) {
        LargePlan plan(200, History::kept);
        plan.addFolder();
        plan.haveEarlierSteps(9000, static_cast<int>(state.range(0)));
        QElapsedTimer time;
        time.start();
        plan.world.state.History->thin({}, QDateTime::currentDateTime());
        state.SetIterationTime(static_cast<double>(time.nsecsElapsed()) / 1e9);
    }
}
BENCHMARK(thinning)->Arg(29)->Arg(31)->Iterations(3)->UseManualTime()->Unit(
    benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
