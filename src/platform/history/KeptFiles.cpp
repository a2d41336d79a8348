#include "platform/history/KeptFiles.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "platform/history/FolderEntries.h"
#include "platform/history/Step.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace qvnd::history {

namespace fs = std::filesystem;

namespace {

// Without a look for another spelling: the paths of the history are spelt as on disk.
fs::path toPath(const QString& path) { return path.toStdU16String(); }

void check(std::error_code failed, const QString& path) {
    if (failed) {
        files::throwFileError(failed, path);
    }
}

bool isLink(const fs::path& path) {
    std::error_code failed;
    return fs::is_symlink(path, failed);
}

std::int64_t bytesIn(const QString& folder) {
    std::int64_t bytes = 0;
    std::error_code failed;
    for (fs::recursive_directory_iterator at(toPath(folder), failed), end; !failed && at != end;
         at.increment(failed)) {
        if (at->is_regular_file(failed) && !at->is_symlink(failed)) {
            bytes += static_cast<std::int64_t>(at->file_size(failed));
        }
    }
    return bytes;
}

// `name` is that of the folder as a content, which its entries without valid names belong to.
void removeUnneeded(const fs::path& folder, const QString& name, const QSet<QString>& needed) {
    std::vector<fs::path> entries;
    std::error_code ignored; // what stays only takes room
    for (fs::directory_iterator at(folder, ignored), end; !ignored && at != end;
         at.increment(ignored)) {
        entries.push_back(at->path());
    }
    for (const fs::path& entry : entries) {
        const QString own = name + files::fromPath(entry.filename());
        if (!isNamed(entry)) {
            if (!needed.contains(name)) {
                fs::remove_all(entry, ignored);
            }
        } else if (fs::is_directory(fs::symlink_status(entry, ignored))) {
            removeUnneeded(entry, own + u'/', needed);
            fs::remove(entry, ignored); // if it is empty now
        } else if (!needed.contains(own)) {
            fs::remove(entry, ignored);
        }
    }
}

constexpr QChar unfinishedMark = u'~';

// The copy gets its name when it is complete: a content that a killed process has left half would
// be put over a good file by an undo.
void copyThenName(const fs::path& from, const fs::path& to, fs::copy_options options,
                  std::error_code& failed) {
    fs::path unfinished = to;
    unfinished += unfinishedMark.unicode();
    std::error_code ignored;
    fs::remove_all(unfinished, ignored);
    fs::copy(from, unfinished, options, failed);
    if (!failed) {
        fs::rename(unfinished, to, failed);
    }
    if (failed) {
        fs::remove_all(unfinished, ignored);
    }
}

// Six letters that nobody writes so: neither in one case nor with a capital in front, as "backup".
bool areRandom(const QString& letters) {
    return letters != letters.toUpper() && letters.mid(1) != letters.mid(1).toLower();
}

// The name of the file that one of this name is to take the place of; empty where it is none such.
// QSaveFile gives such names, and the store to a database that is not there. Other names that look
// like a file's are those of copies that the user makes.
QString unfinishedFor(const QString& name, const QString& folder) {
    static const QRegularExpression replacing(QStringLiteral("^(.+)\\.([A-Za-z]{6})$"));
    static const QRegularExpression making(QStringLiteral("^(.+)\\.(new|new-journal)$"));
    if (const auto match = replacing.match(name); match.hasMatch()) {
        return areRandom(match.captured(2)) ? match.captured(1) : QString();
    }
    const QString made = making.match(name).captured(1);
    return made.isEmpty() || QFileInfo::exists(QDir(folder).filePath(made)) ? QString() : made;
}

// The file is still under the name that it has until it takes its place in the folder, beside one
// of the names. Commands take turns, so nobody is writing one now.
void removeIfUnfinished(const QString& path, const QSet<QString>& names, const QDateTime& since,
                        const QDateTime& last) {
    static const QRegularExpression document(QStringLiteral("^~doc[0-9]+-[0-9]+\\.tmp$"));
    constexpr int tick = 20;         // ms, by which the times of files may lag behind the clock
    constexpr int longestWrite = 60; // seconds
    const QFileInfo file(path);
    const bool isDocument = document.match(file.fileName()).hasMatch();
    const QString target = isDocument ? QString() : unfinishedFor(file.fileName(), file.path());
    if (!isDocument && !names.contains(target)) {
        return;
    }
    const QDateTime written = file.metadataChangeTime();
    const bool isOfTheUser =
        !isDocument && (written > last.addSecs(longestWrite) ||
                        files::haveSameBytes(path, QDir(file.path()).filePath(target)));
    if (written >= since.addMSecs(-tick) && !isOfTheUser) {
        QFile::remove(path);
    }
}

// What comes has been kept, and what it replaces as well, so a link may go before the copy comes.
void putCopy(const QString& from, const QString& to) {
    const fs::path content = toPath(from);
    std::error_code failed;
    if (isLink(content) || isLink(toPath(to))) {
        fs::remove(toPath(to), failed);
        check(failed, to);
    }
    if (isLink(content)) {
        fs::copy_symlink(content, toPath(to), failed);
        check(failed, to);
    } else {
        files::copyAsSpelt(from, to);
    }
}

// A file system without them keeps the bytes all the same. Write protection would stop the history
// itself when it puts the file once more.
void putAttributes(const fs::path& from, const fs::path& to) {
    if (isLink(from)) {
        return;
    }
    std::error_code failed;
    const fs::perms permissions = fs::status(from, failed).permissions();
    if (!failed) {
        fs::permissions(to, permissions | fs::perms::owner_write, failed);
    }
    const fs::file_time_type time = fs::last_write_time(from, failed);
    if (!failed) {
        fs::last_write_time(to, time, failed);
    }
}

std::int64_t timeBehind(const fs::path& file) {
    std::error_code failed;
    const fs::file_time_type time = fs::last_write_time(file, failed);
    return failed ? 0 : time.time_since_epoch().count();
}

} // namespace

Stamp stampOf(const QString& path) {
    std::error_code failed;
    const fs::path file = toPath(path);
    if (isLink(file)) {
        const auto text = fs::read_symlink(file, failed).native();
        return {static_cast<std::int64_t>(text.size()), timeBehind(file)};
    }
    if (!fs::is_regular_file(file, failed)) {
        return {};
    }
    return {static_cast<std::int64_t>(fs::file_size(file, failed)), timeBehind(file)};
}

bool isAnythingAt(const QString& path) {
    std::error_code failed;
    return fs::exists(fs::symlink_status(toPath(path), failed));
}

bool isFolderAt(const QString& path) {
    std::error_code failed;
    return fs::is_directory(fs::symlink_status(toPath(path), failed));
}

KeptFiles::KeptFiles(const QString& folder) : folder_(files::withSeparator(folder)) {}

QString KeptFiles::pathOf(const QString& name) const { return folder_ + name; }

bool KeptFiles::has(const QString& name) const {
    return isKept(name) && isAnythingAt(pathOf(name));
}

bool KeptFiles::isKept(const QString& name) {
    return name != content::absent && !content::isOfFolder(name) && name != content::onDisk;
}

bool KeptFiles::canPut(const QString& name) const {
    return has(name) && (isLink(toPath(pathOf(name))) || QFileInfo(pathOf(name)).isReadable());
}

std::int64_t KeptFiles::lastStep() const {
    std::int64_t last = beginning;
    for (const QString& name : QDir(folder_).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        last = std::max<std::int64_t>(last, name.toLongLong());
    }
    return last;
}

QString KeptFiles::roomFor(const QString& name) const {
    QString path = pathOf(name);
    std::error_code failed;
    fs::create_directories(toPath(path).parent_path(), failed);
    check(failed, folder_);
    return path;
}

void KeptFiles::removeStep(std::int64_t step) const {
    std::error_code ignored; // what stays only takes room
    fs::remove_all(toPath(pathOf(QString::number(step))), ignored);
}

void KeptFiles::dropUnfinished(std::int64_t step) const {
    const QString folder = pathOf(QString::number(step)) + u'/';
    for (const QString& name : QDir(folder).entryList(
             {u'*' + QString(unfinishedMark)}, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        std::error_code ignored; // what stays only takes room
        fs::remove_all(toPath(folder + name), ignored);
    }
}

void KeptFiles::removeAllBut(const QSet<QString>& needed) const {
    QSet<QString> names; // with one kind of separator
    for (const QString& name : needed) {
        names << QDir::fromNativeSeparators(name);
    }
    removeUnneeded(toPath(folder_), {}, names);
}

// Under a name that the history does not know of, such as one in a backup that is made of links,
// other programs may write to the bytes.
void KeptFiles::link(const QString& file, const QString& name) const {
    if (isLink(toPath(file))) {
        copy(file, name);
        return;
    }
    std::error_code failed;
    if (fs::hard_link_count(toPath(file), failed) == 1 && !failed) {
        fs::create_hard_link(toPath(file), toPath(roomFor(name)), failed);
        if (!failed) {
            return;
        }
    }
    copy(file, name);
}

void KeptFiles::copy(const QString& file, const QString& name) const {
    std::error_code failed;
    copyThenName(toPath(file), toPath(roomFor(name)), fs::copy_options::copy_symlinks, failed);
    check(failed, file);
    if (isLink(toPath(file))) { // its date would be set behind it
        return;
    }
    const fs::file_time_type time = fs::last_write_time(toPath(file), failed);
    if (!failed) {
        fs::last_write_time(toPath(pathOf(name)), time, failed); // else it counts as another state
    }
}

bool KeptFiles::take(const QString& path, const QString& name) const {
    std::error_code failed;
    fs::rename(toPath(path), toPath(roomFor(name)), failed);
    if (!failed) {
        return true;
    }
    failed.clear();
    copyThenName(toPath(path), toPath(pathOf(name)),
                 fs::copy_options::recursive | fs::copy_options::copy_symlinks, failed);
    check(failed, path);
    if (!isFolderAt(path)) {
        fs::remove(toPath(path), failed);
        check(failed, path);
        return true;
    }
    return false;
}

void KeptFiles::giveBack(const QString& name, const QString& path) const {
    std::error_code failed;
    fs::create_directories(toPath(path).parent_path(), failed);
    check(failed, path);
    fs::rename(toPath(pathOf(name)), toPath(path), failed);
    if (failed) {
        put(name, path);
    }
}

void KeptFiles::put(const QString& name, const QString& path) const {
    std::error_code failed;
    fs::create_directories(toPath(path).parent_path(), failed);
    check(failed, path);
    putCopy(pathOf(name), path);
    putAttributes(toPath(pathOf(name)), toPath(path));
}

bool KeptFiles::hasFolder(const QString& name) const {
    return name == content::folder || isFolderAt(pathOf(name));
}

void KeptFiles::putFolder(const QString& name, const QString& path) const {
    makeFolder(path);
    if (name != content::folder && hasFolder(name)) {
        copyUnnamed(toPath(pathOf(name)), toPath(path));
    }
}

void KeptFiles::emptyFolder(const QString& name, const QString& path) const {
    if (name != content::folder && hasFolder(name) && isFolderAt(path)) {
        removeUnnamed(toPath(path), toPath(pathOf(name)));
    }
}

bool KeptFiles::isLinkedTo(const QString& name, const QString& path) const {
    std::error_code failed;
    if (isLink(toPath(pathOf(name)))) {
        return isCopiedTo(name, path);
    }
    return fs::equivalent(toPath(pathOf(name)), toPath(path), failed) && !failed;
}

bool KeptFiles::isCopyOf(const QString& name, const QString& path) const {
    return stampOf(pathOf(name)) == stampOf(path) && isCopiedTo(name, path);
}

bool KeptFiles::isCopiedTo(const QString& name, const QString& path) const {
    if (!isKept(name)) {
        return false;
    }
    const fs::path kept = toPath(pathOf(name));
    if (isLink(kept) || isLink(toPath(path))) {
        std::error_code failed;
        const fs::path target = fs::read_symlink(kept, failed);
        return !failed && fs::read_symlink(toPath(path), failed) == target;
    }
    return files::haveSameBytes(pathOf(name), path);
}

void KeptFiles::removeUnfinished(const QStringList& paths, const QDateTime& since,
                                 const QDateTime& last) {
    QMap<QString, QSet<QString>> names; // by folder
    for (const QString& path : paths) {
        const QFileInfo file(path);
        names[file.path()] << file.fileName();
    }
    for (auto folder = names.begin(); since.isValid() && folder != names.end(); ++folder) {
        for (const QString& found :
             QDir(folder.key()).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted)) {
            removeIfUnfinished(QDir(folder.key()).filePath(found), *folder, since, last);
        }
    }
}

void KeptFiles::takeAway(const QString& path) {
    if (isFolderAt(path)) {
        QDir().rmdir(path);
    } else if (!QFile::remove(path) && isAnythingAt(path)) {
        files::throwFileError(error::permissionDenied, path);
    }
}

void KeptFiles::makeFolder(const QString& path) {
    if (!QDir().mkpath(path)) {
        files::throwFileError(error::pathAccess, path);
    }
}

std::int64_t KeptFiles::size() const { return bytesIn(folder_); }

std::int64_t KeptFiles::sizeOf(const QString& name) const {
    return std::max<std::int64_t>(0, stampOf(pathOf(name)).size);
}

} // namespace qvnd::history
