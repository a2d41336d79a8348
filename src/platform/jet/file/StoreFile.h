#pragma once

#include "platform/jet/file/Catalogue.h"
#include "platform/jet/file/Connection.h"

namespace qvnd::jet {

// One database file, open: its connection, its definitions, and whether something is written that
// is not yet lasting. All handles of a run on the same file share one of these.
class StoreFile {
public:
    // The errors of Workspace::OpenDatabase.
    static std::unique_ptr<StoreFile> Open(const QString& path);
    // The errors of Workspace::CreateDatabase.
    static std::unique_ptr<StoreFile> Create(const QString& path, const QString& locale);
    ~StoreFile();
    StoreFile(const StoreFile&) = delete;
    StoreFile& operator=(const StoreFile&) = delete;

    Connection& Sql() { return connection_; }
    Catalogue& Tables() { return catalogue_; }

    // 3078 when there is none of that name.
    StoredTable& TableNamed(QStringView name);
    // 3420 when the table has been dropped meanwhile.
    StoredTable& TableOf(std::int64_t id);

    // Reads the definitions anew if another program has changed the file.
    void Refresh();
    // How often such a change has been met; one number may stand for several changes.
    int ForeignChanges() const { return foreignChanges_; }

    bool IsPending() const { return connection_.InTransaction(); }
    // Begins a transaction if none is open; true when it did.
    bool BeginWrite();
    // Makes lasting what is pending; on failure it stays pending.
    void Commit();
    // Takes back everything that is pending.
    void Rollback();

    // Has the file been deleted or replaced behind our back?
    bool IsGone() const;

private:
    explicit StoreFile(const QString& path);
    // Removes the journal of a process that was killed before it had changed the file: reading
    // plays a journal back only when there is something to play back.
    void ClearAway();
    void LoadIfChanged();

    Connection connection_;
    Catalogue catalogue_;
    std::int64_t seenVersion_ = 0;
    int foreignChanges_ = 0;
};

// One operation on a file that consists of several statements and is done wholly or not at all.
class WriteScope {
public:
    // With `staysPending` what was done joins the transaction that is open, or opens one.
    WriteScope(StoreFile& file, bool staysPending);
    ~WriteScope(); // takes everything back unless Finish was called
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

    void Finish();

private:
    void TakeBack();

    StoreFile& file_;
    bool staysPending_;
    bool outermost_;
    bool finished_ = false;
};

} // namespace qvnd::jet
