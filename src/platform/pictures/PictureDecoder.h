#pragma once

#include "platform/word/engine/EngineServices.h"

namespace qvnd::pictures {

// Reads what Qt's picture formats read (GIF among them) and hands it on as PNG, with its
// transparency, at 96 dots an inch. Needs no display.
class PictureDecoder : public word::PictureConverter {
public:
    // Of several frames the first. Nothing for a file that is damaged in its first frame, or whose
    // picture would take more memory than Qt allows to one (256 MB unless it is told otherwise).
    std::optional<word::Bytes> convert(word::ByteView file) const override;
};

} // namespace qvnd::pictures
