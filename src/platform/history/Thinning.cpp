#include "platform/history/History.h"

#include "platform/history/PageDelta.h"

#include <algorithm>

namespace qvnd::history {

namespace {

// One step's changes behind another's: what the first found, and what the second left.
QList<FileChange> joinedFiles(const QList<FileChange>& first, const QList<FileChange>& second) {
    QMap<QString, FileChange> all;
    for (const FileChange& change : first) {
        all[change.path] = change;
    }
    for (const FileChange& change : second) {
        const QString before = all.contains(change.path) ? all[change.path].before : change.before;
        all[change.path] = {change.path, before, change.after};
    }
    return all.values();
}

QList<DatabaseChange> joinedDatabases(const QList<DatabaseChange>& first,
                                      const QList<DatabaseChange>& second) {
    QMap<QString, DatabaseChange> all;
    for (const DatabaseChange& change : first + second) {
        const QByteArray before = all.value(change.path).delta;
        all[change.path] = {change.path, joined(before, change.delta)};
    }
    return all.values();
}

// How many of the oldest steps are before the last so many commands. Bookkeeping is none.
qsizetype freeOf(const QList<Step>& steps, int least) {
    qsizetype free = steps.size();
    for (int kept = 0; free > 0 && (kept < least || steps[free - 1].isMinor);) {
        --free;
        kept += steps[free].isMinor ? 0 : 1;
    }
    return free;
}

} // namespace

// The oldest step that may be joined with its parent: both old, of one day, with no other child of
// the parent, and not among the newest.
std::optional<std::int64_t> History::joinableAt(const QList<Step>& steps, const Limits& limits,
                                                const QDateTime& now) {
    const qsizetype free = freeOf(steps, limits.least);
    const QDateTime young = now.addDays(-static_cast<qint64>(limits.whole.count()));
    for (qsizetype at = 0; at < free; ++at) {
        const Step& step = steps[at];
        const auto parent = std::find_if(
            steps.begin(), steps.end(), [&](const Step& other) { return other.id == step.parent; });
        const auto siblings = std::count_if(steps.begin(), steps.end(), [&](const Step& other) {
            return other.parent == step.parent;
        });
        if (parent != steps.end() && step.time < young && siblings == 1 && parent->id != head() &&
            parent->time.date() == step.time.date()) {
            return step.id;
        }
    }
    return std::nullopt;
}

// The joined step keeps the later one's number and place, and the words of both.
void History::joinWithParent(const Step& step) {
    HistoryFile& file = recorder_.file();
    const Step parent = file.step(step.parent).value_or(Step{});
    const QList<FileChange> files = joinedFiles(file.filesOf(parent.id), file.filesOf(step.id));
    const QList<DatabaseChange> databases =
        joinedDatabases(file.databasesOf(parent.id), file.databasesOf(step.id));
    const QList<Change> changes = file.changesOf(parent.id) + file.changesOf(step.id);
    Step both = step;
    both.parent = parent.parent;
    both.title = parent.title.contains(u'、') ? parent.title : parent.title + u'、' + step.title;
    both.isMinor = parent.isMinor && step.isMinor;
    both.selectedBefore = parent.selectedBefore;
    file.remove(parent.id);
    file.remove(step.id);
    file.add(both, changes);
    for (const FileChange& change : files) {
        file.addChange(both.id, change);
    }
    for (const DatabaseChange& change : databases) {
        file.addChange(both.id, change);
    }
}

int History::thin(const Limits& limits, const QDateTime& now) {
    if (!exists()) {
        return 0;
    }
    HistoryFile& file = recorder_.file();
    const qsizetype before = file.steps().size();
    {
        HistoryFile::Transaction all(file);
        while (const auto id = joinableAt(file.steps(), limits, now)) {
            joinWithParent(*file.step(*id));
        }
        all.commit();
    }
    if (file.steps().size() < before) {
        dropUnused();
    }
    while (freeOf(file.steps(), limits.least) > 0 && kept_.size() + file.size() > limits.bytes) {
        const QList<Step> steps = file.steps();
        HistoryFile::Transaction all(file);
        file.remove(steps.first().id);
        file.replaceParent(steps.first().id, beginning);
        all.commit();
        dropUnused();
        file.shrink();
    }
    return static_cast<int>(before - file.steps().size());
}

void History::dropUnused() {
    for (const std::int64_t step : kept_.steps()) {
        if (!recorder_.file().isContentUsed(step)) {
            kept_.removeStep(step);
        }
    }
}

} // namespace qvnd::history
