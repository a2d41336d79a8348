// What the workbench window costs: its start on a large library, and its trees on a long outline.
// "longest" is the longest time, in milliseconds, for which one event held the window up.

#include "WindowBench.h"

#include "outline/OutlineRows.h"
#include "outline/windows/PreviewFrame.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/frmBid.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "store/PlanTables.h"
#include "tools/TerminalServices.h"

#include <QDir>
#include <QDragMoveEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>

namespace {

using namespace qvnd;
using namespace qvnd::bench;
using namespace Qt::StringLiterals;

class NoPreview : public preview::DocumentPreview {
    void show(const QString&) override {}
    void hide() override {}
};
class NoFrame : public outline::WorkbenchFrame {
    void showPlanEditor() override {}
    void openDocument(const QString&) override {}
    void arrangeCascade() override {}
    void arrangeTile() override {}
    void showHelpContents() override {}
    void showHelpIndex() override {}
    void showAbout() override {}
    void showStatus(const QString&) override {}
    void endAtOnce() override {}
    void exit() override {}
};

// An installation with so many outlines, half of them plans and half templates.
class Installation {
public:
    explicit Installation(int outlines, int nodes) {
        const QString root = files::withSeparator(folder_.path());
        state.AppPath = folder_.path();
        state.gAppPath = root;
        state.gSysPath = files::withSeparator(root + "Sys");
        state.gUserTplPath = files::withSeparator(root + u"用户模板"_s);
        QDir().mkpath(state.gSysPath + u"标书模板"_s);
        QDir().mkpath(state.gUserTplPath);
        state.gFso = std::make_unique<files::DiskFileSystem>();
        state.gWs = &state.DBEngine.Workspaces(0);
        state.gDbUser = library(state.gUserTplPath + "Db_UsTemplate.mdb");
        state.gDbTemplate = library(state.gSysPath + "Db_Template.mdb");
        for (int i = 0; i < outlines / 2; ++i) {
            addOutline(*state.gDbUser, u"工程%1号"_s.arg(i), nodes);
            QDir().mkpath(state.gUserTplPath + u"工程%1号"_s.arg(i));
            addOutline(*state.gDbTemplate, u"模板%1号"_s.arg(i), nodes);
            QDir().mkpath(state.gSysPath + u"标书模板/模板%1号"_s.arg(i));
        }
        name(*state.gDbUser, u"当前表"_s, u"工程0号"_s);
    }

    std::unique_ptr<outline::frmBid> window() {
        auto* fraSee = new outline::PreviewFrame(*new QWidget, preview_);
        return std::make_unique<outline::frmBid>(
            outline::frmBid::Parts{state,
                                   *workbench,
                                   {messages_, splash_, files_, events_, word_, longRun_},
                                   frame_,
                                   *fraSee,
                                   input_});
    }

    modMain state;
    std::unique_ptr<outline::Workbench> workbench = std::make_unique<outline::Workbench>();

private:
    std::unique_ptr<jet::Database> library(const QString& path) {
        auto db = state.gWs->CreateDatabase(path, QString::fromUtf16(jet::dbLangGeneral));
        for (const QString& table : {u"遍历表"_s, u"当前表"_s}) {
            jet::TableDef list(table);
            list.Fields = {jet::TableDef::CreateField(u"名称"_s, jet::FieldType::Memo)};
            db->TableDefs().Append(list);
        }
        return db;
    }
    static void name(jet::Database& db, const QString& table, const QString& value) {
        const auto rs = db.OpenRecordset(table);
        rs->AddNew();
        rs->Set(u"名称", value);
        rs->Update();
    }
    // Every tenth node is a folder of the documents behind it.
    static void addOutline(jet::Database& db, const QString& table, int nodes) {
        db.TableDefs().Append(store::outlineTable(table));
        const auto rows = db.OpenRecordset(table);
        outline::addRow(*rows, {table, table, false});
        QString folder;
        for (int i = 1; i < nodes; ++i) {
            const bool isFolder = i % 10 == 1;
            const QString number = u'.' + QString::number(i);
            if (isFolder) {
                folder = table + number;
            }
            outline::addRow(*rows, {isFolder ? folder : folder + number,
                                    u"第 %1 项工程的施工方法"_s.arg(i), !isFolder});
        }
        name(db, u"遍历表"_s, table);
    }

    QTemporaryDir folder_;
    NoMessages messages_;
    tools::NoSplash splash_;
    NoFiles files_;
    tools::NoEvents events_;
    NoWord word_;
    tools::NoLongRun longRun_;
    tools::NoInputBoxes input_;
    NoPreview preview_;
    NoFrame frame_;
};

// From the making of the window to its first picture.
void startWithLibrary(benchmark::State& state) {
    Installation installation(static_cast<int>(state.range(0)), 200);
    for (auto _ : state) {
        auto window = installation.window();
        window->resize(1280, 800);
        window->Load();
        window->show();
        benchmark::DoNotOptimize(window->grab());
        state.PauseTiming();
        window.reset();
        installation.workbench = std::make_unique<outline::Workbench>();
        state.ResumeTiming();
    }
}
BENCHMARK(startWithLibrary)
    ->Arg(125)
    ->Arg(250)
    ->Arg(500)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);

// A tree of so many nodes in a view, all in its first level or spread over folders of ten.
class LongTree {
public:
    LongTree(int nodes, bool flat) {
        fill(nodes, flat);
        view.resize(400, 800);
        view.setDragDropMode(QAbstractItemView::DragDrop);
        view.show();
        QCoreApplication::processEvents();
    }
    void fill(int nodes, bool flat) {
        using namespace outline;
        tree.Clear();
        tree.Add(u"T"_s, u"T"_s, image::root, image::rootSelected);
        QString folder = u"T"_s;
        for (int i = 1; i < nodes; ++i) {
            const QString key = u"T."_s + QString::number(i);
            const bool isFolder = !flat && i % 10 == 1;
            tree.AddChild(isFolder ? u"T"_s : folder, key, u"第 %1 项"_s.arg(i),
                          isFolder ? image::folder : image::document,
                          isFolder ? image::folderSelected : image::documentSelected);
            folder = isFolder ? key : folder;
        }
    }

    outline::OutlineTree tree{u"TrvCurrent"_s};
    outline::OutlineModel model{tree};
    outline::OutlineView view{model};
};

template <typename Act>
double milliseconds(const Act& act) {
    QElapsedTimer timer;
    timer.start();
    act();
    QCoreApplication::processEvents();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// Opening the root of a flat outline, then every folder of a deep one.
void expandLongTree(benchmark::State& state) {
    double longest = 0;
    for (auto _ : state) {
        LongTree flat(static_cast<int>(state.range(0)), true);
        longest = std::max(longest, milliseconds([&] {
                               flat.view.expand(flat.model.index(0, 0));
                               flat.view.repaint();
                           }));
        LongTree deep(static_cast<int>(state.range(0)), false);
        deep.view.expand(deep.model.index(0, 0));
        for (outline::OutlineNode* folder : deep.tree.Item(1).childList()) {
            longest = std::max(longest,
                               milliseconds([&] { deep.view.expand(deep.model.indexOf(folder)); }));
        }
    }
    state.counters["longest"] = longest;
}
BENCHMARK(expandLongTree)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(2);

// A node on its way over all of a long tree: each move selects the node under the pointer.
void dragOverLongTree(benchmark::State& state) {
    LongTree long_(static_cast<int>(state.range(0)), false);
    long_.view.expandAll();
    QObject::connect(&long_.view, &outline::OutlineView::oleDragOver,
                     [&](outline::OutlineNode* node) {
                         if (node) {
                             long_.tree.Select(node);
                         }
                     });
    QMimeData data;
    data.setData(outline::OutlineModel::nodeMimeType, "TrvCurrent\nT.1");
    double longest = 0;
    for (auto _ : state) {
        for (int y = 5; y < 780; y += 9) {
            longest = std::max(longest, milliseconds([&] {
                                   QDragMoveEvent move(QPoint(100, y), Qt::CopyAction, &data,
                                                       Qt::LeftButton, Qt::NoModifier);
                                   QCoreApplication::sendEvent(long_.view.viewport(), &move);
                               }));
        }
    }
    state.counters["longest"] = longest;
}
BENCHMARK(dragOverLongTree)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(2);

// The refill behind a command, with every folder open before and after it.
void refillLongTree(benchmark::State& state) {
    LongTree long_(static_cast<int>(state.range(0)), false);
    long_.view.expandAll();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        long_.fill(static_cast<int>(state.range(0)), false);
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(long_.view.grab());
    }
}
BENCHMARK(refillLongTree)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv) { return qvnd::bench::runWithoutScreen(argc, argv); }
