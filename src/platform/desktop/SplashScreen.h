#pragma once

namespace qvnd::desktop {

// The picture that covers the start (frmSplash).
class SplashScreen {
public:
    virtual ~SplashScreen() = default;

    // Shows it without waiting, and lets it paint.
    virtual void show() = 0;
    // Takes it down; one that is not loaded is left alone.
    virtual void unload() = 0;
};

} // namespace qvnd::desktop
