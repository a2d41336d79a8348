#pragma once

#include "platform/drawing/PagePainter.h"
#include "platform/preview/FontShelf.h"
#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/layout/PagesOnDemand.h"

#include <QImage>
#include <QString>

#include <map>
#include <memory>

namespace qvnd::preview {

// A document that has been read, its pages laid out and painted one by one. Used by one thread at a
// time.
class OpenDocument {
public:
    // Throws RunTimeError with a Chinese reason when the file is missing, is no .doc, is encrypted
    // or damaged beyond reading.
    OpenDocument(const QString& path, std::shared_ptr<FontShelf> shelf);
    ~OpenDocument();
    OpenDocument(const OpenDocument&) = delete;
    OpenDocument& operator=(const OpenDocument&) = delete;

    layout::PagesOnDemand& pages() { return *pages_; }
    // A page of those found so far, that many pixels wide. Where a picture cannot be drawn, a grey
    // field with the word for it stands in its place.
    QImage paint(std::size_t page, int width);

private:
    using Pictures = std::map<const word::Bytes*, std::optional<drawing::PixelImage>>;

    void readPictures(const layout::Layer& layer);
    void addStandIns(layout::Layer& layer);
    layout::PlacedText standInText(const layout::PlacedPicture& picture);

    word::DocumentContent document_;
    layout::LayoutSource source_;
    std::shared_ptr<FontShelf> shelf_;
    std::unique_ptr<drawing::FontFaces> fonts_;
    std::unique_ptr<layout::PagesOnDemand> pages_;
    Pictures pictures_; // of the page being painted
    std::unique_ptr<drawing::PagePainter> painter_;
};

} // namespace qvnd::preview
