#pragma once

#include "fuzz/FuzzRun.h"

namespace qvnd::test {

// Reads a document, lays its first pages out, inserts it twice into a new document that is saved
// again and again, as generation does, and checks what comes of it; with some inputs a save fails
// in a write, a sync, a replacement or a truncation, and what is there then is checked as well. At
// last saves the document itself and checks that. Rules of the format that a result breaks are a
// fault.
class DocumentTarget : public FuzzTarget {
public:
    Outcome run(word::ByteView file) override;
    // One with one of everything that the checker looks at, one with an embedded object and lists
    // that no page holds.
    std::vector<word::Bytes> ownFiles() const override;
};

} // namespace qvnd::test
