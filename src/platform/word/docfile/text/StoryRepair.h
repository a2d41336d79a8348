#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/text/Fields.h"

#include <functional>
#include <span>

// Repairs that give a story the invariants of Story, whatever the file holds.
namespace qvnd::word {

// Appends a run; one that looks like the last becomes part of it, an empty one nothing.
void appendRun(std::vector<CharacterRun>& runs, CharacterRun run);

// Appends a paragraph mark unless the text ends in one. Answers whether it did.
bool closeWithParagraphMark(Story& story);

// Gives the characters at `positions`, which ascend, the properties that `change` makes of theirs.
void changeProperties(Story& story, std::span<const Cp> positions,
                      const std::function<PropertyListId(Cp, PropertyListId)>& change);

// Replaces the characters at `positions`, which ascend, by blanks without special meaning: those
// of special characters whose data or counterpart is missing.
void blankOut(Story& story, std::span<const Cp> positions, PropertyLists& lists);

// Marks the characters of fields and drawings as special ones: without the mark they are plain text
// to readers. Also takes from the characters of fields what leads to a picture, and to an object
// but for the separator's: it has no meaning there, and readers take the first one that they come
// upon in the field of an object for the number of its storage.
void settleMarks(Story& story, PropertyLists& lists);

// The picture characters whose properties lead to no picture, form data or object, ascending.
std::vector<Cp> picturesWithoutData(const Story& story, const PropertyLists& lists);

// Gives paragraphs whose style does not exist, or is no paragraph style, style 0. Answers how many
// there were.
int repairStyles(Story& story, const StyleSheet& styles);

} // namespace qvnd::word
