#pragma once

#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"

#include <unordered_map>

namespace qvnd::word {

// Property lists that a file has room for: of a longer one the part that it has room for.
class FittingLists {
public:
    // `lists` outlive the object and get what is cut.
    explicit FittingLists(PropertyLists& lists) : lists_(lists) {}

    // Of a paragraph or of characters.
    PropertyListId fitted(PropertyListId list) { return fitted(list, longestPrcData); }
    PropertyListId fittedSection(PropertyListId list);

    // How many lists were cut.
    int cut() const { return static_cast<int>(known_.size()); }

private:
    PropertyListId fitted(PropertyListId list, std::size_t most);

    PropertyLists& lists_;
    std::unordered_map<PropertyListId, PropertyListId> known_; // those that were cut
};

} // namespace qvnd::word
