#include "store/ProgramFiles.h"

#include "platform/files/Paths.h"

using namespace Qt::StringLiterals;

namespace qvnd::store {

namespace {

const QString pictures = u"图片库"_s;
const QString customPages = u"自定义"_s;

QString folderOf(const QString& gAppPath, const QString& name) {
    return files::withSeparator(gAppPath + u"sys"_s) + name;
}

} // namespace

QString programFile(const QString& gAppPath, const QString& folder, const QString& name) {
    return files::withSeparator(folderOf(gAppPath, folder)) + name;
}

QString pictureFile(const QString& gAppPath, const QString& name) {
    return programFile(gAppPath, pictures, name);
}

QString customPageFolder(const QString& gAppPath) { return folderOf(gAppPath, customPages); }

QString customPageFile(const QString& gAppPath, const QString& name) {
    return programFile(gAppPath, customPages, name + u".doc"_s);
}

} // namespace qvnd::store
