#pragma once

#include "platform/files/TextLines.h"
#include "platform/registry/Registry.h"

#include <QHash>
#include <QMap>

#include <optional>
#include <vector>

namespace qvnd::registry {

// Keys and values as they stand in regedit's text format: "Windows Registry Editor Version 5.00"
// (UTF-16LE with mark, also UTF-8) and the older "REGEDIT4" (the local code page, GBK, also
// UTF-8). Later lines win over earlier ones; "-" before a key or as a value takes it away. A
// change touches only the lines that say what changes; every line that is not understood, and
// every remark, stays as it came.
//
// Key paths are whole ("HKEY_USERS\a\b") and compared without case.
class RegistryText {
public:
    // An empty file of version 5.
    RegistryText();
    // Any bytes; what makes no sense has no effect.
    static RegistryText parse(const QByteArray& bytes);

    QByteArray bytes() const { return lines_.bytes(); }
    QStringList lines() const { return lines_.texts(); }

    // A key is there with its own line or with that of a key below it.
    bool hasKey(const QString& keyPath) const;
    bool hasSubKeys(const QString& keyPath) const;
    std::optional<Value> value(const QString& keyPath, const QString& name) const;
    // In the order of the lines that made them.
    std::vector<NamedValue> values(const QString& keyPath) const;

    // Paths and names hold no line break.
    void addKey(const QString& keyPath);
    // Takes away the key's own lines; its parent stays. Keys below it are not looked at.
    void removeKey(const QString& keyPath);
    void setValue(const QString& keyPath, const QString& name, const Value& value);
    void removeValue(const QString& keyPath, const QString& name);

private:
    // `"name"=...`, over one line or several.
    struct Statement {
        qsizetype first = 0;
        qsizetype count = 1;
        QString name; // lower case
    };
    // A key's line and what follows it up to the next.
    struct Section {
        QString key; // lower case; empty for none
        qsizetype header = 0;
        qsizetype end = 0; // behind its last line
        std::vector<Statement> statements;
    };
    struct Entry {
        NamedValue named;
        qsizetype order = 0;
    };
    struct Key {
        qsizetype section = -1; // the last of its sections that counts
        QHash<QString, Entry> values;
    };

    void read();
    void enter(const QString& header);
    void assign(const QString& statement, qsizetype first, qsizetype count);
    void forget(const QString& key);
    qsizetype sectionFor(const QString& keyPath);
    std::vector<Statement> statementsOf(const QString& key, const QString& name) const;
    void removeStatements(std::vector<Statement> statements);

    files::TextLines lines_{files::TextEncoding::utf16LittleEndian};
    bool ansi_ = false;
    std::vector<Section> sections_;
    QMap<QString, Key> keys_; // by the path in lower case
};

} // namespace qvnd::registry
