#include "platform/word/docfile/text/NoteTables.h"

#include "platform/word/docfile/format/Plc.h"

#include <algorithm>
#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr std::size_t frdSize = 2;
constexpr std::size_t closingPositions = 2; // of the part, of the table

} // namespace

std::vector<TextPlace> decodeTextPlaces(ByteView texts, Cp partLength) {
    const std::vector<std::uint32_t> positions = decodePlc(texts, 0).positions;
    std::vector<TextPlace> places;
    Cp end = 0; // texts do not overlap, whatever a damaged table says
    for (std::size_t i = 0; i + closingPositions < positions.size(); ++i) {
        const Cp start = std::max(positions[i], end);
        const Cp limit = std::min(positions[i + 1], partLength);
        const bool inside = start < limit;
        places.push_back(inside ? TextPlace{start, limit - start} : TextPlace{});
        end = inside ? limit : end;
    }
    return places;
}

Bytes encodeTextPlaces(std::span<const TextPlace> places) {
    if (places.empty()) {
        return {};
    }
    std::vector<std::uint32_t> positions;
    for (const TextPlace& place : places) {
        positions.push_back(place.start);
    }
    const Cp end = places.back().start + places.back().length;
    positions.push_back(end);
    positions.push_back(end + 1);
    return encodePlc(positions, {});
}

std::vector<NotePlace> decodeNotes(ByteView references, ByteView texts, Cp partLength,
                                   int* damage) {
    const Plc plc = decodePlc(references, frdSize);
    const std::vector<TextPlace> places = decodeTextPlaces(texts, partLength);
    std::vector<NotePlace> notes;
    std::unordered_set<Cp> taken;
    for (std::size_t i = 0; i < plc.count(); ++i) {
        if (i < places.size() && places[i].length > 0 && taken.insert(plc.positions[i]).second) {
            const bool automatic = LittleEndianReader(plc.element(i), "FRD").u16() != 0;
            notes.push_back({plc.positions[i], automatic, places[i]});
        } else if (damage != nullptr) {
            ++*damage;
        }
    }
    return notes;
}

NoteTables encodeNotes(std::span<const NotePlace> notes, Cp end) {
    if (notes.empty()) {
        return {};
    }
    std::vector<std::uint32_t> positions;
    std::vector<TextPlace> texts;
    LittleEndianWriter frds;
    for (const NotePlace& note : notes) {
        positions.push_back(note.at);
        texts.push_back(note.text);
        frds.u16(note.automatic ? 1 : 0);
    }
    positions.push_back(end);
    return {encodePlc(positions, frds.data()), encodeTextPlaces(texts)};
}

} // namespace qvnd::word
