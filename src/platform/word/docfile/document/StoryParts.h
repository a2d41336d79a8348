#pragma once

#include "platform/word/docfile/document/Story.h"

#include <optional>

// Reads one fragment of text, and cuts parts out of it as fragments of their own.
namespace qvnd::word {

// How a paragraph looks: what its mark carries.
struct ParagraphLook {
    StyleIndex style = 0;
    PropertyListId properties = PropertyListId::empty;
    bool operator==(const ParagraphLook&) const = default;
};

// Whether the character ends a paragraph wherever it ends a paragraph run: paragraph mark, cell or
// row mark, section break.
bool endsParagraph(char16_t character);

// The characters [begin, begin + length) with their formatting. A paragraph that goes on beyond
// the end stays as an unended run.
Story partOf(const Story& story, Cp begin, Cp length);

// Appends `part` to `target`. A paragraph that was cut in two becomes one again.
void appendStory(Story& target, const Story& part);

// The properties of the character at `at` (below story.size()).
PropertyListId characterPropertiesAt(const Story& story, Cp at);

// The look of the paragraph run that holds the character at `at`; it counts where the run ends in
// its mark.
ParagraphLook paragraphLookAt(const Story& story, Cp at);

// The last and the first place in (low, high] behind which a paragraph ends.
std::optional<Cp> lastParagraphEnd(const Story& story, Cp low, Cp high);
std::optional<Cp> firstParagraphEnd(const Story& story, Cp low, Cp high);

} // namespace qvnd::word
