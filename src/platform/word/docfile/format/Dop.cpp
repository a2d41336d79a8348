#include "platform/word/docfile/format/Dop.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t bytesOf(DopField field) { return (field.shift + field.bits + 7) / 8; }

constexpr std::uint64_t maskOf(DopField field) { return (std::uint64_t{1} << field.bits) - 1; }

void put(Bytes& dop, DopField field, std::uint64_t value) {
    const std::uint64_t mask = maskOf(field) << field.shift;
    const std::uint64_t bits = (value << field.shift) & mask;
    for (std::size_t i = 0; i < bytesOf(field); ++i) {
        std::uint8_t& byte = dop.at(field.at + i);
        const auto kept = static_cast<std::uint8_t>(~(mask >> (8 * i)));
        byte = static_cast<std::uint8_t>((byte & kept) | ((bits >> (8 * i)) & 0xFF));
    }
}

// Positions in the story where no revision is known (cpMinRMText and its kin).
constexpr std::size_t firstOfRevisionPlaces = 562;
constexpr std::size_t revisionPlaces = 7;
constexpr DopField mayFitText{504, 3, 1};        // fMaybeFitText: let Word find out
constexpr DopField reservedBitOfWord97{6, 7, 1}; // on in every file of Word 97 and later
constexpr DopField showInkComments{598, 1, 1};   // fAcetateShowInkAtn, on by default

Bytes makeDefault() {
    Bytes dop(dopSize2003);
    const std::initializer_list<std::pair<DopField, std::uint32_t>> values{
        {dop::footnotePlace, 1},
        {dop::firstFootnote, 1},
        {dop::hyphenateCapitals, 1},
        {reservedBitOfWord97, 1},
        {dop::showRevisions, 1},
        {dop::printRevisions, 1},
        {dop::defaultTab, 420},
        {dop::hyphenationZone, 360},
        {dop::revisionNumber, 1},
        {dop::firstEndnote, 1},
        {dop::endnotePlace, 3},
        {dop::shadeFormFields, 1},
        {dop::viewKind, 1},
        {dop::zoomPercent, 100},
        {dop::kerningPunctuation, 1},
        {dop::characterSpacing, 1},
        {dop::gridOriginX, 1800},
        {dop::gridOriginY, 1440},
        {dop::gridWidth, 180},
        {dop::gridHeight, 156},
        {dop::gridShownEachX, 1},
        {dop::gridShownEachY, 1},
        {dop::gridFollowsMargins, 1},
        {dop::endnoteNumbers, 2}, // lower-case roman
        {mayFitText, 1},
        {dop::pixelsPerInch, 96},
        {dop::showMarkup, 1},
        {dop::showComments, 1},
        {dop::showInsertionsAndDeletions, 1},
        {dop::showFormatChanges, 1},
        {dop::tableStyle, 0x0FFF},
        {dop::formatFilter, 0x5024},
        {showInkComments, 1},
    };
    for (const auto& [field, value] : values) {
        put(dop, field, value);
    }
    for (std::size_t i = 0; i < revisionPlaces; ++i) {
        const auto at = static_cast<std::uint16_t>(firstOfRevisionPlaces + 4 * i);
        put(dop, {at, 0, 32}, 0x7FFFFFFF);
    }
    return dop;
}

} // namespace

Bytes defaultDop() { return makeDefault(); }

Bytes dopOfWord2003(ByteView dop) {
    Bytes result = makeDefault();
    std::copy_n(dop.begin(), std::min(dop.size(), dopSize2003), result.begin());
    return result;
}

std::uint32_t readDop(ByteView dop, DopField field) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytesOf(field) && field.at + i < dop.size(); ++i) {
        number |= std::uint64_t{dop[field.at + i]} << (8 * i);
    }
    return static_cast<std::uint32_t>((number >> field.shift) & maskOf(field));
}

void writeDop(Bytes& dop, DopField field, std::uint32_t value) {
    if (field.at + bytesOf(field) > dop.size()) {
        dop = dopOfWord2003(dop);
    }
    put(dop, field, value);
}

} // namespace qvnd::word
