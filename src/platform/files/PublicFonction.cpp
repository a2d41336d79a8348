#include "platform/files/PublicFonction.h"

#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/files/TextDecoding.h"

#include <QFile>

namespace qvnd::files {

namespace {

QStringList linesOf(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    return text.split(u'\n');
}

} // namespace

QString ReadKeyedLine(const QString& fileName, const QString& key) {
    QFile file(resolved(fileName));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QStringList lines = linesOf(decodeText(file.readAll()));
    const QString wanted = key.toUpper();
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        if (lines[i].toUpper() == wanted) {
            return lines[i + 1];
        }
    }
    return {};
}

MadePath MakePath(const QString& path, QString base) {
    base = withSeparator(base);
    if (!folderExists(withoutSeparator(base))) {
        return MadePath::baseMissing;
    }
    if (folderExists(base + path)) {
        return MadePath::alreadyThere;
    }
    DiskFileSystem folders;
    const qsizetype cut = path.indexOf(separator());
    if (cut < 0) {
        folders.CreateFolder(base + path);
        return MadePath::made;
    }
    const QString first = path.left(cut);
    if (!folderExists(base + first)) {
        folders.CreateFolder(base + first);
    }
    MakePath(path.mid(cut + 1), base + first + separator());
    return MadePath::made;
}

} // namespace qvnd::files
