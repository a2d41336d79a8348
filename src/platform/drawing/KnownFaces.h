#pragma once

#include "platform/word/layout/FontMetrics.h"

#include <optional>
#include <string_view>

// What is published of faces that documents name and a desktop may lack: the room of a line, and
// whether Latin letters are half as wide as the square of a Chinese character.
namespace qvnd::drawing {

struct KnownFace {
    // Ascent and descent of the face, and what a word processor adds to a line of it (external
    // leading, or the three tenths that East Asian faces get), in parts of the size.
    layout::FaceHeights heights;
    bool eastAsian = false;
    bool halfWidthLatin = false;
};

// By any name of the face, Chinese or English; the case of Latin letters does not count. A name in
// Chinese that is not known is taken for a face like 宋体; nothing for any other unknown name.
std::optional<KnownFace> knownFace(std::u16string_view name);

// Room of a line of an East Asian face with that ascent and descent of its own.
layout::FaceHeights eastAsianHeights(double ascent, double descent);

} // namespace qvnd::drawing
