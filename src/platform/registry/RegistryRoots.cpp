#include "platform/registry/RegistryRoots.h"

namespace qvnd::registry {

RootHandle RootFromName(const QString& name) {
    static constexpr const char* names[] = {
        "HKEY_CLASSES_ROOT",     "HKEY_CURRENT_USER",   "HKEY_LOCAL_MACHINE", "HKEY_USERS",
        "HKEY_PERFORMANCE_DATA", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA"};
    constexpr RootHandle first = 0x80000000;
    RootHandle handle = first;
    for (const char* known : names) {
        if (name == QLatin1String(known)) {
            return handle;
        }
        ++handle;
    }
    return 0;
}

} // namespace qvnd::registry
