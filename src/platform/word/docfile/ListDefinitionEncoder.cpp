#include "platform/word/docfile/ListDefinitionEncoder.h"

#include <algorithm>
#include <tuple>

namespace qvnd::word {

namespace {

constexpr std::size_t countSize = 2; // the number of definitions at the start of PlfLst

bool same(const ListLevel& a, const ListLevel& b) {
    return std::tie(a.head, a.paragraph, a.character, a.text) ==
           std::tie(b.head, b.paragraph, b.character, b.text);
}

// Names stand in a table of their own.
bool same(const ListDefinition& a, const ListDefinition& b) {
    return std::tie(a.lsid, a.tplc, a.linkedStyles, a.flags, a.grfhic) ==
               std::tie(b.lsid, b.tplc, b.linkedStyles, b.flags, b.grfhic) &&
           std::equal(a.levels.begin(), a.levels.end(), b.levels.begin(), b.levels.end(),
                      [](const ListLevel& x, const ListLevel& y) { return same(x, y); });
}

} // namespace

EncodedListDefinitions ListDefinitionEncoder::encode(const std::vector<ListDefinition>& definitions,
                                                     const PropertyLists& lists) {
    if (!beginsWithKnown(definitions)) {
        *this = {};
    }
    append({definitions.begin() + static_cast<std::ptrdiff_t>(known_.size()), definitions.end()},
           lists);
    LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(known_.size()));
    writer.bytes(heads_);
    EncodedListDefinitions result;
    result.size = writer.position();
    writer.bytes(levels_);
    result.bytes = writer.take();
    return result;
}

bool ListDefinitionEncoder::beginsWithKnown(const std::vector<ListDefinition>& definitions) const {
    return definitions.size() >= known_.size() &&
           std::equal(known_.begin(), known_.end(), definitions.begin(),
                      [](const ListDefinition& a, const ListDefinition& b) { return same(a, b); });
}

void ListDefinitionEncoder::append(const std::vector<ListDefinition>& added,
                                   const PropertyLists& lists) {
    const EncodedListDefinitions encoded = encodeListDefinitions(added, lists);
    const auto begin = encoded.bytes.begin();
    const auto levels = begin + static_cast<std::ptrdiff_t>(encoded.size);
    heads_.insert(heads_.end(), begin + countSize, levels);
    levels_.insert(levels_.end(), levels, encoded.bytes.end());
    known_.insert(known_.end(), added.begin(), added.end());
}

} // namespace qvnd::word
