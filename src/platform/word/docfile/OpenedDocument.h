#pragma once

#include "platform/word/docfile/CompoundFile.h"
#include "platform/word/docfile/EmbeddedObjects.h"
#include "platform/word/docfile/Fib.h"
#include "platform/word/docfile/Remarks.h"

#include <filesystem>

namespace qvnd::word {

// The streams of a Word document, read into memory.
struct OpenedDocument {
    Fib fib;
    Bytes wordDocument;
    Bytes table;
    Bytes data; // the Data stream; empty when there is none
    std::vector<CompoundFile::Entry> entries;
    EmbeddedObjects objects;

    // The structure's bytes in the table stream: what of them is inside.
    ByteView part(FibPair pair) const;
    // From the structure's start to the end of the table stream.
    ByteView partOn(FibPair pair) const;
};

// Both throw FormatError: unreadable, notCompoundFile, notWord, olderThanWord97, encrypted,
// damaged. What is missing and can be done without is named in `remarks`.
OpenedDocument openDocument(const std::filesystem::path& path, Remarks& remarks);
OpenedDocument openDocument(ByteView file, Remarks& remarks);

} // namespace qvnd::word
