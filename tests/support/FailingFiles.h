#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/files/DiskFileSystem.h"

#include <optional>

namespace qvnd::test {

// The machine's file system, whose deletions of folders fail as told.
class FailingFiles : public files::DiskFileSystem {
public:
    void DeleteFolder(const QString& path, bool force) override {
        if (deletingFolder) {
            throw *deletingFolder;
        }
        DiskFileSystem::DeleteFolder(path, force);
    }

    std::optional<RunTimeError> deletingFolder;
};

} // namespace qvnd::test
