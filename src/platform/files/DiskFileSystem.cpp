#include "platform/files/DiskFileSystem.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/DocumentNames.h"
#include "platform/files/FileErrors.h"
#include "platform/files/FileLocks.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "platform/files/WriteProtection.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <utility>

namespace qvnd::files {

namespace fs = std::filesystem;

namespace {

std::vector<Entry> listing(const QString& folder, QDir::Filters filters) {
    const QString path = resolved(withoutSeparator(folder));
    if (!QFileInfo(path).isDir()) {
        throwFileError(error::pathNotFound, folder);
    }
    std::vector<Entry> found;
    for (const QString& name : QDir(path).entryList(filters | QDir::Hidden, QDir::Name)) {
        found.push_back({name, withSeparator(path) + name});
    }
    return found;
}

// A name such as "..", which would climb out of the folder that the caller means.
bool endsInDots(const fs::path& path) {
    const fs::path name = path.has_filename() ? path.filename() : path.parent_path().filename();
    return name.empty() || name == "." || name == "..";
}

// Where a folder goes to be deleted. No plan can bear that name, so nothing is taken for one.
fs::path outOfPlace(const fs::path& folder) { return folder.parent_path() / ".~deleted"; }

} // namespace

DiskFileSystem::DiskFileSystem(std::unique_ptr<FilesInUse> inUse) : inUse_(std::move(inUse)) {}

std::shared_ptr<const void> DiskFileSystem::keepNames() {
    std::shared_ptr<FolderNames> names = names_.lock();
    if (!names) {
        names = std::make_shared<FolderNames>();
        names_ = names;
    }
    return names;
}

QString DiskFileSystem::spelt(const QString& path) const {
    const std::shared_ptr<FolderNames> names = names_.lock();
    return names ? names->resolved(path) : resolved(path);
}

void DiskFileSystem::forgetNames() {
    if (const std::shared_ptr<FolderNames> names = names_.lock()) {
        names->forgetAll();
    }
}

bool DiskFileSystem::IsInUse(const QString& path) {
    const QString file = resolved(path);
    return isTextDocument(file) &&
           (isLockedByOther(file) || (inUse_ && inUse_->isDocumentOpen(file)));
}

void DiskFileSystem::refuseInUse(const QString& path) {
    if (IsInUse(path)) {
        throwFileError(error::permissionDenied, path);
    }
}

// Looked at before anything is deleted, so that a folder goes whole or not at all.
void DiskFileSystem::refuseUndeletable(const QString& folder, bool force) {
    if (inUse_ && inUse_->isAnyOpenIn(folder)) {
        throwFileError(error::permissionDenied, folder);
    }
    std::error_code failed;
    for (fs::directory_iterator at(toPath(folder), failed), end; !failed && at != end;
         at.increment(failed)) {
        const fs::file_type type = at->symlink_status(failed).type();
        const QString path = fromPath(at->path());
        if (type == fs::file_type::directory) {
            refuseUndeletable(path, force);
        } else if (type == fs::file_type::regular &&
                   ((!force && !isWritable(at->path())) ||
                    (isTextDocument(path) && isLockedByOther(path)))) {
            throwFileError(error::permissionDenied, path);
        }
    }
    if (failed) {
        throwFileError(failed, folder);
    }
}

bool DiskFileSystem::FolderExists(const QString& path) { return folderExists(path); }

bool DiskFileSystem::FileExists(const QString& path) { return QFileInfo(spelt(path)).isFile(); }

void DiskFileSystem::CreateFolder(const QString& path) {
    forgetNames();
    const QString name = withoutSeparator(path);
    if (observer_ != nullptr && !QFileInfo::exists(resolved(name))) {
        observer_->beforeMakingFolder(resolved(name));
    }
    std::error_code failed;
    if (!fs::create_directory(toPath(name), failed)) {
        failed ? throwFileError(failed, path) : throwFileError(error::fileAlreadyExists, path);
    }
}

void DiskFileSystem::DeleteFolder(const QString& path, bool force) {
    forgetNames();
    const fs::path folder = toPath(withoutSeparator(path));
    std::error_code failed;
    if (endsInDots(folder) || !fs::is_directory(fs::symlink_status(folder, failed))) {
        throwFileError(error::pathNotFound, path);
    }
    refuseUndeletable(fromPath(folder), force);
    if (observer_ != nullptr && observer_->takeFolder(fromPath(folder))) {
        return;
    }
    const fs::path doomed = outOfPlace(folder);
    fs::remove_all(doomed, failed); // left by a killed process
    fs::rename(folder, doomed, failed);
    if (failed) {
        throwFileError(failed, path);
    }
    fs::remove_all(doomed, failed);
    if (failed) {
        std::error_code ignored;
        fs::rename(doomed, folder, ignored);
        throwFileError(failed, path);
    }
}

void DiskFileSystem::MoveFolder(const QString& source, const QString& target) {
    forgetNames();
    const fs::path from = toPath(withoutSeparator(source));
    std::error_code failed;
    if (!fs::is_directory(from, failed)) {
        throwFileError(error::pathNotFound, source);
    }
    const fs::path to = toPath(withoutSeparator(target));
    if (fs::exists(to, failed)) {
        throwFileError(error::fileAlreadyExists, target);
    }
    if (observer_ != nullptr) {
        observer_->beforeMovingFolder(fromPath(from), fromPath(to));
    }
    fs::rename(from, to, failed);
    if (failed) {
        throwFileError(failed, source);
    }
}

void DiskFileSystem::CopyFile(const QString& source, const QString& target, bool overwrite) {
    const QString from = spelt(source);
    const QString to = behindLinks(spelt(target)); // a link stays, and leads to the copy
    if (!QFileInfo(from).isFile()) {
        throwFileError(error::fileNotFound, source);
    }
    if (!overwrite && QFileInfo::exists(to)) {
        throwFileError(error::fileAlreadyExists, target);
    }
    if (QFileInfo::exists(to)) {
        refuseInUse(to);
    }
    if (observer_ != nullptr) {
        observer_->beforeReplacing(to);
    }
    copyAsSpelt(from, to);
    if (const std::shared_ptr<FolderNames> names = names_.lock()) {
        names->add(to);
    }
}

void DiskFileSystem::DeleteFile(const QString& path) {
    if (!fileExists(path)) {
        throwFileError(error::fileNotFound, path);
    }
    const fs::path file = toPath(path);
    if (!isWritable(file)) {
        throwFileError(error::permissionDenied, path);
    }
    refuseInUse(path);
    if (observer_ != nullptr) {
        observer_->beforeReplacing(fromPath(file));
    }
    std::error_code failed;
    fs::remove(file, failed);
    if (failed) {
        throwFileError(failed, path);
    }
    if (const std::shared_ptr<FolderNames> names = names_.lock()) {
        names->remove(fromPath(file));
    }
}

std::vector<Entry> DiskFileSystem::SubFolders(const QString& folder) {
    return listing(folder, QDir::Dirs | QDir::NoDotAndDotDot);
}

std::vector<Entry> DiskFileSystem::Files(const QString& folder) {
    return listing(folder, QDir::Files);
}

} // namespace qvnd::files
