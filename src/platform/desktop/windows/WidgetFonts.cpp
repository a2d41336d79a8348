#include "platform/desktop/windows/WidgetFonts.h"

#include <QFontDatabase>
#include <QPrinterInfo>

namespace qvnd::desktop {

bool WidgetFonts::hasPrinter() { return !QPrinterInfo::availablePrinterNames().isEmpty(); }

QStringList WidgetFonts::screenFonts() { return QFontDatabase::families(); }

} // namespace qvnd::desktop
