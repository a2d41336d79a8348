#include "store/LegacyFile.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"

#include <QFile>

#include <system_error>

namespace qvnd::store {

namespace {

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        files::throwFileError(error::permissionDenied, path);
    }
    return file.readAll();
}

// A path that is free, or holds this very file from a run that was killed.
QString keepingPath(const QString& file) {
    const QByteArray contents = contentsOf(file);
    const QString first = file + ".jet";
    QString path = first;
    for (int number = 2; QFile::exists(path) && contentsOf(path) != contents; ++number) {
        path = first + '.' + QString::number(number);
    }
    return path;
}

// A database under work beside the file; gone with the object unless it took the file's place.
class Unfinished {
public:
    explicit Unfinished(const QString& file) : file_(file), path_(file + ".import") { clear(); }
    ~Unfinished() { clear(); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    const QString& path() const { return path_; }
    void takeThePlace() const {
        std::error_code failure;
        std::filesystem::rename(files::toPath(path_), files::toPath(file_), failure);
        if (failure) {
            files::throwFileError(failure, file_);
        }
    }

private:
    void clear() const {
        for (const char* suffix : {"", "-journal", ".new", ".new-journal"}) {
            QFile::remove(path_ + suffix);
        }
    }

    QString file_;
    QString path_;
};

} // namespace

QString replaceLegacyFile(jet::Workspace& workspace, const QString& file,
                          const std::function<void(const QString& path)>& build) {
    const Unfinished unfinished(file);
    build(unfinished.path());
    QString kept = keepingPath(file);
    if (!QFile::exists(kept)) {
        files::copyWhole(file, kept);
    }
    workspace.AboutToReplace(file, unfinished.path());
    unfinished.takeThePlace();
    return kept;
}

} // namespace qvnd::store
