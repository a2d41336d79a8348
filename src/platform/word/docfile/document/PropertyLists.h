#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <deque>
#include <unordered_map>

namespace qvnd::word {

// Names one property list of a pool; `empty` is the list without an entry.
enum class PropertyListId : std::uint32_t { empty = 0 };

// The distinct property lists (grpprl: sprm after sprm, as in [MS-DOC] 2.2.5) of a document, each
// kept once. Ids and views stay valid as long as the pool lives.
class PropertyLists {
public:
    PropertyLists();
    PropertyLists(PropertyLists&&) = default;
    PropertyLists& operator=(PropertyLists&&) = default;
    PropertyLists(const PropertyLists&) = delete;
    PropertyLists& operator=(const PropertyLists&) = delete;

    PropertyListId intern(ByteView sprms);
    ByteView operator[](PropertyListId id) const;
    // Ids run from 0 to size() - 1.
    std::size_t size() const { return lists_.size(); }

private:
    std::deque<Bytes> lists_;
    std::unordered_map<std::string_view, PropertyListId> ids_;
};

} // namespace qvnd::word
