#include "generate/driver/FinishDocument.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/files/Paths.h"

namespace qvnd::generate {

namespace {

bool saveAndQuit(GenerationRun& run) {
    const auto path = files::toPath(run.targetPath);
    const bool saved = run.attempt([&] { run.word.activeDocument().SaveAs(path); });
    run.attempt([&] { run.word.keepDocument(run.word.application().documents().Open(path)); });
    run.attempt([&] { run.word.document().Close(); });
    run.attempt([&] { run.word.application().Quit(); });
    return saved;
}

void showResult(GenerationRun& run) {
    BidEditScreen& screen = run.services.screen;
    run.attempt([&] { screen.removePreview(); });
    run.attempt([&] { screen.loadPreview(run.targetPath); });
    run.attempt([&] { screen.updatePreview(); });
    run.attempt([&] { screen.turnPreviewOff(); });
}

} // namespace

bool finishDocument(GenerationRun& run) {
    run.services.dlgTB.unload();
    const bool saved = saveAndQuit(run);
    showResult(run);
    run.word.dropDocument();
    run.word.dropApplication();
    run.services.screen.showNormalPointer();
    run.window.LevelCounters.clear();
    return saved;
}

void leaveStopped(GenerationRun& run) {
    run.letEventsRun();
    ignoringErrors([&] { run.word.activeDocument().Close(); });
    ignoringErrors([&] { run.word.application().Quit(); });
    run.program.modMain.StopRequested = false;
    run.word.dropDocument();
    run.word.dropApplication();
    run.window.LevelCounters.clear();
    run.services.screen.showNormalPointer();
}

} // namespace qvnd::generate
