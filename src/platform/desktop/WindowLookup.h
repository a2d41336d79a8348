#pragma once

#include <QString>

namespace qvnd::desktop {

// Finds the window of another program.
class WindowLookup {
public:
    virtual ~WindowLookup() = default;

    // Brings the top-level window of that title to front. True when there is one. Where the desktop
    // tells no titles, `program`, the file that shows such a window, is looked for among the
    // running processes instead; a window found so stays where it is. Never throws.
    virtual bool activate(const QString& title, const QString& program) = 0;
};

} // namespace qvnd::desktop
