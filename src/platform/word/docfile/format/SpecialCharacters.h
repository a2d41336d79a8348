#pragma once

// Characters of a document's text that have a meaning of their own ([MS-DOC] 2.4.1 and 2.4.6.1).
// Those below `firstPrintable` are not text; pictures, references, drawings and symbols are special
// only where their formatting says so (sprmCFSpec). Field characters are in Fields.h.
namespace qvnd::word::special {

inline constexpr char16_t picture = 0x01;
inline constexpr char16_t noteReference = 0x02;
inline constexpr char16_t commentReference = 0x05;
inline constexpr char16_t cellMark = 0x07; // ends a cell of a table, or a row
inline constexpr char16_t drawing = 0x08;  // the anchor of one
inline constexpr char16_t tab = 0x09;
inline constexpr char16_t lineBreak = 0x0B;
inline constexpr char16_t pageBreak = 0x0C; // ends a section where one ends, else a page
inline constexpr char16_t paragraphMark = 0x0D;
inline constexpr char16_t columnBreak = 0x0E;
inline constexpr char16_t fixedHyphen = 0x1E;    // at which no line ends
inline constexpr char16_t optionalHyphen = 0x1F; // at which a line may end; seen there alone
inline constexpr char16_t firstPrintable = 0x20;
inline constexpr char16_t symbol = 0x28; // stands for a character of another font

} // namespace qvnd::word::special
