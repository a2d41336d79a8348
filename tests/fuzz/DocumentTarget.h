#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <set>
#include <string>

namespace qvnd::test {

// What became of a file that was put into a new document.
struct InsertionOutcome {
    bool accepted = false;
    std::set<std::string>
        broken; // rules of the format that the result breaks; none for a sound one
};

// Reads the file and inserts it twice into a new document that is saved again and again, as
// generation does, and checks what comes of it; then saves the file itself and checks that. A
// refusal is no fault; anything thrown besides is let through.
InsertionOutcome insertAndCheck(word::ByteView file);

} // namespace qvnd::test
