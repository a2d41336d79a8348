#include "platform/word/engine/StyleMatch.h"

#include "platform/error/Utf8.h"
#include "platform/word/docfile/styles/StyleSheetRepair.h"
#include "platform/word/formatting/BuiltInStyles.h"

namespace qvnd::word {

std::optional<std::uint16_t> builtInNumberOf(const StyleDefinition& style) {
    const std::optional<BuiltInStyle> known =
        style.sti != StyleDefinition::userDefined ? builtInStyle(style.sti) : std::nullopt;
    if (known && known->kind == style.kind) {
        return known->number;
    }
    const std::optional<BuiltInStyle> named = builtInStyleNamed(style.name);
    return named && named->kind == style.kind ? std::optional(named->number) : std::nullopt;
}

StyleMatch::StyleMatch(const StyleSheet& sheet) {
    for (std::size_t i = 0; i < sheet.styles.size(); ++i) {
        if (sheet.styles[i]) {
            add(static_cast<StyleIndex>(i), *sheet.styles[i]);
        }
    }
}

void StyleMatch::add(StyleIndex index, const StyleDefinition& style) {
    if (const auto number = builtInNumberOf(style)) {
        builtIn_.emplace(std::pair(style.kind, *number), index);
    }
    named_.emplace(std::pair(style.kind, style.name), index);
    names_.insert(style.name);
    aliasesThat(style.aliases,
                [this](const std::u16string& alias) { return names_.insert(alias).second; });
}

std::u16string StyleMatch::freeAliases(const std::u16string& aliases) const {
    return aliasesThat(aliases,
                       [this](const std::u16string& alias) { return !names_.contains(alias); });
}

std::optional<StyleIndex> StyleMatch::find(const StyleDefinition& style) const {
    if (const auto number = builtInNumberOf(style)) {
        const auto found = builtIn_.find({style.kind, *number});
        return found != builtIn_.end() ? std::optional(found->second) : std::nullopt;
    }
    const auto found = named_.find({style.kind, style.name});
    return found != named_.end() ? std::optional(found->second) : std::nullopt;
}

std::u16string StyleMatch::freeName(const std::u16string& name) const {
    std::u16string candidate = name;
    for (int number = 2; names_.contains(candidate); ++number) {
        candidate = name + u"_" + fromUtf8(std::to_string(number));
    }
    return candidate;
}

} // namespace qvnd::word
