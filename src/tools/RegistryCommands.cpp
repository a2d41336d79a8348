#include "tools/RegistryCommands.h"

#include "platform/files/Paths.h"
#include "platform/registry/RegOperation.h"
#include "platform/registry/RegistryFile.h"
#include "platform/registry/W_R_InI_File.h"
#include "tools/Arguments.h"
#include "tools/Session.h"

#include <QDir>

namespace qvnd::tools {

namespace {

using registry::RegOperation;
using registry::ValueType;

// The kind of a value; `none` when it cannot be read.
ValueType typeOf(registry::Registry& registry, QString keyPath, const QString& name) {
    registry::RootHandle root = 0;
    registry::KeyHandle key = 0;
    registry::Value value{ValueType::none, {}};
    if (RegOperation::ParseKeyPath(keyPath, root) &&
        registry.openKey(root, keyPath, registry::access::read, key) == registry::status::success) {
        registry.queryValue(key, name, value);
        registry.closeKey(key);
    }
    return value.type;
}

ExitStatus refuse(Session& session, const QString& keyPath, const QString& name,
                  const QString& reason) {
    session.output().note(
        QStringLiteral("读不到注册表项『%1』的值『%2』：%3").arg(keyPath, name, reason));
    return ExitStatus::refused;
}

ExitStatus registryGet(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(2, 2);
    const QString keyPath = arguments.position(0);
    const QString name = arguments.position(1);
    registry::RootHandle root = 0;
    QString parsed = keyPath;
    if (!RegOperation::ParseKeyPath(parsed, root) || root == 0) {
        return refuse(session, keyPath, name, QStringLiteral("不是完整的注册表项"));
    }
    auto registry =
        registry::RegistryFile::read(files::withSeparator(session.options().home) + "registry.reg");
    RegOperation reg(registry);
    const ValueType type = typeOf(registry, keyPath, name);
    QJsonValue json;
    QString text;
    if (type == ValueType::number) {
        const auto read = reg.GetDWORDValueA(QString(keyPath), name);
        if (const auto* number = std::get_if<std::int32_t>(&read)) {
            json = *number;
            text = QString::number(*number);
        }
    } else if (type == ValueType::text || type == ValueType::expandableText) {
        text = reg.GetStringValueA(QString(keyPath), name);
        json = text;
    } else {
        // As pairs of hexadecimal digits.
        text =
            QString::fromLatin1(reg.GetBinaryValueA(QString(keyPath), name).toLatin1().toHex(' '));
        json = text;
    }
    if (reg.LastStatus() != registry::status::success) {
        return refuse(session, keyPath, name, RegOperation::ErrorText(reg.LastStatus()));
    }
    session.output().result(json, text);
    return ExitStatus::done;
}

ExitStatus profileGet(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(4, 4);
    const registry::W_R_InI_File profile{
        QDir::toNativeSeparators(QDir().absoluteFilePath(arguments.position(0))),
        arguments.position(1)};
    const QString text = profile.GetString(arguments.position(2), arguments.position(3));
    session.output().result(text, text);
    return ExitStatus::done;
}

} // namespace

std::vector<Command> registryCommands() {
    return {
        {"registry get", "注册表项 值名", "显示程序注册表文件 registry.reg 中的一个值",
         registryGet},
        {"profile get", "文件 节 键 缺省值", "显示配置文件（ini）中的一个值", profileGet},
    };
}

} // namespace qvnd::tools
