#include "platform/jet/engine/Session.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/Failure.h"

namespace qvnd::jet {

Session::Session(std::shared_ptr<WorkspaceState> workspace, std::shared_ptr<StoreFile> file,
                 QString name)
    : workspace_(std::move(workspace)), file_(std::move(file)), name_(std::move(name)) {}

Session::~Session() {
    ignoringErrors([this] { Close(); });
}

StoreFile& Session::File() const {
    if (file_ == nullptr) {
        failClosed();
    }
    return *file_;
}

StoreFile& Session::EnterFile() {
    StoreFile& file = File();
    workspace_->Enter();
    file.Refresh();
    return file;
}

void Session::Close() {
    if (file_ != nullptr) {
        workspace_->Enter();
        WorkspaceState::Release(file_);
    }
}

} // namespace qvnd::jet
