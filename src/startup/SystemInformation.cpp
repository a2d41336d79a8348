#include "startup/SystemInformation.h"

#include "platform/files/Paths.h"
#include "platform/registry/RegistryRoots.h"
#include "platform/registry/RegistryValues.h"

#include <QtEndian>

namespace qvnd::startup {

namespace {

constexpr registry::Access readAndChange = 0x2003F;
constexpr qsizetype longestValue = 1024;

QString asText(const registry::Value& value) {
    QByteArray bytes = registry::ansiBytes(value).left(longestValue);
    if (value.type == registry::ValueType::number && bytes.size() == sizeof(qint32)) {
        return QString::number(qFromLittleEndian<qint32>(bytes.constData()));
    }
    if (bytes.endsWith('\0')) {
        bytes.chop(1);
    }
    if (value.type != registry::ValueType::text) {
        return QString::fromLatin1(bytes);
    }
    QString text = QString::fromUtf16(reinterpret_cast<const char16_t*>(value.data.constData()),
                                      value.data.size() / 2)
                       .left(longestValue);
    if (text.endsWith(QChar(0))) {
        text.chop(1);
    }
    return text;
}

} // namespace

bool GetKeyValue(registry::Registry& registry, registry::RootHandle root, const QString& key,
                 const QString& valueName, QString& result) {
    result.clear();
    registry::KeyHandle opened = 0;
    if (registry.openKey(root, key, readAndChange, opened) != registry::status::success) {
        return false;
    }
    registry::Value value;
    const bool isRead = registry.queryValue(opened, valueName, value) == registry::status::success;
    registry.closeKey(opened);
    if (isRead) {
        result = asText(value);
    }
    return isRead;
}

std::optional<QString> systemInformationProgram(registry::Registry& registry) {
    const auto root = registry::RootFromName(QStringLiteral("HKEY_LOCAL_MACHINE"));
    QString path;
    if (GetKeyValue(registry, root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                    QStringLiteral("PATH"), path)) {
        return path;
    }
    if (GetKeyValue(registry, root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"),
                    QStringLiteral("MSINFO"), path)) {
        path += files::separator() + QStringLiteral("MSINFO32.EXE");
        if (files::fileExists(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace qvnd::startup
