#pragma once

#include "outline/windows/PreviewFrame.h"
#include "platform/desktop/HelpWindow.h"
#include "platform/desktop/Shell.h"
#include "startup/Program.h"
#include "startup/windows/MainForm.h"

#include <functional>
#include <memory>

namespace qvnd::startup {

// What a run on the desktop is made of. All of it outlives the run.
struct DesktopServices {
    registry::Registry& registry;
    outline::Services outline;
    desktop::HelpWindow& help;
    desktop::Shell& shell;
    // Makes the preview of a workbench window, which then owns it.
    std::function<outline::PreviewFrame*()> makePreview;
    // Ends the process.
    std::function<void()> end;
};

// One run of the program with its windows: the frame, and the workbench in it.
class DesktopRun : private ProgramWindows {
public:
    explicit DesktopRun(const DesktopServices& services);
    ~DesktopRun() override;

    // Main; false when it failed, and the user has been told. The frame may stand even then.
    bool start(const QString& programFolder);
    // Brings the frame to front, as another start of the program asks for.
    void bringToFront();

    Program& program() { return program_; }
    // Null before it has been shown.
    MainForm* mainForm() { return mainForm_.get(); }

private:
    void showMainForm() override;
    void showFrmBid() override;
    ChildWindow loadWorkbench();

    DesktopServices services_;
    Program program_;
    std::unique_ptr<MainForm> mainForm_;
};

} // namespace qvnd::startup
