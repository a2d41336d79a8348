#pragma once

#include <QString>

namespace qvnd::desktop {

// The small dialog over a long run (dlgTB): a label, a bar and a stop button. The button is
// served only while Events::doEvents or a message box runs, and while progress is shown; it sets
// modMain::StopRequested and unloads the dialog.
class ProgressDialog {
public:
    virtual ~ProgressDialog() = default;

    virtual void show() = 0;
    // Takes the dialog off the screen for the time of a message box; show() brings it back.
    virtual void hide() = 0;
    // Ends the dialog; a dialog that is not loaded is left alone.
    virtual void unload() = 0;

    // Scale 0 to 1. The value may fall: it is shown as it comes.
    virtual void setProgress(double part) = 0;
    virtual void setLabel(const QString& text) = 0;
};

} // namespace qvnd::desktop
