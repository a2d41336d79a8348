#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/jet/file/StoreFile.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace qvnd::jet {

class Session;

// What the handles of one workspace share: the open files, one StoreFile each, and the decision
// when to commit.
//
// Rows that one recordset adds straight after each other form a run. The first row of a run is
// committed at once, the others at its end or every quarter of a second, so that ten thousand rows
// do not cost ten thousand transactions. Reading does not end a run.
class WorkspaceState : public std::enable_shared_from_this<WorkspaceState> {
public:
    WorkspaceState() = default;
    ~WorkspaceState();
    WorkspaceState(const WorkspaceState&) = delete;
    WorkspaceState& operator=(const WorkspaceState&) = delete;

    std::shared_ptr<StoreFile> Open(const QString& path);
    std::shared_ptr<StoreFile> Create(const QString& path, const QString& locale);
    // Drops a reference to a file; the last one commits what is pending before it goes.
    static void Release(std::shared_ptr<StoreFile>& file);

    // For the files that are open and those to come; null ends it.
    void Observe(ChangeObserver* observer);
    // Tells the observer that the database `by` is about to be renamed to `file`.
    void AboutToReplace(const QString& file, const QString& by);

    void Register(const std::shared_ptr<Session>& session);
    // Commits, and closes every session.
    void CloseAll();

    void BeginTrans();
    void CommitTrans();
    bool InTransaction() const { return inTransaction_; }
    void Settle();

    // Called before every call that writes, opens or closes: ends a run, and raises the failure
    // that a commit in the event loop has met.
    void Enter();
    // Called before a recordset adds a row: true when the row belongs to the run under way.
    bool EnterAddition(std::uint64_t recordset);
    // Called after each row of a run that was left uncommitted.
    void LeaveAddition();
    // Called when a recordset closes; ends its run.
    void LeaveRecordset(std::uint64_t recordset);
    // Called before every change. True when it stays uncommitted until the end of a transaction.
    bool StaysPending();

    std::uint64_t NextRecordset() { return ++lastRecordset_; }

private:
    std::vector<std::shared_ptr<StoreFile>> LiveFiles();
    // Posts an event that commits what is pending.
    void PostSettling();
    void SettleFromEventLoop();

    ChangeObserver* observer_ = nullptr;
    std::map<QString, std::weak_ptr<StoreFile>> files_;
    std::vector<std::weak_ptr<Session>> sessions_;
    std::optional<RunTimeError> unreported_;
    bool inTransaction_ = false;
    bool settlePosted_ = false;
    std::uint64_t lastRecordset_ = 0;
    std::uint64_t adding_ = 0; // the recordset whose run is under way, 0 for none
    QElapsedTimer runTime_;
    QObject eventLoop_; // receives the posted settling
};

} // namespace qvnd::jet
