#include "platform/history/HistoryFile.h"
#include "platform/jet/DBEngine.h"
#include "platform/jet/file/Image.h"
#include "support/KillPoints.h"
#include "support/LeftOnDisk.h"
#include "support/TracedProcess.h"
#include "whole/PlannedHome.h"
#include "whole/WorkSpaceState.h"

#ifdef __linux__

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <vector>

using namespace qvnd;
using test::commandsOfAPlanner;
using test::contentOf;
using test::PlannedHome;
using test::PlannersCommand;
using test::qvndctl;
using test::TracedProcess;
using test::workSpaceOf;

namespace {

const QString plansFolder = QStringLiteral("Sys/用户模板");
const QString templatesFolder = QStringLiteral("Sys/标书模板");

// One outline as it is on disk: its rows in order, and the file of each document by its key.
struct Outline {
    QStringList rows;                 // key|name|kind
    QMap<QString, QString> documents; // names by keys
};

using Library = QMap<QString, Outline>;

// What a database lists, read by a run of its own. Errors of the store pass through: after a kill
// every database has to open.
Library libraryIn(const QString& file) {
    jet::DBEngine engine;
    const auto db = engine.Workspaces(0).OpenDatabase(file);
    Library library;
    for (const auto list = db->OpenRecordset("Select * from 遍历表"); !list->Eof();
         list->MoveNext()) {
        const QString name = list->Get(u"名称").TextOrEmpty();
        Outline outline;
        const auto rs = db->OpenRecordset("Select * from [" + name + "] order by ID asc");
        for (; !rs->Eof(); rs->MoveNext()) {
            const QString key = rs->Get(u"Key").TextOrEmpty();
            const QString text = rs->Get(u"名称").TextOrEmpty();
            const QString kind = rs->Get(u"是否文档").TextOrEmpty();
            outline.rows << key + '|' + text + '|' + kind;
            if (kind == "是") {
                outline.documents[key] = text;
            }
        }
        library[name] = outline;
    }
    return library;
}

struct Libraries {
    Library plans;
    Library templates;
};

Libraries librariesIn(const QString& home) {
    return {libraryIn(home + "/Sys/用户模板/Db_UsTemplate.mdb"),
            libraryIn(home + "/Sys/Database/Db_Template.mdb")};
}

constexpr int pointsOfOne = 12;

class KilledCommands : public testing::TestWithParam<PlannersCommand> {
protected:
    void SetUp() override { ASSERT_FALSE(HasFailure()); }

    QStringList words() const { return original.wordsOf(GetParam()); }
    TracedProcess::Work commandIn(const QString& home) const {
        return [this, home] { qvndctl(home, words()); };
    }

    // Every outline is the earlier one or the later one.
    static void expectWhole(const Libraries& now, const Libraries& before, const Libraries& after) {
        expectWhole(now.plans, before.plans, after.plans);
        expectWhole(now.templates, before.templates, after.templates);
    }
    static void expectWhole(const Library& now, const Library& before, const Library& after) {
        QSet<QString> names;
        for (const Library* library : {&now, &before, &after}) {
            for (const QString& name : library->keys()) {
                names.insert(name);
            }
        }
        for (const QString& name : names) {
            const auto in = [&](const Library& library) {
                return library.contains(name) ? library[name].rows : QStringList("not listed");
            };
            EXPECT_TRUE(in(now) == in(before) || in(now) == in(after))
                << "outline " << name.toStdString()
                << " is neither the old nor the new one: " << in(now).join(", ").toStdString();
        }
    }
    // At once, before a run has put anything right.
    static void expectDatabasesOpen(const QString& home) {
        const QString path = home + "/Sys";
        QDirIterator files(path, {"*.mdb"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            jet::DBEngine engine;
            const QString file = files.next();
            EXPECT_NO_THROW(engine.Workspaces(0).OpenDatabase(file)) << file.toStdString();
        }
    }
    // Every document of every outline has its file, and that whole.
    static void expectDocuments(const QString& home, const Libraries& now) {
        for (auto at = now.plans.begin(); at != now.plans.end(); ++at) {
            expectDocuments(at.value(), home + "/" + plansFolder + "/" + at.key());
        }
        for (auto at = now.templates.begin(); at != now.templates.end(); ++at) {
            expectDocuments(at.value(), home + "/" + templatesFolder + "/" + at.key());
        }
    }
    static void expectDocuments(const Outline& outline, const QString& folder) {
        for (auto at = outline.documents.begin(); at != outline.documents.end(); ++at) {
            QFile file(folder + "/" + at.key() + ".doc");
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
            EXPECT_TRUE(file.readAll() == contentOf(at.value()))
                << file.fileName().toStdString() << " is not whole";
        }
    }

    QString leftBy(int point) const { return original.folder.path(QString::number(point)); }
    // Runs the command in a home, and keeps what it would leave there if it were killed before some
    // of its changes: all of them by hand, QVND_KILL_EVERYWHERE. Answers which; of those that leave
    // the same behind, the first.
    std::vector<int> killedIn(const QString& home, int changes) const {
        const bool isEach = qEnvironmentVariableIsSet("QVND_KILL_EVERYWHERE");
        const auto points = test::killPoints(changes, isEach ? changes : pointsOfOne);
        original.copyTo(home);
        std::vector<int> kept;
        test::LeftOnDisk last;
        TracedProcess::watch(commandIn(home), [&](int change) {
            if (std::binary_search(points.begin(), points.end(), change)) {
                test::LeftOnDisk now = test::leftOnDisk(home);
                if (now != last) {
                    test::copyWithTimes(home, leftBy(change));
                    kept.push_back(change);
                    last.swap(now);
                }
            }
            return change != points.back();
        });
        std::filesystem::remove_all(files::toPath(home));
        RecordProperty("changes", changes);
        RecordProperty("points", static_cast<int>(kept.size()));
        return kept;
    }
    void expectWorkGoesOn(const QString& home) const {
        EXPECT_EQ(qvndctl(home, {"outline", "add-folder", "乙", "乙.1", "后来", "--beside"}),
                  tools::ExitStatus::done);
        qvndctl(home, words());
        expectDocuments(home, librariesIn(home));
    }

    PlannedHome original;
};

// What the next start says, and the steps that a list shows behind it.
struct NextStart {
    explicit NextStart(const QString& home) {
        std::ostringstream plans;
        std::ostringstream err;
        tools::run({"--home", home, "plan", "list"}, plans, err);
        said = QString::fromStdString(err.str());
        const QString folder = home + '/' + plansFolder;
        history::HistoryFile file(folder + "/.~history/history.db", history::Places(folder));
        for (const history::Step& step : file.steps()) {
            if (!step.isBookkeeping()) {
                listed << step.title;
            }
        }
        steps = listed.size();
    }
    bool tellsCommand() const { return said.contains("没有做完"); }
    bool tellsExit() const { return said.contains("上次运行在退出时中断了；所做的操作都已保存。"); }

    QStringList listed;
    qsizetype steps;
    QString said;
};

// A command that was not told of was either not begun or done whole; what only opens a plan is no
// step to undo. What the start and the exit do by themselves is no step beside it.
TEST_P(KilledCommands, LeaveAllWholeAtWhateverPointAndAreToldAndOneUndoLeadsToBeforeThem) {
    const NextStart atFirst(original.home());
    const Libraries before = librariesIn(original.home());
    const auto allBefore = workSpaceOf(original.home());
    const QString undisturbed = original.folder.path("undisturbed");
    original.copyTo(undisturbed);
    const int changes = TracedProcess::run(commandIn(undisturbed), 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    EXPECT_NE(workSpaceOf(undisturbed), allBefore);
    const Libraries after = librariesIn(undisturbed);
    const bool isStep = NextStart(undisturbed).steps > atFirst.steps;
    int unfinished = 0;
    const QString home = original.folder.path("killed");
    for (const int point : killedIn(home, changes)) {
        SCOPED_TRACE("killed before change " + std::to_string(point) + " of " +
                     std::to_string(changes));
        std::filesystem::rename(files::toPath(leftBy(point)), files::toPath(home));
        expectDatabasesOpen(home);
        const NextStart next(home);
        unfinished += next.tellsCommand();
        const qsizetype steps = next.steps - atFirst.steps;
        EXPECT_TRUE(steps == 1 || (steps == 0 && !next.tellsCommand()))
            << next.listed.join(", ").toStdString() << next.said.toStdString();
        const Libraries now = librariesIn(home);
        expectWhole(now, before, after);
        expectDocuments(home, now);
        const QString later = original.folder.path("later");
        test::copyWithTimes(home, later);
        if (steps == 1) {
            EXPECT_EQ(qvndctl(home, {"history", "undo"}), tools::ExitStatus::done);
            EXPECT_EQ(workSpaceOf(home), allBefore);
        }
        expectWorkGoesOn(later);
        for (const QString& done : {home, later}) {
            std::filesystem::remove_all(done.toStdString());
        }
        if (HasFailure()) {
            break;
        }
    }
    EXPECT_TRUE(unfinished > 0 || !isStep);
}

INSTANTIATE_TEST_SUITE_P(Each, KilledCommands, testing::ValuesIn(commandsOfAPlanner()),
                         [](const auto& tested) { return std::string(tested.param.label); });

// A user who has seen an undo stop asks for it again, and means the step that it was about.
TEST(KilledUndo, IsEndedByTheNextOneWhichTakesNoFurtherStep) {
    const PlannedHome original;
    for (const char* name : {"一", "二"}) {
        qvndctl(original.home(), {"outline", "rename", "甲", "甲.1", name});
    }
    const QString home = original.folder.path("killed");
    const auto undo = [&] { qvndctl(home, {"history", "undo"}); };
    original.copyTo(home);
    const int changes = TracedProcess::run(undo, 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    const auto undone = workSpaceOf(home);
    int restored = 0;
    for (const int point : test::killPoints(changes, pointsOfOne)) {
        SCOPED_TRACE("killed before change " + std::to_string(point) + " of " +
                     std::to_string(changes));
        std::filesystem::remove_all(home.toStdString());
        original.copyTo(home);
        TracedProcess::run(undo, point);
        std::ostringstream out;
        std::ostringstream err;
        tools::run({"--home", home, "history", "undo"}, out, err);
        if (QString::fromStdString(err.str()).contains("现已做完")) {
            ++restored;
            EXPECT_EQ(out.str(), "");
            test::expectSame(workSpaceOf(home), undone);
        }
    }
    EXPECT_GT(restored, 0);
}

// The copy of the plan that the exit makes level is whole in either state, and nothing of it is to
// be taken back.
TEST(KilledExit, IsToldAndLeavesOnlyTheCommandToUndo) {
    const PlannedHome original;
    const auto before = workSpaceOf(original.home());
    const QStringList words{"outline", "rename", "甲", "甲.1", "改"};
    const QString home = original.folder.path("killed");
    const auto rename = [&] { qvndctl(home, words); };
    original.copyTo(home);
    const int changes = TracedProcess::run(rename, 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    int told = 0;
    for (int point = changes; point > changes / 2 && told < 4; point -= 5) {
        SCOPED_TRACE("killed before change " + std::to_string(point) + " of " +
                     std::to_string(changes));
        std::filesystem::remove_all(home.toStdString());
        original.copyTo(home);
        EXPECT_EQ(TracedProcess::run(rename, point), point - 1);
        const QString copy = home + "/" + plansFolder + "/甲/甲.mdb";
        const NextStart next(home);
        if (!next.tellsExit()) {
            continue;
        }
        ++told;
        EXPECT_FALSE(next.tellsCommand());
        EXPECT_FALSE(NextStart(home).tellsExit()) << "it is told once";
        EXPECT_TRUE(jet::ImageTables(jet::imageOf(copy)).tables().contains("甲"));
        EXPECT_EQ(qvndctl(home, {"history", "undo"}), tools::ExitStatus::done);
        EXPECT_EQ(workSpaceOf(home), before);
    }
    EXPECT_GT(told, 0);
}

} // namespace

#endif
