#include "platform/jet/legacy/JetHeader.h"

#include <QByteArray>
#include <QFile>

namespace qvnd::jet::legacy {

namespace {

const QByteArray mark("\0\1\0\0", 4);
const QByteArray jetName("Standard Jet DB\0", 16);
const QByteArray aceName("Standard ACE DB\0", 16);
constexpr qsizetype versionAt = 0x14;
constexpr qsizetype headerLength = 0x80;
constexpr int lastVersion = 6;
constexpr qint64 fewestPages = 3;

QByteArray headerOf(QFile& file) {
    return file.open(QIODevice::ReadOnly) ? file.read(headerLength) : QByteArray();
}

} // namespace

bool beginsAsJet(const QString& path) {
    QFile file(path);
    const QByteArray header = headerOf(file);
    return header.startsWith(mark) || header.mid(mark.size()).startsWith("Standard ");
}

bool hasSoundHeader(const QString& path) {
    QFile file(path);
    const QByteArray header = headerOf(file);
    const QByteArray name = header.mid(mark.size(), jetName.size());
    if (header.size() < headerLength || !header.startsWith(mark) ||
        (name != jetName && name != aceName)) {
        return false;
    }
    const int version = static_cast<unsigned char>(header[versionAt]);
    const qint64 pageSize = version == 0 ? 2048 : 4096;
    return version <= lastVersion && file.size() >= fewestPages * pageSize &&
           file.size() % pageSize == 0;
}

} // namespace qvnd::jet::legacy
