#include "platform/jet/file/Image.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/jet/Failure.h"
#include "platform/jet/file/SqlNames.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <sqlite3.h>

#include <algorithm>
#include <functional>

namespace qvnd::jet {

namespace {

// Of the header of an SQLite file, four bytes each where nothing else is said: the size of a page,
// the counter of changes, the first page that lists free ones, the counter of changes of the
// schema, which state of the counter the header is valid for, and the version of SQLite that wrote
// it.
constexpr int pageSizePlace = 16; // two bytes; 1 stands for 65536
constexpr int counterPlace = 24;
constexpr int freeListPlace = 32;
constexpr int schemaPlace = 40;
constexpr int validForPlace = 92;
constexpr int writerPlace = 96;
constexpr int headerSize = 100;

std::uint32_t bigEndian(const unsigned char* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | std::uint32_t{bytes[3]};
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        failCannotAccess(path);
    }
    return file.readAll();
}

// Answers what `read` does, or `otherwise` for a damaged file.
template <typename Answer>
Answer ofSound(const std::function<Answer()>& read, const std::function<Answer()>& otherwise) {
    try {
        return read();
    } catch (const RunTimeError& failure) {
        if (failure.number() != error::unrecognizedFormat) {
            throw;
        }
        return otherwise();
    }
}

QByteArray withoutCounters(QByteArray image) {
    for (const int place : {counterPlace, schemaPlace, validForPlace, writerPlace}) {
        if (image.size() >= headerSize) {
            image.replace(place, 4, QByteArray(4, 0));
        }
    }
    return image;
}

// What stands in the pages that are free is nobody's: SQLite leaves it as it was in the file,
// whatever it was in memory. The list of them is a chain of pages, each with the number of the
// next, how many it names, and these.
QByteArray withoutUnusedPages(QByteArray image) {
    const auto numberAt = [&](qsizetype place) -> qsizetype {
        return place + 4 > image.size()
                   ? 0
                   : bigEndian(reinterpret_cast<const unsigned char*>(image.constData()) + place);
    };
    const qsizetype written = numberAt(pageSizePlace) >> 16;
    const qsizetype size = written == 1 ? 65536 : std::max<qsizetype>(written, headerSize);
    qsizetype left = image.size() / size; // a damaged list may lead in a circle
    for (qsizetype list = numberAt(freeListPlace); list > 0 && left > 0; --left) {
        const qsizetype at = (list - 1) * size;
        const qsizetype count = std::min(numberAt(at + 4), size / 4 - 2);
        for (qsizetype i = 0; i < count; ++i) {
            const qsizetype free = (numberAt(at + 8 + 4 * i) - 1) * size;
            if (free >= size && free + size <= image.size()) {
                image.replace(free, size, QByteArray(size, 0));
            }
        }
        list = numberAt(at);
    }
    return image;
}

// A journal belongs to the file that was there before.
void writeFile(const QString& path, const QByteArray& image) {
    QDir().mkpath(QFileInfo(path).path());
    QFile::remove(Connection::JournalOf(path));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(image) != image.size() || !file.flush() ||
        !file.commit()) {
        failCannotAccess(path);
    }
}

// All pages in one transaction of the file.
void overwrite(const QString& path, const QByteArray& image) {
    Connection target(path, Connection::Mode::existing);
    const Connection source(image);
    sqlite3_backup* copy = sqlite3_backup_init(target.Handle(), "main", source.Handle(), "main");
    if (copy == nullptr) {
        target.Fail();
    }
    const int stepped = sqlite3_backup_step(copy, -1);
    const int finished = sqlite3_backup_finish(copy);
    const int kind = stepped & 0xFF;
    if (kind == SQLITE_NOTADB || kind == SQLITE_CORRUPT) {
        failUnrecognizedFormat(path);
    }
    if (stepped != SQLITE_DONE || finished != SQLITE_OK) {
        fail(error::storeFailed, QStringLiteral("不能恢复『%1』：%2。")
                                     .arg(path, QString::fromUtf8(sqlite3_errstr(stepped))));
    }
}

} // namespace

QByteArray imageOf(const QString& path) {
    if (!QFile::exists(path)) {
        return {};
    }
    return ofSound<QByteArray>(
        [&] {
            Connection connection(path, Connection::Mode::existing);
            connection.NumberOf("PRAGMA user_version");
            return imageOf(connection);
        },
        [&] { return bytesOf(path); });
}

QByteArray imageOf(Connection& connection) {
    sqlite3_int64 size = 0;
    unsigned char* bytes = sqlite3_serialize(connection.Handle(), "main", &size, 0);
    if (bytes == nullptr && size > 0) {
        connection.Fail();
    }
    QByteArray image(reinterpret_cast<const char*>(bytes), size);
    sqlite3_free(bytes);
    return image;
}

std::uint32_t changeCounterOf(const QString& path) {
    if (!QFile::exists(path)) {
        return 0;
    }
    return ofSound<std::uint32_t>(
        [&] {
            Connection connection(path, Connection::Mode::existing);
            connection.NumberOf("PRAGMA user_version"); // plays a journal back
            sqlite3_file* file = nullptr;
            sqlite3_file_control(connection.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
            unsigned char bytes[4] = {};
            if (file == nullptr ||
                file->pMethods->xRead(file, bytes, 4, counterPlace) != SQLITE_OK) {
                failCannotAccess(path);
            }
            return bigEndian(bytes);
        },
        [&] { return changeCounterIn(bytesOf(path)); });
}

std::uint32_t changeCounterIn(const QByteArray& image) {
    return image.size() < counterPlace + 4
               ? 0
               : bigEndian(reinterpret_cast<const unsigned char*>(image.constData()) +
                           counterPlace);
}

bool holdTheSame(const QByteArray& one, const QByteArray& other) {
    return withoutCounters(one) == withoutCounters(other);
}

QByteArray digestOf(const QByteArray& image) {
    const QByteArray used = withoutUnusedPages(withoutCounters(image));
    return QCryptographicHash::hash(used, QCryptographicHash::Sha1).toHex();
}

void putImage(const QString& path, const QByteArray& image) {
    if (image.isEmpty()) {
        if (QFile::exists(path) && !QFile::remove(path)) {
            failCannotAccess(path);
        }
        QFile::remove(Connection::JournalOf(path));
    } else if (!QFile::exists(path) ||
               !ignoringError(error::unrecognizedFormat, [&] { overwrite(path, image); })) {
        writeFile(path, image);
    }
}

void removeJournal(const QString& path) {
    ignoringErrors([&] { Connection(path, Connection::Mode::existing).RemoveJournal(); });
}

ImageTables::ImageTables(const QByteArray& image) : isEmpty_(image.isEmpty()), connection_(image) {
    if (isEmpty_ || connection_.NumberOf("SELECT count(*) FROM sqlite_master "
                                         "WHERE name='jet_tables'") == 0) {
        return;
    }
    Statement statement(connection_, "SELECT name,id FROM jet_tables");
    while (statement.Step()) {
        tables_[statement.Text(0)] = statement.Number(1);
    }
}

QMap<std::int64_t, ImageTables::Row> ImageTables::rowsOf(const QString& table) {
    QMap<std::int64_t, Row> rows;
    if (!tables_.contains(table)) {
        return rows;
    }
    Statement statement(connection_, "SELECT rowid,* FROM " + sqlTableName(table));
    const int columns = statement.Columns();
    QStringList names;
    for (int column = 1; column < columns; ++column) {
        names << statement.ColumnName(column);
    }
    while (statement.Step()) {
        Row& row = rows[statement.Number(0)];
        for (int column = 1; column < columns; ++column) {
            row.fields[names[column - 1]] = statement.Text(column);
        }
    }
    return rows;
}

} // namespace qvnd::jet
