#pragma once

#include "platform/word/layout/FontMetrics.h"

#include <memory>
#include <string_view>

struct FT_FaceRec_;

namespace qvnd::drawing {

// Which measures the layout goes by.
enum class FontChoice : std::uint8_t {
    named, // those of the faces that the document names, installed or not
    here   // those of the faces that this desktop shows instead
};

// A face that is painted, and what is done to it where it lacks the look.
struct DrawnFace {
    FT_FaceRec_* face = nullptr;
    bool embolden = false;
    bool slant = false;
    std::shared_ptr<const void> owner; // of `face`: keeps it for whoever needs it longer
};

// The faces of this desktop, found by fontconfig and read by FreeType. A face that was asked for by
// the name of a symbol font knows that font's codes from U+F000 on. One thread at a time.
class FontFaces : public layout::FontMetrics {
public:
    // Throws RunTimeError (5) when the desktop has no font at all.
    explicit FontFaces(FontChoice choice);
    ~FontFaces() override;
    FontFaces(const FontFaces&) = delete;
    FontFaces& operator=(const FontFaces&) = delete;

    layout::FaceId face(const layout::FaceRequest& request) override;
    layout::FaceId shownBy(layout::FaceId face, char32_t character) override;
    double advance(layout::FaceId face, char32_t character) override;
    layout::FaceHeights heights(layout::FaceId face) override;
    layout::Ligature ligature(layout::FaceId face, std::u32string_view text) override;
    double kerning(layout::FaceId face, char32_t before, char32_t after) override;

    DrawnFace drawn(layout::FaceId face) const;
    // How wide the glyph is that is painted for a character, in parts of the font size: not what
    // the layout went by where another face's measures count.
    double drawnAdvance(layout::FaceId face, char32_t character) const;
    // The number of a character's glyph in the face that is painted; 0 for none.
    unsigned glyph(layout::FaceId face, char32_t character) const;

private:
    class Store;
    std::shared_ptr<Store> store_;
};

// The faces that documents name, for LayoutPageNumbers.
std::unique_ptr<layout::FontMetrics> openNamedFonts();

} // namespace qvnd::drawing
