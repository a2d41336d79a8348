#include "startup/windows/Pictures.h"

#include <QIcon>

// A static library's resources are linked only where somebody asks for them; the asking must stand
// outside every namespace.
static void bringResources() { Q_INIT_RESOURCE(pictures); }

namespace qvnd::startup {

QPixmap picture(const QString& name, const QSize& size) {
    bringResources();
    return QIcon(QStringLiteral(":/pictures/%1.svg").arg(name)).pixmap(size);
}

} // namespace qvnd::startup
