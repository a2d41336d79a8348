#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <chrono>

namespace qvnd::tools {

class Output;

// Message boxes on standard error as "title: text", without a title as the text alone. A question
// is followed by the answer that it got.
class TerminalMessageBoxes : public desktop::MessageBoxes {
public:
    // How often a command may try again, and how long it waits before each time.
    static constexpr int mostRetries = 10;
    static constexpr std::chrono::milliseconds retryPause{1000};

    // Questions are answered with yes or OK, or else with no or cancel.
    TerminalMessageBoxes(Output& output, bool yes, std::chrono::milliseconds pause = retryPause)
        : output_(output), pause_(pause), yes_(yes) {}

    desktop::Answer show(const desktop::Message& message) override;
    // Shows the message, and waits, so that what it names can be put right meanwhile.
    bool askForRetry(const QString& text, desktop::Icon icon, const QString& title) override;

    // How many boxes were shown.
    int count() const { return count_; }

private:
    Output& output_;
    std::chrono::milliseconds pause_;
    bool yes_;
    int count_ = 0;
    int retries_ = 0;
};

} // namespace qvnd::tools
