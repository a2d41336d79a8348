#include "platform/word/docfile/styles/ListDefinitionEncoder.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t countSize = 2; // the number of definitions at the start of PlfLst

// Every level of every list is asked about with every save: nothing is called for most of them.
bool same(const ListLevel& a, const ListLevel& b) {
    return a.head == b.head && a.paragraph == b.paragraph && a.character == b.character &&
           a.text.size() == b.text.size() &&
           std::equal(a.text.begin(), a.text.end(), b.text.begin());
}

// Names stand in a table of their own.
bool same(const ListDefinition& a, const ListDefinition& b) {
    return std::tie(a.lsid, a.tplc, a.linkedStyles, a.flags, a.grfhic) ==
               std::tie(b.lsid, b.tplc, b.linkedStyles, b.flags, b.grfhic) &&
           std::equal(a.levels.begin(), a.levels.end(), b.levels.begin(), b.levels.end(),
                      [](const ListLevel& x, const ListLevel& y) { return same(x, y); });
}

} // namespace

ListDefinitionEncoder::Encoded
ListDefinitionEncoder::encode(const std::vector<ListDefinition>& definitions,
                              const PropertyLists& lists) {
    if (!beginsWithKnown(definitions)) {
        *this = {};
    }
    const std::size_t before = known_.size();
    known_.insert(known_.end(), definitions.begin() + static_cast<std::ptrdiff_t>(before),
                  definitions.end());
    order_.insert(order_.begin(), known_.size() - before, 0);
    std::iota(order_.begin(), order_.end() - static_cast<std::ptrdiff_t>(before), before);

    const EncodedListDefinitions added = encodeListDefinitions(
        {known_.begin() + static_cast<std::ptrdiff_t>(before), known_.end()}, lists);
    const ByteView bytes = added.bytes;
    const ByteView heads = bytes.subspan(countSize, added.size - countSize);
    const ByteView levels = bytes.subspan(added.size);
    heads_.insert(heads_.begin(), heads.begin(), heads.end());
    LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(known_.size()));
    writer.bytes(heads_);
    const std::size_t size = writer.position();
    writer.bytes(levels);
    return {writer.take(), std::exchange(levelsSize_, levelsSize_ + levels.size()), size};
}

Bytes ListDefinitionEncoder::encodeNames(const std::vector<ListDefinition>& definitions) const {
    const bool named = std::any_of(definitions.begin(), definitions.end(),
                                   [](const ListDefinition& list) { return !list.name.empty(); });
    if (!named) {
        return {};
    }
    std::vector<std::u16string> names;
    for (const std::size_t index : order_) {
        names.push_back(definitions.at(index).name);
    }
    return encodeListNames(names);
}

bool ListDefinitionEncoder::beginsWithKnown(const std::vector<ListDefinition>& definitions) const {
    return definitions.size() >= known_.size() &&
           std::equal(known_.begin(), known_.end(), definitions.begin(),
                      [](const ListDefinition& a, const ListDefinition& b) { return same(a, b); });
}

} // namespace qvnd::word
