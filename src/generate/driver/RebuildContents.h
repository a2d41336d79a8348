#pragma once

#include "generate/driver/GenerationServices.h"
#include "generate/driver/ProgramState.h"

#include <functional>

namespace qvnd::generate {

// The command "生成目录" (mnuBul): opens the finished document and puts a fresh table of contents
// of three levels in the place of the first one. Nothing is saved: the file stays as it is. With
// no file in the work folder it only says so, and answers false. It has no error routine: a
// missing document raises its error to the caller, and so does one without contents (5941, with
// words that tell the user what to do). The word processor stays held. While the command works, the
// word processor counts as open, so that a generation is refused. `isCancelled` is asked behind the
// opening and at the end: a cancelled command ends in the same way, and answers false.
bool RebuildContents(
    const ProgramState& program, const GenerationServices& services,
    const std::function<bool()>& isCancelled = [] { return false; });

} // namespace qvnd::generate
