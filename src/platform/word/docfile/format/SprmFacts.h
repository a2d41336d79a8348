#pragma once

#include "platform/word/docfile/format/Sprm.h"

#include <optional>

// What this program knows of single sprms, one row each, [MS-DOC] 2.6.1 to 2.6.5. The reader, the
// writer, the rewriter of references, what styles come to and the checker all read this table.
namespace qvnd::word {

// What an entry is about.
enum class SprmKind : std::uint8_t {
    look,      // how a paragraph or a character of a style looks
    tabStops,  // a change of tab stops, counted apart from other looks
    substance, // what makes the character what it is: picture, symbol, data of a field, object
    revision,  // a tracked change
    place,     // the place of a paragraph in tables
    style,     // names a style, or is a remainder of one that a program worked in
    session,   // identifiers of editing sessions
    storage,   // the list goes on elsewhere in the file
};

// What the operand points to.
enum class SprmTarget : std::uint8_t {
    none,
    font,
    levelFonts, // OLST: nine ANLV with a font each
    characterStyle,
    paragraphStyle,
    tableStyle,
    list,          // sprmPIlfo
    blob,          // a picture or data of a field
    object,        // an embedded object
    bulletPicture, // the picture of a list's bullet
    author,        // of revisions
    dataStream,    // a list of properties in the Data stream
    listInside,    // what the list names that the operand holds, from `targetAt` on
    elsewhere,     // something that does not travel: the entry means nothing in another document
};

struct SprmFacts {
    SprmOpcode opcode = 0;
    // The oldest sprm that sets the same property: sprmPJc80 for sprmPJc.
    SprmOpcode property = 0;
    SprmKind kind = SprmKind::look;
    SprmTarget target = SprmTarget::none;
    std::uint8_t targetAt = 0; // where in the operand the index stands, in bytes
    bool toggle = false;       // operand 0 and 1; 0x80 as the style has it, 0x81 the opposite
    bool indent = false;       // what a list's level sets as well
    std::uint32_t plain = 0;   // the operand that holds where no entry sets the property
};

// The facts of an opcode. One that the table does not list is a plain look of its group, without a
// reference, with zeros as its default.
SprmFacts factsOf(SprmOpcode opcode);

// The size of the operand where the opcode alone tells it; nothing where the operand does.
std::optional<std::size_t> fixedOperandSize(SprmOpcode opcode);

} // namespace qvnd::word
