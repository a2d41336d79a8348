#pragma once

#include "platform/registry/Registry.h"

#include <QString>

namespace qvnd::registry {

// Reads values by full key paths such as "HKEY_LOCAL_MACHINE\Software\...". Failures never
// throw: they are results. One object for one use.
class RegOperation {
public:
    // The registry must outlive the object.
    explicit RegOperation(const Registry& registry);

    // The value as text, or "Error" when the key or the value cannot be read; empty when the key
    // path is none. The value passes through a buffer of 255 characters: leading blanks are lost,
    // a stored text without terminator loses its last character, and a text of 255 characters or
    // more is cut to 254.
    QString GetStringValueA(QString keyPath, const QString& valueName) const;

    // Splits a key path at its first "\" into the root's handle and the sub-key, which takes the
    // path's place; a bare root name leaves an empty sub-key. False when the path does not begin
    // with "HKEY_" or ends in "\"; an unknown root succeeds with handle 0.
    static bool ParseKeyPath(QString& keyPath, RootHandle& root);

private:
    const Registry& registry_;
};

} // namespace qvnd::registry
