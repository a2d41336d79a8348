#pragma once

#include "platform/files/FileSystemObject.h"

namespace qvnd::files {

class DiskFileSystem : public FileSystemObject {
public:
    bool FolderExists(const QString& path) override;
    bool FileExists(const QString& path) override;
    void CreateFolder(const QString& path) override;
    void DeleteFolder(const QString& path, bool force) override;
    void CopyFile(const QString& source, const QString& target, bool overwrite) override;
    void DeleteFile(const QString& path) override;
    std::vector<Entry> SubFolders(const QString& folder) override;
    std::vector<Entry> Files(const QString& folder) override;
};

} // namespace qvnd::files
