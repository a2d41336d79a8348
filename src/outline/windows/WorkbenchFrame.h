#pragma once

#include <QString>

namespace qvnd::outline {

// What the workbench window asks of the program around it.
class WorkbenchFrame {
public:
    virtual ~WorkbenchFrame() = default;

    // The window that edits and generates the open plan (frmBidEdit).
    virtual void showPlanEditor() = 0;
    // Opens a document in the desktop's word processor; throws as desktop::Shell::open().
    virtual void openDocument(const QString& file) = 0;

    // Arranges the child windows of the frame.
    virtual void arrangeCascade() = 0;
    virtual void arrangeTile() = 0;

    // The program has a help file.
    virtual void showHelpContents() = 0;
    virtual void showHelpIndex() = 0;
    virtual void showAbout() = 0;

    // Tells in the status bar, for a while, what a command has done that the window does not show.
    virtual void showStatus(const QString& text) = 0;

    // Ends the program at once: nothing is saved and nothing closed.
    virtual void endAtOnce() = 0;
    // The orderly exit: the open plan is saved to its folder, every window unloaded, every
    // database closed.
    virtual void exit() = 0;
};

} // namespace qvnd::outline
