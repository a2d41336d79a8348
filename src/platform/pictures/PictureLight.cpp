#include "platform/pictures/PictureLight.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace qvnd::pictures {

namespace {

namespace art = word::art;

constexpr std::uint32_t unchanged = 0x10000; // a contrast of 1

// What each value of a colour becomes: the contrast spreads it about the middle.
using Values = std::array<std::uint8_t, 256>;

Values valuesOf(double contrast, double brightness) {
    constexpr double highest = 255;
    Values values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double part = (static_cast<double>(i) / highest - 0.5) * contrast + 0.5 + brightness;
        values.at(i) = static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0, 1.0) * highest));
    }
    return values;
}

} // namespace

QImage lit(const QImage& image, const word::Picture& picture) {
    const auto& properties = picture.properties();
    if (!properties || image.isNull()) {
        return image;
    }
    const std::uint32_t contrast = properties->value(art::pictureContrast).value_or(unchanged);
    const std::uint32_t brightness = properties->value(art::pictureBrightness).value_or(0);
    if (contrast == unchanged && brightness == 0) {
        return image;
    }
    const double one = unchanged;
    const Values values = valuesOf(contrast / one, static_cast<std::int32_t>(brightness) / one);
    QImage result = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const QRgb pixel = pixels[x];
            pixels[x] = qRgba(values.at(static_cast<std::size_t>(qRed(pixel))),
                              values.at(static_cast<std::size_t>(qGreen(pixel))),
                              values.at(static_cast<std::size_t>(qBlue(pixel))), qAlpha(pixel));
        }
    }
    return result;
}

} // namespace qvnd::pictures
