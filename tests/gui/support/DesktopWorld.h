#pragma once

#include "gui/support/WorkbenchWindow.h"
#include "platform/registry/RegistryFile.h"
#include "startup/windows/DesktopRun.h"
#include "startup/windows/frmSplash.h"
#include "support/FakeDocumentConverter.h"
#include "support/FakeFilesInUse.h"
#include "support/FakeFonts.h"
#include "support/FakeGenerationRecord.h"
#include "support/FakeHelpWindow.h"
#include "support/FakeInputBoxes.h"
#include "support/FakePdfPrinter.h"
#include "support/FakeShell.h"
#include "support/FakeWindowLookup.h"
#include "support/FakeWordProcessorWindows.h"

#include <functional>
#include <memory>

namespace qvnd::test {

// The whole program with its windows on a real store in a temporary folder: plan 甲 with folders
// and documents, template 模板 with a folder and a document. The shell is a fake, help and document
// view are until a test puts its own there. It can be ended and started again on the same folder.
class DesktopWorld {
public:
    // All of it outlives the world.
    DesktopWorld(desktop::MessageBoxes& messages, desktop::FileDialogs& dialogs,
                 word::ApplicationFactory& word);

    // Starts the program; false when Main failed.
    bool start();
    // True once the program has asked for its own end; it must then get no more events.
    bool hasEnded() const { return ended_; }
    // Takes the windows away as the end of the process does; no orderly exit.
    void drop() { run_.reset(); }

    startup::DesktopRun& run() { return *run_; }
    startup::MainForm& mainForm() { return *run_->mainForm(); }
    outline::Services services();

    TemporaryFolder folder;
    registry::RegistryFile registry;
    FakeHelpWindow help;
    FakeShell shell;
    FakeInputBoxes inputs;
    FakeFonts fonts;
    FakeWindowLookup windows;
    FakeWordProcessorWindows openDocuments;
    FakeFilesInUse inUse;
    FakePdfPrinter pdf;
    FakeGenerationRecord record;
    FakeDocumentConverter converter;
    CountingEvents events;
    // For the next start.
    desktop::HelpWindow* helpWindow = &help;
    std::function<outline::PreviewFrame*()> makePreview = [this] {
        return new outline::PreviewFrame(*new TallPane, preview_);
    };
    std::function<void()> prepare = [] {};
    std::function<startup::DocumentView()> makeView = [this] {
        return startup::DocumentView{new TallPane, &editPreview};
    };
    FakePreview editPreview; // of the plan edit window

private:
    desktop::MessageBoxes& messages_;
    desktop::FileDialogs& dialogs_;
    word::ApplicationFactory& word_;
    startup::WidgetSplash splash_;
    FakePreview preview_;
    std::unique_ptr<startup::DesktopRun> run_;
    bool ended_ = false;
};

} // namespace qvnd::test
