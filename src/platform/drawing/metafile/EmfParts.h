#pragma once

#include "platform/drawing/metafile/BitmapRecords.h"
#include "platform/drawing/metafile/EmfRecords.h"

// Parts of the player of an EMF. `reader` stands behind the record's type and size; both throw
// FormatError for a record that is too short. False: a record of another kind.
namespace qvnd::drawing::metafile::emf {

// Lines and curves through points.
bool playFigure(Record type, word::LittleEndianReader& reader, DeviceContext& context);
// Bitmaps. `bytes`: the whole record, in which they are found by their offsets.
bool playBitmap(Record type, word::ByteView bytes, word::LittleEndianReader& reader,
                BitmapRecords& bitmaps);
// The bitmap of a brush's pattern, found in the same way; nothing for one that cannot be read.
std::optional<PixelImage> readPattern(word::ByteView bytes, word::LittleEndianReader& reader,
                                      BitmapRecords& bitmaps);

} // namespace qvnd::drawing::metafile::emf
