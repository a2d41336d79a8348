#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace qvnd::files {

class ChangeObserver;

// A folder or file as a listing shows it.
struct Entry {
    QString Name;
    QString Path;
};

// Folders and files as the commands use them. Names are found without regard to case. Failures
// are RunTimeErrors: 53 file not found, 58 already exists, 61 disk full, 70 permission denied,
// 75 access failed, 76 path not found.
class FileSystemObject {
public:
    virtual ~FileSystemObject() = default;

    virtual bool FolderExists(const QString& path) = 0;
    virtual bool FileExists(const QString& path) = 0;
    // Whether another program has the word processor's document open, so that it may be neither
    // deleted nor overwritten.
    virtual bool IsInUse(const QString& path) = 0;

    // One level: 76 when the parent is missing, 58 when the folder is there.
    virtual void CreateFolder(const QString& path) = 0;
    // With all that is in it. A document in use stops it with 70, and without `force` a file that
    // may not be written; both before anything is deleted. Links are removed, not followed. 76 when
    // it is missing. It leaves its place at one stroke, so that a killed process leaves it whole or
    // gone.
    virtual void DeleteFolder(const QString& path, bool force) = 0;

    // Gives a folder another name in the same place. 76 when it is missing, 58 when the new name is
    // taken.
    virtual void MoveFolder(const QString& source, const QString& target) = 0;

    // The target is replaced whole or not at all. 53 without a source, 76 without the target's
    // folder, 58 when the target is there and may not be overwritten, 70 when it is in use.
    virtual void CopyFile(const QString& source, const QString& target, bool overwrite) = 0;
    // 53 when it is missing, 70 when it is in use or may not be written.
    virtual void DeleteFile(const QString& path) = 0;

    // In the order of their names; 76 when the folder is missing.
    virtual std::vector<Entry> SubFolders(const QString& folder) = 0;
    virtual std::vector<Entry> Files(const QString& folder) = 0;

    // Has the observer told of every change before it is made. Without effect where changes are
    // made by something that does not know of observers.
    virtual void observe(ChangeObserver* observer) { static_cast<void>(observer); }

private:
    friend class NameScope;
    // The names of folders are kept for as long as anyone has what it returns.
    virtual std::shared_ptr<const void> keepNames() = 0;
};

// While it lives, folders are read once for all look-ups of names, so that a run of copies takes
// the time of the copying. What other programs change meanwhile is not seen; it must be gone before
// the user is asked anything. Several may live at a time.
class NameScope {
public:
    explicit NameScope(FileSystemObject& files) : names_(files.keepNames()) {}

private:
    std::shared_ptr<const void> names_;
};

} // namespace qvnd::files
