#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

namespace qvnd::startup {

// A picture of the program's own ("qvnd", "splash"), drawn at that size in device-independent
// pixels, sharp on every screen.
QPixmap picture(const QString& name, const QSize& size);

} // namespace qvnd::startup
