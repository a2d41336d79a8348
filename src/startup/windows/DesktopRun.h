#pragma once

#include "format/windows/frmBidSetWindow.h"
#include "generate/driver/WordSession.h"
#include "outline/windows/PreviewFrame.h"
#include "platform/desktop/Fonts.h"
#include "platform/desktop/HelpWindow.h"
#include "platform/desktop/InputBoxes.h"
#include "platform/desktop/Shell.h"
#include "startup/Program.h"
#include "startup/TurnWaits.h"
#include "startup/WindowMemory.h"
#include "startup/windows/MainForm.h"
#include "startup/windows/PlanEditing.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace qvnd::outline {
class frmBid;
}

namespace qvnd::startup {

// What a run on the desktop is made of. All of it outlives the run.
struct DesktopServices {
    registry::Registry& registry;
    outline::Services outline;
    desktop::InputBoxes& inputBoxes;
    desktop::Fonts& fonts;
    desktop::HelpWindow& help;
    desktop::Shell& shell;
    // Makes the preview of a workbench window, which then owns it.
    std::function<outline::PreviewFrame*()> makePreview;
    // Lays out what the start needs; called before anything else reads or writes the program
    // folder, with the turn at it taken.
    std::function<void()> prepare;
    // Ends the process.
    std::function<void()> end;
    PlanEditing planEditing;
};

// One run of the program with its windows: the frame, the workbench and the plan edit window in it.
// They stand as they stood when the last run ended; at the first start the frame is maximised.
class DesktopRun : private ProgramWindows {
public:
    explicit DesktopRun(const DesktopServices& services);
    ~DesktopRun() override;

    // Shows the splash, waits for the turn at the work space, prepares, and runs Main; false when
    // one of them failed, and the user has been told. The frame may stand even then.
    bool start(const QString& programFolder);
    // Brings the frame, and a box that is open, to front, as another start of the program asks for.
    void bringToFront();

    Program& program() { return program_; }
    // Null before it has been shown.
    MainForm* mainForm() { return mainForm_.get(); }

private:
    void showMainForm() override;
    void showFrmBid() override;
    bool startInTurn(const QString& programFolder);
    ChildWindow loadWorkbench();
    ChildWindow makePlanEditor();
    void rememberWindows() const;

    DesktopServices services_;
    StartWait startWait_;
    CommandWait commandWait_;
    Program program_;
    format::frmBidSet frmBidSet_;
    format::FormatDialog formatDialog_;
    std::optional<WindowMemory> memory_;
    RememberedWindows remembered_;
    generate::WordSession word_;
    std::unique_ptr<MainForm> mainForm_;
    QPointer<outline::frmBid> frmBid_;
};

// Runs the program for the executable in that folder, from its first start there to its end, and
// returns the exit status. A failed start ends it with status 1 when the user has read why; a start
// beside another run of the same program folder brings that one to front and ends with 0.
int runOnDesktop(const QString& executableFolder, desktop::MessageBoxes& messages);

} // namespace qvnd::startup
