#include "platform/history/Recorder.h"

#include "platform/history/Differences.h"
#include "platform/history/JoinedSteps.h"
#include "platform/history/PageDelta.h"
#include "platform/history/StepWords.h"
#include "platform/jet/file/Image.h"

#include <QDir>
#include <QFileInfo>

// How a command's changes become a step of the history.
namespace qvnd::history {

namespace {

// A plan's own copy of its tables lies in a folder of its own name and follows the central ones.
bool isCopy(const QString& path) {
    const QFileInfo file(path);
    return file.completeBaseName().compare(file.dir().dirName(), Qt::CaseInsensitive) == 0;
}

// Under the number of the later one, in which the journal of the command under way knows it.
Step joinedWords(const Step& killed, const Step& start) {
    Step both = killed;
    both.id = start.id;
    both.note +=
        (killed.note.isEmpty() || start.note.isEmpty() ? QString() : QString(u'\n')) + start.note;
    both.selectedAfter = start.selectedAfter;
    return both;
}

} // namespace

void Recorder::seeOutside(const QString& path) {
    const QByteArray known = file().mirror(path);
    if (jet::changeCounterIn(known) == jet::changeCounterOf(path)) {
        return;
    }
    const QByteArray live = jet::imageOf(path);
    if (jet::holdTheSame(known, live)) {
        HistoryFile::Transaction all(file());
        file().setMirror(path, known, live);
        all.commit();
        return;
    }
    const QList<Change> changes =
        differences(QFileInfo(path).fileName(), known, live, std::nullopt);
    Step step;
    step.id = file().position().last + 1;
    step.kind = StepKind::outside;
    step.time = QDateTime::currentDateTime();
    step.title = QStringLiteral("外部改动[%1]").arg(QFileInfo(path).fileName());
    step.isMinor = isMinor(changes, {});
    record(step, isCopy(path) ? QList<Change>() : changes, {}, {{path, deltaOf(known, live)}});
}

void Recorder::recordOutside(const QStringList& paths) {
    QList<Change> changes;
    QList<FileChange> files;
    for (const QString& path : paths) {
        const QString name = QFileInfo(path).fileName();
        changes << Change{Change::Kind::fileReplaced, {}, {}, path, name, {}};
        files << FileChange{path, content::onDisk, content::onDisk};
    }
    Step step;
    step.id = file().position().last + 1;
    step.kind = StepKind::outside;
    step.time = QDateTime::currentDateTime();
    step.title = QStringLiteral("外部改动[%1]").arg(changes.first().name);
    step.isMinor = true;
    record(step, changes, files, {});
}

void Recorder::addDatabases(Step& step, QList<Change>& changes, QList<DatabaseChange>& found) {
    const auto& touched = running_.touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        const QString& path = entry.key();
        if (entry->kind != Touched::Kind::database) {
            continue;
        }
        const QByteArray before = file().mirror(path);
        const QByteArray after = jet::imageOf(path);
        const QByteArray delta = deltaOf(before, after);
        if (delta.isEmpty()) {
            continue;
        }
        found << DatabaseChange{path, delta};
        if (!isCopy(path)) {
            const bool isAllKnown = step.kind == StepKind::command;
            changes << differences(QFileInfo(path).fileName(), before, after,
                                   isAllKnown ? std::optional(tables_.value(path)) : std::nullopt);
        }
    }
}

void Recorder::addFiles(QList<Change>& changes, QList<FileChange>& found) {
    const auto& touched = running_.touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        const QString& path = entry.key();
        const QString& before = entry->before;
        const bool exists = QFileInfo::exists(path);
        if (entry->kind == Touched::Kind::folder) {
            if (exists != (before == content::folder)) {
                found << FileChange{path, before, exists ? content::folder : content::absent};
            }
        } else if (entry->kind == Touched::Kind::file) {
            const bool was = before != content::absent;
            const std::optional<Present> present = file().present(path);
            const bool isUntouched =
                was && (!kept_.has(before) || kept_.isLinkedTo(before, path) ||
                        kept_.isCopyOf(before, path) ||
                        (present && present->content == before && present->stamp == stampOf(path)));
            if (isUntouched || was + exists == 0) {
                continue;
            }
            found << FileChange{path, before, exists ? content::onDisk : content::absent};
            if (!isDatabase(path)) {
                const Change::Kind kind = !was      ? Change::Kind::fileAdded
                                          : !exists ? Change::Kind::fileRemoved
                                                    : Change::Kind::fileReplaced;
                changes << Change{kind, {}, {}, path, QFileInfo(path).fileName(), {}};
            }
        }
    }
}

std::optional<Step> Recorder::makeStep(StepKind kind, const QString& selectedAfter) {
    Step step;
    step.id = running_.step();
    step.kind = kind;
    step.time = running_.time();
    if (frame_->planBehind) {
        frame_->plan = frame_->planBehind();
    }
    step.plan = frame_->plan;
    step.program = running_.program();
    step.selectedBefore = frame_->selectedKey;
    step.selectedAfter = selectedAfter;
    QList<Change> changes;
    QList<DatabaseChange> databases;
    QList<FileChange> files;
    addDatabases(step, changes, databases);
    addFiles(changes, files);
    if (databases.isEmpty() && files.isEmpty()) {
        return std::nullopt;
    }
    step.title = titleOf(*frame_, changes);
    // 撤消 must find a killed command, whatever it came to.
    step.isMinor = kind == StepKind::command && isMinor(changes, files);
    if (frame_->note && !step.isMinor) {
        step.note = frame_->note(*frame_, changes);
    }
    record(step, changes, files, databases);
    return step;
}

std::optional<Step> Recorder::finish(const QString& selectedAfter) {
    if (!running_.hasBegun()) {
        frame_.reset();
        return std::nullopt;
    }
    return finishAs(StepKind::command, selectedAfter);
}

std::optional<Step> Recorder::finishAs(StepKind kind, const QString& selectedAfter) {
    const std::optional<Step> step = makeStep(kind, selectedAfter);
    if (!step) {
        kept_.removeStep(running_.step());
    }
    running_.end();
    frame_.reset();
    return step ? file().step(step->id) : std::nullopt;
}

bool Recorder::isAnyUnderWay() const { return QFile::exists(RunningCommand::fileIn(folder_)); }

bool Recorder::findKilled() {
    std::optional<RunningCommand> left =
        RunningCommand::left(RunningCommand::fileIn(folder_), places_);
    if (!left) {
        return false;
    }
    running_ = std::move(*left);
    if (!running_.hasBegun() || file().step(running_.step())) {
        running_.end(); // it had come to its end
        return false;
    }
    for (const QString& path : running_.touched().keys()) {
        KeptFiles::removeUnfinished(path);
    }
    kept_.dropUnfinished(running_.step());
    return true;
}

std::optional<Step> Recorder::finishKilled() {
    frame_ = running_.frame();
    return finishAs(StepKind::unfinished, {});
}

// What a start does directly behind a command that was killed comes of that command, such as
// forgetting a plan whose folder had gone already. It belongs to its step, so that one undo leads
// to before both; a start would do it again behind an undo of its own step.
std::optional<Step> Recorder::killedBefore(const Position& position) {
    if (!frame_ || frame_->caption != caption::start || file().hasChildren(position.head)) {
        return std::nullopt;
    }
    std::optional<Step> step = file().step(position.head);
    return step && step->kind == StepKind::unfinished ? step : std::nullopt;
}

void Recorder::record(const Step& made, const QList<Change>& changes,
                      const QList<FileChange>& files, const QList<DatabaseChange>& databases) {
    HistoryFile& history = file();
    HistoryFile::Transaction all(history);
    Position position = history.position();
    Step step = made;
    step.parent = position.head;
    const std::optional<Step> killed =
        made.kind == StepKind::command ? killedBefore(position) : std::nullopt;
    for (const FileChange& change : files) {
        if (KeptFiles::isKept(change.before)) {
            history.contentOnDiskIsKept(change.path, change.before);
        }
    }
    history.add(step, changes);
    for (const FileChange& change : files) {
        history.addChange(step.id, change);
        history.setPresent(change.path, {stampOf(change.path), change.after});
    }
    for (const DatabaseChange& change : databases) {
        history.addChange(step.id, change);
        const QByteArray before = history.mirror(change.path);
        history.setMirror(change.path, before, applied(change.delta, before, Direction::forward));
        history.setPresent(change.path, {stampOf(change.path), content::onDisk});
    }
    if (killed) {
        step = joinedWords(*killed, step);
        joinSteps(history, killed->id, step.id, step);
    }
    // Bookkeeping behind an undo does not end the branch that 恢复 follows.
    if (!step.isMinor || position.tip == position.head) {
        position.tip = step.id;
    }
    position.head = step.id;
    position.last = std::max(position.last, step.id);
    history.setPosition(position);
    all.commit();
}

} // namespace qvnd::history
