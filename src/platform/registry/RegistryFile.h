#pragma once

#include "platform/registry/Registry.h"

#include <QHash>
#include <QStringList>

#include <vector>

namespace qvnd::registry {

// A registry kept as a file in regedit's text format. Reads "Windows Registry Editor Version
// 5.00" (UTF-16LE with mark, also UTF-8) and the older "REGEDIT4" (the local code page, GBK, also
// UTF-8). Later lines win over earlier ones; "-" before a key or as a value takes it away. Lines
// that it does not understand are kept as they came and have no effect.
class RegistryFile : public Registry {
public:
    // An empty registry.
    RegistryFile() = default;
    // Reads the file; a missing or unreadable file is an empty registry.
    static RegistryFile read(const QString& path);
    static RegistryFile parse(const QByteArray& bytes);

    bool keyExists(RootHandle root, const QString& subKey) const override;
    std::optional<Value> value(RootHandle root, const QString& subKey,
                               const QString& name) const override;

    // The file's lines as they came, without line ends; continuation lines stay apart.
    const QStringList& lines() const { return lines_; }

private:
    // Value names in lower case; the empty name is the default value.
    using Key = QHash<QString, Value>;

    void apply();
    void enter(const QString& header, QString& current);
    void assign(const QString& keyPath, const QString& statement);
    void removeKey(const QString& keyPath);

    QStringList lines_;
    bool ansi_ = false;
    // By the whole path in lower case.
    QHash<QString, Key> keys_;
};

} // namespace qvnd::registry
