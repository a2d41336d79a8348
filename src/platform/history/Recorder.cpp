#include "platform/history/Recorder.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"
#include "platform/history/FolderEntries.h"
#include "platform/jet/file/Image.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <tuple>

namespace qvnd::history {

namespace {

const QString historyFile = QStringLiteral("history.db");
const QString damageMark = QStringLiteral("damaged");

// A file without a byte has no state that pages could tell.
bool isKeptByPages(const QString& path) { return isDatabase(path) && stampOf(path).size != 0; }

} // namespace

Recorder::Recorder(const QString& folder, const Places& places, KeptFiles& kept)
    : folder_(files::withSeparator(folder)), places_(places), kept_(kept),
      running_(RunningCommand::fileIn(folder_), places_) {}

bool Recorder::isThere() const { return QFileInfo::exists(folder_ + historyFile); }

HistoryFile& Recorder::file() {
    if (file_ == nullptr) {
        KeptFiles::makeFolder(folder_);
        file_ = std::make_unique<HistoryFile>(folder_ + historyFile, places_);
        lastKept_ = kept_.lastStep();
    }
    return *file_;
}

bool Recorder::isDamaged() const { return QFileInfo::exists(folder_ + damageMark); }

void Recorder::noteDamage(const RunTimeError& failure) {
    if (failure.number() != error::unrecognizedFormat) {
        return;
    }
    bool isSound = false;
    ignoringError(error::unrecognizedFormat, [&] { isSound = file().isSound(); });
    if (!isSound) {
        QFile mark(folder_ + damageMark);
        mark.open(QIODevice::WriteOnly); // else the next start may come upon the damage itself
    }
}

// The file of the steps last: a process that is killed meanwhile finds the damage again.
QString Recorder::layAside(const QDateTime& now) {
    file_.reset();
    QString aside = folder_ + now.toString(QStringLiteral("'damaged-'yyyyMMdd-HHmmss-zzz")) + u'/';
    KeptFiles::makeFolder(aside);
    for (const QString& name :
         {QStringLiteral("running"), QStringLiteral("kept"), QStringLiteral("history.db-journal"),
          QStringLiteral("history.db-wal"), QStringLiteral("history.db-shm"), historyFile,
          damageMark}) {
        if (QFileInfo::exists(folder_ + name) && !QDir().rename(folder_ + name, aside + name)) {
            files::throwFileError(error::pathAccess, folder_ + name);
        }
    }
    return aside;
}

void Recorder::begin(const CommandFrame& frame, const QString& program, const QString& reason) {
    frame_ = frame;
    program_ = program;
    reason_ = reason;
    refusal_.clear();
    hasAsked_ = false;
    tables_.clear();
    met_.clear();
}

void Recorder::leave() {
    running_ = RunningCommand(RunningCommand::fileIn(folder_), places_);
    frame_.reset();
}

void Recorder::drop() {
    if (running_.hasBegun()) {
        kept_.removeStep(running_.step());
        running_.end();
    }
    frame_.reset();
}

// A change that cannot be kept is refused, and so are all that follow it: a command is recorded
// whole or does nothing.
template <typename Action>
void Recorder::refusing(Action&& action) {
    if (refusal_.isEmpty()) {
        refusal_ = reason_;
        try {
            if (refusal_.isEmpty()) {
                action();
            }
        } catch (const RunTimeError& failure) {
            noteDamage(failure);
            refusal_ = QString::fromStdU16String(failure.description());
        }
        if (refusal_.isEmpty() || goesOnWithout()) {
            return;
        }
    }
    // Not 70: commands ask the user to close something and try again on it.
    const QString words = reason_.isEmpty() ? QStringLiteral("操作历史不能写入，这一步没有改动：")
                                            : QStringLiteral("没有改动：");
    throw RunTimeError(error::pathAccess, (words + refusal_).toStdU16String());
}

// Only a command that has changed nothing yet can go on: its first half would be recorded, and its
// second not.
bool Recorder::goesOnWithout() {
    if (!running_.touched().isEmpty() || !frame_->goOnWithout) {
        return false;
    }
    hasAsked_ = true;
    if (!frame_->goOnWithout(refusal_)) {
        return false;
    }
    if (running_.hasBegun()) {
        kept_.removeStep(running_.step());
        running_.end();
    }
    refusal_.clear();
    stop();
    return true;
}

// The file may be older than the contents beside it, out of a backup for instance: their numbers
// count as taken.
std::int64_t Recorder::nextNumber() {
    Position position = file().position();
    position.last = std::max({position.last, lastKept_, running_.step()}) + 1;
    file().setPosition(position);
    return position.last;
}

// The number is taken at once, so that no other step can get it.
std::int64_t Recorder::takeNumber() {
    HistoryFile::Transaction all(file());
    const std::int64_t number = nextNumber();
    all.commit();
    return number;
}

// Its step takes the number, or the entry of the command holds it: to write it down as well would
// wait for the device once more. The transaction shows whether the file can be written.
std::int64_t Recorder::numberOfCommand() {
    HistoryFile::Transaction all(file());
    lastKept_ = std::max(file().position().last, lastKept_) + 1;
    all.commit();
    return lastKept_;
}

void Recorder::ensureBegun() {
    if (running_.hasBegun()) {
        return;
    }
    const std::int64_t step = numberOfCommand();
    if (frame_->selected) {
        std::tie(frame_->selectedKey, frame_->selectedName) = frame_->selected();
    }
    running_.begin(step, *frame_, program_);
}

void Recorder::BeforeChange(const QString& path) {
    QString& database = spellings_[path];
    if (database.isEmpty()) {
        database = spelt(path);
    }
    if (isRecording() && places_.hasIn(database)) {
        refusing([&] { touchDatabase(database); });
    }
}

void Recorder::BeforeCreation(const QString& path) { BeforeChange(path); }

// Only what the program does by itself is taken back without a word when it was killed, so only
// there must its own work be told from that of others. What cannot be noted counts as theirs.
void Recorder::BeforeCommit(const std::function<QByteArray()>& image) {
    if (isRecording() && running_.hasBegun() && caption::isAutomatic(frame_->caption)) {
        ignoringErrors([&] { running_.willCommit(jet::digestOf(image())); });
    }
}

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
        const std::optional<Step> outside = seeOutside(path, Look::stamps);
        if (outside && !outside->isMinor) {
            met_ << outside->title;
        }
    } else { // a file that is no database of ours counts as the bytes that it has
        HistoryFile::Transaction all(file());
        file().setMirror(path, {}, jet::imageOf(path));
        all.commit();
    }
    running_.touch(path, Touched::Kind::database, content::onDisk);
}

void Recorder::beforeReplacing(const QString& file) { touchFile(spelt(file), Keeping::link); }

void Recorder::beforeEditing(const QString& file) { touchFile(spelt(file), Keeping::copy); }

void Recorder::beforeReplacing(const std::filesystem::path& file) {
    const QString path = spelt(QString::fromStdU16String(file.u16string()));
    if (places_.hasIn(path)) {
        touchFile(path, Keeping::link);
    }
}

void Recorder::beforeEditing(const std::filesystem::path& file) {
    const QString path = spelt(QString::fromStdU16String(file.u16string()));
    if (places_.hasIn(path)) {
        touchFile(path, Keeping::copy);
    }
}

void Recorder::touchFile(const QString& path, Keeping keeping) {
    if (isRecording() && !running_.hasTouched(path)) {
        refusing([&] { keepFile(path, keeping); });
    }
}

void Recorder::keepFile(const QString& path, Keeping keeping) {
    if (isKeptByPages(path)) {
        touchDatabase(path);
        return;
    }
    ensureBegun();
    const Stamp stamp = stampOf(path);
    if (running_.hasTouched(path) || stamp == Stamp{}) {
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
}

void Recorder::beforeMakingFolder(const QString& folder) {
    const QString path = spelt(folder);
    if (isRecording()) {
        refusing([&] {
            ensureBegun();
            running_.touch(path, Touched::Kind::folder, content::absent);
        });
    }
}

void Recorder::touchTree(const QString& folder, const QString& content) {
    const FolderEntries entries = entriesOf(folder);
    for (const QString& name : entries.folders) {
        touchTree(files::withSeparator(folder) + name, content + u'/' + name);
    }
    for (const QString& name : entries.files) {
        const QString path = files::withSeparator(folder) + name;
        if (isKeptByPages(path)) {
            touchDatabase(path);
        } else {
            running_.touch(path, Touched::Kind::file, content + u'/' + name);
        }
    }
    running_.touch(folder, Touched::Kind::folder,
                   entries.hasUnnamed ? content + u'/' : content::folder);
}

bool Recorder::takeFolder(const QString& folder) {
    const QString path = spelt(folder);
    if (!isRecording()) {
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

// What lay in the folder before the command goes from its old path; under the new one all is new.
void Recorder::touchMoved(const QString& path, const QString& target) {
    if (isFolderAt(path)) {
        running_.touch(path, Touched::Kind::folder, content::folder);
        running_.touch(target, Touched::Kind::folder, content::absent);
    } else if (isKeptByPages(path)) {
        touchDatabase(path);
        touchDatabase(target);
    } else {
        keepFile(path, Keeping::copy);
        keepFile(target, Keeping::copy);
    }
}

void Recorder::beforeMovingFolder(const QString& from, const QString& to) {
    if (!isRecording()) {
        return;
    }
    const QString source = spelt(from);
    const QString target = spelt(to);
    refusing([&] {
        ensureBegun();
        QDirIterator all(source, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = QDir::toNativeSeparators(all.next());
            touchMoved(path, target + path.mid(source.size()));
        }
        touchMoved(source, target);
    });
}

} // namespace qvnd::history
