#pragma once

#include <QString>

namespace qvnd::desktop {

// The window that shows the help. Both calls bring it to front; a help file that cannot be read is
// a RunTimeError with the reason.
class HelpWindow {
public:
    virtual ~HelpWindow() = default;

    virtual void showContents(const QString& helpFile) = 0;
    virtual void showIndex(const QString& helpFile) = 0;
    // The page of one window or dialog, by its object name; the contents when it has none.
    virtual void showPage(const QString& helpFile, const QString& window) = 0;
};

} // namespace qvnd::desktop
