#pragma once

#include "platform/desktop/HelpWindow.h"

#include <QString>

#include <memory>

namespace qvnd::desktop {

class HelpCollection;
class HelpViewer;

// The help shown by Qt Help: one window, made at the first call and made anew when another help
// file is asked for or the file's content has changed.
//
// Errors: 53 for a file that is missing, 75 for one that cannot be read or whose catalogue cannot
// be made, 3343 for one that is damaged or no help file. An open window then goes.
class QtHelpWindow : public HelpWindow {
public:
    // `cacheFolder` takes the catalogue that Qt Help works with; empty: the user's cache.
    explicit QtHelpWindow(const QString& cacheFolder = {});
    ~QtHelpWindow() override;

    void showContents(const QString& helpFile) override;
    void showIndex(const QString& helpFile) override;
    void showPage(const QString& helpFile, const QString& window) override;

    // The window; null before it was first shown.
    HelpViewer* viewer() { return viewer_.get(); }

private:
    HelpViewer& open(const QString& helpFile);

    QString cacheFolder_;
    std::unique_ptr<HelpCollection> collection_;
    std::unique_ptr<HelpViewer> viewer_;
};

} // namespace qvnd::desktop
