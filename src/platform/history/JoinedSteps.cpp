#include "platform/history/JoinedSteps.h"

#include "platform/history/PageDelta.h"

#include <QMap>

#include <algorithm>
#include <functional>

namespace qvnd::history {

namespace {

constexpr qsizetype longestTitle = 100;

// The titles as one; of very many the first ones.
QString titleOfAll(const QStringList& titles) {
    QString all = titles.first();
    for (const QString& title : titles.mid(1)) {
        if (all.size() + title.size() >= longestTitle) {
            return all + QStringLiteral("等");
        }
        all += u'、' + title;
    }
    return all;
}

// A line each, whatever a node is called.
QStringList titlesOf(const Step& step) {
    QStringList titles = step.titles();
    for (QString& title : titles) {
        title.replace(u'\n', u' ');
    }
    return titles;
}

} // namespace

void joinSteps(HistoryFile& file, const QList<std::int64_t>& steps, const Step& joined) {
    QList<Change> changes;
    QMap<QString, FileChange> files;
    QMap<QString, QList<QByteArray>> deltas;
    for (const std::int64_t step : steps) {
        changes += file.changesOf(step);
        for (const FileChange& change : file.filesOf(step)) {
            const QString before = files.value(change.path, change).before;
            files[change.path] = {change.path, before, change.after};
        }
        for (const DatabaseChange& change : file.databasesOf(step)) {
            deltas[change.path] << change.delta;
        }
        file.remove(step);
    }
    file.add(joined, changes);
    for (const FileChange& change : files) {
        file.addChange(joined.id, change);
    }
    for (auto database = deltas.begin(); database != deltas.end(); ++database) {
        if (const QByteArray delta = joinedDelta(*database); !delta.isEmpty()) {
            file.addChange(joined.id, DatabaseChange{database.key(), delta});
        }
    }
}

Step joinedStep(const QList<Step>& steps) {
    const bool isMinor = std::all_of(steps.begin(), steps.end(), std::mem_fn(&Step::isMinor));
    Step all = steps.last();
    all.parent = steps.first().parent;
    all.kind = StepKind::automatic;
    all.isMinor = isMinor;
    all.selectedBefore = steps.first().selectedBefore;
    all.joinedTitles.clear();
    QStringList plans;
    QStringList notes;
    for (const Step& step : steps) {
        all.kind = step.isAutomatic() ? all.kind : step.kind;
        notes << step.note;
        if (step.isMinor == isMinor) {
            all.joinedTitles << titlesOf(step);
            plans << step.plans();
        }
    }
    all.joinedTitles.removeDuplicates();
    plans.removeDuplicates();
    notes.removeAll(QString());
    all.title = titleOfAll(all.joinedTitles);
    all.plan = plans.join(u'\n');
    all.note = notes.join(u'\n');
    return all;
}

} // namespace qvnd::history
