#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <memory>

namespace qvnd::jet {

class ChangeObserver;
class WorkspaceState;

// The databases of one run and the transaction that spans them.
//
// A statement outside a transaction is committed when its call returns. There is no rollback: what
// was done stays done, also in a transaction that a failure left open.
class Workspace {
public:
    Workspace();
    ~Workspace(); // as Close, but swallows errors
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    // Opens an existing file, shared, for reading and writing. 3024 when the file is absent, 3044
    // when its folder is, 3051 when it may not be read and written, 3343 when it is no database of
    // ours or damaged.
    std::unique_ptr<Database> OpenDatabase(const QString& path);
    // Makes an empty database and opens it; `locale` is kept in the file. 3204 when a file of that
    // name exists, 3044 when its folder is absent, 3051 when it may not be written. However it
    // ends, there is a whole database under the name or none.
    std::unique_ptr<Database> CreateDatabase(const QString& path, const QString& locale);

    // Until CommitTrans the changes in all open databases stay uncommitted. A transaction that is
    // still open is committed first.
    void BeginTrans();
    // Error 3034 without BeginTrans.
    void CommitTrans();
    bool InTransaction() const;

    // Commits what is uncommitted: rows added one straight after the other, and the changes of a
    // transaction, which stays open. Happens by itself before every other kind of
    // call on the workspace, when a recordset or database closes, and when control returns to the
    // event loop.
    void Settle();

    // Has the observer, which outlives the workspace or is taken away by null, told of every change
    // from now on.
    void Observe(ChangeObserver* observer);

    // Tells the observer that a whole database, made at `by` and closed, is about to take the place
    // of whatever file stands at `file`; the caller then renames it. What the observer throws
    // refuses it.
    void AboutToReplace(const QString& file, const QString& by);

    // Commits, and closes all databases opened through it.
    void Close();

private:
    std::shared_ptr<WorkspaceState> state_;
};

} // namespace qvnd::jet
