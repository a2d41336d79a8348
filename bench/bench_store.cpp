// What the store costs on an outline of ten thousand rows, and how that grows with the outline.

#include "platform/jet/DBEngine.h"
#include "store/PlanTables.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

using namespace qvnd;

const QString plan = QStringLiteral("工程甲");

// A plan's two databases with an outline of so many rows, and the statements by which a folder is
// put beside the outline's first node, so that all rows behind it move.
class Outline {
public:
    explicit Outline(int rows)
        : user_(made(QStringLiteral("user.mdb"))), folder_(made(QStringLiteral("plan.mdb"))) {
        user_->TableDefs().Append(store::outlineTable(plan));
        folder_->TableDefs().Append(store::outlineTable(plan));
        const auto table = user_->OpenRecordset(plan);
        addRow(*table, plan, plan);
        for (int i = 1; i < rows; ++i) {
            addRow(*table, plan + "." + QString::number(i), QStringLiteral("第 %1 项工程").arg(i));
        }
    }

    void insertBesideFirstNode() {
        const QString first = plan + ".1";
        const auto found =
            user_->OpenRecordset("Select * from " + plan + " where Key='" + first + "'");
        const QString behind = " where ID > " + found->Get(u"ID").ToText();
        if (user_->TableDefs().Contains(QStringLiteral("temp"))) {
            user_->TableDefs().Delete(QStringLiteral("temp"));
        }
        user_->Execute("Select * into  temp  from " + plan + behind);
        const int last = lastId();
        user_->Execute("Delete * from " + plan + behind);
        const auto alike =
            user_->OpenRecordset("Select * from " + plan + " where Key like '" + plan + "*'");
        alike->MoveLast();
        addRow(*alike, plan + "." + QString::number(last + alike->RecordCount()),
               QStringLiteral("新"));
        putBack();
        levelFolder();
    }

    QString file() const { return user_->Name(); }

private:
    std::unique_ptr<jet::Database> made(const QString& name) {
        return engine_.Workspaces(0).CreateDatabase(QDir(directory_.path()).filePath(name), {});
    }

    static void addRow(jet::Recordset& table, const QString& key, const QString& name) {
        table.AddNew();
        table.Set(u"Key", key);
        table.Set(u"名称", name);
        table.Set(u"是否文档", u"否");
        table.Update();
    }

    int lastId() {
        const auto ordered = user_->OpenRecordset("Select * from " + plan + " order by ID asc");
        ordered->MoveLast();
        return ordered->Get(u"ID").ToLong();
    }

    void putBack() {
        const auto temp = user_->OpenRecordset(QStringLiteral(" select * from temp"));
        const auto table = user_->OpenRecordset("Select * from " + plan);
        for (; !temp->Eof(); temp->MoveNext()) {
            table->AddNew();
            for (const QStringView field : {u"Key", u"名称", u"是否文档"}) {
                table->Set(field, temp->Get(field));
            }
            table->Update();
        }
    }

    void levelFolder() {
        folder_->Execute("DELETE * FROM " + plan);
        user_->Execute("INSERT INTO " + plan + " IN '" + folder_->Name() + "' SELECT * FROM " +
                       plan);
    }

    QTemporaryDir directory_;
    jet::DBEngine engine_;
    std::unique_ptr<jet::Database> user_;
    std::unique_ptr<jet::Database> folder_;
};

double secondsFor(int rows) {
    Outline outline(rows);
    QElapsedTimer clock;
    clock.start();
    outline.insertBesideFirstNode();
    return static_cast<double>(clock.nsecsElapsed()) / 1e9;
}

// One folder put beside the first node of an outline of that many rows.
void InsertFolderBesideFirstNode(benchmark::State& state) {
    Outline outline(static_cast<int>(state.range(0)));
    for (auto round : state) {
        (void)round;
        outline.insertBesideFirstNode();
    }
}
BENCHMARK(InsertFolderBesideFirstNode)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void printRatios() {
    const double once = secondsFor(10000);
    const double twice = secondsFor(20000);
    std::printf("folder beside the first node: 10000 rows %.3f s, 20000 rows %.3f s, ratio %.2f\n",
                once, twice, twice / once);
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    printRatios();
    return 0;
}
