#pragma once

#include "platform/jet/file/Image.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QStringList>

#include <sys/stat.h>

#include <ctime>

namespace qvnd::test {

// All that commands may change on disk, as lines under the paths of what holds them: every table
// with every field of its rows and their numbers, every file by what is in it, every folder. The
// history itself and the locks are no part of it.
using WorkSpaceState = QMap<QString, QStringList>;

// Which file it is, and how often its content has changed.
inline QByteArray changeStampOf(const QString& database) {
    struct stat status {};
    QFile file(database);
    if (stat(QFile::encodeName(database), &status) != 0 || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    file.seek(24);
    return QByteArray::number(static_cast<qulonglong>(status.st_ino)) + ':' + file.read(4);
}

// Reads the work space of a program folder, whose changes are all committed. A database is read
// anew only when its file's own count of changes has moved on, another file when its times have.
class WorkSpaceReader {
public:
    enum class Databases {
        rows,  // a line for each
        bytes, // but for the first hundred, which count the changes: more is told apart, in less
               // time
    };
    explicit WorkSpaceReader(QString home, Databases databases = Databases::rows)
        : home_(std::move(home)), read_(databases) {}

    WorkSpaceState state() {
        WorkSpaceState all;
        for (const char* folder : {"/Sys", "/工程文档管理"}) {
            add(all, home_ + folder);
        }
        return all;
    }
    // The databases of the last state by their bytes but for the first hundred, which count the
    // changes.
    QMap<QString, QByteArray> databases() const {
        QMap<QString, QByteArray> digests;
        for (auto seen = seen_.begin(); seen != seen_.end(); ++seen) {
            if (seen.key().endsWith(".mdb") && QFile::exists(seen.key())) {
                digests[seen.key().mid(home_.size())] = seen->digest;
            }
        }
        return digests;
    }

private:
    struct Seen {
        QByteArray stamp;
        QByteArray digest;
        QStringList lines;
    };

    void add(WorkSpaceState& all, const QString& folder) {
        const QDir inside(folder);
        for (const QFileInfo& entry : inside.entryInfoList(
                 QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name)) {
            const QString path = entry.filePath();
            const QString name = path.mid(home_.size());
            if (entry.fileName() == ".~history" || entry.fileName() == "qvnd.lock") {
                continue;
            }
            if (entry.isDir()) {
                all[name] = {"folder"};
                add(all, path);
            } else {
                all[name] = !path.endsWith(".mdb")     ? QStringList(digestOf(path))
                            : read_ == Databases::rows ? rowsIn(path)
                                                       : QStringList(bytesIn(path));
            }
        }
    }
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    // A file that was written just now may be written again with no other time.
    QString digestOf(const QString& path) {
        struct stat status {};
        stat(QFile::encodeName(path), &status);
        struct timespec now {};
        clock_gettime(CLOCK_REALTIME, &now);
        const QByteArray stamp = QByteArray::number(static_cast<qulonglong>(status.st_ino)) + ':' +
                                 QByteArray::number(qlonglong{status.st_size}) + ':' +
                                 QByteArray::number(qlonglong{status.st_ctim.tv_sec}) + ':' +
                                 QByteArray::number(qlonglong{status.st_ctim.tv_nsec});
        Seen& seen = seen_[path];
        if (stamp != seen.stamp) {
            const bool isLong = now.tv_sec > status.st_ctim.tv_sec + 1;
            seen = {isLong ? stamp : QByteArray(), hashOf(contentOf(path)), {}};
        }
        return seen.digest;
    }
    QString bytesIn(const QString& path) {
        Seen& seen = seen_[path];
        const QByteArray stamp = changeStampOf(path);
        if (stamp != seen.stamp) {
            seen = {stamp, hashOf(contentOf(path).mid(100)), {}};
        }
        return seen.digest;
    }
    static QByteArray hashOf(const QByteArray& bytes) {
        return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    }
    QStringList rowsIn(const QString& path) {
        Seen& seen = seen_[path];
        const QByteArray stamp = changeStampOf(path);
        if (stamp != seen.stamp) {
            const QByteArray image = jet::imageOf(path);
            seen = {stamp, hashOf(image.mid(100)), linesOf(image)};
        }
        return seen.lines;
    }
    static QStringList linesOf(const QByteArray& image) {
        QStringList lines;
        jet::ImageTables tables(image);
        for (const QString& table : tables.tables().keys()) {
            lines << "table " + table;
            const auto rows = tables.rowsOf(table);
            for (auto row = rows.begin(); row != rows.end(); ++row) {
                lines << table + '|' + QString::number(qlonglong{row.key()}) + '|' +
                             QStringList(row->fields.values()).join('|');
            }
        }
        return lines;
    }

    QString home_;
    Databases read_;
    QMap<QString, Seen> seen_; // by path
};

inline WorkSpaceState workSpaceOf(const QString& home) { return WorkSpaceReader(home).state(); }

inline void expectSame(const WorkSpaceState& now, const WorkSpaceState& then) {
    if (now == then) {
        return;
    }
    for (const QString& name : now.keys() + then.keys()) {
        ASSERT_EQ(now.value(name, {"not there"}), then.value(name, {"not there"}))
            << name.toStdString();
    }
}

} // namespace qvnd::test
