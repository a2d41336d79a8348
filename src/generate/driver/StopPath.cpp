#include "generate/driver/StopPath.h"

#include "platform/error/IgnoringErrors.h"

namespace qvnd::generate {

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
