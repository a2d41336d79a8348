#include "platform/files/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <system_error>

namespace qvnd::files {

namespace {

std::filesystem::path nativePath(const QString& path) {
#ifdef Q_OS_WIN
    return {path.toStdWString()};
#else
    return {QFile::encodeName(path).toStdString()};
#endif
}

// The spelling of `name` inside `folder`, or `name` itself when nothing there is called so.
QString spellingIn(const QString& folder, const QString& name) {
    for (const QString& entry : namesOf(folder)) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0) {
            return entry;
        }
    }
    return name;
}

// Without the dots that the text of a link has, where the path means the same without them.
std::filesystem::path targetOf(const std::filesystem::path& link) {
    std::error_code failed;
    const std::filesystem::path target =
        link.parent_path() / std::filesystem::read_symlink(link, failed);
    const std::filesystem::path plain = target.lexically_normal();
    const std::filesystem::path real = std::filesystem::weakly_canonical(target, failed);
    return std::filesystem::weakly_canonical(plain, failed) == real ? plain : real;
}

} // namespace

QChar separator() { return QDir::separator(); }

QString withSeparator(const QString& path) {
    return path.endsWith(separator()) ? path : path + separator();
}

QString withoutSeparator(const QString& path) {
    return path.size() > 1 && path.endsWith(separator()) ? path.chopped(1) : path;
}

QString resolved(const QString& path) {
    if (path.isEmpty() || QFileInfo::exists(path)) {
        return path;
    }
    const qsizetype cut = path.lastIndexOf(separator());
    const QString name = path.mid(cut + 1); // empty behind a separator at the end
    if (cut < 0) {
        return spellingIn(".", name);
    }
    if (cut == 0) {
        return separator() + spellingIn(separator(), name);
    }
    const QString folder = resolved(path.left(cut));
    return folder + separator() + spellingIn(folder, name);
}

QStringList namesOf(const QString& folder) {
    QStringList names;
    std::error_code failed;
    for (std::filesystem::directory_iterator at(nativePath(folder), failed), end; at != end;
         at.increment(failed)) {
        names << fromPath(at->path().filename());
    }
    return names;
}

bool folderExists(const QString& path) { return QFileInfo(resolved(path)).isDir(); }

bool fileExists(const QString& path) { return QFileInfo(resolved(path)).isFile(); }

QString behindLinks(const QString& path) {
    constexpr int most = 40; // links that lead to each other end here
    std::error_code failed;
    std::filesystem::path real = nativePath(path);
    for (int i = 0; i < most && std::filesystem::is_symlink(real, failed); ++i) {
        real = targetOf(real);
    }
    return fromPath(real);
}

std::filesystem::path toPath(const QString& path) { return nativePath(resolved(path)); }

QString fromPath(const std::filesystem::path& path) {
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.wstring());
#else
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
#endif
}

} // namespace qvnd::files
