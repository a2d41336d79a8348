#include "generate/driver/BuildBid.h"

#include "generate/assembly/FrontMatter.h"
#include "generate/driver/FinishDocument.h"
#include "generate/driver/GenerationRun.h"
#include "generate/driver/StartDocument.h"
#include "generate/settings/LoadSettings.h"
#include "generate/walk/VisitNode.h"
#include "generate/walk/WalkOutline.h"
#include "store/OutlineFolders.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

bool isAnyDocumentOpen(const GenerationRun& run) {
    const modMain& state = run.program.modMain;
    return run.services.wordProcessorWindows.isOpenIn(
        {state.gWorkPath, store::planFolder(state, run.TrvEdit.Item(1).Key())});
}

bool refused(const GenerationRun& run) {
    const GenerationServices& services = run.services;
    if (run.TrvEdit.Count() < 2) {
        services.messages.tell(u"没有内容去生成标书！"_s, desktop::Icon::information);
        return true;
    }
    if (run.word.isAtWork() || isAnyDocumentOpen(run)) {
        services.messages.tell(u"对不起，请您先关闭Word文档。如不在任务栏显示请按Ctrl+Alt+Del ！"_s,
                               desktop::Icon::exclamation);
        return true;
    }
    return false;
}

void walk(GenerationRun& run) {
    BidEditState& window = run.window;
    window.LevelCounters.clear();
    window.VisitedCount = 0;
    window.LastLevel = 0;
    run.attempt([&] {
        WalkOutline(run.TrvEdit, run.TrvEdit.Item(1).Child(),
                    [&](const outline::OutlineNode& node) { VisitNode(run, node); });
    });
}

BuildOutcome build(GenerationRun& run) {
    run.window.Visited.clear();
    run.window.Told.clear();
    startDocument(run);
    loadSettings(run);
    run.services.dlgTB.setProgress(0.15);
    walk(run);
    addFrontMatter(run);
    return finishDocument(run) ? BuildOutcome::finished : BuildOutcome::notSaved;
}

} // namespace

BuildOutcome BuildBid(const ProgramState& program, const GenerationServices& services,
                      BidEditState& window, const outline::OutlineTree& TrvEdit) {
    GenerationRun run(program, services, window, TrvEdit);
    if (refused(run))
        return BuildOutcome::refused;
    const WordSession::Work work(run.word);
    try {
        return build(run);
    } catch (const LeaveForStopPath&) {
        leaveStopped(run);
        return BuildOutcome::stopped;
    }
}

} // namespace qvnd::generate
