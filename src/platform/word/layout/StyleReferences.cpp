#include "platform/word/layout/StyleReferences.h"

#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

// The word behind the field's name: between quotation marks, or up to a blank.
std::u16string_view nameIn(std::u16string_view instruction) {
    constexpr std::u16string_view field = u"STYLEREF";
    const auto begin = instruction.find_first_not_of(u' ');
    if (begin == instruction.npos ||
        word::foldedName(instruction.substr(begin, field.size())) != u"styleref") {
        return {};
    }
    std::u16string_view rest = instruction.substr(begin + field.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(u' '), rest.size()));
    if (rest.starts_with(u'"')) {
        return rest.substr(1, rest.find(u'"', 1) - 1);
    }
    return rest.substr(0, rest.find_first_of(u" \\"));
}

// The number of the built-in style that a name stands for; a digit stands for a heading.
std::optional<std::uint16_t> builtInNamed(std::u16string_view name) {
    if (name.size() == 1 && name.front() >= u'1' && name.front() <= u'9') {
        return static_cast<std::uint16_t>(word::sti::heading1 + name.front() - u'1');
    }
    const auto known = word::builtInStyleNamed(name);
    return known ? std::optional(known->number) : std::nullopt;
}

std::optional<word::StyleIndex> styleNamed(std::u16string_view name,
                                           const word::StyleSheet& sheet) {
    const auto number = builtInNamed(name);
    const std::u16string folded = word::foldedName(name);
    const auto isIt = [&](const std::optional<word::StyleDefinition>& style) {
        return style && style->kind == word::StyleKind::paragraph &&
               (number ? style->sti == *number : word::foldedName(style->name) == folded);
    };
    const auto found = std::find_if(sheet.styles.begin(), sheet.styles.end(), isIt);
    return found == sheet.styles.end()
               ? std::nullopt
               : std::optional(static_cast<word::StyleIndex>(found - sheet.styles.begin()));
}

bool hasSwitch(std::u16string_view instruction, std::u16string_view which) {
    return instruction.find(which) != instruction.npos;
}

} // namespace

std::optional<StyleReference> styleReferenceOf(std::u16string_view instruction,
                                               const word::StyleSheet& sheet) {
    const std::u16string_view name = nameIn(instruction);
    const auto style = name.empty() ? std::nullopt : styleNamed(name, sheet);
    if (!style || hasSwitch(instruction, u"\\p")) {
        return std::nullopt;
    }
    using Shows = StyleReference::Shows;
    const bool asksNumber = hasSwitch(instruction, u"\\n") || hasSwitch(instruction, u"\\r") ||
                            hasSwitch(instruction, u"\\w");
    const Shows shows = !asksNumber                      ? Shows::text
                        : hasSwitch(instruction, u"\\t") ? Shows::numbers
                                                         : Shows::label;
    return StyleReference{*style, shows, hasSwitch(instruction, u"\\l")};
}

std::optional<std::u16string> shownBy(const StyleReference& reference,
                                      const word::StyledParagraphs& paragraphs,
                                      word::PageText page) {
    const auto& all = paragraphs.of(reference.style);
    if (all.empty()) {
        return std::nullopt;
    }
    const word::StyledParagraph* near = word::nearest(all, page, reference.last);
    const word::StyledParagraph& shown = near != nullptr ? *near : all.front();
    if (reference.shows == StyleReference::Shows::text) {
        return shown.text;
    }
    if (shown.label.empty()) {
        return u"0"; // of a paragraph without a number
    }
    std::u16string number =
        reference.shows == StyleReference::Shows::label ? shown.label : shown.numbers;
    while (number.ends_with(u'.')) {
        number.pop_back();
    }
    return number;
}

} // namespace qvnd::layout
