#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Story.h"

#include <span>
#include <vector>

// Footnotes and endnotes: PlcffndRef and PlcffndTxt, PlcfendRef and PlcfendTxt, [MS-DOC] 2.8.
namespace qvnd::word {

// Where a text lies in its part; nothing of it for a length of 0.
struct TextPlace {
    Cp start = 0;
    Cp length = 0;
};

// One place for each text of a table of notes or comments: from its position to the next one. The
// last two positions close the part and the table. Texts outside of the part have a length of 0.
std::vector<TextPlace> decodeTextPlaces(ByteView texts, Cp partLength);
// The reverse. Texts lie one behind the other; the part ends in a paragraph mark behind the last.
// No bytes when there is no text.
Bytes encodeTextPlaces(std::span<const TextPlace> places);

struct NotePlace {
    Cp at = 0;             // its reference in the main story
    bool automatic = true; // numbered by the program; else marked as the user likes (FRD.nAuto)
    TextPlace text;
};

// Notes without a text, and all but the first at one place, are left out, and counted in `*damage`
// where given.
std::vector<NotePlace> decodeNotes(ByteView references, ByteView texts, Cp partLength,
                                   int* damage = nullptr);

struct NoteTables {
    Bytes references;
    Bytes texts;
};
// `end` is the position that closes the table of references. Empty when there is no note.
NoteTables encodeNotes(std::span<const NotePlace> notes, Cp end);

} // namespace qvnd::word
