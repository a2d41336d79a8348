#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// The widths of the Latin letters of faces that documents name and a desktop may lack.
namespace qvnd::drawing {

// Of the characters from U+0020 to U+007E, in thousandths of the font size.
using PublishedWidths = std::array<std::uint16_t, 95>;

// The widths of Times New Roman and Arial, by the metrics that Adobe has published for Times and
// Helvetica (AFM), with which those faces agree by design. Null for any other face.
const PublishedWidths* publishedWidths(std::u16string_view name, bool bold, bool italic);

} // namespace qvnd::drawing
