#pragma once

#include "platform/word/layout/BlockComposer.h"
#include "platform/word/layout/ShapeReading.h"

namespace qvnd::layout {

// Composes what floats: drawings with their pictures and texts, and frames of paragraphs.
class FloatComposer {
public:
    // Must outlive the object.
    explicit FloatComposer(StoryReader::Shared& shared) : shared_(shared) {}

    // Nothing for a drawing that is not seen. `setting`: of the column that it is anchored in.
    std::optional<AnchoredFloat> drawing(std::uint32_t index, const PageFields& fields,
                                         const LineSetting& setting);

private:
    void addPart(ShapePart& part, const PageFields& fields, const LineSetting& setting,
                 Layer& layer);
    void addArt(const ShapePart& part, Layer& layer);
    Stack textOf(const ShapePart& part, const PageFields& fields, const LineSetting& setting);

    StoryReader::Shared& shared_;
};

// A frame around what it holds, which is as wide as the frame.
AnchoredFloat framed(const word::ParagraphFrame& frame, double width, Stack content);

// How wide the text of strips is.
double textWidth(const Strips& strips);

} // namespace qvnd::layout
