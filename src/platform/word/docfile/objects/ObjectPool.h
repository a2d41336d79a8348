#pragma once

#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/objects/EmbeddedObjects.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

// The storage ObjectPool of a document that is saved repeatedly. Each object is in it once. The
// storage is created with the first object.
class ObjectPool {
public:
    // `store` outlives the object.
    explicit ObjectPool(CompoundStore& store) : store_(store) {}

    // The number in the name of the object's storage, which is added when it is not there yet.
    std::uint32_t numberOf(const EmbeddedObjectRef& object);

private:
    void add(const EmbeddedObject& object, std::uint32_t number);

    CompoundStore& store_;
    std::optional<CompoundStore::Stream> pool_;
    // By identity; the object is kept so that no other can take its address.
    std::unordered_map<const EmbeddedObject*, std::pair<EmbeddedObjectRef, std::uint32_t>> numbers_;
};

} // namespace qvnd::word
