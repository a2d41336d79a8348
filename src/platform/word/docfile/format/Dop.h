#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>

// The document settings (Dop), [MS-DOC] 2.7. They stay bytes all the way, so that what is not named
// here travels unchanged; single fields are read and changed by name.
namespace qvnd::word {

// A number within the Dop: `bits` bits (at most 32) of the little-endian number at byte `at`, from
// bit `shift` on.
struct DopField {
    std::uint16_t at = 0;
    std::uint8_t shift = 0;
    std::uint8_t bits = 0;
};

namespace dop {

// DopBase
inline constexpr DopField facingPages{0, 0, 1};   // even and odd headers differ
inline constexpr DopField footnotePlace{0, 5, 2}; // fpc: 0 end of section, 1 page, 2 under the text
inline constexpr DopField footnoteRestart{2, 0, 2}; // rncFtn: 0 never, 1 section, 2 page
inline constexpr DopField firstFootnote{2, 2, 14};
inline constexpr DopField labelDocument{5, 2, 1};
inline constexpr DopField hyphenateCapitals{5, 3, 1};
inline constexpr DopField automaticHyphens{5, 4, 1};
inline constexpr DopField linkStyles{5, 6, 1};
inline constexpr DopField trackRevisions{5, 7, 1};
inline constexpr DopField pageCountHidden{6, 2, 1};
inline constexpr DopField pageCountKnown{6, 3, 1};
inline constexpr DopField lockAnnotations{6, 4, 1};
inline constexpr DopField mirrorMargins{6, 5, 1};
inline constexpr DopField protectedForForms{7, 1, 1};
inline constexpr DopField showRevisions{7, 3, 1};
inline constexpr DopField printRevisions{7, 4, 1};
inline constexpr DopField lockRevisions{7, 6, 1};
inline constexpr DopField embedFonts{7, 7, 1};
inline constexpr DopField unbalancedColumns{8, 5, 1};   // fNoColumnBalance
inline constexpr DopField expandsBrokenLines{8, 13, 1}; // fExpShRtn: lines that a break ends
inline constexpr DopField defaultTab{10, 0, 16};        // twips
inline constexpr DopField hyphenationZone{14, 0, 16};   // twips
inline constexpr DopField created{20, 0, 32};           // DTTM, as the two below
inline constexpr DopField revised{24, 0, 32};
inline constexpr DopField lastPrinted{28, 0, 32};
inline constexpr DopField revisionNumber{32, 0, 16};
inline constexpr DopField wordCount{38, 0, 32};
inline constexpr DopField characterCount{42, 0, 32};
inline constexpr DopField pageCount{46, 0, 16};
inline constexpr DopField paragraphCount{48, 0, 32};
inline constexpr DopField endnoteRestart{52, 0, 2};
inline constexpr DopField firstEndnote{52, 2, 14};
inline constexpr DopField endnotePlace{54, 0, 2}; // epc: 0 end of section, 3 end of document
inline constexpr DopField shadeFormFields{54, 12, 1};
inline constexpr DopField lineCount{56, 0, 32};
inline constexpr DopField viewKind{82, 0, 3};    // wvkoSaved: 1 print layout, 2 outline, 4 normal
inline constexpr DopField zoomPercent{82, 3, 9}; // pctWwdSaved: 10 to 500
inline constexpr DopField zoomKind{82, 12, 2};   // zkSaved: 0 the percentage counts
inline constexpr DopField gutterAtTop{82, 15, 1};
// Dop97
inline constexpr DopField documentKind{88, 0, 16}; // adt
inline constexpr DopField kerningPunctuation{90, 0, 1};
inline constexpr DopField characterSpacing{90, 1, 2}; // iJustification: 1 squeezes punctuation
inline constexpr DopField noLeading{84, 19, 1};       // fNoExtLeading
inline constexpr DopField gridOriginX{400, 0, 16};    // drawing grid, twips
inline constexpr DopField gridOriginY{402, 0, 16};
inline constexpr DopField gridWidth{404, 0, 16};
inline constexpr DopField gridHeight{406, 0, 16};
inline constexpr DopField gridShownEachX{408, 0, 7};
inline constexpr DopField gridShownEachY{408, 8, 7};
inline constexpr DopField gridFollowsMargins{408, 15, 1};
inline constexpr DopField bordersHoldHeader{410, 12, 1}; // fIncludeHeader: borders of pages
inline constexpr DopField bordersHoldFooter{410, 13, 1};
inline constexpr DopField footnoteNumbers{492, 0, 16}; // an NFC
inline constexpr DopField endnoteNumbers{494, 0, 16};
// Dop2000
inline constexpr DopField pixelsPerInch{506, 2, 10};
inline constexpr DopField addsParagraphSpaces{512, 2, 1}; // else the larger of two counts
inline constexpr DopField tableLinesOffGrid{512, 3, 1};
// Dop2002
inline constexpr DopField formatLive{548, 2, 1};
inline constexpr DopField showMarkup{548, 12, 1};
inline constexpr DopField showComments{548, 13, 1};
inline constexpr DopField showInsertionsAndDeletions{548, 14, 1};
inline constexpr DopField showFormatChanges{548, 15, 1};
inline constexpr DopField tableStyle{550, 0, 16}; // istdTableDflt, 0x0FFF none
inline constexpr DopField formatFilter{554, 0, 16};

} // namespace dop

// Bytes of a Dop2003.
inline constexpr std::size_t dopSize2003 = 616;

// The settings of a new Chinese document: tabs every 420 twips, one kind of page, gutter at the
// left, footnotes from 1 at the foot of the page, print layout at 100 %.
Bytes defaultDop();

// The settings as a file of Word 2003 holds them: those of older files are completed by the
// defaults, those of later ones lose what Word 2003 does not know.
Bytes dopOfWord2003(ByteView dop);

// What lies behind the end of the settings reads as 0.
std::uint32_t readDop(ByteView dop, DopField field);
// Settings that are too short for the field are completed by the defaults first; bits of `value`
// that the field cannot hold are dropped.
void writeDop(Bytes& dop, DopField field, std::uint32_t value);

} // namespace qvnd::word
