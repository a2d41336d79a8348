#include "platform/history/Recorder.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/history/Differences.h"
#include "platform/history/JoinedSteps.h"
#include "platform/history/PageDelta.h"
#include "platform/history/StepWords.h"
#include "platform/jet/file/Image.h"

#include <QFileInfo>

#include <algorithm>

// How a command's changes become a step of the history.
namespace qvnd::history {

namespace {

// A damaged database is told as the file that it is.
QList<Change> changesBetween(const QString& path, const QByteArray& before, const QByteArray& after,
                             const std::optional<QSet<QString>>& tables) {
    const QString name = QFileInfo(path).fileName();
    QList<Change> changes;
    const bool areSound = ignoringError(
        error::unrecognizedFormat, [&] { changes = differences(name, before, after, tables); });
    return areSound ? changes
                    : QList<Change>{Change{Change::Kind::fileReplaced, {}, {}, path, name, {}}};
}

Step outsideStep(std::int64_t number, const QString& what, bool isMinor) {
    Step step;
    step.id = number;
    step.kind = StepKind::outside;
    step.time = QDateTime::currentDateTime();
    step.title = QStringLiteral("外部改动[%1]").arg(what);
    step.isMinor = isMinor;
    return step;
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

std::optional<Step> Recorder::seeOutside(const QString& path, Look look) {
    const std::optional<Present> present = file().present(path);
    const QByteArray known = file().mirror(path);
    if (look == Look::stamps && present && present->stamp == stampOf(path) &&
        jet::changeCounterIn(known) == jet::changeCounterOf(path)) {
        return std::nullopt;
    }
    const QByteArray live = jet::imageOf(path);
    if (jet::holdTheSame(known, live)) {
        HistoryFile::Transaction all(file());
        file().setMirror(path, known, live);
        file().setPresent(path, {stampOf(path), content::onDisk});
        all.commit();
        return std::nullopt;
    }
    const QList<Change> changes = changesBetween(path, known, live, std::nullopt);
    const Step step = outsideStep(takeNumber(), databaseWord(path), isMinor(changes, {}));
    return record(step, isOwnCopy(path) ? QList<Change>() : shown(changes), {},
                  {{path, deltaOf(known, live)}});
}

// The contents are copied at once: what changed them may go on to write to the files.
Step Recorder::recordOutside(const QStringList& paths) {
    const std::int64_t number = takeNumber();
    QList<Change> changes;
    QList<FileChange> files;
    for (const QString& path : paths) {
        const QString name = QFileInfo(path).fileName();
        const QString kept = QStringLiteral("%1/%2").arg(number).arg(files.size() + 1);
        kept_.copy(path, kept);
        changes << Change{Change::Kind::fileReplaced, {}, {}, path, name, {}};
        files << FileChange{path, kept, kept};
    }
    const QString rest =
        paths.size() > 1 ? QStringLiteral(" 等 %1 个文件").arg(paths.size()) : QString();
    return record(outsideStep(number, changes.first().name + rest, true), changes, files, {});
}

void Recorder::addDatabases(Step& step, QList<Change>& changes, QList<DatabaseChange>& found) {
    const auto& touched = running_.touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        const QString& path = entry.key();
        if (entry->kind != Touched::Kind::database || Places::isElsewhere(path)) {
            continue;
        }
        const QByteArray before = file().mirror(path);
        const QByteArray after = jet::imageOf(path);
        const QByteArray delta = deltaOf(before, after);
        if (delta.isEmpty()) {
            continue;
        }
        found << DatabaseChange{path, delta};
        // That a file goes is told of its folder.
        if (!isOwnCopy(path) && !after.isEmpty()) {
            const bool isAllKnown = step.kind != StepKind::unfinished;
            changes << changesBetween(path, before, after,
                                      isAllKnown ? std::optional(tables_.value(path))
                                                 : std::nullopt);
        }
    }
}

void Recorder::addFiles(QList<Change>& changes, QList<FileChange>& found) {
    const auto& touched = running_.touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        const QString& path = entry.key();
        const QString& before = entry->before;
        const bool exists = Places::isElsewhere(path) || isAnythingAt(path);
        if (entry->kind == Touched::Kind::folder) {
            if (exists != content::isOfFolder(before)) {
                found << FileChange{path, before, exists ? content::folder : content::absent};
            }
        } else if (entry->kind == Touched::Kind::file) {
            const bool was = before != content::absent;
            const std::optional<Present> present = file().present(path);
            const bool isUntouched =
                was && (!kept_.has(before) || kept_.isLinkedTo(before, path) ||
                        kept_.isCopyOf(before, path) ||
                        (present && present->content == before && present->stamp == stampOf(path) &&
                         kept_.isCopiedTo(before, path)));
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

QString Recorder::metNote() const { return met_.isEmpty() ? QString() : outsideNote(met_); }

QString Recorder::noteOn(const QList<Change>& changes) const {
    QStringList sentences{metNote()};
    if (frame_->note) {
        sentences.prepend(frame_->note(*frame_, changes));
    }
    sentences.removeAll(QString());
    return sentences.join(u'\n');
}

std::optional<Step> Recorder::makeStep(StepKind kind, const QString& selectedAfter) {
    Step step;
    step.id = running_.step();
    step.kind = kind;
    step.time = running_.time();
    if (frame_->planBehind) {
        frame_->plan = frame_->planBehind();
    }
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
    step.plan = planOf(changes, frame_->plan);
    step.title = titleOf(*frame_, changes);
    // 撤消 must find a killed command, whatever it came to.
    step.isMinor = kind != StepKind::unfinished && isMinor(changes, files);
    if (!step.isMinor) {
        step.note = noteOn(changes);
    }
    return record(step, shown(changes), files, databases);
}

std::optional<Step> Recorder::finish(const QString& selectedAfter) {
    const bool isStartOver = isStart() && isThere();
    const bool isAsked = !caption::isAutomatic(frame_->caption);
    std::optional<Step> step;
    if (running_.hasBegun()) {
        step = finishAs(isAsked ? StepKind::command : StepKind::automatic, selectedAfter);
    }
    frame_.reset();
    if (isStartOver) { // else the next one counts as the first, too
        ignoringErrors([this] { file().setStarted(); });
    }
    return step;
}

// Behind the record nothing may fail: the step is there.
std::optional<Step> Recorder::finishAs(StepKind kind, const QString& selectedAfter) {
    std::optional<Step> step = makeStep(kind, selectedAfter);
    if (!step) {
        kept_.removeStep(running_.step());
    }
    running_.end();
    frame_.reset();
    return step;
}

bool Recorder::isAnyUnderWay() const { return QFile::exists(RunningCommand::fileIn(folder_)); }

QStringList Recorder::outOfReach() const {
    QStringList paths = running_.touched().keys();
    paths.removeIf([](const QString& path) { return !Places::isElsewhere(path); });
    return paths;
}

bool Recorder::findKilled(const Question& mayLeaveOut) {
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
    const QStringList missing = outOfReach();
    if (!missing.isEmpty() && (!mayLeaveOut || !mayLeaveOut(killedOutOfReach(missing)))) {
        throw RunTimeError(error::pathNotFound,
                           u"另一台计算机上，或已不在的程序文件夹中，有一个操作没有做完；请先"
                           u"在那里启动程序，或者在这里重新启动程序，并选择跳过那里的文件。");
    }
    const QDateTime last = QFileInfo(RunningCommand::fileIn(folder_)).lastModified();
    QStringList paths = running_.touched().keys();
    paths.removeIf(&Places::isElsewhere);
    KeptFiles::removeUnfinished(paths, running_.time(), last);
    kept_.dropUnfinished(running_.step());
    removeJournals();
    return true;
}

// Beside a database that nobody opens, such as a plan's own copy, one would stay.
void Recorder::removeJournals() const {
    const auto& touched = running_.touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        if (entry->kind == Touched::Kind::database && !Places::isElsewhere(entry.key())) {
            jet::removeJournal(entry.key());
        }
    }
}

std::optional<Step> Recorder::finishKilled() {
    frame_ = running_.frame();
    met_.clear();
    return finishAs(StepKind::unfinished, {});
}

bool Recorder::isStart() const { return frame_ && frame_->caption == caption::start; }

// What the first start behind a command that was killed does comes of that command, such as
// forgetting a plan whose folder had gone already. It belongs to its step, so that one undo leads
// to before both; a start would do it again behind an undo of its own step.
std::optional<Step> Recorder::killedBefore(const Position& position) {
    return isStart() && file().awaitsStart(position.head) && !file().hasChildren(position.head)
               ? file().step(position.head)
               : std::nullopt;
}

// What came from outside where a killed command has changed nothing goes before that, so that the
// first start stays next to it. Nobody can tell which was first.
std::optional<Step> Recorder::killedBehind(const Step& outside, const Position& position,
                                           const QList<FileChange>& files,
                                           const QList<DatabaseChange>& databases) {
    HistoryFile& history = file();
    if (outside.kind != StepKind::outside || !history.awaitsStart(position.head) ||
        history.hasChildren(position.head)) {
        return std::nullopt;
    }
    const auto areApart = [](const auto& ones, const auto& others) {
        return std::none_of(ones.begin(), ones.end(), [&](const auto& one) {
            return std::any_of(others.begin(), others.end(),
                               [&](const auto& other) { return one.path == other.path; });
        });
    };
    return areApart(files, history.filesOf(position.head)) &&
                   areApart(databases, history.databasesOf(position.head))
               ? history.step(position.head)
               : std::nullopt;
}

Step Recorder::record(const Step& made, const QList<Change>& changes,
                      const QList<FileChange>& files, const QList<DatabaseChange>& databases) {
    HistoryFile& history = file();
    HistoryFile::Transaction all(history);
    Position position = history.position();
    Step step = made;
    const std::optional<Step> behind = killedBehind(made, position, files, databases);
    step.parent = behind ? behind->parent : position.head;
    const std::optional<Step> killed =
        made.kind == StepKind::automatic ? killedBefore(position) : std::nullopt;
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
        joinSteps(history, {killed->id, step.id}, step);
        history.renumberKilled(killed->id, step.id);
    } else if (step.kind == StepKind::unfinished) {
        history.addKilled(step.id);
    }
    if (behind) {
        history.setParent(behind->id, step.id);
    } else {
        // What the user has not asked for, behind an undo, does not end the branch that 恢复
        // follows.
        const bool isAskedFor = !step.isMinor && !step.isAutomatic();
        position.tip = isAskedFor || position.tip == position.head ? step.id : position.tip;
        position.head = step.id;
    }
    position.last = std::max(position.last, step.id);
    history.setPosition(position);
    all.commit();
    return step;
}

} // namespace qvnd::history
