#include "platform/word/layout/StyleReferences.h"

#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

// What an instruction says behind the field's name.
struct Instruction {
    std::u16string_view style{};
    std::u16string switches{}; // a letter each
};

// A text between quotation marks, or a word up to a blank or a switch.
std::u16string_view takeWord(std::u16string_view& rest) {
    const bool isQuoted = rest.starts_with(u'"');
    rest.remove_prefix(isQuoted ? 1 : 0);
    const auto end = std::min(isQuoted ? rest.find(u'"') : rest.find_first_of(u" \\"), rest.size());
    const std::u16string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + (isQuoted ? 1 : 0), rest.size()));
    return word;
}

// Nothing for another field. The text of a field's format (\*) is passed over.
std::optional<Instruction> instructionIn(std::u16string_view text) {
    constexpr std::u16string_view field = u"STYLEREF";
    constexpr char16_t format = u'*';
    text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
    if (word::foldedName(text.substr(0, field.size())) != u"styleref") {
        return std::nullopt;
    }
    text.remove_prefix(field.size());
    Instruction found;
    bool isOfFormat = false;
    while (text.find_first_not_of(u' ') != text.npos) {
        text.remove_prefix(text.find_first_not_of(u' '));
        if (text.front() == u'\\') {
            const char16_t letter = text.size() > 1 ? text[1] : u'\\';
            isOfFormat = letter == format;
            found.switches.append(isOfFormat ? 0 : 1, letter);
            text.remove_prefix(std::min<std::size_t>(text.size(), 2));
            continue;
        }
        const std::u16string_view word = takeWord(text);
        found.style = found.style.empty() && !isOfFormat ? word : found.style;
        isOfFormat = false;
    }
    return found;
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

StyleReference::Shows shownBySwitches(std::u16string_view switches) {
    using Shows = StyleReference::Shows;
    const auto has = [&](std::u16string_view any) {
        return switches.find_first_of(any) != any.npos;
    };
    if (has(u"s") || (has(u"nrw") && has(u"t"))) {
        return Shows::numbers;
    }
    return has(u"rw") ? Shows::wholeLabel : has(u"n") ? Shows::label : Shows::text;
}

} // namespace

std::optional<StyleReference> styleReferenceOf(std::u16string_view instruction,
                                               const word::StyleSheet& sheet) {
    const auto read = instructionIn(instruction);
    if (!read || read->style.empty() ||
        read->switches.find_first_not_of(u"lnrstw") != read->switches.npos) {
        return std::nullopt;
    }
    const auto style = styleNamed(read->style, sheet);
    const bool isLast = read->switches.find(u'l') != read->switches.npos;
    return style ? std::optional(StyleReference{*style, shownBySwitches(read->switches), isLast})
                 : std::nullopt;
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
    if (reference.shows == StyleReference::Shows::wholeLabel && !shown.hasAllLevels) {
        return std::nullopt;
    }
    std::u16string number =
        reference.shows == StyleReference::Shows::numbers ? shown.numbers : shown.label;
    while (number.ends_with(u'.')) {
        number.pop_back();
    }
    return number;
}

} // namespace qvnd::layout
