#pragma once

#include "tools/GlobalOptions.h"
#include "tools/Output.h"
#include "tools/TerminalMessageBoxes.h"

namespace qvnd::tools {

// One run of the tool, as a command sees it.
class Session {
public:
    Session(const GlobalOptions& options, Output& output);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const GlobalOptions& options() const { return options_; }
    Output& output() { return output_; }
    TerminalMessageBoxes& messages() { return messages_; }

private:
    const GlobalOptions& options_;
    Output& output_;
    TerminalMessageBoxes messages_;
};

} // namespace qvnd::tools
