#include "outline/TakeBack.h"

#include "outline/BeyondAsked.h"
#include "outline/CurrentPlan.h"
#include "outline/LibraryTree.h"
#include "outline/TreeLoading.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/history/History.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

QString selectedKeyOf(const OutlineTree& tree) {
    const OutlineNode* node = tree.SelectedItem();
    return node == nullptr ? QString() : node->Key();
}

QString namedPlan(jet::Database& db) {
    const auto current = db.OpenRecordset(QStringLiteral("Select * from 当前表"));
    return current->Eof() ? QString() : current->Get(store::field::name).TextOrEmpty();
}

void showPlan(modMain& state, Workbench& workbench, desktop::SplashScreen& splash) {
    workbench.TrvCurrent.Clear();
    const QString name = namedPlan(*state.gDbUser);
    bool isThere = false;
    ignoringErrors([&] {
        isThere = !name.isEmpty() && state.gDbUser->TableDefs().Contains(name) &&
                  store::stateOfPlanFolder(state, name) == store::FolderState::there;
    });
    if (isThere) { // a table of another shape shows nothing
        ignoringErrors([&] { updateTreeView(state, name, workbench.TrvCurrent, splash); });
    }
    isThere ? offerPlanCommands(workbench, true) : forgetPlan(state, workbench);
}

// Nothing is dropped, unlike by a refresh: the tables are as the state has them.
void showLibrary(modMain& state, jet::Database& db, OutlineTree& tree) {
    const QString selected = selectedKeyOf(tree);
    const auto outlines = readLibrary(state, db, tree);
    tree.Clear();
    for (const std::vector<OutlineRow>& rows : outlines) {
        addOutline(rows, tree);
    }
    tree.Select(tree.find(selected));
}

void select(OutlineTree& tree, const QString& key) {
    OutlineNode* node = tree.find(key);
    if (node == nullptr && tree.Count() > 0) {
        node = &tree.Item(tree.Count());
    }
    tree.Select(node);
}

// The databases are closed to nobody meanwhile; the trees are filled even when it fails.
void take(modMain& state, Workbench& workbench, const Services& services,
          const std::function<QString()>& restore) {
    QString selected;
    try {
        selected = restore();
    } catch (const RunTimeError&) {
        ignoringErrors([&] { showTables(state, workbench, services, {}); });
        throw;
    }
    showTables(state, workbench, services, selected);
}

using history::History;

// 撤消 or 恢复: what it would take, taking it, and which node is selected behind it.
struct OneStep {
    std::optional<history::Step> (History::*offered)();
    std::optional<history::Step> (History::*taken)();
    QString history::Step::*selected;
};

// Where the begin of this command has ended an earlier one, the trees are to show that.
std::optional<history::Step> takeOne(modMain& state, Workbench& workbench, const Services& services,
                                     const OneStep& one) {
    std::optional<history::Step> step;
    if (state.History && ((*state.History.*one.offered)() || state.HistoryFound.restored)) {
        take(state, workbench, services, [&] {
            step = (*state.History.*one.taken)();
            return step ? (*step).*one.selected : QString();
        });
    }
    return step;
}

// Whether the history is still as the user has been shown it: `now` is the step that was named.
// That a restoration has been brought to its end meanwhile is told anyway.
bool isStill(modMain& state, Workbench& workbench, const Services& services,
             const std::optional<history::Step>& now, std::int64_t named, const QString& words) {
    if (now.value_or(history::Step{}).id == named) {
        return true;
    }
    showTables(state, workbench, services, selectedKeyOf(workbench.TrvCurrent));
    if (!state.HistoryFound.restored) {
        services.messages.tell(words, desktop::Icon::information, desktop::hintTitle);
    }
    return false;
}

std::optional<history::Step> takeNamed(modMain& state, Workbench& workbench,
                                       const Services& services, const OneStep& one,
                                       std::int64_t named, const QString& words) {
    const bool isTaken = state.History && isStill(state, workbench, services,
                                                  (*state.History.*one.offered)(), named, words);
    return isTaken ? takeOne(state, workbench, services, one) : std::nullopt;
}

constexpr OneStep lastDone{&History::undoable, &History::undo, &history::Step::selectedBefore};
constexpr OneStep lastUndone{&History::redoable, &History::redo, &history::Step::selectedAfter};

} // namespace

void showTables(modMain& state, Workbench& workbench, const Services& services,
                const QString& selectedKey) {
    workbench.clickedKey.clear();
    state.gSelectedPlan.clear();
    showPlan(state, workbench, services.splash);
    showLibrary(state, *state.gDbTemplate, workbench.TrvTemplate);
    showLibrary(state, *state.gDbUser, workbench.TrvTemplate_Us);
    select(workbench.TrvCurrent, selectedKey);
}

std::optional<history::Step> undo(modMain& state, Workbench& workbench, const Services& services) {
    return takeOne(state, workbench, services, lastDone);
}

std::optional<history::Step> redo(modMain& state, Workbench& workbench, const Services& services) {
    return takeOne(state, workbench, services, lastUndone);
}

std::optional<history::Step> undoNamed(modMain& state, Workbench& workbench,
                                       const Services& services, std::int64_t named) {
    return takeNamed(state, workbench, services, lastDone, named,
                     u"撤消的操作已变，请再看一看。"_s);
}

std::optional<history::Step> redoNamed(modMain& state, Workbench& workbench,
                                       const Services& services, std::int64_t named) {
    return takeNamed(state, workbench, services, lastUndone, named,
                     u"恢复的操作已变，请再看一看。"_s);
}

QString takeMended(modMain& state, const QString& undo) {
    const History::Found found = std::exchange(state.HistoryFound, {});
    QStringList lines;
    if (found.unfinished) {
        const auto last = state.History->undoable();
        const bool isLast = last && last->id == found.unfinished->id;
        lines << u"上次运行没有做完“%1”就中断了。%2可以回到它之前。"_s.arg(
            found.unfinished->title, isLast ? undo : u"操作历史中"_s);
        state.History->told();
    }
    if (!found.unfinishedBefore.isEmpty()) {
        lines << u"在它以前也没有做完：%1。"_s.arg(listed(found.unfinishedBefore));
    }
    if (found.restored) {
        lines << u"上一次撤消或恢复中断了，现已做完。"_s;
    }
    if (!found.note.isEmpty()) {
        lines << found.note;
    }
    return lines.join(u'\n');
}

void goToStep(modMain& state, Workbench& workbench, const Services& services, std::int64_t step) {
    take(state, workbench, services, [&] {
        state.History->goTo(step);
        const auto reached = state.History->step(step);
        return reached ? reached->selectedAfter : QString();
    });
}

bool goToListed(modMain& state, Workbench& workbench, const Services& services, std::int64_t step,
                std::int64_t latest) {
    const bool isAsListed = isStill(state, workbench, services, state.History->undoable(), latest,
                                    u"操作历史已变，请再看一看。"_s);
    if (isAsListed) {
        goToStep(state, workbench, services, step);
    }
    return isAsListed;
}

PutBack putBackAndShow(modMain& state, Workbench& workbench, const Services& services,
                       std::int64_t step, const history::Change& change) {
    PutBack done;
    const QString selected = selectedKeyOf(workbench.TrvCurrent);
    take(state, workbench, services, [&] {
        done = putBack(state, step, change);
        return done.key;
    });
    if (workbench.TrvCurrent.find(done.key) == nullptr) {
        select(workbench.TrvCurrent, selected);
    }
    return done;
}

} // namespace qvnd::outline
