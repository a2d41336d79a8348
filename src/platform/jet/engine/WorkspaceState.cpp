#include "platform/jet/engine/WorkspaceState.h"

#include "platform/jet/Failure.h"
#include "platform/jet/engine/Session.h"
#include "platform/jet/file/Image.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>

namespace qvnd::jet {

namespace {

constexpr qint64 longestRun = 250; // milliseconds

QString identityOf(const QString& path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

} // namespace

WorkspaceState::~WorkspaceState() = default;

std::shared_ptr<StoreFile> WorkspaceState::Open(const QString& path) {
    std::weak_ptr<StoreFile>& known = files_[identityOf(path)];
    std::shared_ptr<StoreFile> file = known.lock();
    if (file == nullptr || file->IsGone()) {
        if (file != nullptr) { // what is still changed there is in no folder any more
            file->Observe(nullptr);
        }
        file = StoreFile::Open(path);
        file->Observe(observer_);
        known = file;
    }
    return file;
}

std::shared_ptr<StoreFile> WorkspaceState::Create(const QString& path, const QString& locale) {
    if (observer_ != nullptr) {
        observer_->BeforeCreation(path);
    }
    std::shared_ptr<StoreFile> file = StoreFile::Create(path, locale);
    file->Observe(observer_);
    std::weak_ptr<StoreFile>& known = files_[identityOf(path)];
    if (const std::shared_ptr<StoreFile> gone = known.lock()) {
        gone->Observe(nullptr);
    }
    known = file;
    return file;
}

void WorkspaceState::Observe(ChangeObserver* observer) {
    observer_ = observer;
    for (const std::shared_ptr<StoreFile>& file : LiveFiles()) {
        file->Observe(observer);
    }
}

void WorkspaceState::AboutToReplace(const QString& file, const QString& by) {
    if (observer_ != nullptr) {
        observer_->BeforeChange(file);
        observer_->BeforeCommit([&] { return imageOf(by); });
    }
}

void WorkspaceState::Release(std::shared_ptr<StoreFile>& file) {
    if (file != nullptr && file.use_count() == 1 && file->IsPending()) {
        file->Commit();
    }
    file.reset();
}

void WorkspaceState::Register(const std::shared_ptr<Session>& session) {
    sessions_.erase(std::remove_if(sessions_.begin(), sessions_.end(),
                                   [](const auto& other) { return other.expired(); }),
                    sessions_.end());
    sessions_.push_back(session);
}

void WorkspaceState::CloseAll() {
    inTransaction_ = false;
    Enter();
    Settle();
    for (const std::weak_ptr<Session>& weak : sessions_) {
        if (const std::shared_ptr<Session> session = weak.lock()) {
            session->Close();
        }
    }
    sessions_.clear();
    files_.clear();
}

void WorkspaceState::BeginTrans() {
    Enter();
    Settle();
    inTransaction_ = true;
}

void WorkspaceState::CommitTrans() {
    Enter();
    if (!inTransaction_) {
        fail(error::noTransaction, QStringLiteral("没有先使用 BeginTrans，不能提交事务。"));
    }
    Settle();
    inTransaction_ = false;
}

void WorkspaceState::Settle() {
    adding_ = 0;
    for (const std::shared_ptr<StoreFile>& file : LiveFiles()) {
        if (file->IsPending()) {
            file->Commit();
        }
    }
}

void WorkspaceState::Enter() {
    if (unreported_) {
        const RunTimeError failure = *unreported_;
        unreported_.reset();
        throw failure;
    }
    if (adding_ != 0 && !inTransaction_) {
        Settle();
    }
    adding_ = 0;
}

bool WorkspaceState::EnterAddition(std::uint64_t recordset) {
    if (adding_ == recordset) {
        return true;
    }
    Enter();
    adding_ = recordset;
    runTime_.start();
    return false;
}

void WorkspaceState::LeaveAddition() {
    if (inTransaction_ || runTime_.elapsed() <= longestRun) {
        PostSettling();
        return;
    }
    const std::uint64_t recordset = adding_;
    Settle();
    adding_ = recordset;
    runTime_.start();
}

void WorkspaceState::LeaveRecordset(std::uint64_t recordset) {
    if (adding_ == recordset) {
        Enter();
    }
}

bool WorkspaceState::StaysPending() {
    if (inTransaction_) {
        PostSettling();
    }
    return inTransaction_;
}

void WorkspaceState::PostSettling() {
    if (settlePosted_ || QCoreApplication::instance() == nullptr) {
        return;
    }
    settlePosted_ = true;
    QTimer::singleShot(0, &eventLoop_, [this] { SettleFromEventLoop(); });
}

void WorkspaceState::SettleFromEventLoop() {
    settlePosted_ = false;
    try {
        Settle();
    } catch (const RunTimeError& failure) {
        // An exception must not cross the event loop; the next call on the store reports it.
        unreported_ = failure;
    }
}

std::vector<std::shared_ptr<StoreFile>> WorkspaceState::LiveFiles() {
    std::vector<std::shared_ptr<StoreFile>> live;
    for (auto entry = files_.begin(); entry != files_.end();) {
        if (std::shared_ptr<StoreFile> file = entry->second.lock()) {
            live.push_back(std::move(file));
            ++entry;
        } else {
            entry = files_.erase(entry);
        }
    }
    return live;
}

} // namespace qvnd::jet
