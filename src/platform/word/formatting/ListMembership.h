#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <unordered_map>

namespace qvnd::word {

// Values of sprmPIlfo that are not the index of a list override ([MS-DOC] 2.6.2).
inline constexpr std::uint16_t noList = 0;
inline constexpr std::uint16_t lastListIndex = 0x07FE;
inline constexpr std::uint16_t listOfWord95 = 0x07FF;    // its numbering is in sprmPAnld80
inline constexpr std::uint16_t firstHiddenList = 0xF802; // negated index: hidden number

// The index (from 1) of the list override that an operand of sprmPIlfo refers to; 0 for none.
std::uint16_t listIndexOf(std::uint16_t ilfo);

// Finds the list levels of a document.
class ListLevels {
public:
    explicit ListLevels(const DocumentTables& tables) : tables_(tables) {}

    // The level of paragraphs with these operands of sprmPIlfo and sprmPIlvl; null for none.
    const ListLevel* level(std::uint16_t ilfo, std::uint8_t ilvl);
    // The paragraph properties of that level; an empty list without a level.
    ByteView paragraph(std::uint16_t ilfo, std::uint8_t ilvl);

private:
    const ListDefinition* definition(std::int32_t lsid);

    const DocumentTables& tables_;
    std::unordered_map<std::int32_t, std::size_t> places_;
};

} // namespace qvnd::word
