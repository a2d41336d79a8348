#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Story.h"

#include <span>
#include <string_view>
#include <vector>

// Fields: Plcfld and Fld, [MS-DOC] 2.8.25 and 2.9.88. Positions count from the start of a story.
namespace qvnd::word {

inline constexpr char16_t fieldBegin = 0x13;
inline constexpr char16_t fieldSeparator = 0x14;
inline constexpr char16_t fieldEnd = 0x15;

inline bool isFieldCharacter(char16_t c) { return c >= fieldBegin && c <= fieldEnd; }

// Tells, while a text is read from its start, whether a character belongs to the instruction of a
// field, which is not seen.
class FieldInstructions {
public:
    // Takes the next field character; one without counterpart changes nothing.
    void take(char16_t fieldCharacter);
    bool isInside() const { return inside_ > 0; }

private:
    std::vector<bool> open_; // by open field: whether its instruction goes on
    int inside_ = 0;         // how many of them do
};

// The Plcfld of a story `length` characters long; no bytes when there is no mark.
Bytes encodeFields(std::span<const FieldMark> marks, Cp length);

// What a Plcfld says, ascending and each position once; nothing is known yet of the text.
std::vector<FieldMark> decodeFields(ByteView plcfld);

struct MatchedFields {
    // Ascending, each at its character in the text, every begin with its end (and at most one
    // separator between), properly nested.
    std::vector<FieldMark> marks;
    // Field characters of the text that belong to no such field, ascending.
    std::vector<Cp> strays;
    // How many of the given marks name no field character, or are missing for one. Fields without
    // a result need none.
    int damage = 0;
};

// The fields of a story's text with what `known`, ascending, says of them. A character that
// `known` does not name still makes a field, of the unknown kind, when it has its counterpart.
MatchedFields matchFields(std::span<const FieldMark> known, std::u16string_view text);

} // namespace qvnd::word
