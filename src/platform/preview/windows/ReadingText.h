#pragma once

#include "platform/preview/DocumentReading.h"

#include <QTextDocument>

#include <memory>

namespace qvnd::preview {

class PictureObjects;

// A reading as a text document, broken into pages of its paper.
struct ReadingText {
    // Units of the document in a point: small ones keep its layout independent of the screen.
    static constexpr int unitsPerPoint = 4;

    std::unique_ptr<QTextDocument> document;
    PictureObjects* pictures = nullptr; // owned by the document
};

// `lastLine`: what is to stand behind a reading that is cut; empty for nothing.
ReadingText readingText(const DocumentReading& reading, const QString& lastLine);

} // namespace qvnd::preview
