#include "platform/registry/RegOperation.h"

#include "platform/files/Trim.h"
#include "platform/registry/RegistryRoots.h"

#include <QStringDecoder>

namespace qvnd::registry {

namespace {

constexpr qsizetype bufferLength = 255;

QString textOf(const Value& value) {
    if (value.type == ValueType::text || value.type == ValueType::expandableText) {
        return QStringDecoder(QStringConverter::Utf16LE, QStringConverter::Flag::Stateless)
            .decode(value.data);
    }
    return QString::fromLatin1(value.data);
}

} // namespace

RegOperation::RegOperation(const Registry& registry) : registry_(registry) {}

bool RegOperation::ParseKeyPath(QString& keyPath, RootHandle& root) {
    const qsizetype cut = keyPath.indexOf(u'\\');
    if (!keyPath.startsWith(QLatin1String("HKEY_")) || keyPath.endsWith(u'\\')) {
        return false;
    }
    root = RootFromName(cut < 0 ? keyPath : keyPath.left(cut));
    keyPath = cut < 0 ? QString() : keyPath.mid(cut + 1);
    return true;
}

QString RegOperation::GetStringValueA(QString keyPath, const QString& valueName) const {
    RootHandle root = 0;
    if (!ParseKeyPath(keyPath, root) || root == 0) {
        return {};
    }
    if (!registry_.keyExists(root, keyPath)) {
        return QStringLiteral("Error");
    }
    const auto value = registry_.value(root, keyPath, valueName);
    if (!value) {
        return QStringLiteral("Error");
    }
    const QString buffer = textOf(*value).left(bufferLength).leftJustified(bufferLength, u' ');
    // Blanks alone are trimmed: the terminator stays and is the character that goes.
    QString text = files::Trim(buffer);
    text.chop(1);
    return text;
}

} // namespace qvnd::registry
