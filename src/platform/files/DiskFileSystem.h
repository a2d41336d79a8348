#pragma once

#include "platform/files/ChangeObserver.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/FilesInUse.h"
#include "platform/files/FolderNames.h"

#include <memory>

namespace qvnd::files {

// The file system of the machine. A word processor's document that another program holds locked, or
// of which `inUse` says that it is open, is neither deleted nor overwritten: error 70, with nothing
// done. Other files are taken as the system gives them.
class DiskFileSystem : public FileSystemObject {
public:
    // Without `inUse` only locks on the files themselves count.
    explicit DiskFileSystem(std::unique_ptr<FilesInUse> inUse = nullptr);

    // Has the observer, which outlives it or is taken away by null, told of every change.
    void observe(ChangeObserver* observer) override { observer_ = observer; }

    bool FolderExists(const QString& path) override;
    bool FileExists(const QString& path) override;
    bool IsInUse(const QString& path) override;
    void CreateFolder(const QString& path) override;
    void DeleteFolder(const QString& path, bool force) override;
    void MoveFolder(const QString& source, const QString& target) override;
    void CopyFile(const QString& source, const QString& target, bool overwrite) override;
    void DeleteFile(const QString& path) override;
    std::vector<Entry> SubFolders(const QString& folder) override;
    std::vector<Entry> Files(const QString& folder) override;

private:
    std::shared_ptr<const void> keepNames() override;
    QString spelt(const QString& path) const;
    void forgetNames();
    void refuseInUse(const QString& path);
    void refuseUndeletable(const QString& folder, bool force);

    ChangeObserver* observer_ = nullptr;
    std::unique_ptr<FilesInUse> inUse_;
    std::weak_ptr<FolderNames> names_;
};

} // namespace qvnd::files
