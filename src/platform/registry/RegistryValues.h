#pragma once

#include "platform/registry/Registry.h"

#include <QStringList>

#include <optional>

namespace qvnd::registry {

// One line under a key of a registry file.
struct Assignment {
    QString name;
    // Nothing takes the value away ("name"=-).
    std::optional<Value> value;
};

// Reads `"name"="text"`, `@="text"`, `"name"=dword:0000001f`, `"name"=hex(2):41,00,...` and
// `"name"=-`; nothing for any other line. With `ansi` the bytes of a hex text are in the local
// code page (GBK), else they are UTF-16LE.
std::optional<Assignment> parseAssignment(const QString& statement, bool ansi);

// The lines that parseAssignment reads back as exactly this value: a text that ends in its one
// terminator as "text", four bytes of a number as dword, everything else as hex, broken into lines
// as regedit breaks them.
QStringList formatAssignment(const QString& name, const Value& value, bool ansi);

// The bytes of a text value as the older interface of the operating system tells them: text in
// the local code page (GBK), every other kind as stored.
QByteArray ansiBytes(const Value& value);
// UTF-16LE.
QByteArray utf16Bytes(const QString& text);
// The value as a text: what its UTF-16LE says, of a kind that is no text its bytes as Latin-1.
QString textOf(const Value& value);

} // namespace qvnd::registry
