#pragma once

#include "platform/word/model/Format.h"
#include "platform/word/model/HeadersFooters.h"
#include "platform/word/model/InlineShapes.h"
#include "platform/word/model/Range.h"

#include <filesystem>
#include <string_view>

namespace qvnd::word {

enum class BreakType { page = 7 };

// The one insertion point or selection of the active window.
class Selection {
public:
    virtual ~Selection() = default;

    // Inserts at the insertion point in the font in force, replacing a selection.
    virtual void TypeText(std::u16string_view text) = 0;
    virtual void TypeParagraph() = 0;
    virtual void InsertBreak(BreakType type) = 0;
    // Inserts the whole file; the insertion point ends behind the inserted text.
    virtual void InsertFile(const std::filesystem::path& path) = 0;

    // Up to `count` characters forward; no fault when fewer exist.
    virtual void Delete(int count) = 0;
    // One character, extending the selection.
    virtual void MoveLeftExtending() = 0;
    // One character; over a just selected picture this collapses to the point behind it.
    virtual void MoveRightExtending() = 0;

    virtual word::Font& Font() = 0;
    virtual word::ParagraphFormat& ParagraphFormat() = 0;
    virtual void setStyle(Style& style) = 0;
    virtual word::Range& Range() = 0;
    virtual word::InlineShapes& InlineShapes() = 0;
    // Counted from 1: the sections of the selection.
    virtual Section& Sections(int index) = 0;
    virtual word::HeaderFooter& HeaderFooter() = 0;
};

} // namespace qvnd::word
