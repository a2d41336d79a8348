#include "outline/OutlinePaths.h"

#include "outline/OutlineKeys.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "store/modMain.h"

#include <QStringList>

#include <algorithm>

namespace qvnd::outline {

namespace {

// A system may drop blanks and points at the end of a name, and the name with them.
bool isNothing(const QString& name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c == u'.' || c.isSpace(); });
}

bool leadsElsewhere(const QString& name) {
    return std::any_of(name.begin(), name.end(), [](QChar c) {
        return c == u'/' || c == u'\\' || c == u':' || c.category() == QChar::Other_Control;
    });
}

// Windows takes these names for devices in every folder, whatever stands behind a point.
bool isDevice(const QString& name) {
    static const QStringList devices{QStringLiteral("CON"),    QStringLiteral("PRN"),
                                     QStringLiteral("AUX"),    QStringLiteral("NUL"),
                                     QStringLiteral("CONIN$"), QStringLiteral("CONOUT$")};
    const QString stem = name.section(u'.', 0, 0).trimmed().toUpper();
    const bool isPort = stem.size() == 4 && stem.back().isDigit() &&
                        (stem.startsWith(u"COM") || stem.startsWith(u"LPT"));
    return isPort || devices.contains(stem);
}

const QString& folderName(const QString& name) {
    if (isNothing(name) || leadsElsewhere(name) || isDevice(name)) {
        throw RunTimeError(error::pathNotFound,
                           QStringLiteral("“%1”不能用作文件夹的名称").arg(name).toStdU16String());
    }
    return name;
}

const QString& fileName(const QString& key) {
    const QString table = tableOfKey(key);
    if (!isKeyOf(table, key)) {
        throw RunTimeError(
            error::pathNotFound,
            QStringLiteral("“%1”不是文档的编号，没有对应的文件").arg(key).toStdU16String());
    }
    folderName(table);
    return key;
}

QString databaseIn(const QString& folder, const QString& name) {
    return files::resolved(folder + files::separator() + name + ".mdb");
}

} // namespace

QString planFolder(const modMain& state, const QString& plan) {
    return state.gUserTplPath + folderName(plan);
}

QString planDatabasePath(const modMain& state, const QString& plan) {
    return databaseIn(planFolder(state, plan), plan);
}

QString documentPath(const modMain& state, const QString& plan, const QString& key) {
    return planFolder(state, plan) + files::separator() + fileName(key) + ".doc";
}

QString templateLibraryPath(const modMain& state) {
    return files::resolved(state.gSysPath + "database" + files::separator() + "Db_Template.mdb");
}

QString templateFolder(const modMain& state, const QString& name) {
    return state.gSysPath + "标书模板" + files::separator() + folderName(name);
}

QString templateDatabasePath(const modMain& state, const QString& name) {
    return databaseIn(templateFolder(state, name), name);
}

QString templateDocumentPath(const modMain& state, const QString& name, const QString& key) {
    return templateFolder(state, name) + files::separator() + fileName(key) + ".doc";
}

} // namespace qvnd::outline
