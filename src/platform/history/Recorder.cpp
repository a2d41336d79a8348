#include "platform/history/Recorder.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/history/Differences.h"
#include "platform/history/PageDelta.h"
#include "platform/history/StepWords.h"
#include "platform/jet/file/Image.h"

#include <QDirIterator>
#include <QFileInfo>

#include <tuple>

namespace qvnd::history {

namespace {

bool isDatabase(const QString& path) {
    return path.endsWith(QStringLiteral(".mdb"), Qt::CaseInsensitive);
}

// A plan's own copy of its tables lies in a folder of its own name and follows the central ones.
bool isCopy(const QString& path) {
    const QFileInfo file(path);
    return file.completeBaseName().compare(file.dir().dirName(), Qt::CaseInsensitive) == 0;
}

} // namespace

Recorder::Recorder(const QString& folder, const Places& places, KeptFiles& kept)
    : folder_(files::withSeparator(folder)), places_(places), kept_(kept),
      running_(folder_ + QStringLiteral("running")) {}

HistoryFile& Recorder::file() {
    if (file_ == nullptr) {
        kept_.prepare(beginning);
        file_ = std::make_unique<HistoryFile>(folder_ + QStringLiteral("history.db"), places_);
    }
    return *file_;
}

void Recorder::begin(const CommandFrame& frame, const QString& program, const QString& refusal) {
    frame_ = frame;
    program_ = program;
    refusal_ = refusal;
    tables_.clear();
}

void Recorder::drop() {
    if (running_.hasBegun()) {
        kept_.removeStep(running_.step());
        running_.end();
    }
    frame_.reset();
}

bool Recorder::records(const QString& path) const {
    return frame_ && !isStopped_ && places_.hasIn(path);
}

// A change that cannot be kept is refused, and so are all that follow it: a command is recorded
// whole or does nothing.
template <typename Action>
void Recorder::refusing(Action&& action) {
    if (refusal_.isEmpty()) {
        try {
            action();
        } catch (const RunTimeError& failure) {
            refusal_ = QString::fromStdU16String(failure.description());
        }
    }
    if (!refusal_.isEmpty()) {
        // Not 70: commands ask the user to close something and try again on it.
        throw RunTimeError(
            error::pathAccess,
            (QStringLiteral("操作历史不能写入，没有改动：") + refusal_).toStdU16String());
    }
}

// The number is taken at once, so that no other step can get it.
void Recorder::ensureBegun() {
    if (running_.hasBegun()) {
        return;
    }
    HistoryFile::Transaction all(file());
    Position position = file().position();
    ++position.last;
    file().setPosition(position);
    all.commit();
    kept_.prepare(position.last);
    if (frame_->selected) {
        std::tie(frame_->selectedKey, frame_->selectedName) = frame_->selected();
    }
    running_.begin(position.last, *frame_, program_);
}

void Recorder::BeforeChange(const QString& path) {
    QString& database = spellings_[path];
    if (database.isEmpty()) {
        database = spelt(path);
    }
    if (records(database)) {
        refusing([&] { touchDatabase(database); });
    }
}

void Recorder::BeforeCreation(const QString& path) { BeforeChange(path); }

void Recorder::AfterChange(const QString& path, const QString& table) {
    if (frame_) {
        tables_[spellings_.value(path)] << (table.startsWith(u'.') ? table.mid(1) : table);
    }
}

void Recorder::touchDatabase(const QString& path) {
    if (running_.hasTouched(path)) {
        return;
    }
    ensureBegun();
    if (file().hasMirror(path)) {
        seeOutside(path);
    } else {
        HistoryFile::Transaction all(file());
        file().setMirror(path, {}, jet::imageOf(path));
        all.commit();
    }
    running_.touch(path, Touched::Kind::database, content::onDisk);
}

void Recorder::seeOutside(const QString& path) {
    const QByteArray known = file().mirror(path);
    if (jet::changeCounterIn(known) == jet::changeCounterOf(path)) {
        return;
    }
    const QByteArray live = jet::imageOf(path);
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

void Recorder::beforeReplacing(const QString& file) { touchFile(spelt(file), Keeping::link); }

void Recorder::beforeEditing(const QString& file) { touchFile(spelt(file), Keeping::copy); }

void Recorder::beforeReplacing(const std::filesystem::path& file) {
    beforeReplacing(QString::fromStdU16String(file.u16string()));
}

void Recorder::beforeEditing(const std::filesystem::path& file) {
    beforeEditing(QString::fromStdU16String(file.u16string()));
}

void Recorder::touchFile(const QString& path, Keeping keeping) {
    if (!records(path) || running_.hasTouched(path)) {
        return;
    }
    refusing([&] {
        if (isDatabase(path) && file().hasMirror(path)) {
            touchDatabase(path);
            return;
        }
        ensureBegun();
        const Stamp stamp = stampOf(path);
        if (stamp == Stamp{}) {
            running_.touch(path, Touched::Kind::file, content::absent);
            return;
        }
        const std::optional<Present> present = file().present(path);
        if (present && present->stamp == stamp && kept_.has(present->content)) {
            running_.touch(path, Touched::Kind::file, present->content);
            return;
        }
        const QString name = running_.nextContent();
        running_.touch(path, Touched::Kind::file, name);
        keeping == Keeping::link ? kept_.link(path, name) : kept_.copy(path, name);
    });
}

void Recorder::beforeMakingFolder(const QString& folder) {
    const QString path = spelt(folder);
    if (records(path)) {
        refusing([&] {
            ensureBegun();
            running_.touch(path, Touched::Kind::folder, content::absent);
        });
    }
}

void Recorder::touchTree(const QString& folder, const QString& content) {
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = QDir::toNativeSeparators(all.next());
        if (all.fileInfo().isDir()) {
            running_.touch(path, Touched::Kind::folder, content::folder);
        } else if (isDatabase(path) && file().hasMirror(path)) {
            touchDatabase(path);
        } else {
            running_.touch(path, Touched::Kind::file, content + path.mid(folder.size()));
        }
    }
    running_.touch(folder, Touched::Kind::folder, content::folder);
}

bool Recorder::takeFolder(const QString& folder) {
    const QString path = spelt(folder);
    if (!records(path)) {
        return false;
    }
    bool isTaken = false;
    refusing([&] {
        ensureBegun();
        const QString name = running_.nextContent();
        touchTree(path, name);
        isTaken = kept_.take(path, name);
    });
    return isTaken;
}

void Recorder::beforeMovingFolder(const QString& from, const QString& to) {
    const QString source = spelt(from);
    const QString target = spelt(to);
    if (!records(source)) {
        return;
    }
    refusing([&] {
        ensureBegun();
        // What came to the folder before this command stays known under its old path.
        QDirIterator all(source, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = QDir::toNativeSeparators(all.next());
            if (!running_.hasTouched(path)) {
                touchFile(path, Keeping::copy);
                running_.touch(target + path.mid(source.size()), Touched::Kind::file,
                               content::absent);
            }
        }
        if (!running_.hasTouched(source)) {
            running_.touch(source, Touched::Kind::folder, content::folder);
            running_.touch(target, Touched::Kind::folder, content::absent);
        }
        running_.moveFolder(source, target);
    });
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
    const std::optional<Step> step = makeStep(StepKind::command, selectedAfter);
    if (!step) {
        kept_.removeStep(running_.step());
    }
    running_.end();
    frame_.reset();
    return step ? file().step(step->id) : std::nullopt;
}

std::optional<Step> Recorder::finishKilled() {
    std::optional<RunningCommand> left = RunningCommand::left(folder_ + QStringLiteral("running"));
    if (!left) {
        return std::nullopt;
    }
    running_ = std::move(*left);
    std::optional<Step> step;
    try {
        step = makeKilledStep();
    } catch (const RunTimeError&) { // the next call tries again
        running_ = RunningCommand(folder_ + QStringLiteral("running"));
        frame_.reset();
        throw;
    }
    running_.end();
    return step ? file().step(step->id) : std::nullopt;
}

std::optional<Step> Recorder::makeKilledStep() {
    if (!running_.hasBegun() || file().step(running_.step())) {
        return std::nullopt;
    }
    frame_ = running_.frame();
    for (const QString& path : running_.touched().keys()) {
        KeptFiles::removeUnfinished(path);
    }
    std::optional<Step> step = makeStep(StepKind::unfinished, {});
    frame_.reset();
    return step;
}

void Recorder::record(const Step& made, const QList<Change>& changes,
                      const QList<FileChange>& files, const QList<DatabaseChange>& databases) {
    HistoryFile& history = file();
    HistoryFile::Transaction all(history);
    Position position = history.position();
    Step step = made;
    step.parent = position.head;
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
