#include "platform/jet/file/StoreFile.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/Failure.h"
#include "platform/jet/file/FirstArrangement.h"
#include "platform/jet/file/Image.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace qvnd::jet {

namespace {

void checkFolder(const QString& path) {
    if (!QFileInfo(path).absoluteDir().exists()) {
        failFolderInvalid(path);
    }
}

void checkFile(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists()) {
        checkFolder(path);
        failFileNotFound(path);
    }
    if (!file.isFile() || !file.isReadable()) {
        failCannotAccess(path);
    }
    if (!file.isWritable()) {
        failReadOnly(path);
    }
}

// Before SQLite sees the file: it would take an empty one for an empty database.
void checkSignature(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        failCannotAccess(path);
    }
    if (file.read(16) != QByteArray("SQLite format 3", 16)) {
        failUnrecognizedFormat(path);
    }
}

void createFile(const QString& path, const QString& locale) {
    Connection connection(path, Connection::Mode::create);
    connection.Run("BEGIN IMMEDIATE");
    Catalogue::Create(connection, locale);
    connection.Run("COMMIT");
}

} // namespace

StoreFile::StoreFile(const QString& path) : connection_(path, Connection::Mode::existing) {
    bringOverFirstArrangement(connection_);
    seenVersion_ = connection_.NumberOf("PRAGMA data_version");
    catalogue_.Load(connection_);
    // Another program may commit just now.
    ignoringErrors([this] { connection_.RemoveJournal(); });
}

std::unique_ptr<StoreFile> StoreFile::Open(const QString& path) {
    checkFile(path);
    checkSignature(path);
    return std::unique_ptr<StoreFile>(new StoreFile(path));
}

std::unique_ptr<StoreFile> StoreFile::Create(const QString& path, const QString& locale) {
    checkFolder(path);
    if (QFileInfo::exists(path)) {
        failDatabaseExists(path);
    }
    // Under another name first, so that a killed process leaves no half made database behind.
    const QString unfinished = path + QStringLiteral(".new");
    QFile::remove(unfinished);
    createFile(unfinished, locale);
    if (!QFile::rename(unfinished, path)) {
        QFile::remove(unfinished);
        failCannotAccess(path);
    }
    return Open(path);
}

StoreFile::~StoreFile() {
    // On failure SQLite takes the transaction back.
    if (IsPending()) {
        ignoringErrors([this] { Commit(); });
    }
}

void StoreFile::Observe(ChangeObserver* observer) {
    observer_ = observer;
    const auto told = [](void* self, int, const char*, const char* table, sqlite3_int64) {
        const auto* file = static_cast<const StoreFile*>(self);
        file->observer_->AfterChange(file->connection_.Path(), QString::fromUtf8(table));
    };
    sqlite3_update_hook(connection_.Handle(), observer == nullptr ? nullptr : +told, this);
}

StoredTable& StoreFile::TableNamed(QStringView name) {
    StoredTable* table = catalogue_.Find(name);
    if (table == nullptr) {
        failTableNotFound(name);
    }
    return *table;
}

StoredTable& StoreFile::TableOf(std::int64_t id) {
    StoredTable* table = catalogue_.Find(id);
    if (table == nullptr) {
        failClosed();
    }
    return *table;
}

void StoreFile::LoadIfChanged() {
    const std::int64_t version = connection_.NumberOf("PRAGMA data_version");
    if (version != seenVersion_) {
        catalogue_.Load(connection_);
        seenVersion_ = version;
        ++foreignChanges_;
    }
}

void StoreFile::Refresh() {
    if (!IsPending()) {
        LoadIfChanged();
    }
}

bool StoreFile::BeginWrite() {
    if (IsPending()) {
        return false;
    }
    if (observer_ != nullptr) {
        observer_->BeforeChange(connection_.Path());
    }
    connection_.Prepared("BEGIN IMMEDIATE").Run();
    LoadIfChanged();
    return true;
}

void StoreFile::Commit() {
    catalogue_.WriteNumbers(connection_);
    if (observer_ != nullptr) {
        observer_->BeforeCommit([this] { return imageOf(connection_); });
    }
    connection_.Prepared("COMMIT").Run();
}

void StoreFile::Rollback() {
    if (IsPending()) {
        connection_.Run("ROLLBACK");
    }
    catalogue_.Load(connection_);
}

bool StoreFile::IsGone() const {
    int moved = 0;
    sqlite3_file_control(connection_.Handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

WriteScope::WriteScope(StoreFile& file, bool staysPending)
    : file_(file), staysPending_(staysPending), outermost_(file.BeginWrite()) {
    if (!outermost_) {
        file_.Tables().WriteNumbers(file_.Sql());
        file_.Sql().Run("SAVEPOINT operation");
    }
}

WriteScope::~WriteScope() {
    if (!finished_) {
        ignoringErrors([this] { TakeBack(); });
    }
}

void WriteScope::Finish() {
    if (!outermost_) {
        file_.Sql().Run("RELEASE operation");
    }
    if (!staysPending_) {
        file_.Commit();
    }
    finished_ = true;
}

void WriteScope::TakeBack() {
    if (outermost_ || !file_.IsPending()) {
        file_.Rollback();
        return;
    }
    file_.Sql().Run("ROLLBACK TO operation; RELEASE operation");
    file_.Tables().Load(file_.Sql());
}

} // namespace qvnd::jet
