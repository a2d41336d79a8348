#pragma once

#include "platform/word/docfile/objects/EmbeddedObjects.h"

#include <map>

namespace qvnd::test {

// All that an embedded object holds, in an order that does not depend on the file.
inline word::Bytes contentsOf(const word::EmbeddedObject& object) {
    std::map<std::u16string, const word::EmbeddedObject::Entry*> entries;
    for (const word::EmbeddedObject::Entry& entry : object.entries) {
        entries.emplace(entry.path, &entry);
    }
    word::LittleEndianWriter out;
    out.bytes(object.classId);
    for (const auto& [path, entry] : entries) {
        out.text(path);
        out.u8(entry->storage ? 1 : 0);
        out.bytes(entry->classId);
        out.bytes(entry->content);
    }
    return out.take();
}

} // namespace qvnd::test
