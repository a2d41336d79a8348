#pragma once

#include "platform/word/docfile/document/PropertyLists.h"

#include <optional>
#include <vector>

namespace qvnd::word {

// Deeper nesting than any word processor allows is a damaged number.
inline constexpr int deepestTable = 64;

// Where a paragraph stands in tables, [MS-DOC] 2.4.3: the outermost table has depth 1, a table in
// one of its cells depth 2, and so on; 0 is outside of tables.
struct TablePlace {
    int depth = 0;
    bool cellEnd = false; // its mark ends a cell
    bool rowEnd = false;  // it is no paragraph but the end of a row
    bool operator==(const TablePlace&) const = default;
};

// Looks places up by the paragraphs' properties.
class TablePlaces {
public:
    // `lists` must outlive the places.
    explicit TablePlaces(const PropertyLists& lists) : lists_(lists) {}

    // `mark`: the paragraph's last character.
    TablePlace of(PropertyListId properties, char16_t mark);

private:
    struct Properties {
        int depth = 0;
        bool rowEnd = false;
        bool innerCellEnd = false;
        bool innerRowEnd = false;
    };
    const Properties& propertiesOf(PropertyListId id);
    Properties read(PropertyListId id) const;

    const PropertyLists& lists_;
    std::vector<std::optional<Properties>> known_; // by list
};

} // namespace qvnd::word
