#include "platform/preview/OpenDocument.h"

#include "platform/files/Paths.h"
#include "platform/pictures/PageImages.h"
#include "platform/word/engine/DocumentSource.h"

#include <algorithm>
#include <array>

namespace qvnd::preview {

namespace {

constexpr int finest = 300; // dots an inch: sharp on fine screens
constexpr std::uint32_t standInFill = 0xF0F0F0;
constexpr std::uint32_t standInEdge = 0xD0D0D0;
constexpr std::uint32_t standInInk = 0x909090;
constexpr double largestStandInText = 240; // twips

} // namespace

OpenDocument::OpenDocument(const QString& path, std::shared_ptr<FontShelf> shelf)
    : document_(word::readDocumentFile(files::toPath(path))),
      source_(layout::sourceOfToday(document_)), shelf_(std::move(shelf)), fonts_(shelf_->take()),
      pages_(std::make_unique<layout::PagesOnDemand>(source_, *fonts_, layout::LayoutOptions{})),
      painter_(std::make_unique<drawing::PagePainter>(
          *fonts_, [this](const word::DataBlob& blob) { return pictures_[blob.get()]; })) {}

OpenDocument::~OpenDocument() {
    painter_.reset();
    pages_.reset();
    shelf_->giveBack(std::move(fonts_));
}

QImage OpenDocument::paint(std::size_t page, int width) {
    layout::Page laidOut = pages_->page(page);
    readPictures(laidOut.layer);
    addStandIns(laidOut.layer);
    const drawing::PixelImage painted = painter_->image(laidOut, width);
    pictures_.clear();
    return QImage(painted.pixels.data(), painted.width, painted.height, painted.width * 4,
                  QImage::Format_ARGB32_Premultiplied)
        .copy();
}

void OpenDocument::readPictures(const layout::Layer& layer) {
    for (const layout::PlacedPicture& picture : layer.pictures) {
        const auto [known, isNew] = pictures_.try_emplace(picture.blob.get());
        if (isNew) {
            known->second = pictures::pageImageAt(picture.blob, finest);
        }
    }
}

void OpenDocument::addStandIns(layout::Layer& layer) {
    for (const layout::PlacedPicture& picture : layer.pictures) {
        if (pictures_[picture.blob.get()] || drawing::isPaintedMetafile(picture.blob)) {
            continue;
        }
        const double right = picture.x + picture.width;
        const double bottom = picture.y + picture.height;
        layer.fills.push_back(
            {picture.x, picture.y, picture.width, picture.height, standInFill, picture.plane});
        for (const auto& [x1, y1, x2, y2] : {std::array{picture.x, picture.y, right, picture.y},
                                             std::array{picture.x, bottom, right, bottom},
                                             std::array{picture.x, picture.y, picture.x, bottom},
                                             std::array{right, picture.y, right, bottom}}) {
            layer.rules.push_back({x1, y1, x2, y2, 10, standInEdge, picture.plane});
        }
        layer.texts.push_back(standInText(picture));
    }
}

layout::PlacedText OpenDocument::standInText(const layout::PlacedPicture& picture) {
    layout::PlacedText text;
    text.text = u"图片";
    text.size = std::min(picture.height / 4, largestStandInText);
    text.x = picture.x + picture.width / 2 - text.size;
    text.baseline = picture.y + picture.height / 2 + text.size * 0.35;
    text.face = fonts_->shownBy(fonts_->face({u"宋体", false, false, true}), U'图');
    text.advances.assign(text.text.size(), static_cast<float>(text.size));
    text.colour = standInInk;
    text.plane = picture.plane;
    return text;
}

} // namespace qvnd::preview
