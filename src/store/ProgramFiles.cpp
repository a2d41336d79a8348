#include "store/ProgramFiles.h"

#include "platform/files/Paths.h"
#include "platform/files/PlainName.h"

using namespace Qt::StringLiterals;

namespace qvnd::store {

namespace {

QString folderOf(const QString& gAppPath, QStringView name) {
    return files::withSeparator(gAppPath + u"sys"_s) + name.toString();
}

} // namespace

QString programFile(const QString& gAppPath, QStringView folder, const QString& name) {
    return files::withSeparator(folderOf(gAppPath, folder)) + files::plainName(name);
}

QString pictureFile(const QString& gAppPath, const QString& name) {
    return programFile(gAppPath, folder::pictures, name);
}

QString customPageFolder(const QString& gAppPath) {
    return folderOf(gAppPath, folder::customPages);
}

QString customPageFile(const QString& gAppPath, const QString& name) {
    return programFile(gAppPath, folder::customPages, name + u".doc"_s);
}

QString finishedDocument(const QString& gWorkPath) { return gWorkPath + u"施工方案.doc"_s; }

} // namespace qvnd::store
