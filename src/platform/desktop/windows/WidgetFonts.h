#pragma once

#include "platform/desktop/Fonts.h"

namespace qvnd::desktop {

// The fonts of the desktop. Printers take whatever the screen has, so both lists are one.
class WidgetFonts : public Fonts {
public:
    bool hasPrinter() override;
    QStringList printerFonts() override { return screenFonts(); }
    QStringList screenFonts() override;
};

} // namespace qvnd::desktop
