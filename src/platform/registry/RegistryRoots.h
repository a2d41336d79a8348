#pragma once

#include "platform/registry/Registry.h"

#include <QString>

namespace qvnd::registry {

// The handle of a root key's name, exactly as spelt ("HKEY_LOCAL_MACHINE" is 0x80000002); any
// other name gives 0.
RootHandle RootFromName(const QString& name);
// The name that gives this handle; empty for any other number.
QString NameOfRoot(RootHandle root);

} // namespace qvnd::registry
