#pragma once

#include "platform/files/Paths.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace qvnd::test {

// The name template of a folder in memory, where there is a file system for that: databases there
// need not wait for a disk. Empty otherwise.
inline QString inMemory() {
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return memory.isDir() && memory.isWritable() ? "/dev/shm/qvnd-XXXXXX" : QString();
}

// A folder with all that is in it, the times of its files and their second names: a file that has
// another time counts as changed by another program.
inline void copyWithTimes(const QString& from, const QString& to) {
    namespace fs = std::filesystem;
    const fs::path source = files::toPath(from);
    const fs::path target = files::toPath(to);
    std::vector<fs::path> shared; // files that have several names
    fs::create_directories(target);
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const fs::path copy = target / entry.path().lexically_relative(source);
        if (entry.is_directory()) {
            fs::create_directory(copy);
            continue;
        }
        if (entry.hard_link_count() > 1) {
            const auto other = std::find_if(shared.begin(), shared.end(), [&](const fs::path& one) {
                return fs::equivalent(one, entry.path());
            });
            if (other != shared.end()) {
                fs::create_hard_link(target / other->lexically_relative(source), copy);
                continue;
            }
            shared.push_back(entry.path());
        }
        fs::copy_file(entry.path(), copy);
        fs::last_write_time(copy, entry.last_write_time());
    }
}

// A temporary folder that goes with the object. Paths in it are written with "/".
class TemporaryFolder {
public:
    // `nameTemplate` tells where and under which name, with XXXXXX in it; empty: as the system
    // has it.
    explicit TemporaryFolder(const QString& nameTemplate = QString())
        : folder_(nameTemplate.isEmpty() ? QDir::tempPath() + "/qvnd-XXXXXX" : nameTemplate) {}

    QString path(const QString& name = {}) const {
        const QString inside = name.isEmpty() ? folder_.path() : folder_.filePath(name);
        return QDir::toNativeSeparators(inside);
    }
    // With a separator at its end.
    QString root() const { return files::withSeparator(path()); }

    void makeFolder(const QString& name) const { QDir(folder_.path()).mkpath(name); }
    void write(const QString& name, const QByteArray& bytes) const {
        makeFolder(QFileInfo(name).path());
        QFile file(folder_.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
    }
    QByteArray read(const QString& name) const {
        QFile file(folder_.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool exists(const QString& name) const { return QFileInfo::exists(folder_.filePath(name)); }
    // The names in a folder, in order.
    QStringList names(const QString& name = {}) const {
        return QDir(path(name))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir folder_;
};

} // namespace qvnd::test
