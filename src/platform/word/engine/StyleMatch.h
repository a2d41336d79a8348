#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace qvnd::word {

// The number of the built-in style that this one is: the number it has, or that of the name it
// bears. Nothing for a user's style.
std::optional<std::uint16_t> builtInNumberOf(const StyleDefinition& style);

// The styles of a style sheet by what they are: built-in styles by number, others by kind and
// name.
class StyleMatch {
public:
    explicit StyleMatch(const StyleSheet& sheet);

    void add(StyleIndex index, const StyleDefinition& style);
    std::optional<StyleIndex> find(const StyleDefinition& style) const;
    // `name` when no style bears it, else with the first free number behind it.
    std::u16string freeName(const std::u16string& name) const;
    // Those of the aliases, joined by ",", that no style bears as a name or an alias.
    std::u16string freeAliases(const std::u16string& aliases) const;

private:
    std::map<std::pair<StyleKind, std::uint16_t>, StyleIndex> builtIn_;
    std::map<std::pair<StyleKind, std::u16string>, StyleIndex> named_;
    std::unordered_set<std::u16string> names_; // aliases included
};

} // namespace qvnd::word
