#pragma once

#include "platform/registry/Registry.h"

#include <QString>

#include <optional>

namespace qvnd::startup {

// A value of the registry as text. A text gives itself without its terminator, a number its
// decimal digits, any other kind its bytes as text; at most 1024 bytes are read. False, with an
// empty result, when key or value cannot be read.
bool GetKeyValue(registry::Registry& registry, registry::RootHandle root, const QString& key,
                 const QString& valueName, QString& result);

// The program that shows the system's information: the one that the registry names, or else the
// one in the folder that it names, if that file is there; nothing when there is neither.
std::optional<QString> systemInformationProgram(registry::Registry& registry);

} // namespace qvnd::startup
