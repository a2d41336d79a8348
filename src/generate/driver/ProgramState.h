#pragma once

#include "generate/driver/WordSession.h"
#include "store/FormatSwitches.h"
#include "store/modMain.h"

namespace qvnd::generate {

// The program-wide state that generation reads and changes.
struct ProgramState {
    qvnd::modMain& modMain;
    const FormatSwitches& switches;
    WordSession& word;
};

} // namespace qvnd::generate
