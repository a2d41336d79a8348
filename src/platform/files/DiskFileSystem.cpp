#include "platform/files/DiskFileSystem.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>

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

bool isWritable(const fs::path& path) {
    const auto permissions = fs::symlink_status(path).permissions();
    return (permissions & fs::perms::owner_write) != fs::perms::none;
}

// A name such as "..", which would climb out of the folder that the caller means.
bool endsInDots(const fs::path& path) {
    const fs::path name = path.has_filename() ? path.filename() : path.parent_path().filename();
    return name.empty() || name == "." || name == "..";
}

void refuseReadOnlyFiles(const fs::path& folder) {
    std::error_code failed;
    for (fs::recursive_directory_iterator at(folder, failed), end; !failed && at != end;
         at.increment(failed)) {
        if (at->is_regular_file(failed) && !isWritable(at->path())) {
            throwFileError(error::permissionDenied, fromPath(at->path()));
        }
    }
    if (failed) {
        throwFileError(failed, fromPath(folder));
    }
}

} // namespace

bool DiskFileSystem::FolderExists(const QString& path) { return folderExists(path); }
bool DiskFileSystem::FileExists(const QString& path) { return fileExists(path); }

void DiskFileSystem::CreateFolder(const QString& path) {
    const QString name = withoutSeparator(path);
    std::error_code failed;
    if (!fs::create_directory(toPath(name), failed)) {
        failed ? throwFileError(failed, path) : throwFileError(error::fileAlreadyExists, path);
    }
}

void DiskFileSystem::DeleteFolder(const QString& path, bool force) {
    const fs::path folder = toPath(withoutSeparator(path));
    std::error_code failed;
    if (endsInDots(folder) || !fs::is_directory(fs::symlink_status(folder, failed))) {
        throwFileError(error::pathNotFound, path);
    }
    if (!force) {
        refuseReadOnlyFiles(folder);
    }
    fs::remove_all(folder, failed);
    if (failed) {
        throwFileError(failed, path);
    }
}

void DiskFileSystem::CopyFile(const QString& source, const QString& target, bool overwrite) {
    const QString from = resolved(source);
    const QString to = resolved(target);
    if (!QFileInfo(from).isFile()) {
        throwFileError(error::fileNotFound, source);
    }
    if (!overwrite && QFileInfo::exists(to)) {
        throwFileError(error::fileAlreadyExists, target);
    }
    copyWhole(from, to);
}

void DiskFileSystem::DeleteFile(const QString& path) {
    if (!fileExists(path)) {
        throwFileError(error::fileNotFound, path);
    }
    const fs::path file = toPath(path);
    if (!isWritable(file)) {
        throwFileError(error::permissionDenied, path);
    }
    std::error_code failed;
    fs::remove(file, failed);
    if (failed) {
        throwFileError(failed, path);
    }
}

std::vector<Entry> DiskFileSystem::SubFolders(const QString& folder) {
    return listing(folder, QDir::Dirs | QDir::NoDotAndDotDot);
}

std::vector<Entry> DiskFileSystem::Files(const QString& folder) {
    return listing(folder, QDir::Files);
}

} // namespace qvnd::files
