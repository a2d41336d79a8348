#pragma once

#include "platform/desktop/Shell.h"

namespace qvnd::desktop {

// The shell of the desktop that the program runs on.
class WidgetShell : public Shell {
public:
    void run(const QString& program) override;
    void open(const QString& file) override;
    // By the office suite; without one that has windows a copy in the temporary folder is opened.
    void openAsTemplate(const QString& file) override;
};

} // namespace qvnd::desktop
