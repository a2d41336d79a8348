#pragma once

#include "platform/desktop/DesktopWindows.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/LongRun.h"
#include "platform/office/PdfPrinter.h"
#include "platform/preview/DocumentPreview.h"
#include "platform/preview/PageConversion.h"
#include "startup/GenerationWord.h"

#include <functional>

class QWidget;

namespace qvnd::startup {

// The view of a document, and what shows a file in it; often the same object.
struct DocumentView {
    QWidget* widget = nullptr;
    preview::DocumentPreview* document = nullptr;
};

// What the plan edit window needs beside the workbench's services. All of it outlives the window.
struct PlanEditing {
    word::ApplicationFactory& generation;
    desktop::WordProcessorWindows& openDocuments;
    desktop::WindowLookup& windows;
    files::FilesInUse& inUse;
    office::PdfPrinter& pdf;
    generate::GenerationRecord& record;
    word::DocumentConverter& documents;
    // Makes the view of a plan edit window, which then owns it.
    std::function<DocumentView()> makeView;
};

// These services on a real desktop.
class DesktopPlanEditing {
public:
    // All of it outlives the object. `isStopped` tells whether the user has stopped a generation;
    // the office suite that works for it ends then.
    DesktopPlanEditing(desktop::MessageBoxes& messages, desktop::Events& events,
                       desktop::LongRun& longRun, preview::PageConversion& conversion,
                       const std::function<bool()>& isStopped);

    PlanEditing services();

private:
    preview::PageConversion& conversion_;
    GenerationWord generation_;
    office::SuitePdfPrinter pdf_;
    desktop::SystemProcesses processes_;
    desktop::LockFiles openDocuments_{processes_};
    desktop::DesktopWindows windows_{processes_};
};

} // namespace qvnd::startup
