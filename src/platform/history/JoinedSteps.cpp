#include "platform/history/JoinedSteps.h"

#include "platform/history/PageDelta.h"

#include <QMap>

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

} // namespace

void joinSteps(HistoryFile& file, std::int64_t first, std::int64_t next, const Step& both) {
    const QList<FileChange> files = joinedFiles(file.filesOf(first), file.filesOf(next));
    const QList<DatabaseChange> databases =
        joinedDatabases(file.databasesOf(first), file.databasesOf(next));
    const QList<Change> changes = file.changesOf(first) + file.changesOf(next);
    file.remove(first);
    file.remove(next);
    file.add(both, changes);
    for (const FileChange& change : files) {
        file.addChange(both.id, change);
    }
    for (const DatabaseChange& change : databases) {
        file.addChange(both.id, change);
    }
}

} // namespace qvnd::history
