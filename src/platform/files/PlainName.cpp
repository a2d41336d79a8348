#include "platform/files/PlainName.h"

#include "platform/error/RunTimeError.h"

#include <QStringList>

#include <algorithm>

namespace qvnd::files {

namespace {

// A system may drop blanks and points at the end of a name, and the name with them.
bool isNothing(const QString& name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c == u'.' || c == u' '; });
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

} // namespace

bool isPlainName(const QString& name) {
    return !isNothing(name) && !leadsElsewhere(name) && !isDevice(name);
}

const QString& plainName(const QString& name) {
    if (!isPlainName(name)) {
        throw RunTimeError(
            error::pathNotFound,
            QStringLiteral("“%1”不能用作文件或文件夹的名称").arg(name).toStdU16String());
    }
    return name;
}

} // namespace qvnd::files
