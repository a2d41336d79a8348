#pragma once

#include "platform/desktop/MessageBoxes.h"

namespace qvnd::tools {

class Output;

// Message boxes on standard error as "title: text", without a title as the text alone. A question
// is followed by the answer that it got.
class TerminalMessageBoxes : public desktop::MessageBoxes {
public:
    // Questions are answered with yes or OK, or else with no or cancel.
    TerminalMessageBoxes(Output& output, bool yes) : output_(output), yes_(yes) {}

    desktop::Answer show(const desktop::Message& message) override;

    // How many boxes were shown.
    int count() const { return count_; }

private:
    Output& output_;
    bool yes_;
    int count_ = 0;
};

} // namespace qvnd::tools
