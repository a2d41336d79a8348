#include "platform/word/engine/StyleDifference.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/StyleProperties.h"

#include <algorithm>
#include <array>
#include <vector>

namespace qvnd::word {

namespace {

// Says what holds without the entries: the default in every spelling that they use.
Bytes unset(ByteView entries) {
    Bytes result;
    for (const SprmView& entry : parseSprms(entries).sprms) {
        if (const auto plain = defaultEntry(entry.opcode)) {
            append(result, *plain);
        }
    }
    return result;
}

// A clean indent in both spellings.
Bytes noIndent(SprmOpcode property) {
    Bytes result = entry16(property, 0);
    const std::array<SprmOpcode, 2> newer{sprm::PDxaLeft, sprm::PDxaLeft1};
    for (const SprmOpcode opcode : newer) {
        if (propertySetBy(opcode) == property) {
            append(result, entry16(opcode, 0));
        }
    }
    return result;
}

std::optional<std::uint16_t> operand16(const ParsedSprms& list, SprmOpcode opcode) {
    std::optional<std::uint16_t> found;
    for (const SprmView& entry : list.sprms) {
        if (entry.opcode == opcode) {
            found = static_cast<std::uint16_t>(entry.operand[0] | (entry.operand[1] << 8));
        }
    }
    return found;
}

std::optional<std::uint8_t> operand8(const ParsedSprms& list, SprmOpcode opcode) {
    std::optional<std::uint8_t> found;
    for (const SprmView& entry : list.sprms) {
        if (entry.opcode == opcode) {
            found = entry.operand[0];
        }
    }
    return found;
}

bool contains(const ParsedSprms& list, SprmOpcode opcode) {
    return std::any_of(list.sprms.begin(), list.sprms.end(),
                       [&](const SprmView& entry) { return entry.opcode == opcode; });
}

// Entries before a sprmCPlain are void: the list from behind the last one on.
std::size_t firstThatCounts(const ParsedSprms& list) {
    std::size_t first = 0;
    for (std::size_t i = 0; i < list.sprms.size(); ++i) {
        if (list.sprms[i].opcode == sprm::CPlain) {
            first = i + 1;
        }
    }
    return first;
}

// sprmPChgTabsPapx entries; more than one when the length byte is too small for all.
void appendTabChange(Bytes& list, const std::vector<std::int16_t>& taken,
                     const std::vector<std::pair<std::int16_t, std::uint8_t>>& set) {
    constexpr std::size_t most = 40; // 1 + 2 * 40 + 1 + 3 * 40 fits a byte
    const std::size_t rounds = (std::max(taken.size(), set.size()) + most - 1) / most;
    for (std::size_t round = 0; round < rounds; ++round) {
        const auto part = [&](std::size_t size) {
            return std::pair(std::min(size, round * most), std::min(size, (round + 1) * most));
        };
        const auto [takenFrom, takenTo] = part(taken.size());
        const auto [setFrom, setTo] = part(set.size());
        LittleEndianWriter operand;
        operand.u8(static_cast<unsigned>(takenTo - takenFrom));
        for (std::size_t i = takenFrom; i < takenTo; ++i) {
            operand.u16(static_cast<std::uint16_t>(taken[i]));
        }
        operand.u8(static_cast<unsigned>(setTo - setFrom));
        for (std::size_t i = setFrom; i < setTo; ++i) {
            operand.u16(static_cast<std::uint16_t>(set[i].first));
        }
        for (std::size_t i = setFrom; i < setTo; ++i) {
            operand.u8(set[i].second);
        }
        append(list, entry16(sprm::PChgTabsPapx, 0));
        list.resize(list.size() - 2);
        list.push_back(static_cast<std::uint8_t>(operand.position()));
        append(list, operand.data());
    }
}

} // namespace

StyleDifference::StyleDifference(const ResolvedProperties& source, const ResolvedProperties& target)
    : sourceTabs_(source.tabStops()), targetTabs_(target.tabStops()),
      setByListLevel_(source.setByListLevel()) {
    for (const auto& [property, entries] : source.entries()) {
        const Bytes* there = target.find(property);
        if (there == nullptr || !sameEffect(*there, entries)) {
            entries_[property] = entries;
        }
    }
    for (const auto& [property, entries] : target.entries()) {
        if (source.find(property) == nullptr) {
            if (Bytes plain = unset(entries); !plain.empty() && !sameEffect(plain, entries)) {
                entries_[property] = std::move(plain);
            }
        }
    }
    std::erase_if(entries_, [&](const auto& entry) {
        return isToggle(entry.first) && source.toggle(entry.first) == target.toggle(entry.first);
    });
    for (const auto& entry : entries_) {
        if (isToggle(entry.first)) {
            sourceToggles_[entry.first] = source.toggle(entry.first);
        }
    }
    addListMembership(source, target);
}

void StyleDifference::addListMembership(const ResolvedProperties& source,
                                        const ResolvedProperties& target) {
    if (source.list() == target.list()) {
        entries_.erase(sprm::PIlfo);
        return;
    }
    tabsOfSaidLevel_ = source.tabsOfListLevel();
    // Joining or leaving a list brings or takes its level's indents: they are all said outright.
    for (const SprmOpcode property : {sprm::PDxaLeft80, sprm::PDxaLeft180}) {
        const Bytes* entries = source.find(property);
        if (entries != nullptr) {
            entries_[property] = *entries;
        } else if (source.list() == noList) {
            entries_[property] = noIndent(property);
        }
    }
}

// The paragraph properties of the level that direct formatting joins; nothing when it joins none.
std::optional<ByteView> StyleDifference::joinedLevel(const ParsedSprms& direct,
                                                     ListLevels& levels) const {
    const std::optional<std::uint16_t> ilfo = operand16(direct, sprm::PIlfo);
    const std::optional<std::uint8_t> ilvl = operand8(direct, sprm::PIlvl);
    if (ilfo) {
        return levels.paragraph(*ilfo, ilvl.value_or(0));
    }
    if (!ilvl || !saysList()) {
        return std::nullopt;
    }
    return levels.paragraph(*operand16(parseSprms(entries_.at(sprm::PIlfo)), sprm::PIlfo), *ilvl);
}

StyleDifference::Entries StyleDifference::entriesUnder(const ParsedSprms& direct,
                                                       ListLevels& levels) const {
    Entries entries = entries_;
    const std::optional<std::uint16_t> ilfo = operand16(direct, sprm::PIlfo);
    if (ilfo == noList) {
        for (const SprmOpcode property : setByListLevel_) {
            if (const auto found = entries.find(property); found != entries.end()) {
                found->second = unset(found->second);
            }
        }
    }
    if (contains(direct, sprm::PWall) || contains(direct, sprm::CWall)) {
        return entries; // what stood before the tracked change leans on the style as well
    }
    if (const auto level = joinedLevel(direct, levels)) {
        for (const SprmView& entry : parseSprms(*level).sprms) {
            entries.erase(propertySetBy(entry.opcode));
        }
    }
    for (std::size_t i = firstThatCounts(direct); i < direct.sprms.size(); ++i) {
        entries.erase(propertySetBy(direct.sprms[i].opcode));
    }
    return entries;
}

Bytes StyleDifference::resolved(const SprmView& entry) const {
    const auto found = sourceToggles_.find(entry.opcode);
    const bool leans = found != sourceToggles_.end() && (entry.operand[0] & 0x80) != 0;
    if (!leans) {
        return {entry.whole.begin(), entry.whole.end()};
    }
    const bool opposite = entry.operand[0] == 0x81;
    return entry8(entry.opcode, found->second != opposite ? 1 : 0);
}

void StyleDifference::appendTabs(Bytes& list, const ParsedSprms& direct, ListLevels& levels) const {
    TabStops wanted = sourceTabs_;
    std::set<std::int16_t> taken = tabsOfSaidLevel_;
    if (operand16(direct, sprm::PIlfo) == noList) {
        std::erase_if(wanted,
                      [&](const auto& stop) { return tabsOfSaidLevel_.contains(stop.first); });
    } else if (const auto level = joinedLevel(direct, levels)) {
        applyTabStops(wanted, *level);
    }
    for (const SprmView& entry : direct.sprms) {
        if (setsTabStops(entry.opcode)) {
            taken.merge(tabStopsTakenAway(entry));
            applyTabStops(wanted, entry);
        }
    }
    for (const auto& stop : targetTabs_) {
        taken.insert(stop.first);
    }
    std::vector<std::int16_t> away;
    std::copy_if(taken.begin(), taken.end(), std::back_inserter(away),
                 [&](std::int16_t position) { return !wanted.contains(position); });
    std::vector<std::pair<std::int16_t, std::uint8_t>> added;
    for (const auto& stop : wanted) {
        const auto there = targetTabs_.find(stop.first);
        if (there == targetTabs_.end() || there->second != stop.second) {
            added.emplace_back(stop);
        }
    }
    appendTabChange(list, away, added);
}

Bytes StyleDifference::under(ByteView direct, ListLevels& levels) const {
    if (empty()) {
        return {direct.begin(), direct.end()};
    }
    const ParsedSprms parsed = parseSprms(direct);
    const std::size_t first = firstThatCounts(parsed);
    const bool mergesTabs = sourceTabs_ != targetTabs_ || !tabsOfSaidLevel_.empty();
    Bytes result;
    // The character style is no matter of order for who reads it; first is where it is looked for.
    for (std::size_t i = 0; i < parsed.sprms.size(); ++i) {
        if (i < first || parsed.sprms[i].opcode == sprm::CIstd) {
            append(result, parsed.sprms[i].whole);
        }
    }
    for (const auto& entry : entriesUnder(parsed, levels)) {
        append(result, entry.second);
    }
    for (std::size_t i = first; i < parsed.sprms.size(); ++i) {
        const SprmView& entry = parsed.sprms[i];
        if (entry.opcode != sprm::CIstd && !(mergesTabs && setsTabStops(entry.opcode))) {
            append(result, isToggle(entry.opcode) ? resolved(entry)
                                                  : Bytes(entry.whole.begin(), entry.whole.end()));
        }
    }
    if (mergesTabs) {
        appendTabs(result, parsed, levels);
    }
    return result;
}

} // namespace qvnd::word
