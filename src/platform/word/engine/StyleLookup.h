#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <optional>
#include <string_view>

namespace qvnd::word {

// Whether the sheet has the style, and it is of that kind.
bool hasStyle(const StyleSheet& styles, StyleIndex style, StyleKind kind);

std::optional<StyleIndex> styleNumbered(const StyleSheet& styles, std::uint16_t number);

// By the name it has in this style sheet, or by a built-in style's Chinese or English name. The
// case of Latin letters does not count.
std::optional<StyleIndex> styleNamed(const StyleSheet& styles, std::u16string_view name);

// 1 to 9 for the built-in heading styles, else 0.
int headingLevel(const StyleSheet& styles, StyleIndex style);

} // namespace qvnd::word
