#include "platform/jet/file/Connection.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/jet/Failure.h"
#include "platform/jet/file/TextFunctions.h"

#include <QFile>

#include <sqlite3.h>

#include <cstring>

namespace qvnd::jet {

namespace {

// How long another program may hold a file before we give up, in milliseconds.
constexpr int patience = 3000;
constexpr std::size_t preparedAtMost = 64;

void raise(int code, const QString& path, const QString& message) {
    switch (code & 0xFF) {
    case SQLITE_CONSTRAINT:
        failDuplicate();
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        fail(error::storeBusy, QStringLiteral("『%1』正被另一个程序锁定，请稍后再试。").arg(path));
    case SQLITE_FULL:
        fail(error::storeDiskFull, QStringLiteral("磁盘空间不足，不能写入『%1』。").arg(path));
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        failUnrecognizedFormat(path);
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
        failCannotAccess(path);
    default:
        fail(error::storeFailed, QStringLiteral("读写『%1』时出错：%2。").arg(path, message));
    }
}

} // namespace

Connection::Connection(const QString& path, int openFlags) : path_(path) {
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &handle_, openFlags, nullptr);
    if (code != SQLITE_OK) {
        sqlite3_close(handle_);
        handle_ = nullptr;
        raise(code, path, QString::fromUtf8(sqlite3_errstr(code)));
    }
}

Connection::Connection(const QString& path, Mode mode, Journal journal)
    : Connection(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                           (mode == Mode::create ? SQLITE_OPEN_CREATE : 0)) {
    sqlite3_busy_timeout(handle_, patience);
    registerTextFunctions(handle_);
    // A name in double quotes that names nothing is an error, never a text.
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // Changing the kind of an existing file asks for it alone. While another program has it open
    // it stays as it is.
    const bool isRemoved = journal == Journal::removed;
    ignoringError(error::storeBusy, [&] {
        Run(isRemoved ? "PRAGMA journal_mode=DELETE" : "PRAGMA journal_mode=TRUNCATE");
    });
    Run(isRemoved ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=NORMAL");
}

Connection::Connection(const QByteArray& image)
    : Connection(QStringLiteral(":memory:"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX) {
    if (image.isEmpty()) {
        return; // as a new database
    }
    auto* bytes =
        static_cast<unsigned char*>(sqlite3_malloc64(static_cast<sqlite3_uint64>(image.size())));
    if (bytes == nullptr) {
        raise(SQLITE_NOMEM, path_, QString::fromUtf8(sqlite3_errstr(SQLITE_NOMEM)));
    }
    std::memcpy(bytes, image.constData(), static_cast<std::size_t>(image.size()));
    // SQLite frees the bytes, also when it refuses them.
    if (sqlite3_deserialize(handle_, "main", bytes, image.size(), image.size(),
                            SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE) !=
        SQLITE_OK) {
        Fail();
    }
}

QString Connection::JournalOf(const QString& path) { return path + QStringLiteral("-journal"); }

Connection::~Connection() {
    prepared_.clear();
    sqlite3_close_v2(handle_);
}

void Connection::Run(const QByteArray& sql) {
    if (sqlite3_exec(handle_, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail();
    }
}

Statement& Connection::Prepared(const QByteArray& sql) {
    const auto found = prepared_.find(sql);
    if (found != prepared_.end()) {
        return *found->second;
    }
    if (prepared_.size() >= preparedAtMost) {
        prepared_.clear();
    }
    return *prepared_.emplace(sql, std::make_unique<Statement>(*this, sql)).first->second;
}

std::int64_t Connection::NumberOf(const QByteArray& sql) {
    Statement& statement = Prepared(sql);
    statement.Reset();
    const std::int64_t number = statement.Step() ? statement.Number(0) : 0;
    statement.Reset();
    return number;
}

// Where the mode changes to DELETE, SQLite removes the journal under the lock of a writer, once it
// has played back what there is in it. It does not wait for that lock.
void Connection::RemoveJournal() {
    if (QFile::exists(JournalOf(path_))) {
        Run("PRAGMA journal_mode=PERSIST; PRAGMA journal_mode=DELETE");
    }
}

bool Connection::InTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }

std::int64_t Connection::LastInsertedRow() const { return sqlite3_last_insert_rowid(handle_); }

int Connection::Changes() const { return sqlite3_changes(handle_); }

std::int64_t Connection::ChangeStamp() const { return sqlite3_total_changes64(handle_); }

void Connection::Fail() const {
    raise(sqlite3_extended_errcode(handle_), path_, QString::fromUtf8(sqlite3_errmsg(handle_)));
    Q_UNREACHABLE();
}

} // namespace qvnd::jet
