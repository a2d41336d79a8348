#pragma once

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/ResolvedProperties.h"

#include <map>

namespace qvnd::word {

// The direct formatting that gives text in a style of the target the look that a style of the
// source gave it. Both looks are in terms of the target's tables.
class StyleDifference {
public:
    StyleDifference(const ResolvedProperties& source, const ResolvedProperties& target);

    // Whether the styles look alike.
    bool empty() const {
        return entries_.empty() && sourceToggles_.empty() && sourceTabs_ == targetTabs_;
    }

    // Returns the direct formatting that gives, on the target's style, the look that `direct`
    // gave on the source's: the difference, and behind it `direct`, which overrules it. Toggles
    // that depend on the style are resolved; tab stops become changes of those of the target's
    // style.
    Bytes under(ByteView direct, ListLevels& levels) const;

private:
    using Entries = std::map<SprmOpcode, Bytes>;

    void addListMembership(const ResolvedProperties& source, const ResolvedProperties& target);
    Entries entriesUnder(const ParsedSprms& direct, ListLevels& levels) const;
    Bytes resolved(const SprmView& entry) const;
    void appendTabs(Bytes& list, const ParsedSprms& direct, ListLevels& levels) const;
    bool saysList() const { return entries_.contains(sprm::PIlfo); }
    std::optional<ByteView> joinedLevel(const ParsedSprms& direct, ListLevels& levels) const;

    Entries entries_;
    std::map<SprmOpcode, bool> sourceToggles_; // where the styles differ: as the source has it
    TabStops sourceTabs_;
    TabStops targetTabs_;
    std::set<SprmOpcode> setByListLevel_;    // in the source
    std::set<std::int16_t> tabsOfSaidLevel_; // of the list that the difference joins
};

} // namespace qvnd::word
