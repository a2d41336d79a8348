#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/format/Sprm.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>

namespace qvnd::word {

class ListLevels;

// Tab stops by position in twips, each with its TBD (alignment and leader).
using TabStops = std::map<std::int16_t, std::uint8_t>;

// Applies a sprmPChgTabsPapx or sprmPChgTabs: deletes tab stops, then adds tab stops.
void applyTabStops(TabStops& stops, const SprmView& entry);
// Applies all such entries of a property list in order.
void applyTabStops(TabStops& stops, ByteView list);
// The positions that such an entry deletes.
std::set<std::int16_t> tabStopsTakenAway(const SprmView& entry);

// The result of property lists applied one over the other. For each property it holds the entries
// of the topmost list that sets the property. Toggles are resolved to 0 and 1.
class ResolvedProperties {
public:
    // Applies a property list on top. A list that sets sprmPIlfo first gets the properties of that
    // list level from `levels`; its own indents and tab stops override those. A property list that
    // removes the paragraph from its list removes the level's properties too.
    void lay(ByteView list, ListLevels& levels);
    // Sets one property and replaces its previous entries.
    void set(const Bytes& entry);

    // The entries that set the property; null when it is not set.
    const Bytes* find(SprmOpcode property) const;
    const std::map<SprmOpcode, Bytes>& entries() const { return entries_; }
    const TabStops& tabStops() const { return tabStops_; }
    // Properties whose values come from a list level.
    const std::set<SprmOpcode>& setByListLevel() const { return setByListLevel_; }
    // Whether a list level gives the indents: nothing that was laid with the list or on top of it
    // sets an indent.
    bool isIndentedByList() const { return isIndentedByList_; }
    // Positions of the tab stops that come from the list level.
    const std::set<std::int16_t>& tabsOfListLevel() const { return tabsOfListLevel_; }

    bool toggle(SprmOpcode property) const;
    // Operand of sprmPIlfo; 0 for no list.
    std::uint16_t list() const;
    // Operand of sprmPIlvl, counted from 0.
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
    bool isIndentedByList_ = false;
};

} // namespace qvnd::word
