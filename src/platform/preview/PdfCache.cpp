#include "platform/preview/PdfCache.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

QString PdfCache::pathOf(const QByteArray& contentHash) const {
    return QDir(folder_).filePath(QString::fromLatin1(contentHash.toHex()) + u".pdf"_s);
}

QString PdfCache::find(const QByteArray& contentHash) const {
    QFile file(pathOf(contentHash));
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        return {};
    }
    file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return file.fileName();
}

QString PdfCache::keep(const QByteArray& contentHash, const QString& pdf) const {
    QString path = pathOf(contentHash);
    QDir().mkpath(folder_);
    QFile::remove(path);
    if (!QFile::rename(pdf, path)) {
        return {};
    }
    makeRoom(path);
    return path;
}

void PdfCache::makeRoom(const QString& newest) const {
    qint64 bytes = 0;
    int files = 0;
    for (const QFileInfo& file :
         QDir(folder_).entryInfoList({u"*.pdf"_s}, QDir::Files, QDir::Time)) {
        bytes += file.size();
        ++files;
        const bool tooMuch = bytes > limits_.bytes || files > limits_.files;
        if (tooMuch && file.filePath() != newest) {
            bytes -= QFile::remove(file.filePath()) ? file.size() : 0;
            --files;
        }
    }
}

} // namespace qvnd::preview
