#include "platform/history/JoinedSteps.h"

#include "platform/history/PageDelta.h"

#include <QMap>

namespace qvnd::history {

void joinSteps(HistoryFile& file, const QList<std::int64_t>& steps, const Step& all) {
    QList<Change> changes;
    QMap<QString, FileChange> files; // what the first found, and what the last left
    QMap<QString, QList<QByteArray>> deltas;
    for (const std::int64_t step : steps) {
        changes << file.changesOf(step);
        for (const FileChange& change : file.filesOf(step)) {
            const auto known = files.constFind(change.path);
            const QString before = known == files.constEnd() ? change.before : known->before;
            files[change.path] = {change.path, before, change.after};
        }
        for (const DatabaseChange& change : file.databasesOf(step)) {
            deltas[change.path] << change.delta;
        }
        file.remove(step);
    }
    file.add(all, changes);
    for (const FileChange& change : files) {
        file.addChange(all.id, change);
    }
    for (auto database = deltas.begin(); database != deltas.end(); ++database) {
        file.addChange(all.id, DatabaseChange{database.key(), joined(*database)});
    }
}

} // namespace qvnd::history
