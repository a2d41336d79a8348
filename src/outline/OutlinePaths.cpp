#include "outline/OutlinePaths.h"

#include "outline/OutlineKeys.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/files/PlainName.h"

namespace qvnd::outline {

namespace {

QString documentIn(const QString& folder, const QString& key) {
    const QString table = tableOfKey(key);
    if (!isKeyOf(table, key)) {
        throw RunTimeError(
            error::pathNotFound,
            QStringLiteral("“%1”不是文档的编号，没有对应的文件").arg(key).toStdU16String());
    }
    files::plainName(table);
    return folder + files::separator() + key + ".doc";
}

} // namespace

QString documentPath(const modMain& state, const QString& plan, const QString& key) {
    return documentIn(store::planFolder(state, plan), key);
}

QString templateDocumentPath(const modMain& state, const QString& name, const QString& key) {
    return documentIn(store::templateFolder(state, name), key);
}

} // namespace qvnd::outline
