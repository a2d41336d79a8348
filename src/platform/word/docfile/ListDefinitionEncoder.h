#pragma once

#include "platform/word/docfile/ListTables.h"

namespace qvnd::word {

// Encodes the growing list definitions of one document, save after save: those at the front that
// are as they were the last time are not encoded again. All calls get the same pool of lists.
class ListDefinitionEncoder {
public:
    EncodedListDefinitions encode(const std::vector<ListDefinition>& definitions,
                                  const PropertyLists& lists);

private:
    bool beginsWithKnown(const std::vector<ListDefinition>& definitions) const;
    void append(const std::vector<ListDefinition>& added, const PropertyLists& lists);

    std::vector<ListDefinition> known_;
    Bytes heads_;  // LSTF
    Bytes levels_; // LVL
};

} // namespace qvnd::word
