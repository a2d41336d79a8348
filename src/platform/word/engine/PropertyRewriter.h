#pragma once

#include "platform/word/engine/ImportReferences.h"

#include <optional>
#include <vector>

namespace qvnd::word {

// Turns property lists of one document into those of another: every operand that points elsewhere
// is rewritten, all the rest stays as it came. Each distinct list is worked on once.
class PropertyRewriter {
public:
    PropertyRewriter(const PropertyLists& source, PropertyLists& target,
                     ImportReferences& references)
        : source_(source), target_(target), references_(references), known_(source.size()) {}

    // Throws std::out_of_range for an id that the source does not have.
    PropertyListId rewritten(PropertyListId id);

private:
    PropertyListId rewrite(ByteView list);

    const PropertyLists& source_;
    PropertyLists& target_;
    ImportReferences& references_;
    std::vector<std::optional<PropertyListId>> known_;
};

} // namespace qvnd::word
