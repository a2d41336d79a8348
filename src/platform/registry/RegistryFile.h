#pragma once

#include "platform/registry/RegistryText.h"

#include <QHash>
#include <QStringList>

#include <functional>
#include <optional>

namespace qvnd::registry {

// A registry kept as a file in regedit's text format, see RegistryText. Every change reads the
// file anew and writes it whole or not at all before the operation answers; one that cannot be
// written answers with status 1013 and changes nothing. A file that is there but cannot be read
// is never written.
class RegistryFile : public Registry {
public:
    // An empty registry, in memory alone.
    RegistryFile() = default;
    // The registry of a file, which need not be there yet: a missing or unreadable one is empty.
    static RegistryFile read(const QString& path);
    // In memory alone.
    static RegistryFile parse(const QByteArray& bytes);

    Status openKey(RootHandle root, const QString& subKey, Access access, KeyHandle& key) override;
    Status createKey(RootHandle root, const QString& subKey, KeyHandle& key) override;
    Status closeKey(KeyHandle key) override;
    Status deleteKey(KeyHandle parent, const QString& subKey) override;
    Status keySecurity(KeyHandle key) override;
    Status queryValue(KeyHandle key, const QString& name, Value& value) override;
    Status setValue(KeyHandle key, const QString& name, const Value& value) override;
    Status deleteValue(KeyHandle key, const QString& name) override;
    Status enumValues(KeyHandle key, std::vector<NamedValue>& values) override;

    // How many handles are open.
    qsizetype openKeys() const { return open_.size(); }
    // The file's lines as they came, without line ends; continuation lines stay apart.
    QStringList lines() const { return text_.lines(); }
    // The whole file as it stands.
    QByteArray bytes() const { return text_.bytes(); }

private:
    struct OpenKey {
        QString path;
        Access access = 0;
    };
    using Change = std::function<void(RegistryText&)>;

    KeyHandle open(const QString& path, Access access);
    // The open key behind a handle, or why it does not serve.
    Status find(KeyHandle key, Access wanted, QString& path) const;
    Status change(const Change& change);
    // False when there is a file that cannot be read.
    bool load();

    RegistryText text_;
    QString file_; // empty: in memory alone
    QHash<KeyHandle, OpenKey> open_;
    KeyHandle last_ = 0;
};

} // namespace qvnd::registry
