#include "platform/word/engine/StyleLookup.h"

#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>

namespace qvnd::word {

namespace {

template <typename Matches>
std::optional<StyleIndex> firstStyle(const StyleSheet& styles, const Matches& matches) {
    for (std::size_t i = 0; i < styles.styles.size(); ++i) {
        if (styles.styles[i] && matches(*styles.styles[i])) {
            return static_cast<StyleIndex>(i);
        }
    }
    return std::nullopt;
}

const StyleDefinition* definition(const StyleSheet& styles, StyleIndex style) {
    return style < styles.styles.size() && styles.styles[style] ? &*styles.styles[style] : nullptr;
}

} // namespace

bool hasStyle(const StyleSheet& styles, StyleIndex style, StyleKind kind) {
    const StyleDefinition* found = definition(styles, style);
    return found != nullptr && found->kind == kind;
}

std::optional<StyleIndex> styleNumbered(const StyleSheet& styles, std::uint16_t number) {
    return firstStyle(styles, [=](const StyleDefinition& style) { return style.sti == number; });
}

std::optional<StyleIndex> styleNamed(const StyleSheet& styles, std::u16string_view name) {
    const std::u16string folded = foldedName(name);
    const auto own = firstStyle(
        styles, [&](const StyleDefinition& style) { return foldedName(style.name) == folded; });
    if (own) {
        return own;
    }
    const auto known = builtInStyleNamed(name);
    return known ? styleNumbered(styles, known->number) : std::nullopt;
}

int headingLevel(const StyleSheet& styles, StyleIndex style) {
    const StyleDefinition* found = definition(styles, style);
    const bool isHeading =
        found != nullptr && found->sti >= sti::heading1 && found->sti < sti::heading1 + 9;
    return isHeading ? found->sti - sti::heading1 + 1 : 0;
}

} // namespace qvnd::word
