#include "outline/windows/OutlineIcons.h"

#include "outline/OutlineNode.h"

#include <array>

// A static library's resources are loaded on demand, from outside of any namespace.
static void loadIcons() { Q_INIT_RESOURCE(icons); }

namespace qvnd::outline {

namespace {

QIcon treeIcon(const char* name) { return QIcon(QStringLiteral(":/icons/tree/%1.svg").arg(name)); }

} // namespace

QIcon outlineIcon(int image) {
    static const std::array<QIcon, 7> icons = [] {
        loadIcons();
        std::array<QIcon, 7> made;
        made[image::root] = treeIcon("root");
        made[image::rootSelected] = treeIcon("root-selected");
        made[image::folder] = treeIcon("folder");
        made[image::folderSelected] = treeIcon("folder-selected");
        made[image::document] = treeIcon("document");
        made[image::documentSelected] = treeIcon("document-selected");
        return made;
    }();
    const bool known = image >= image::root && image <= image::documentSelected;
    return known ? icons[static_cast<std::size_t>(image)] : QIcon();
}

QIcon commandIcon(const QString& name) {
    loadIcons();
    return QIcon(QStringLiteral(":/icons/commands/%1.svg").arg(name));
}

} // namespace qvnd::outline
