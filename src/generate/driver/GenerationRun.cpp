#include "generate/driver/GenerationRun.h"

#include "store/ProgramFiles.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

GenerationRun::GenerationRun(const ProgramState& state, const GenerationServices& platform,
                             BidEditState& windowState, const outline::OutlineTree& tree)
    : program(state), services(platform), window(windowState), TrvEdit(tree), word(state.word),
      attempt(platform.messages, platform.dlgTB, state.word, windowState.Told),
      targetPath(store::finishedDocument(state.modMain.gWorkPath)), gPathTmp(targetPath) {}

void GenerationRun::stopTest() const {
    if (program.modMain.StopRequested)
        throw LeaveForStopPath();
}

} // namespace qvnd::generate
