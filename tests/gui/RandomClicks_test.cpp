#include "gui/support/HelpFile.h"
#include "gui/support/RandomUser.h"
#include "platform/desktop/windows/HelpKey.h"
#include "platform/desktop/windows/QtHelpWindow.h"
#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "platform/files/Paths.h"
#include "platform/jet/file/TextFunctions.h"
#include "platform/preview/windows/PreviewPane.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutEstimate.h"

#include <gtest/gtest.h>

#include <QDirIterator>

#include <sqlite3.h>

#include <iostream>

namespace qvnd::test {
namespace {

// The real engine; what it has to say nobody listens to.
class Engine : private word::ImportReport, private word::UnsavedChangesQuestion {
public:
    word::ApplicationFactory& factory() { return factory_; }

private:
    void notCarried(const std::filesystem::path&, std::u16string_view) override {}
    bool save(const std::filesystem::path&) override { return false; }

    word::LayoutEstimate pages_;
    word::EngineApplicationFactory factory_{{pages_, *this, *this}};
};

// Files and folders as a file manager offers them, and some that are not there.
QStringList offeredFiles(const TemporaryFolder& folder, word::ApplicationFactory& engine) {
    for (const char* file : {"一.doc", "二.doc", "三.四.doc", "表.rtf", "无后缀", "名'.doc"}) {
        folder.write(QString("文件/") + file, "document");
    }
    const auto word = engine.create();
    word->documents().Add().SaveAs(files::toPath(folder.path("文件/一.doc")));
    word->Quit();
    QStringList files;
    for (const char* file : {"一.doc", "二.doc", "三.四.doc", "表.rtf", "无后缀", "名'.doc",
                             "没有.doc", "没有.rtf", "没有/一.doc", "."}) {
        files << folder.path(QString("文件/") + file);
    }
    return files;
}

std::string soundnessOf(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_stmt* check = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    jet::registerTextFunctions(db);
    sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &check, nullptr);
    std::string answer = sqlite3_step(check) == SQLITE_ROW
                             ? reinterpret_cast<const char*>(sqlite3_column_text(check, 0))
                             : sqlite3_errmsg(db);
    sqlite3_finalize(check);
    sqlite3_close(db);
    return answer;
}

// Real boxes, and how many there were.
class CountedBoxes : public desktop::WidgetMessageBoxes {
public:
    desktop::Answer show(const desktop::Message& message) override {
        ++count;
        return desktop::WidgetMessageBoxes::show(message);
    }
    int count = 0;
};

// Every window, and what of the workbench has a behaviour of its own.
const QStringList windows{"frmSplash",      "MainForm",   "frmBid",    "TrvCurrent", "TrvTemplate",
                          "TrvTemplate_Us", "TbarBid",    "fraSee",    "mnuSys",     "mnuSysEdit",
                          "mnuDelBrowse",   "DlgNew",     "dlgAddDoc", "frmAbout",   "HelpWindow",
                          "QMessageBox",    "QFileDialog"};

preview::ConversionSettings withoutSuite(const TemporaryFolder& folder) {
    preview::ConversionSettings settings;
    settings.profileFolder = folder.path("profile");
    settings.cacheFolder = folder.path("pages");
    return settings;
}

class RandomClicks : public testing::TestWithParam<unsigned> {
protected:
    RandomClicks() {
        QFile::copy(builtHelpFile(), world.folder.path("Qvnd.hlp"));
        world.helpWindow = &help;
        world.makePreview = [this] {
            auto* pane = new preview::PreviewPane(conversion);
            return new outline::PreviewFrame(*pane, *pane);
        };
        qApp->installEventFilter(&helpKey);
    }
    ~RandomClicks() override { qApp->removeEventFilter(&helpKey); }

    void act(int count) {
        for (int i = 0; i < count && !HasFailure(); ++i) {
            const QString deed = user.act();
            EXPECT_TRUE(user.escaped().isEmpty()) << deed.toStdString() << " at " << done << ": "
                                                  << user.escaped().join("\n").toStdString();
            ++done;
        }
    }
    static bool isNumber(const QString& key) {
        return !key.isEmpty() &&
               std::all_of(key.begin(), key.end(), [](QChar digit) { return digit.isDigit(); });
    }
    // Every plan of the list fills a tree from its table.
    static void expectLoadable(jet::Database& library) {
        const auto list = library.OpenRecordset("Select * from 遍历表");
        for (; !list->Eof(); list->MoveNext()) {
            const QString name = list->Get(u"名称").TextOrEmpty();
            // Deleted, it stays on the list until that is read anew: no statement names it.
            if (name.contains(u'\'') && !library.TableDefs().Contains(name)) {
                continue;
            }
            outline::OutlineTree tree{"tree"};
            const auto rows = library.OpenRecordset("Select * from [" + name + "] order by ID asc");
            // No tree takes a key of digits alone, and so nothing of a plan with such a name.
            const bool hasTree = !rows->Eof() && !isNumber(rows->Get(u"key").ToText());
            outline::FillOutlineTree(*rows, tree);
            EXPECT_EQ(tree.Count() > 0, hasTree) << name.toStdString();
        }
    }
    void expectLoadable() {
        modMain& state = world.run().program().state();
        ASSERT_TRUE(state.gDbUser && state.gDbTemplate);
        EXPECT_NO_THROW(expectLoadable(*state.gDbUser)) << "after " << done;
        EXPECT_NO_THROW(expectLoadable(*state.gDbTemplate)) << "after " << done;
    }
    void expectAllReached() {
        for (const QString& window : windows) {
            EXPECT_TRUE(user.reached().contains(window)) << window.toStdString();
        }
    }
    void expectSoundDatabases() {
        int looked = 0;
        QDirIterator databases(world.folder.path(), {"*.mdb"}, QDir::Files,
                               QDirIterator::Subdirectories);
        while (databases.hasNext()) {
            const QString path = databases.next();
            EXPECT_EQ(soundnessOf(path), "ok") << path.toStdString();
            ++looked;
        }
        EXPECT_GE(looked, 3);
    }

    CountedBoxes messages;
    Engine engine;
    Dice dice{GetParam()};
    TemporaryFolder home;
    QStringList files = offeredFiles(home, engine.factory());
    RandomFileDialogs dialogs{dice, files};
    preview::PageConversion conversion{withoutSuite(home)};
    desktop::QtHelpWindow help{home.path("help")};
    DesktopWorld world{messages, dialogs, engine.factory()};
    desktop::HelpKey helpKey{help, [this] { return world.folder.path("Qvnd.hlp"); }, messages};
    RandomUser user{world, dice, files};
    int done = 0;
};

constexpr int usual = 900;

// A planner who does one thing a second: the four scripts together are his hour. QVND_RANDOM_SEED
// runs another script, QVND_RANDOM_EVENTS a longer or shorter one.
TEST_P(RandomClicks, LeaveALoadableOutlineAndLetNoErrorEscape) {
    constexpr int between = 100;
    const int events = qEnvironmentVariableIntValue("QVND_RANDOM_EVENTS");
    const int rounds = (events > 0 ? events : usual) / between;
    std::cout << "seed " << GetParam() << ", " << rounds * between << " events" << std::endl;
    ASSERT_TRUE(user.start());
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        act(between);
        expectLoadable();
    }
    EXPECT_GT(messages.count, done / 50) << "the script hardly reached a command";
    // Chance may leave a window out of any other script.
    if (done >= usual && !qEnvironmentVariableIsSet("QVND_RANDOM_SEED")) {
        expectAllReached();
    }
    user.close();
    EXPECT_TRUE(world.hasEnded());
    world.drop();
    expectSoundDatabases();
    EXPECT_TRUE(user.start());
    expectLoadable();
}

std::vector<unsigned> seeds() {
    const int asked = qEnvironmentVariableIntValue("QVND_RANDOM_SEED");
    return asked > 0 ? std::vector<unsigned>{static_cast<unsigned>(asked)}
                     : std::vector<unsigned>{1, 2, 3, 4};
}

INSTANTIATE_TEST_SUITE_P(Hour, RandomClicks, testing::ValuesIn(seeds()));

} // namespace
} // namespace qvnd::test
