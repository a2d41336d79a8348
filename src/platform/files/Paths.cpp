#include "platform/files/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>
#include <system_error>
#include <vector>

namespace qvnd::files {

namespace {

std::filesystem::path nativePath(const QString& path) {
#ifdef Q_OS_WIN
    return {path.toStdWString()};
#else
    return {QFile::encodeName(path).toStdString()};
#endif
}

// Where the letters of a name that have two cases stand; nothing when one of them has more
// spellings than two ("k", "s" and every letter beyond ASCII count as such), or when there are so
// many that reading the folder is cheaper than asking for each spelling.
std::optional<std::vector<qsizetype>> casedLetters(const QString& name) {
    constexpr std::size_t most = 6;
    std::vector<qsizetype> places;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar letter = name[i].toLower();
        if (letter == name[i].toUpper()) {
            continue;
        }
        if (letter.unicode() > u'z' || letter == u'k' || letter == u's' || places.size() == most) {
            return std::nullopt;
        }
        places.push_back(i);
    }
    return places;
}

// Asks for each spelling of a name with few letters; `name` itself when there is none.
QString spellingAmong(const QString& folder, QString name, const std::vector<qsizetype>& letters) {
    const QString asked = name;
    for (std::size_t spelling = 0; spelling < std::size_t{1} << letters.size(); ++spelling) {
        for (std::size_t i = 0; i < letters.size(); ++i) {
            QChar& letter = name[letters[i]];
            letter = (spelling >> i) & 1U ? letter.toUpper() : letter.toLower();
        }
        std::error_code ignored;
        if (std::filesystem::exists(
                std::filesystem::symlink_status(nativePath(folder) / nativePath(name), ignored))) {
            return name;
        }
    }
    return asked;
}

// The spelling of `name` inside `folder`, or `name` itself when nothing there is called so. A
// folder may hold thousands of documents, so it is read only where asking would take longer, and
// then the names alone.
QString spellingIn(const QString& folder, const QString& name) {
    if (const auto letters = casedLetters(name)) {
        return spellingAmong(folder, name, *letters);
    }
    std::error_code failed;
    for (std::filesystem::directory_iterator at(nativePath(folder), failed), end;
         !failed && at != end; at.increment(failed)) {
        QString entry = fromPath(at->path().filename());
        if (entry.compare(name, Qt::CaseInsensitive) == 0) {
            return entry;
        }
    }
    return name;
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
    const qsizetype end = path.endsWith(separator()) ? path.size() - 1 : path.size();
    const qsizetype cut = path.lastIndexOf(separator(), end - 1);
    if (end == 0 || cut == 0) {
        return cut == 0
                   ? separator() + spellingIn(separator(), path.mid(1, end - 1)) + path.mid(end)
                   : path;
    }
    const QString name = path.mid(cut + 1, end - cut - 1);
    if (cut < 0) {
        return spellingIn(".", name) + path.mid(end);
    }
    const QString folder = resolved(path.left(cut));
    return folder + separator() + spellingIn(folder, name) + path.mid(end);
}

bool folderExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(resolved(path)).isDir();
}

bool fileExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(resolved(path)).isFile();
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
