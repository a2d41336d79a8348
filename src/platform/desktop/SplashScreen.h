#pragma once

#include <QString>

namespace qvnd::desktop {

// The picture that covers the start (frmSplash).
class SplashScreen {
public:
    virtual ~SplashScreen() = default;

    // Shows it without waiting, and lets it paint. One that is up already stays.
    virtual void show() = 0;
    // Puts a line on it that says what the start is waiting for, and lets it paint; an empty text
    // takes the line away. Nothing happens to one that is not loaded.
    virtual void tell(const QString& text) = 0;
    // Takes it down; one that is not loaded is left alone.
    virtual void unload() = 0;
};

} // namespace qvnd::desktop
