#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/objects/ObjectPool.h"
#include "platform/word/docfile/writer/DataStream.h"

#include <unordered_map>

namespace qvnd::word {

// Property lists as a file needs them: where the program has an index of a blob, the file has the
// offset in its Data stream; where it has that of an embedded object, the name of its storage.
class FileProperties {
public:
    // All outlive the object; so do the answers' bytes live as long as it and the tables.
    FileProperties(const DocumentTables& tables, DataStream& data, ObjectPool& objects)
        : tables_(tables), data_(data), objects_(objects) {}

    // An entry whose blob or object does not exist is left out.
    ByteView of(PropertyListId id);

private:
    Bytes converted(ByteView list);

    const DocumentTables& tables_;
    DataStream& data_;
    ObjectPool& objects_;
    // Nothing for a list that the file takes as it is.
    std::unordered_map<PropertyListId, std::optional<Bytes>> known_;
};

} // namespace qvnd::word
