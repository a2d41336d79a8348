#include "platform/drawing/GlyphPainter.h"

#include "platform/drawing/CairoImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace qvnd::drawing {
namespace {

// Letters of 30 pixels on 200 by 60 pixels.
class Glyphs : public testing::Test {
protected:
    static constexpr int width = 200;
    static constexpr int height = 60;

    void show(cairo_t* context, layout::FaceId face, double angle, Ink ink) {
        const std::u16string text = u"Rag&施工";
        const std::vector<float> advances(text.size(), 30);
        setColour(context, 0x000000);
        cairo_translate(context, 10.3, 40.6);
        cairo_rotate(context, angle);
        GlyphPainter(fonts).show(context, {face, 30, 1, text, advances, ink});
    }
    // As pixels.
    PixelImage painted(layout::FaceId face, double angle = 0) {
        return paintedImage(width, height,
                            [&](cairo_t* context) { show(context, face, angle, Ink::text); });
    }
    // As outlines, which Cairo fills.
    PixelImage filled(layout::FaceId face, double angle = 0) {
        return paintedImage(width, height, [&](cairo_t* context) {
            const CairoSurface kept(
                cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
            const CairoContext recorder(cairo_create(kept.get()));
            keepMeasures(recorder.get());
            show(recorder.get(), face, angle, Ink::areas);
            cairo_set_source_surface(context, kept.get(), 0, 0);
            cairo_paint(context);
        });
    }
    static int inkAt(const PixelImage& image, int pixel) {
        return 255 - image.pixels[std::size_t{4} * static_cast<std::size_t>(pixel)];
    }
    static double inkOf(const PixelImage& image) {
        double ink = 0;
        for (int pixel = 0; pixel < width * height; ++pixel) {
            ink += inkAt(image, pixel);
        }
        return ink;
    }
    static void expectAlike(const PixelImage& a, const PixelImage& b) {
        EXPECT_GT(inkOf(a), 20'000);
        EXPECT_NEAR(inkOf(a), inkOf(b), 0.01 * inkOf(b));
        int farthest = 0;
        for (int pixel = 0; pixel < width * height; ++pixel) {
            farthest = std::max(farthest, std::abs(inkAt(a, pixel) - inkAt(b, pixel)));
        }
        EXPECT_LT(farthest, 40);
    }

    FontFaces fonts{FontChoice::here};
};

TEST_F(Glyphs, OnPixelsTheyCoverWhatTheirOutlinesDo) {
    const layout::FaceId face = fonts.face({u"serif", false, false, false});
    expectAlike(painted(face), filled(face));
}

TEST_F(Glyphs, OnPixelsTheyAreTurnedAsTheirContextIs) {
    const layout::FaceId face = fonts.face({u"serif", false, false, false});
    const PixelImage turned = filled(face, 0.2); // Cairo leaves the face turned
    expectAlike(painted(face, 0.2), turned);
}

TEST_F(Glyphs, OnPixelsTheyAreAsBoldAndObliqueAsTheirFaceIsMade) {
    bool isMade = false;
    for (const char16_t* name : {u"serif", u"宋体", u"楷体", u"Z003"}) {
        const layout::FaceId face = fonts.shownBy(fonts.face({name, true, true, true}), U'施');
        isMade = isMade || fonts.drawn(face).embolden || fonts.drawn(face).slant;
        expectAlike(painted(face), filled(face));
    }
    if (!isMade) {
        GTEST_SKIP() << "each of these faces has a bold and an oblique one of its own here";
    }
}

TEST_F(Glyphs, OnPixelsWhatIsClippedAwayIsNotPainted) {
    const layout::FaceId face = fonts.face({u"serif", false, false, false});
    const auto cut = paintedImage(width, height, [&](cairo_t* context) {
        cairo_rectangle(context, 0, 0, 60, height);
        cairo_clip(context);
        show(context, face, 0, Ink::text);
    });
    const PixelImage whole = painted(face);
    for (int pixel = 0; pixel < width * height; ++pixel) {
        ASSERT_EQ(inkAt(cut, pixel), pixel % width < 60 ? inkAt(whole, pixel) : 0);
    }
}

TEST_F(Glyphs, OnPixelsOnesFarOutsideAreNotPainted) {
    const layout::FaceId face = fonts.face({u"serif", false, false, false});
    const auto paintAt = [&](double x) {
        return paintedImage(width, height, [&](cairo_t* context) {
            setColour(context, 0x000000);
            cairo_translate(context, x, 40);
            const std::vector<float> advances{1};
            GlyphPainter(fonts).show(context, {face, 30, 1, u"I", advances});
        });
    };
    EXPECT_GT(inkOf(paintAt(0)), 0);
    EXPECT_EQ(inkOf(paintAt(1e7)), 0);
    EXPECT_EQ(inkOf(paintAt(-1e7)), 0);
}

} // namespace
} // namespace qvnd::drawing
