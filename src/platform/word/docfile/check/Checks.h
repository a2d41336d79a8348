#pragma once

#include "platform/word/docfile/check/Evidence.h"
#include "platform/word/docfile/check/Finding.h"

// The single checks, in the order in which checkDocument() runs them. Each reads what earlier ones
// left in the evidence, and tells what it finds.
namespace qvnd::word {

// The most bytes of a property list in a PrcData ([MS-DOC] 2.9.211, cbGrpprl).
inline constexpr std::size_t longestPrc = 0x3FA2;

// Header, allocation tables, chains of sectors, directory. Rules "cfb.*".
void checkContainer(ByteView file, Findings& findings);
// Rules "fib.*".
void checkFib(const Evidence& evidence, Findings& findings);
// Every table of positions: size, order, limits. Rules "plc.*".
void checkPositions(const Evidence& evidence, Findings& findings);
// Fills in styles, styleProperties, defaultFonts, fonts, authors. Rules "style.*", "font.*",
// "author.*".
void checkStyles(Evidence& evidence, Findings& findings);
void checkFonts(Evidence& evidence, Findings& findings);
// Fills in listOverrides and pictureBullets. Rules "list.*".
void checkLists(Evidence& evidence, Findings& findings);
// What the styles and the sheet's head set. Rules "sprm.*", "style.font".
void checkStyleProperties(const Evidence& evidence, Findings& findings);
// Fills in pieces, pieceLists and text. Rules "piece.*".
void checkPieces(Evidence& evidence, Findings& findings);
// Fills in characters and paragraphs. Rules "bte.*", "fkp.*".
void checkFormattingPages(Evidence& evidence, Findings& findings);
// Fills in sectionEnds. Rules "section.*".
void checkSections(Evidence& evidence, Findings& findings);
// Fills in marked. Rules "text.*".
void checkParagraphs(Evidence& evidence, Findings& findings);
// Rules "table.*".
void checkTables(const Evidence& evidence, Findings& findings);
// Rules "field.*".
void checkFields(const Evidence& evidence, Findings& findings);
// Rules "bookmark.*".
void checkBookmarks(const Evidence& evidence, Findings& findings);
// Rules "picture.*".
void checkPictures(const Evidence& evidence, Findings& findings);
// Records, identifiers, anchors, pictures and texts of drawings. Rules "drawing.*".
void checkDrawings(const Evidence& evidence, Findings& findings);
// Rules "header.*".
void checkHeaders(const Evidence& evidence, Findings& findings);
// Footnotes, endnotes and comments: their marks and their texts. Rules "note.*".
void checkNotes(const Evidence& evidence, Findings& findings);
// Authors and ranges of comments. Rules "comment.*".
void checkComments(const Evidence& evidence, Findings& findings);
// Rules "settings.*".
void checkSettings(const Evidence& evidence, Findings& findings);

// Parses cleanly, right groups, every style, font, list, author named exists. Rules "sprm.*".
// `where` begins the text of a finding.
void checkPropertyList(ByteView sprms, ListPlace place, const std::u16string& where,
                       const Evidence& evidence, Findings& findings);

} // namespace qvnd::word
