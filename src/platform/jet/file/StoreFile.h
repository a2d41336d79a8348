#pragma once

#include "platform/jet/ChangeObserver.h"
#include "platform/jet/file/Catalogue.h"
#include "platform/jet/file/Connection.h"

namespace qvnd::jet {

// One open database file: its connection, its definitions, and the transaction that may be open on
// it. All handles of a run on the same file share one of these.
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

    // Told before each transaction, of the tables it changes and before its end; null for nobody.
    void Observe(ChangeObserver* observer);

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
    // Commits the open transaction; on failure it stays open.
    void Commit();
    // Rolls the open transaction back.
    void Rollback();

    // True when the file was deleted, or another one stands under its path.
    bool IsGone() const;

private:
    explicit StoreFile(const QString& path);
    void LoadIfChanged();

    ChangeObserver* observer_ = nullptr;
    Connection connection_;
    Catalogue catalogue_;
    std::int64_t seenVersion_ = 0;
    int foreignChanges_ = 0;
};

// An operation of several statements on one file: all of them take effect, or none.
class WriteScope {
public:
    // With `staysPending` the transaction that is open, or is begun here, is left open by Finish.
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
