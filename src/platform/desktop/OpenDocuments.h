#pragma once

#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"

namespace qvnd::desktop {

// The documents that a word processor on this machine or another holds open, by their lock files.
class OpenDocuments : public files::FilesInUse {
public:
    bool isDocumentOpen(const QString& path) override { return locks_.isDocumentOpen(path); }
    bool isAnyOpenIn(const QString& folder) override { return locks_.isAnyOpenIn(folder); }

private:
    SystemProcesses processes_;
    LockFiles locks_{processes_};
};

} // namespace qvnd::desktop
