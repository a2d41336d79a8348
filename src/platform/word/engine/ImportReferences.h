#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <optional>

namespace qvnd::word {

// Translates what property lists name: indexes of the source's tables into those of the target's.
// The first call for something that the target lacks adds it there. An empty answer says that the
// source has no such thing; an entry that names it is to be left out.
class ImportReferences {
public:
    virtual ~ImportReferences() = default;

    virtual std::optional<std::uint16_t> font(std::uint16_t ftc) = 0;
    // Empty also for a style of another kind.
    virtual std::optional<StyleIndex> style(StyleIndex istd, StyleKind kind) = 0;
    // Translates an operand of sprmPIlfo; 0 when it names no list. The value of Word 95 is kept.
    virtual std::uint16_t list(std::uint16_t ilfo) = 0;
    virtual std::optional<std::uint32_t> blob(std::uint32_t index) = 0;
    virtual std::optional<std::uint32_t> object(std::uint32_t index) = 0;
    virtual std::optional<std::uint32_t> bulletPicture(std::uint32_t index) = 0;
    virtual std::optional<std::uint16_t> author(std::uint16_t index) = 0;
};

} // namespace qvnd::word
