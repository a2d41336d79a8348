#include "platform/files/SafeReplace.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace qvnd::files {

namespace {

constexpr qint64 blockSize = 1 << 20;

[[noreturn]] void throwFrom(QFileDevice::FileError failure, const QString& path) {
    if (!QFileInfo(path).dir().exists()) {
        throwFileError(error::pathNotFound, path);
    }
    switch (failure) {
    case QFileDevice::ResourceError:
    case QFileDevice::WriteError:
        throwFileError(error::diskFull, path);
    case QFileDevice::OpenError:
    case QFileDevice::PermissionsError:
        throwFileError(error::permissionDenied, path);
    default:
        throwFileError(error::pathAccess, path);
    }
}

void refuseReadOnly(const QString& target) {
    const QFileInfo there(target);
    if (there.exists() && !(there.permissions() & QFileDevice::WriteOwner)) {
        throwFileError(error::permissionDenied, target);
    }
}

void open(QSaveFile& file) {
    refuseReadOnly(file.fileName());
    if (!file.open(QIODevice::WriteOnly)) {
        throwFrom(file.error(), file.fileName());
    }
}

void write(QSaveFile& file, const QByteArray& bytes) {
    if (file.write(bytes) != bytes.size()) {
        throwFrom(QFileDevice::WriteError, file.fileName());
    }
}

// What is still held back is written first: QSaveFile passes over a failure to write it at the end.
void commit(QSaveFile& file) {
    if (!file.flush() || !file.commit()) {
        throwFrom(file.error(), file.fileName());
    }
}

} // namespace

void writeWhole(const QString& path, const QByteArray& bytes) {
    QSaveFile file(resolved(path));
    open(file);
    write(file, bytes);
    commit(file);
}

void copyWhole(const QString& source, const QString& target) {
    copyAsSpelt(resolved(source), resolved(target));
}

void copyAsSpelt(const QString& source, const QString& target) {
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly)) {
        throwFileError(from.exists() ? error::permissionDenied : error::fileNotFound, source);
    }
    QSaveFile to(target);
    open(to);
    while (!from.atEnd()) {
        const QByteArray block = from.read(blockSize);
        if (block.isEmpty()) {
            throwFileError(error::pathAccess, source);
        }
        write(to, block);
    }
    commit(to);
}

bool haveSameBytes(const QString& one, const QString& other) {
    QFile first(one);
    QFile second(other);
    return first.size() == second.size() && first.open(QIODevice::ReadOnly) &&
           second.open(QIODevice::ReadOnly) && first.readAll() == second.readAll();
}

} // namespace qvnd::files
