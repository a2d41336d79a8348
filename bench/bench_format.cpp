// What the format dialog costs: its opening with so many fonts and so many entries in each library,
// and a key in a field until the preview has changed. Milliseconds.

#include "WindowBench.h"

#include "format/windows/frmBidSetWindow.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "store/DatabaseCreation.h"
#include "tools/TerminalServices.h"

#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>

#include <memory>

namespace {

using namespace qvnd;
using namespace qvnd::bench;
using namespace Qt::StringLiterals;

class ManyFonts : public desktop::Fonts {
public:
    explicit ManyFonts(int count) {
        for (int i = 0; i < count; ++i) {
            names_ << u"字体 %1 号"_s.arg(i);
        }
    }
    bool hasPrinter() override { return true; }
    QStringList printerFonts() override { return names_; }
    QStringList screenFonts() override { return names_; }

private:
    QStringList names_;
};

// The settings of a first installation, with so many entries in each of the three libraries.
class Settings {
public:
    Settings(int fonts, int entries) : fonts_(fonts) {
        const QString root = files::withSeparator(folder_.path());
        state.AppPath = folder_.path();
        state.gAppPath = root;
        state.gSysPath = files::withSeparator(root + "Sys");
        state.gUserTplPath = files::withSeparator(root + u"用户模板"_s);
        QDir().mkpath(state.gSysPath + u"Database"_s);
        QDir().mkpath(state.gUserTplPath);
        state.gFso = std::make_unique<files::DiskFileSystem>();
        state.gWs = &state.DBEngine.Workspaces(0);
        store::CreateUserDb(state, state.gUserTplPath + "Db_UsTemplate.mdb");
        store::CreateBidSetDb(state, state.gSysPath + "Database/Db_BidSet.mdb", QDate(2026, 5, 1));
        for (int i = 0; i < entries; ++i) {
            name(u"设置库"_s, u"名称", u"设置 %1"_s.arg(i));
            name(u"封面库"_s, u"名称", u"封面 %1"_s.arg(i));
            name(u"自定义表"_s, u"路径", u"扉页 %1"_s.arg(i));
        }
    }

    std::unique_ptr<format::frmBidSetWindow> open() {
        auto window = std::make_unique<format::frmBidSetWindow>(state, dialog, messages);
        window->show();
        QCoreApplication::processEvents();
        return window;
    }

    modMain state;
    NoMessages messages;

private:
    void name(const QString& table, QStringView field, const QString& value) {
        const auto rs = state.gDbBidSet->OpenRecordset(table);
        rs->AddNew();
        rs->Set(field, value);
        rs->Update();
    }

    QTemporaryDir folder_;
    ManyFonts fonts_;
    tools::NoInputBoxes inputs_;
    NoFiles files_;
    tools::NoShell shell_;
    NoWord word_;

public:
    format::frmBidSet dialog{state, {messages, inputs_, files_, fonts_, shell_, word_}};
};

// From the load of the controls to the first picture of the window.
void openFormatDialog(benchmark::State& state) {
    Settings settings(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        auto window = settings.open();
        benchmark::DoNotOptimize(window->grab());
        state.PauseTiming();
        window.reset();
        settings.dialog.Unload();
        state.ResumeTiming();
    }
}
BENCHMARK(openFormatDialog)
    ->Args({20, 3})
    ->Args({2000, 300})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

// A key in a field of each of the two previews, with the picture that then stands there.
void typeIntoFormatDialog(benchmark::State& state) {
    Settings settings(2000, 300);
    const auto window = settings.open();
    const bool cover = state.range(0) == 0;
    window->findChild<QTabWidget*>(u"SSTab1"_s)->setCurrentIndex(cover ? 0 : 1);
    auto* field = window->findChild<QLineEdit*>(cover ? u"TxtPrjName"_s : u"Txtformer"_s);
    auto* preview = window->findChild<QWidget*>(cover ? u"Frame1"_s : u"Frame6"_s);
    for (auto _ : state) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s);
        QCoreApplication::sendEvent(field, &key);
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(preview->grab());
    }
}
BENCHMARK(typeIntoFormatDialog)
    ->ArgName("heading")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(30);

} // namespace

int main(int argc, char** argv) { return qvnd::bench::runWithoutScreen(argc, argv); }
