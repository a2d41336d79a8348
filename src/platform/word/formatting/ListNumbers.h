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
    std::u16string text;      // without the character that follows; symbol font codes are kept
    std::u16string numbers{}; // those of the text, with what stands between them
    char16_t follows = 0;     // a tab, a space, or 0 for no character
    PropertyListId characters = PropertyListId::empty; // character properties of the list level
    // The part of the label's width that stands before the place of the label: 0 for a label that
    // begins there, 0.5 for one around it, 1 for one that ends there.
    double partBefore = 0;
    bool isBullet = false;  // the same text in front of each paragraph of the level
    bool namesFont = false; // the level itself sets the font of Latin characters
};

// Numbers the paragraphs of lists in document order.
class ListNumbers {
public:
    // Both must outlive the object.
    ListNumbers(const DocumentTables& tables, ListLevels& levels)
        : tables_(tables), levels_(levels) {}

    // The label of the next paragraph, which has these operands of sprmPIlfo and sprmPIlvl; nothing
    // for a paragraph without a label. All overrides of a list share one counter.
    std::optional<ListLabel> next(std::uint16_t ilfo, std::uint8_t ilvl);

private:
    static constexpr std::size_t deepest = 9;
    using Counts = std::array<std::optional<int>, deepest>;

    int startOf(std::uint16_t ilfo, std::uint8_t ilvl);
    bool overridesStart(std::uint16_t ilfo, std::uint8_t ilvl) const;
    void beginAbove(Counts& counts, std::uint16_t ilfo, std::uint8_t ilvl);
    void count(Counts& counts, std::uint16_t ilfo, std::uint8_t ilvl);
    void compose(const ListLevel& level, Counts& counts, std::uint16_t ilfo, ListLabel& label);

    const DocumentTables& tables_;
    ListLevels& levels_;
    std::map<std::int32_t, Counts> counts_; // by lsid
    std::set<std::pair<std::uint16_t, std::uint8_t>> begun_;
};

} // namespace qvnd::word
