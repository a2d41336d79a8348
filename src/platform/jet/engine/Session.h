#pragma once

#include "platform/jet/engine/WorkspaceState.h"
#include "platform/jet/file/StoreFile.h"

#include <QString>

#include <memory>

namespace qvnd::jet {

// One opening of a database, shared by its handle and the recordsets opened from it.
class Session {
public:
    Session(std::shared_ptr<WorkspaceState> workspace, std::shared_ptr<StoreFile> file,
            QString name);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const QString& Name() const { return name_; }
    WorkspaceState& Workspace() { return *workspace_; }
    bool IsOpen() const { return file_ != nullptr; }

    // The file, for reading; error 3420 after Close.
    StoreFile& File() const;
    const std::shared_ptr<StoreFile>& SharedFile() const { return file_; }
    // The file, for every call but the reading of further rows: ends a run of added rows, and reads
    // the definitions anew if another program has changed the file.
    StoreFile& EnterFile();

    void Close();

private:
    std::shared_ptr<WorkspaceState> workspace_;
    std::shared_ptr<StoreFile> file_;
    QString name_;
};

} // namespace qvnd::jet
