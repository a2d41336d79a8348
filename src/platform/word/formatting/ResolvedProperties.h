#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/format/Sprm.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>

namespace qvnd::word {

class ListLevels;

// Tab stops by position in twips, with their TBD (alignment and leader).
using TabStops = std::map<std::int16_t, std::uint8_t>;

// Applies a sprmPChgTabsPapx or sprmPChgTabs: takes stops away, then sets stops.
void applyTabStops(TabStops& stops, const SprmView& entry);
// Those of a whole list, one entry after the other.
void applyTabStops(TabStops& stops, ByteView list);
// The stops that such an entry takes away.
std::set<std::int16_t> tabStopsTakenAway(const SprmView& entry);

// What layers of property lists come to, one laid over the other: for each property the entries
// that set it in the topmost layer that does. Toggles are resolved to 0 and 1.
class ResolvedProperties {
public:
    // Lays a list over what is there. `levels` tells what a list's level does to paragraphs that
    // join it (sprmPIlfo); the layer's own indents and tab stops go over those. A layer that
    // leaves the list takes back what the level did.
    void lay(ByteView list, ListLevels& levels);
    // Sets one property, whatever set it before.
    void set(const Bytes& entry);

    // The entries that set the property, nothing when none does.
    const Bytes* find(SprmOpcode property) const;
    const std::map<SprmOpcode, Bytes>& entries() const { return entries_; }
    const TabStops& tabStops() const { return tabStops_; }
    // Properties that stand as a list's level set them.
    const std::set<SprmOpcode>& setByListLevel() const { return setByListLevel_; }
    // Positions of the tab stops that it brings.
    const std::set<std::int16_t>& tabsOfListLevel() const { return tabsOfListLevel_; }

    bool toggle(SprmOpcode property) const;
    // Operand of sprmPIlfo, 0 for no list; and the level in it.
    std::uint16_t list() const;
    std::uint8_t listLevel() const;

private:
    using Layer = std::map<SprmOpcode, Bytes>;

    Layer layerOf(ByteView entries);
    void joinList(ByteView entries, ListLevels& levels);
    void leaveList();
    std::optional<Bytes> resolved(const SprmView& toggle) const;

    std::map<SprmOpcode, Bytes> entries_;
    TabStops tabStops_;
    std::set<SprmOpcode> setByListLevel_;
    std::set<std::int16_t> tabsOfListLevel_;
};

} // namespace qvnd::word
