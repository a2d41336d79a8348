#pragma once

#include "platform/word/docfile/styles/ListTables.h"

namespace qvnd::word {

// Encodes the growing list definitions of one document, save after save. In the file, what came
// with a later save stands in front of what was there, so that the levels, the bulk of it, stay
// where they are. All calls get the same pool of lists.
class ListDefinitionEncoder {
public:
    // PlfLst with the levels behind it: `front`, and behind that the last `kept` bytes of what the
    // call before came to. `size` is lcbPlfLst.
    struct Encoded {
        Bytes front;
        std::size_t kept = 0;
        std::size_t size = 0;
    };
    Encoded encode(const std::vector<ListDefinition>& definitions, const PropertyLists& lists);

    // SttbListNames for what the last encode() was called with; empty when no list has a name.
    Bytes encodeNames(const std::vector<ListDefinition>& definitions) const;

private:
    bool beginsWithKnown(const std::vector<ListDefinition>& definitions) const;

    std::vector<ListDefinition> known_;
    std::vector<std::size_t> order_; // indexes of `known_` as they stand in the file
    Bytes heads_;                    // LSTF in that order
    std::size_t levelsSize_ = 0;     // of the LVL
};

} // namespace qvnd::word
