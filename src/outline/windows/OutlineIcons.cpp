#include "outline/windows/OutlineIcons.h"

#include "outline/OutlineNode.h"

#include <array>

// A static library's resources are loaded on demand, from outside of any namespace.
static void loadIcons() { Q_INIT_RESOURCE(icons); }

namespace qvnd::outline {

namespace {

// A selected row gets the same picture as any other: the toolkit would paint it over in the colour
// of the selection.
QIcon treeIcon(const char* name) {
    const QIcon drawn(QStringLiteral(":/icons/tree/%1.svg").arg(name));
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 40, 48, 64}) {
        const QPixmap picture = drawn.pixmap(QSize(size, size), 1.0);
        icon.addPixmap(picture, QIcon::Normal);
        icon.addPixmap(picture, QIcon::Selected);
    }
    return icon;
}

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
