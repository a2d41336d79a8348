#pragma once

#include "fuzz/FuzzRun.h"
#include "platform/drawing/FontFaces.h"

#include <array>

namespace qvnd::test {

// Reads a document, lays its first pages out with the fonts of this desktop or with those that it
// names, paints them into a PDF, and goes back to pages that were laid out before. A page that is
// another one when it is shown again is a fault.
class PageTarget : public FuzzTarget {
public:
    PageTarget();
    Outcome run(word::ByteView file) override;
    // Those of the documents' target.
    std::vector<word::Bytes> ownFiles() const override;

private:
    // Opened once, as by a program that shows many documents: one for each choice.
    std::array<drawing::FontFaces, 2> fonts_;
};

} // namespace qvnd::test
