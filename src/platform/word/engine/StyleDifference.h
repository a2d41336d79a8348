#pragma once

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/ResolvedProperties.h"

#include <map>

namespace qvnd::word {

// What must be said directly so that text in a style of the target looks as in the style of the
// source that it had. Both looks are in terms of the target's tables.
class StyleDifference {
public:
    StyleDifference(const ResolvedProperties& source, const ResolvedProperties& target);

    // Whether the styles look alike.
    bool empty() const {
        return entries_.empty() && sourceToggles_.empty() && sourceTabs_ == targetTabs_;
    }

    // Direct formatting (in terms of the target) that makes over the target's style what `direct`
    // made over the source's: the difference in front, `direct` behind it where it has the last
    // word. Toggles that lean on the style become what they came to; tab stops become changes
    // against the target's style.
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
