#include "platform/jet/Workspace.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/engine/Session.h"
#include "platform/jet/engine/WorkspaceState.h"

namespace qvnd::jet {

namespace {

std::unique_ptr<Database> handleOn(const std::shared_ptr<WorkspaceState>& state,
                                   std::shared_ptr<StoreFile> file, const QString& path) {
    auto session = std::make_shared<Session>(state, std::move(file), path);
    state->Register(session);
    return std::make_unique<Database>(std::move(session));
}

} // namespace

Workspace::Workspace() : state_(std::make_shared<WorkspaceState>()) {}

Workspace::~Workspace() {
    ignoringErrors([this] { Close(); });
}

std::unique_ptr<Database> Workspace::OpenDatabase(const QString& path) {
    state_->Enter();
    return handleOn(state_, state_->Open(path), path);
}

std::unique_ptr<Database> Workspace::CreateDatabase(const QString& path, const QString& locale) {
    state_->Enter();
    return handleOn(state_, state_->Create(path, locale), path);
}

void Workspace::BeginTrans() { state_->BeginTrans(); }

void Workspace::CommitTrans() { state_->CommitTrans(); }

bool Workspace::InTransaction() const { return state_->InTransaction(); }

void Workspace::Settle() {
    state_->Enter();
    state_->Settle();
}

void Workspace::Observe(ChangeObserver* observer) { state_->Observe(observer); }

void Workspace::AboutToReplace(const QString& file, const QString& by) {
    state_->Enter();
    state_->AboutToReplace(file, by);
}

void Workspace::Close() { state_->CloseAll(); }

} // namespace qvnd::jet
