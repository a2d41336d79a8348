#pragma once

#include "platform/registry/Registry.h"

#include <QString>

namespace qvnd::registry {

// The value just as it is stored: a text with its terminator if it has one, other kinds with one
// character (U+0000 to U+00FF) for each byte. `rootName` is a root key's name, spelt exactly; any
// other gives an empty text. `status` becomes -1 on a failure (which gives an empty text too, but
// for one of closing the key) and is left alone otherwise.
QString ReadRegistryRaw(Registry& registry, const QString& rootName, const QString& subKey,
                        const QString& valueName, long& status);

} // namespace qvnd::registry
