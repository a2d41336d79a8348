#pragma once

#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/LayoutPageNumbers.h"

#include <memory>
#include <string>
#include <vector>

namespace qvnd::test {

// A font in which Chinese characters are squares, all others half as wide, and a line is as high as
// the font's size: 0.8 of it above the foot.
class FixedFonts : public layout::FontMetrics {
public:
    layout::FaceId face(const layout::FaceRequest& request) override {
        return request.bold ? 1 : 0;
    }
    layout::FaceId shownBy(layout::FaceId face, char32_t) override { return face; }
    double advance(layout::FaceId, char32_t c) override { return layout::isEastAsian(c) ? 1 : 0.5; }
    layout::FaceHeights heights(layout::FaceId) override { return {0.8, 0.2}; }
};

// The same measures, with a face for each request: tells by which names they were asked for.
class NamedFonts : public FixedFonts {
public:
    layout::FaceId face(const layout::FaceRequest& request) override {
        names.push_back(request.name);
        return static_cast<layout::FaceId>(names.size() - 1);
    }
    std::vector<std::u16string> names;
};

// Page numbers as that font gives them.
class FixedPageNumbers : public layout::LayoutPageNumbers {
public:
    FixedPageNumbers() : LayoutPageNumbers([] { return std::make_unique<FixedFonts>(); }) {}
};

} // namespace qvnd::test
