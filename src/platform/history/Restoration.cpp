#include "platform/history/Restoration.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/history/PageDelta.h"
#include "platform/history/StepWords.h"
#include "platform/jet/file/Image.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::history {

namespace {

// Names below a folder are longer than its own: files go before their folders, and come behind
// them.
void inOrder(QList<PendingFile>& gone, QList<PendingFile>& folders, QList<PendingFile>& come) {
    const auto shorter = [](const PendingFile& one, const PendingFile& other) {
        return one.path.size() < other.path.size();
    };
    std::sort(gone.rbegin(), gone.rend(), shorter);
    std::sort(folders.begin(), folders.end(), shorter);
    std::sort(come.begin(), come.end(), shorter);
}

// A database that was just made has no table yet; a damaged one is somebody's.
bool holdsNothing(const QByteArray& image) {
    bool isEmpty = false;
    ignoringErrors([&] {
        isEmpty = jet::Connection(image).NumberOf("SELECT count(*) FROM sqlite_master WHERE "
                                                  "type='table' AND name NOT GLOB 'jet_*' "
                                                  "AND name NOT GLOB 'sqlite_*'") == 0;
    });
    return isEmpty;
}

} // namespace

Restoration::Way Restoration::wayTo(std::int64_t target) {
    return wayBetween(recorder_.file().position().head, target);
}

// From both ends at a time, so that a step is looked at only as far as the ends are apart.
Restoration::Way Restoration::wayBetween(std::int64_t from, std::int64_t to) {
    HistoryFile& file = recorder_.file();
    QList<std::int64_t> up{from};
    QList<std::int64_t> down{to};
    QSet<std::int64_t> seenUp{from};
    QSet<std::int64_t> seenDown{to};
    const auto climb = [&](QList<std::int64_t>& way, QSet<std::int64_t>& seen) {
        if (way.last() != beginning) {
            way << file.parentOf(way.last());
            seen << way.last();
        }
    };
    while (!seenDown.contains(up.last()) && !seenUp.contains(down.last())) {
        climb(up, seenUp);
        if (!seenDown.contains(up.last())) {
            climb(down, seenDown);
        }
    }
    const std::int64_t common = seenDown.contains(up.last()) ? up.last() : down.last();
    down = down.mid(0, down.indexOf(common));
    std::reverse(down.begin(), down.end());
    return {up.mid(0, up.indexOf(common)), down};
}

Restoration::Goal Restoration::goalOf(const Way& way) {
    HistoryFile& file = recorder_.file();
    Goal goal;
    const auto pass = [&](std::int64_t step, QString FileChange::*from, QString FileChange::*to) {
        for (const FileChange& change : file.filesOf(step)) {
            if (Places::isElsewhere(change.path)) {
                goal.outOfReach << change.path;
            } else {
                goal.stood.insert(change.path, goal.stood.value(change.path, change.*from));
                goal.files[change.path] = change.*to;
            }
        }
        for (const QString& database : file.databaseNamesOf(step)) {
            (Places::isElsewhere(database) ? goal.outOfReach : goal.databases) << database;
        }
    };
    for (const std::int64_t step : way.up) {
        pass(step, &FileChange::after, &FileChange::before);
    }
    for (const std::int64_t step : way.down) {
        pass(step, &FileChange::before, &FileChange::after);
    }
    goal.databases.removeDuplicates();
    goal.outOfReach.removeDuplicates();
    return goal;
}

QByteArray Restoration::imageAt(std::int64_t step, const QString& database) {
    const QMap<QString, QByteArray> images = imagesAt(wayTo(step));
    return images.contains(database) ? images[database] : recorder_.file().mirror(database);
}

QString Restoration::replacedBy(std::int64_t step, const QString& path) {
    const QMap<std::int64_t, FileChange> changes = recorder_.file().changesOfFile(path);
    const auto change = changes.find(step);
    if (change == changes.end() || !kept_.has(change->before)) {
        return {};
    }
    return kept_.isCopiedTo(change->before, path) ? path : kept_.pathOf(change->before);
}

QString Restoration::fileAt(std::int64_t step, const QString& path) {
    const QMap<std::int64_t, FileChange> changes = recorder_.file().changesOfFile(path);
    const Way way = wayTo(step);
    QString stood = content::onDisk;
    for (const std::int64_t passed : way.up) {
        stood = changes.contains(passed) ? changes[passed].before : stood;
    }
    for (const std::int64_t passed : way.down) {
        stood = changes.contains(passed) ? changes[passed].after : stood;
    }
    if (KeptFiles::isKept(stood)) {
        return kept_.has(stood) ? kept_.pathOf(stood) : QString();
    }
    return stood == content::onDisk && QFileInfo(path).isFile() ? path : QString();
}

QStringList Restoration::changedOutside(const Goal& goal) {
    QStringList changed;
    for (auto file = goal.files.begin(); file != goal.files.end(); ++file) {
        const Stamp stamp = stampOf(file.key());
        const std::optional<Present> present = recorder_.file().present(file.key());
        if (*file == content::onDisk || stamp == Stamp{} || !present) {
            continue;
        }
        if (present->stamp == stamp ? isOfNoStep(file.key(), present->content, goal)
                                    : !kept_.isCopiedTo(present->content, file.key())) {
            changed << file.key();
        }
    }
    return changed;
}

// A command that was undone has met what came from outside, and its undo has put it back: the steps
// of the present branch tell of another content, and those of the other branch cannot be gone to
// without it.
bool Restoration::isOfNoStep(const QString& path, const QString& content, const Goal& goal) const {
    const QString& stood = goal.stood[path];
    const bool isOther = stood == content::absent ||
                         (kept_.has(stood) && stood != content && !kept_.isCopiedTo(stood, path));
    return isOther && !kept_.isCopiedTo(goal.files[path], path);
}

void Restoration::addNote(const QString& sentence) {
    note_ += (note_.isEmpty() ? QString() : QString(u'\n')) + sentence;
}

void Restoration::leaveOut(const Goal& goal, const Question& mayLeaveOut) {
    if (goal.outOfReach.isEmpty()) {
        return;
    }
    if (!mayLeaveOut || !mayLeaveOut(leaveOutQuestion(goal.outOfReach))) {
        throw RunTimeError(error::pathNotFound, outOfReachRefusal().toStdU16String());
    }
    addNote(leftOutNote(goal.outOfReach));
}

// It would write over what is put there, or hide it from its user.
void Restoration::refuseOpen(const QList<PendingFile>& files) {
    for (const PendingFile& file : files) {
        if (stampOf(file.path) != Stamp{} && files_.IsInUse(file.path)) {
            throw RunTimeError(error::permissionDenied,
                               QStringLiteral("“%1”正在另一个程序中打开，请先关闭它再操作。")
                                   .arg(QDir::toNativeSeparators(file.path))
                                   .toStdU16String());
        }
    }
}

// Which plan is open elsewhere is kept without a word.
void Restoration::keepOutside(const QStringList& databases, const QStringList& files) {
    QStringList titles;
    for (const QString& database : databases) {
        const auto step = recorder_.seeOutside(database, Recorder::Look::whole);
        if (step && !step->isMinor) {
            titles << step->title;
        }
    }
    if (!files.isEmpty()) {
        titles << recorder_.recordOutside(files).title;
    }
    if (!titles.isEmpty()) {
        addNote(outsideNote(titles));
    }
}

void Restoration::goTo(std::int64_t target, const Question& mayLeaveOut) {
    note_.clear();
    const Goal asked = goalOf(wayTo(target));
    refuse(asked, mayLeaveOut);
    keepOutside(asked.databases, changedOutside(asked));
    const Pending pending = begin(target);
    try {
        end(pending);
    } catch (const RunTimeError& failure) {
        giveUp();
        if (isHalfDone()) {
            failWith(failure, u"撤消或恢复只做了一半，也没有能退回，下一个操作以前或下次启动时"
                              u"会先把它做完：\n%1"_s);
        }
        throw;
    }
}

// Before anything is changed.
void Restoration::refuse(const Goal& goal, const Question& mayLeaveOut) {
    try {
        leaveOut(goal, mayLeaveOut);
        refuseOpen(planned(goal, beginning).files);
    } catch (const RunTimeError& failure) {
        failWith(failure, u"%1没有改动任何东西。"_s);
    }
}

// What is to be done is noted as one.
Pending Restoration::begin(std::int64_t target) {
    HistoryFile& file = recorder_.file();
    HistoryFile::Transaction all(file);
    // The contents that go lie under a number of their own.
    const Plan plan = planned(goalOf(wayTo(target)), recorder_.nextNumber());
    Pending pending{target, QDateTime::currentDateTime(), plan.files};
    file.setPending(pending);
    all.commit();
    if (!plan.lost.isEmpty()) {
        addNote(lostNote(plan.lost));
    }
    return pending;
}

void Restoration::failWith(const RunTimeError& failure, const QString& sentence) {
    throw RunTimeError(
        failure.number(),
        sentence.arg(QString::fromStdU16String(failure.description())).toStdU16String());
}

Restoration::Plan Restoration::planned(const Goal& goal, std::int64_t number) {
    QList<PendingFile> gone;
    QList<PendingFile> folders;
    QList<PendingFile> come;
    QStringList lost;
    int kept = 0;
    for (auto wanted = goal.files.begin(); wanted != goal.files.end(); ++wanted) {
        const Stamp stamp = stampOf(wanted.key());
        const std::optional<Present> present = recorder_.file().present(wanted.key());
        const bool isKnown = present && present->stamp == stamp && kept_.has(present->content);
        const bool isLost = *wanted == content::onDisk
                                ? stamp == Stamp{}
                                : KeptFiles::isKept(*wanted) && !kept_.canPut(*wanted);
        if (isLost || (content::isOfFolder(*wanted) && !kept_.hasFolder(*wanted))) {
            lost << QFileInfo(wanted.key()).fileName();
        }
        if (isLost || *wanted == content::onDisk || (isKnown && present->content == *wanted)) {
            continue;
        }
        PendingFile file{wanted.key(), {}, *wanted};
        if (stamp != Stamp{} && !isKnown) {
            file.keep = QStringLiteral("%1/%2").arg(number).arg(++kept);
        }
        (*wanted == content::absent ? gone : content::isOfFolder(*wanted) ? folders : come) << file;
    }
    inOrder(gone, folders, come);
    return {gone + folders + come, lost};
}

// The content may have gone since it was noted.
bool Restoration::isLost(const PendingFile& file) const {
    return KeptFiles::isKept(file.put) && !kept_.canPut(file.put);
}

// What was done already is done again without harm. A file may have got out of reach since it was
// noted.
void Restoration::perform(const PendingFile& file) {
    if (Places::isElsewhere(file.path)) {
        return;
    }
    if (isLost(file)) {
        leaveAsItIs(file);
        return;
    }
    if (!file.keep.isEmpty() && !kept_.has(file.keep) && stampOf(file.path) != Stamp{}) {
        kept_.take(file.path, file.keep);
    }
    if (file.put == content::absent) {
        takeAway(file.path);
    } else if (content::isOfFolder(file.put)) {
        kept_.putFolder(file.put, file.path);
    } else {
        kept_.put(file.put, file.path);
    }
}

// What was taken away for a content that is gone comes back.
void Restoration::leaveAsItIs(const PendingFile& file) {
    if (!file.keep.isEmpty() && kept_.has(file.keep) && stampOf(file.path) == Stamp{}) {
        kept_.giveBack(file.keep, file.path);
    }
}

// A folder must be empty for that.
void Restoration::takeAway(const QString& path) {
    const std::optional<Present> present = recorder_.file().present(path);
    if (present && content::isOfFolder(present->content)) {
        kept_.emptyFolder(present->content, path);
    }
    KeptFiles::takeAway(path);
}

// Databases that go leave their folders before these go, and come behind the folders.
void Restoration::carryOut(const QMap<QString, QByteArray>& images,
                           const std::function<void()>& files) {
    const auto put = [&](bool isGone) {
        for (auto image = images.begin(); image != images.end(); ++image) {
            if (image->isEmpty() == isGone && !Places::isElsewhere(image.key())) {
                jet::putImage(image.key(), *image);
            }
        }
    };
    put(true);
    files();
    put(false);
}

// Of one that is out of reach the history takes down what it should hold, under a stamp that no
// file has: when it comes back as it was, that is another state than this.
void Restoration::noteDatabase(const QString& path, const QByteArray& image) {
    constexpr Stamp ofNoFile{-2, 0};
    const bool isElsewhere = Places::isElsewhere(path);
    HistoryFile& file = recorder_.file();
    file.setMirror(path, file.mirror(path), isElsewhere ? image : jet::imageOf(path));
    file.setPresent(path, {isElsewhere ? ofNoFile : stampOf(path), content::onDisk});
}

QMap<QString, QByteArray> Restoration::imagesAt(const Way& way) {
    HistoryFile& file = recorder_.file();
    QMap<QString, QByteArray> images;
    const auto pass = [&](std::int64_t step, Direction direction) {
        for (const DatabaseChange& change : file.databasesOf(step)) {
            if (!images.contains(change.path)) {
                images[change.path] = file.mirror(change.path);
            }
            images[change.path] = applied(change.delta, images[change.path], direction);
        }
    };
    for (const std::int64_t step : way.up) {
        pass(step, Direction::back);
    }
    for (const std::int64_t step : way.down) {
        pass(step, Direction::forward);
    }
    return images;
}

void Restoration::end(const Pending& pending) {
    HistoryFile& file = recorder_.file();
    const auto images = imagesAt(wayTo(pending.target));
    carryOut(images, [&] {
        for (const PendingFile& one : pending.files) {
            perform(one);
        }
    });
    HistoryFile::Transaction all(file);
    QStringList lost;
    for (const PendingFile& done : pending.files) {
        if (!done.keep.isEmpty() && kept_.has(done.keep)) {
            file.contentOnDiskIsKept(done.path, done.keep);
        }
        if (isLost(done)) {
            lost << QFileInfo(done.path).fileName();
        } else if (!Places::isElsewhere(done.path)) {
            file.setPresent(done.path, {stampOf(done.path), done.put});
        }
    }
    for (auto image = images.begin(); image != images.end(); ++image) {
        noteDatabase(image.key(), *image);
    }
    Position position = file.position();
    position.head = pending.target;
    position.tip = isAbove(pending.target, position.tip) ? position.tip : pending.target;
    file.setPosition(position);
    file.clearPending();
    all.commit();
    if (!lost.isEmpty()) {
        addNote(lostNote(lost));
    }
}

bool Restoration::isAbove(std::int64_t one, std::int64_t other) {
    return wayBetween(other, one).down.isEmpty();
}

void Restoration::takeBack() { takeBackAllBut({}); }

// What a database may hold that the command itself has left: nothing, what was there before, or
// what it has noted before it committed it. A file was not there yet, or is as it was.
bool Restoration::hasComeBehind(const QString& path, const Touched& touched) {
    if (touched.kind == Touched::Kind::database) {
        const QByteArray live = jet::imageOf(path);
        return !holdsNothing(live) && !jet::holdTheSame(live, recorder_.file().mirror(path)) &&
               !recorder_.running().hasCommitted(jet::digestOf(live));
    }
    return touched.kind == Touched::Kind::file && stampOf(path) != Stamp{} &&
           (touched.before == content::absent || kept_.has(touched.before)) &&
           !kept_.isCopiedTo(touched.before, path);
}

void Restoration::takeBackKilled() {
    note_.clear();
    QStringList databases;
    QStringList files;
    const auto& touched = recorder_.running().touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        if (hasComeBehind(entry.key(), *entry)) {
            (entry->kind == Touched::Kind::database ? databases : files) << entry.key();
        }
    }
    keepOutside(databases, files);
    const QStringList all = databases + files;
    takeBackAllBut({all.begin(), all.end()});
}

void Restoration::takeBackAllBut(const QSet<QString>& staying) {
    RunningCommand& command = recorder_.running();
    QList<PendingFile> gone;
    QList<PendingFile> folders;
    QList<PendingFile> come;
    QMap<QString, QByteArray> images;
    const auto& touched = command.touched();
    for (auto entry = touched.begin(); entry != touched.end(); ++entry) {
        const QString& before = entry->before;
        if (staying.contains(entry.key())) {
            continue;
        }
        if (entry->kind == Touched::Kind::database) {
            images[entry.key()] = recorder_.file().mirror(entry.key());
        } else if (!KeptFiles::isKept(before) || kept_.has(before)) {
            (before == content::absent     ? gone
             : content::isOfFolder(before) ? folders
                                           : come)
                << PendingFile{entry.key(), {}, before};
        }
    }
    inOrder(gone, folders, come);
    carryOut(images, [&] {
        for (const PendingFile& file : gone + folders + come) {
            takeBack(file);
        }
    });
    for (const QString& database : images.keys()) {
        // On a full disk the next command takes it for another program's change.
        ignoringErrors([&] {
            HistoryFile::Transaction all(recorder_.file());
            recorder_.file().setMirror(database, images[database], jet::imageOf(database));
            all.commit();
        });
    }
    recorder_.drop();
}

// What the command has kept is nobody else's: it goes back without taking room for a copy.
void Restoration::takeBack(const PendingFile& one) {
    if (KeptFiles::isKept(one.put) &&
        one.put.startsWith(QString::number(recorder_.running().step()) + u'/')) {
        kept_.giveBack(one.put, one.path);
        return;
    }
    const std::optional<Present> present = recorder_.file().present(one.path);
    const bool isFromKept = KeptFiles::isKept(one.put);
    if (isFromKept && present && present->stamp == stampOf(one.path)) {
        return;
    }
    perform(one);
    if (isFromKept) {
        ignoringErrors([&] {
            recorder_.file().setPresent(one.path, {stampOf(one.path), one.put});
        });
    }
}

} // namespace qvnd::history
