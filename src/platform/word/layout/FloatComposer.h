#pragma once

#include "platform/word/layout/BlockComposer.h"
#include "platform/word/layout/ShapeReading.h"

namespace qvnd::layout {

// Composes floating objects: drawings with their pictures and texts, and frames of paragraphs.
class FloatComposer {
public:
    // Must outlive the object.
    explicit FloatComposer(StoryReader::Shared& shared) : shared_(shared) {}

    // Nothing for an invisible drawing. `setting`: that of the column of the anchor.
    std::optional<AnchoredFloat> drawing(std::uint32_t index, const PageFields& fields,
                                         const LineSetting& setting);

private:
    // What floats in its text is held by `holder`.
    void addPart(ShapePart& part, const PageFields& fields, const LineSetting& setting,
                 Layer& layer, AnchoredFloat& holder);
    void addArt(const ShapePart& part, Layer& layer);
    Stack textOf(const ShapePart& part, const PageFields& fields, const LineSetting& setting);

    StoryReader::Shared& shared_;
};

// A frame of that width around its content.
AnchoredFloat framed(const word::ParagraphFrame& frame, double width, Stack content);

// The width of the text in the strips, in twips.
double textWidth(const Strips& strips);

} // namespace qvnd::layout
