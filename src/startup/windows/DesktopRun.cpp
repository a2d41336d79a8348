#include "startup/windows/DesktopRun.h"

#include "outline/windows/frmBid.h"
#include "platform/error/RunTimeError.h"

namespace qvnd::startup {

DesktopRun::DesktopRun(const DesktopServices& services)
    : services_(services), program_(services.registry, services.outline, *this) {}

DesktopRun::~DesktopRun() = default;

bool DesktopRun::start(const QString& programFolder) {
    auto& turn = program_.state().Turn;
    turn = std::make_unique<files::WorkSpaceTurn>(programFolder);
    try {
        const files::TurnScope held(turn.get());
        return program_.start(programFolder);
    } catch (const RunTimeError& failure) {
        services_.outline.messages.tell(QString::fromStdU16String(failure.description()),
                                        desktop::Icon::exclamation, QStringLiteral("提示"));
        return false;
    }
}

void DesktopRun::showMainForm() {
    mainForm_ = std::make_unique<MainForm>(
        MainForm::Parts{program_, services_.registry, services_.outline.messages, services_.help,
                        services_.shell, [this] { return loadWorkbench(); }, services_.end});
    mainForm_->Load();
    mainForm_->showMaximized();
}

void DesktopRun::showFrmBid() { mainForm_->showWorkbench(); }

ChildWindow DesktopRun::loadWorkbench() {
    auto* window = new outline::frmBid({program_.state(), program_.workbench(), services_.outline,
                                        *mainForm_, *services_.makePreview()});
    window->Load();
    return {window, window->menus()};
}

void DesktopRun::bringToFront() {
    if (mainForm_) {
        mainForm_->setWindowState(mainForm_->windowState() & ~Qt::WindowMinimized);
        mainForm_->raise();
        mainForm_->activateWindow();
    }
}

} // namespace qvnd::startup
