#include "platform/word/docfile/document/PropertyLists.h"

#include <string_view>

namespace qvnd::word {

namespace {

std::string_view asKey(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

PropertyLists::PropertyLists() {
    lists_.emplace_back();
    ids_.emplace(std::string_view{}, PropertyListId::empty);
}

PropertyListId PropertyLists::intern(ByteView sprms) {
    if (const auto known = ids_.find(asKey(sprms)); known != ids_.end()) {
        return known->second;
    }
    const auto id = static_cast<PropertyListId>(lists_.size());
    const Bytes& kept = lists_.emplace_back(sprms.begin(), sprms.end());
    ids_.emplace(asKey(kept), id);
    return id;
}

ByteView PropertyLists::operator[](PropertyListId id) const {
    return lists_.at(static_cast<std::size_t>(id));
}

} // namespace qvnd::word
