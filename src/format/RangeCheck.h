#pragma once

#include "format/controls/TextControls.h"
#include "platform/desktop/MessageBoxes.h"

#include <QString>

#include <functional>

namespace qvnd::format {

// What a box of a length in centimetres takes: a number from `least` to `most`, both included and
// taken in single precision.
struct LengthRange {
    float least;
    float most;
    // Said of a number outside.
    QString refusal;
    // What the box then shows.
    QString reset;

    // Why the text is refused; empty when it is taken. A text that is no number is told by the
    // error's own description.
    QString problemOf(const QString& text) const;
    // What stands at the box behind a refusal: the range, what it shows now, and when that counts.
    QString noteOf(const QString& refused) const;
};

// Margins, gutter and the distances of header and footer: -55.87 to 55.87.
const LengthRange& pageLength();
// Width and height of the cover's picture: 0 to 40.
const LengthRange& pictureLength();

// Makes the box check its text when the focus leaves it, and run `write` when the text is taken. A
// number outside the range is told and reset, which a note at the box says, and nothing is written,
// the reset value neither; `write` takes the notes away of the boxes that it writes. Every error,
// also one of `write`, is told and leaves the box as it is.
void checkOnLeaving(TextBox& box, const LengthRange& range, desktop::MessageBoxes& messages,
                    const std::function<void()>& write);

} // namespace qvnd::format
