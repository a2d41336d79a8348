#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qvnd::word {

// An embedded or linked object, or a control: what its storage in the storage ObjectPool holds
// ([MS-DOC] 2.1.4). Shared, since a merge keeps it as it is.
struct EmbeddedObject {
    struct Entry {
        std::u16string path; // from the object's storage on, names joined by '/'
        bool storage = false;
        std::array<std::uint8_t, 16> classId{}; // of a storage
        Bytes content;                          // of a stream
    };
    std::array<std::uint8_t, 16> classId{};
    std::vector<Entry> entries; // a storage before what it holds
};
using EmbeddedObjectRef = std::shared_ptr<const EmbeddedObject>;

// By the number in the name of the storage: "_1234".
using EmbeddedObjects = std::map<std::uint32_t, EmbeddedObjectRef>;

class CompoundFile;
// The objects of a document. Left out and counted in `damaged`: one with a damaged stream, one with
// names that a compound file cannot hold ([MS-CFB] 2.6.1) or holds twice, two under one number.
EmbeddedObjects readEmbeddedObjects(const CompoundFile& file, int& damaged);

} // namespace qvnd::word
