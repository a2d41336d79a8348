#pragma once

#include "generate/driver/BidEditState.h"
#include "generate/driver/GenerationServices.h"
#include "generate/driver/ProgramState.h"
#include "outline/OutlineTree.h"

namespace qvnd::generate {

enum class BuildOutcome {
    refused,  // nothing has changed; also while another run is under way
    stopped,  // the file holds what was saved last: the outline without cover and contents
    notSaved, // ran to its end, but the finished document could not be written
    finished,
};

// The command "生成卷宗编制" (mnuBuildbid): makes 施工方案.doc in the work folder from the outline
// as TrvEdit shows it and the format settings. The outline comes first; cover and contents are
// then typed in front of it; page format, header and footer come last. A failing statement is
// reported and the run goes on with the next one. What became of each node stands in
// BidEditState::Visited; a node that is not there was not reached.
BuildOutcome BuildBid(const ProgramState& program, const GenerationServices& services,
                      BidEditState& window, const outline::OutlineTree& TrvEdit);

} // namespace qvnd::generate
