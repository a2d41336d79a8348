#pragma once

#include "generate/driver/BidEditState.h"
#include "generate/driver/ErrorRoutine.h"
#include "generate/driver/GenerationServices.h"
#include "generate/driver/ProgramState.h"
#include "outline/OutlineTree.h"

#include <QString>

namespace qvnd::generate {

// One run of the generate command: what its stages share. `attempt` runs one statement under the
// command's error routine.
struct GenerationRun {
    GenerationRun(const ProgramState& state, const GenerationServices& platform,
                  BidEditState& windowState, const outline::OutlineTree& tree);

    // Leaves for the stop path when the stop button has been pressed.
    void stopTest() const;

    // The database of the format settings.
    jet::Database& database() const { return *program.modMain.gDbBidSet; }
    const FormatSwitches& switches() const { return program.switches; }
    void letEventsRun() const { services.events.doEvents(); }

    const ProgramState& program;
    const GenerationServices& services;
    BidEditState& window;
    const outline::OutlineTree& TrvEdit;
    WordSession& word;
    ErrorRoutine attempt;

    // The finished document: the work folder's 施工方案.doc.
    const QString targetPath;
    // The file that the run dealt with last.
    QString gPathTmp;
};

} // namespace qvnd::generate
