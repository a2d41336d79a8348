#pragma once

#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Fib.h"
#include "platform/word/docfile/objects/EmbeddedObjects.h"

#include <filesystem>

namespace qvnd::word {

// The streams of a Word document, read into memory.
struct OpenedDocument {
    Fib fib;
    Bytes wordDocument;
    Bytes table;
    Bytes data; // the Data stream; empty when there is none
    // What programs show of the document without opening it; empty when there is none, and when it
    // is damaged.
    Bytes summary;
    Bytes documentSummary;
    bool damagedInformation = false;
    std::vector<CompoundFile::Entry> storages; // those of the first two levels
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
