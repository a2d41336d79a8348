#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <optional>

namespace qvnd::word {

// Where the things that property lists point to stand in the tables of the target. What did not
// come along yet comes with the question. Nothing: the source has no such thing, so that an entry
// that names it means nothing.
class ImportReferences {
public:
    virtual ~ImportReferences() = default;

    virtual std::optional<std::uint16_t> font(std::uint16_t ftc) = 0;
    // Only if the style is of that kind.
    virtual std::optional<StyleIndex> style(StyleIndex istd, StyleKind kind) = 0;
    // Operands of sprmPIlfo, those that are no index included.
    virtual std::uint16_t list(std::uint16_t ilfo) = 0;
    virtual std::optional<std::uint32_t> blob(std::uint32_t index) = 0;
    virtual std::optional<std::uint32_t> object(std::uint32_t index) = 0;
    virtual std::optional<std::uint16_t> author(std::uint16_t index) = 0;
};

} // namespace qvnd::word
