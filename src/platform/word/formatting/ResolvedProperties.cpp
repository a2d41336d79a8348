#include "platform/word/formatting/ResolvedProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/StyleProperties.h"

#include <cstdlib>
#include <utility>
#include <vector>

namespace qvnd::word {

namespace {

constexpr std::size_t opcodeSize = 2;

std::int16_t i16At(ByteView bytes, std::size_t at) {
    return static_cast<std::int16_t>(bytes[at] | (bytes[at + 1] << 8));
}

// PChgTabsPapxOperand and PChgTabsOperand, [MS-DOC] 2.9.182 and 2.9.181.
struct TabChange {
    std::vector<std::pair<std::int16_t, std::int16_t>> taken; // position, tolerance
    std::vector<std::pair<std::int16_t, std::uint8_t>> set;   // position, TBD
};

TabChange tabChangeOf(const SprmView& entry) {
    TabChange change;
    const ByteView bytes = entry.operand;
    const bool withTolerance = entry.opcode == sprm::PChgTabs;
    if (bytes.size() < 2) {
        return change;
    }
    const std::size_t taken = bytes[1];
    const std::size_t setAt = 2 + taken * (withTolerance ? 4 : 2);
    if (bytes.size() <= setAt) {
        return change;
    }
    for (std::size_t i = 0; i < taken; ++i) {
        const std::int16_t tolerance =
            withTolerance ? i16At(bytes, 2 + 2 * (taken + i)) : std::int16_t{0};
        change.taken.emplace_back(i16At(bytes, 2 + 2 * i), tolerance);
    }
    const std::size_t set = bytes[setAt];
    for (std::size_t i = 0; i < set && setAt + 1 + 3 * set <= bytes.size(); ++i) {
        change.set.emplace_back(i16At(bytes, setAt + 1 + 2 * i), bytes[setAt + 1 + 2 * set + i]);
    }
    return change;
}

} // namespace

void applyTabStops(TabStops& stops, const SprmView& entry) {
    const TabChange change = tabChangeOf(entry);
    for (const auto& [position, tolerance] : change.taken) {
        const int at = position;
        const int within = tolerance;
        std::erase_if(stops, [&](const auto& stop) { return std::abs(stop.first - at) <= within; });
    }
    for (const auto& [position, tbd] : change.set) {
        stops[position] = tbd;
    }
}

void applyTabStops(TabStops& stops, ByteView list) {
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (setsTabStops(entry.opcode)) {
            applyTabStops(stops, entry);
        }
    }
}

std::set<std::int16_t> tabStopsTakenAway(const SprmView& entry) {
    std::set<std::int16_t> positions;
    for (const auto& taken : tabChangeOf(entry).taken) {
        positions.insert(taken.first);
    }
    return positions;
}

const Bytes* ResolvedProperties::find(SprmOpcode property) const {
    const auto found = entries_.find(property);
    return found != entries_.end() ? &found->second : nullptr;
}

bool ResolvedProperties::toggle(SprmOpcode property) const {
    const Bytes* entry = find(property);
    return entry != nullptr && entry->back() == 1;
}

std::uint16_t ResolvedProperties::list() const {
    const Bytes* entry = find(sprm::PIlfo);
    return entry != nullptr ? static_cast<std::uint16_t>(i16At(*entry, opcodeSize)) : noList;
}

std::uint8_t ResolvedProperties::listLevel() const {
    const Bytes* entry = find(sprm::PIlvl);
    return entry != nullptr ? entry->back() : 0;
}

void ResolvedProperties::set(const Bytes& entry) {
    const auto opcode = static_cast<SprmOpcode>(entry[0] | (entry[1] << 8));
    entries_[propertySetBy(opcode)] = entry;
}

std::optional<Bytes> ResolvedProperties::resolved(const SprmView& toggled) const {
    const std::uint8_t operand = toggled.operand[0];
    if ((operand & 0x80) == 0) {
        return entry8(toggled.opcode, operand == 1 ? 1 : 0);
    }
    const bool opposite = operand == 0x81;
    return entry8(toggled.opcode, toggle(toggled.opcode) != opposite ? 1 : 0);
}

// Each property with its entries in the order of the list, older spellings before newer ones as
// they came; of one spelling the last.
ResolvedProperties::Layer ResolvedProperties::layerOf(ByteView list) {
    Layer layer;
    std::map<SprmOpcode, std::vector<std::pair<SprmOpcode, Bytes>>> spelled;
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (!belongsToLook(entry.opcode)) {
            continue;
        }
        Bytes whole(entry.whole.begin(), entry.whole.end());
        if (isToggle(entry.opcode)) {
            whole = *resolved(entry);
        }
        auto& ways = spelled[propertySetBy(entry.opcode)];
        std::erase_if(ways, [&](const auto& way) { return way.first == entry.opcode; });
        ways.emplace_back(entry.opcode, std::move(whole));
    }
    for (const auto& [property, ways] : spelled) {
        for (const auto& way : ways) {
            layer[property].insert(layer[property].end(), way.second.begin(), way.second.end());
        }
    }
    return layer;
}

void ResolvedProperties::joinList(ByteView list, ListLevels& levels) {
    const std::optional<SprmView> ilfo = findSprm(list, sprm::PIlfo);
    const std::optional<SprmView> ilvl = findSprm(list, sprm::PIlvl);
    if (!ilfo && !ilvl) {
        return;
    }
    const std::uint16_t joined =
        ilfo ? static_cast<std::uint16_t>(i16At(ilfo->operand, 0)) : this->list();
    if (joined == noList) {
        leaveList();
        return;
    }
    const std::uint8_t level = ilvl ? ilvl->operand[0] : listLevel();
    const ByteView paragraph = levels.paragraph(joined, level);
    for (auto& [property, entries] : layerOf(paragraph)) {
        entries_[property] = entries;
        setByListLevel_.insert(property);
    }
    TabStops stops;
    applyTabStops(stops, paragraph);
    for (const auto& stop : stops) {
        tabsOfListLevel_.insert(stop.first);
    }
    applyTabStops(tabStops_, paragraph);
    isIndentedByList_ = true;
}

void ResolvedProperties::leaveList() {
    for (const SprmOpcode property : setByListLevel_) {
        entries_.erase(property);
    }
    for (const std::int16_t position : tabsOfListLevel_) {
        tabStops_.erase(position);
    }
    setByListLevel_.clear();
    tabsOfListLevel_.clear();
    isIndentedByList_ = false;
}

void ResolvedProperties::lay(ByteView list, ListLevels& levels) {
    joinList(list, levels);
    for (auto& [property, entries] : layerOf(list)) {
        entries_[property] = std::move(entries);
        setByListLevel_.erase(property);
        isIndentedByList_ = isIndentedByList_ && !isIndent(property);
    }
    applyTabStops(tabStops_, list);
}

} // namespace qvnd::word
