#pragma once

#include <QString>

namespace qvnd::desktop {

struct InputQuestion {
    QString prompt;
    QString title;
    // What stands in the field at first.
    QString proposal;
};

// Asks the user for a line of text.
class InputBoxes {
public:
    virtual ~InputBoxes() = default;

    // The text as typed; empty when the user cancelled or typed nothing. Never throws.
    virtual QString ask(const InputQuestion& question) = 0;
};

} // namespace qvnd::desktop
