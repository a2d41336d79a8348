#pragma once

#include <QStringList>

namespace qvnd::desktop {

// The fonts that a document can be set in on this machine.
class Fonts {
public:
    virtual ~Fonts() = default;

    virtual bool hasPrinter() = 0;
    // The names of the faces as the system lists them, of the usual printer and of the screen.
    virtual QStringList printerFonts() = 0;
    virtual QStringList screenFonts() = 0;
};

} // namespace qvnd::desktop
