#pragma once

#include "platform/registry/Registry.h"

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

} // namespace qvnd::registry
