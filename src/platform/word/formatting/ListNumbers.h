#pragma once

#include "platform/word/formatting/ListMembership.h"

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace qvnd::word {

// The number or bullet in front of a paragraph.
struct ListLabel {
    std::u16string text;  // without what follows it; bullets of symbol fonts as they came
    char16_t follows = 0; // tab, space, or 0 for nothing
    PropertyListId characters = PropertyListId::empty; // of the level
};

// Counts the paragraphs of lists, beginning at the start of the document.
class ListNumbers {
public:
    // Both must outlive the object.
    ListNumbers(const DocumentTables& tables, ListLevels& levels)
        : tables_(tables), levels_(levels) {}

    // The label of the next paragraph with these operands of sprmPIlfo and sprmPIlvl; nothing
    // when it has none. Paragraphs of the same list share one count, whichever override they name.
    std::optional<ListLabel> next(std::uint16_t ilfo, std::uint8_t ilvl);

private:
    static constexpr std::size_t deepest = 9;
    using Counts = std::array<std::optional<int>, deepest>;

    int startOf(std::uint16_t ilfo, std::uint8_t ilvl);
    bool overridesStart(std::uint16_t ilfo, std::uint8_t ilvl) const;
    void count(Counts& counts, std::uint16_t ilfo, std::uint8_t ilvl);
    std::u16string composed(const ListLevel& level, Counts& counts, std::uint16_t ilfo);

    const DocumentTables& tables_;
    ListLevels& levels_;
    std::map<std::int32_t, Counts> counts_; // by lsid
    std::set<std::pair<std::uint16_t, std::uint8_t>> begun_;
};

} // namespace qvnd::word
