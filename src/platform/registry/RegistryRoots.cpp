#include "platform/registry/RegistryRoots.h"

#include <iterator>

namespace qvnd::registry {

namespace {

constexpr RootHandle first = 0x80000000;
// In the order of their handles.
constexpr const char* names[] = {
    "HKEY_CLASSES_ROOT",     "HKEY_CURRENT_USER",   "HKEY_LOCAL_MACHINE", "HKEY_USERS",
    "HKEY_PERFORMANCE_DATA", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA"};

} // namespace

RootHandle RootFromName(const QString& name) {
    RootHandle handle = first;
    for (const char* known : names) {
        if (name == QLatin1String(known)) {
            return handle;
        }
        ++handle;
    }
    return 0;
}

QString NameOfRoot(RootHandle root) {
    return root >= first && root - first < std::size(names) ? QLatin1String(names[root - first])
                                                            : QString();
}

} // namespace qvnd::registry
