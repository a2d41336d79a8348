#pragma once

#include <QString>

namespace qvnd::format {

// The two controls of the format dialog that generation reads where it needs them. Reading loads
// the dialog if it is not loaded, with all that its load does.
class ChildDocumentControls {
public:
    virtual ~ChildDocumentControls() = default;
    // The numbering style of documents under documents; empty while nothing is picked.
    virtual QString cboBianHao() = 0;
    // The indent in character widths as text, "2" at first.
    virtual QString txtInde() = 0;
};

} // namespace qvnd::format
