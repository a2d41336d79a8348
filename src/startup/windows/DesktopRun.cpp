#include "startup/windows/DesktopRun.h"

#include "generate/windows/frmBidEdit.h"
#include "outline/windows/frmBid.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/windows/HelpKey.h"
#include "platform/desktop/windows/QtHelpWindow.h"
#include "platform/desktop/windows/WidgetEvents.h"
#include "platform/desktop/windows/WidgetFileDialogs.h"
#include "platform/desktop/windows/WidgetFonts.h"
#include "platform/desktop/windows/WidgetInputBoxes.h"
#include "platform/desktop/windows/WidgetLongRun.h"
#include "platform/desktop/windows/WidgetShell.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/preview/windows/PagePane.h"
#include "platform/registry/RegistryFile.h"
#include "startup/FirstStart.h"
#include "startup/WordProcessor.h"
#include "startup/windows/SingleInstance.h"
#include "startup/windows/frmSplash.h"

#include <QApplication>
#include <QStandardPaths>

#include <cstdint>

using namespace Qt::StringLiterals;

namespace qvnd::startup {

namespace {

constexpr int startFailed = 1; // exit status

// What an installed program needs before it starts; the program starts even where it fails.
void prepare(const QString& executableFolder, const QString& home, registry::Registry& registry,
             desktop::MessageBoxes& messages) {
    try {
        layOutProgramFolder(home);
        bringShippedFiles(executableFolder + u"/../share/qvnd"_s, home);
        if (!isPortable(executableFolder)) {
            chooseWorkFolder(registry, home,
                             QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        }
    } catch (const RunTimeError& failure) {
        messages.tell(desktop::descriptionOf(failure), desktop::Icon::exclamation, u"提示"_s);
    }
}

outline::PreviewFrame* newPreview(preview::PageConversion& conversion) {
    auto* pane = new preview::PagePane(conversion);
    return new outline::PreviewFrame(*pane, *pane);
}

void bringWindowToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

} // namespace

DesktopRun::DesktopRun(const DesktopServices& services)
    : services_(services), startWait_(services.outline.splash, services.outline.events),
      commandWait_(services.outline.longRun, services.outline.events),
      program_(services.registry, services.outline, *this),
      frmBidSet_(program_.state(),
                 {services.outline.messages, services.inputBoxes, services.outline.fileDialogs,
                  services.fonts, services.shell, services.outline.word}),
      formatDialog_(program_.state(), frmBidSet_, services.outline.messages) {}

DesktopRun::~DesktopRun() = default;

bool DesktopRun::start(const QString& programFolder) {
    services_.outline.splash.show();
    try {
        return startInTurn(programFolder);
    } catch (const RunTimeError& failure) {
        services_.outline.messages.tell(desktop::descriptionOf(failure), desktop::Icon::exclamation,
                                        u"提示"_s);
        return false;
    }
}

bool DesktopRun::startInTurn(const QString& programFolder) {
    auto& turn = program_.state().Turn;
    turn = std::make_unique<files::WorkSpaceTurn>(programFolder);
    turn->setWait(&startWait_);
    const files::TurnScope held(turn.get());
    services_.prepare();
    memory_.emplace(programFolder);
    remembered_ = memory_->load();
    const bool isStarted = program_.start(programFolder);
    turn->setWait(&commandWait_);
    return isStarted;
}

void DesktopRun::showMainForm() {
    mainForm_ = std::make_unique<MainForm>(MainForm::Parts{
        program_, services_.registry, services_.outline.messages, services_.help, services_.shell,
        [this] { return loadWorkbench(); }, [this] { return makePlanEditor(); }, services_.end,
        [this] { rememberWindows(); }});
    mainForm_->Load();
    if (mainForm_->restoreGeometry(remembered_.frame)) {
        mainForm_->show();
    } else {
        mainForm_->showMaximized();
    }
}

void DesktopRun::showFrmBid() {
    mainForm_->showWorkbench();
    mainForm_->placeWorkbench(remembered_.workbench);
    frmBid_->restore({{remembered_.barsFor, remembered_.verticalBar, remembered_.horizontalBar},
                      remembered_.library,
                      remembered_.node});
}

ChildWindow DesktopRun::loadWorkbench() {
    auto* window =
        new outline::frmBid({program_.state(), program_.workbench(), services_.outline, *mainForm_,
                             *services_.makePreview(), services_.inputBoxes});
    window->Load();
    frmBid_ = window;
    return {window, window->menus(), [window] { window->Load(); }};
}

ChildWindow DesktopRun::makePlanEditor() {
    const outline::Services& around = services_.outline;
    const PlanEditing& editing = services_.planEditing;
    const DocumentView view = editing.makeView();
    auto* window =
        new generate::frmBidEdit({{program_.state(), program_.state().FormatSwitches, word_},
                                  around.messages,
                                  around.fileDialogs,
                                  around.events,
                                  around.longRun,
                                  editing.generation,
                                  around.word,
                                  editing.openDocuments,
                                  editing.windows,
                                  services_.shell,
                                  editing.inUse,
                                  editing.pdf,
                                  editing.record,
                                  editing.documents,
                                  frmBidSet_,
                                  *mainForm_,
                                  [this] { formatDialog_.show(mainForm_.get()); },
                                  [this](std::int64_t step) { frmBid_->takeBack(step); },
                                  [this] { frmBid_->showDetails(); },
                                  *view.widget,
                                  *view.document});
    return {window, window->menus(), [window] { window->Load(); }};
}

void DesktopRun::rememberWindows() const {
    RememberedWindows windows = remembered_;
    windows.frame = mainForm_->saveGeometry();
    windows.workbench = mainForm_->workbenchPlace();
    if (frmBid_) {
        const outline::frmBid::Shape shape = frmBid_->shape();
        windows.barsFor = shape.bars.form;
        windows.verticalBar = shape.bars.vertical;
        windows.horizontalBar = shape.bars.horizontal;
        windows.library = shape.library;
        windows.node = shape.selected;
    }
    memory_->save(windows);
}

void DesktopRun::bringToFront() {
    if (mainForm_) {
        bringWindowToFront(*mainForm_);
    }
    if (QWidget* box = QApplication::activeModalWidget()) {
        bringWindowToFront(*box);
    }
}

int runOnDesktop(const QString& executableFolder, desktop::MessageBoxes& messages) {
    const QString home = programFolder(executableFolder);
    SingleInstance instance(home);
    if (!instance.begin()) {
        messages.tell(u"卷宗编制系统已经在运行，它的窗口已显示到最前面。"_s,
                      desktop::Icon::information, u"提示"_s);
        return 0;
    }
    registry::RegistryFile registry;
    WidgetSplash splash;
    desktop::WidgetFileDialogs fileDialogs;
    desktop::WidgetInputBoxes inputBoxes;
    desktop::WidgetFonts fonts;
    desktop::WidgetEvents events;
    desktop::WidgetShell shell;
    desktop::QtHelpWindow help;
    desktop::WidgetLongRun longRun;
    WordProcessor word(messages, [&longRun] { return longRun.isCancelled(); });
    preview::PageConversion conversion(preview::ConversionSettings::ofDesktop());
    const modMain* state = nullptr; // of the run that is made below
    DesktopPlanEditing planEditing(messages, events, longRun, conversion,
                                   [&state] { return state != nullptr && state->StopRequested; });
    DesktopRun run({registry,
                    {messages, splash, fileDialogs, events, word.factory(), longRun},
                    inputBoxes,
                    fonts,
                    help,
                    shell,
                    [&conversion] { return newPreview(conversion); },
                    [&] {
                        registry = registry::RegistryFile::read(files::withSeparator(home) +
                                                                u"registry.reg"_s);
                        prepare(executableFolder, home, registry, messages);
                    },
                    [] { QCoreApplication::exit(); },
                    planEditing.services()});
    state = &run.program().state();
    QObject::connect(&instance, &SingleInstance::startedAgain, [&run] { run.bringToFront(); });
    desktop::HelpKey helpKey(
        help, [&run] { return run.program().state().HelpFile; }, messages);
    qApp->installEventFilter(&helpKey);
    return run.start(home) ? QApplication::exec() : startFailed;
}

} // namespace qvnd::startup
