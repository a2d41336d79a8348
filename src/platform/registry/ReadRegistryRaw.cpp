#include "platform/registry/ReadRegistryRaw.h"

#include "platform/registry/RegistryRoots.h"
#include "platform/registry/RegistryValues.h"

namespace qvnd::registry {

namespace {

constexpr long failed = -1;

} // namespace

QString ReadRegistryRaw(Registry& registry, const QString& rootName, const QString& subKey,
                        const QString& valueName, long& status) {
    const RootHandle root = RootFromName(rootName);
    if (root == 0) {
        return {};
    }
    KeyHandle key = 0;
    if (registry.openKey(root, subKey, access::read, key) != status::success) {
        status = failed;
        return {};
    }
    Value value;
    QString text;
    if (registry.queryValue(key, valueName, value) == status::success) {
        text = textOf(value);
    } else {
        status = failed;
    }
    if (registry.closeKey(key) != status::success) {
        status = failed;
    }
    return text;
}

} // namespace qvnd::registry
