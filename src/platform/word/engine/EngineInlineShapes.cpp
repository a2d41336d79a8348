#include "platform/word/engine/EngineInlineShapes.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/SprmList.h"
#include "platform/word/engine/StoryEditor.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <utility>

namespace qvnd::word {

namespace {

constexpr double longestSide = 31680; // twips, 55.88 cm

// `side` names the length to the user.
std::int32_t sideInTwips(float points, std::u16string_view side) {
    const double twips = std::round(points * twipsPerPoint);
    if (!(twips >= 1 && twips <= longestSide)) {
        const std::u16string name(side);
        throw RunTimeError(outOfRange().number(), u"图片的" + name +
                                                      u"要大于 0、不超过 55.88 厘米。没有设置，"
                                                      u"图片保持原来的" +
                                                      name + u"。");
    }
    return static_cast<std::int32_t>(twips);
}

Bytes contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw RunTimeError(error::fileNotFound, u"找不到图片文件“" + path.u16string() + u"”。");
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

void EngineInlineShape::change(const std::function<void(Picture&)>& change) {
    auto& blobs = document_.change().tables().blobs;
    auto picture =
        blob_ < blobs.size() && blobs[blob_] ? Picture::fromBlob(*blobs[blob_]) : std::nullopt;
    if (!picture) {
        throw memberNotFound();
    }
    change(*picture);
    blobs[blob_] = picture->blob();
}

void EngineInlineShape::setLockAspectRatio(bool lock) {
    change([=](Picture& picture) { picture.setLockAspectRatio(lock); });
}
void EngineInlineShape::setHeight(float points) {
    change(
        [height = sideInTwips(points, u"高度")](Picture& picture) { picture.setHeight(height); });
}
void EngineInlineShape::setWidth(float points) {
    change([width = sideInTwips(points, u"宽度")](Picture& picture) { picture.setWidth(width); });
}
void EngineInlineShape::setVisible(bool visible) {
    change([=](Picture& picture) { picture.setFillVisible(visible); });
}
void EngineInlineShape::setTransparency(float part) {
    change([=](Picture& picture) { picture.setFillTransparency(part); });
}
void EngineInlineShape::setBrightness(float part) {
    change([=](Picture& picture) { picture.setBrightness(part); });
}
void EngineInlineShape::setContrast(float part) {
    change([=](Picture& picture) { picture.setContrast(part); });
}
void EngineInlineShape::setCropLeft(float points) { crop(Picture::Side::left, points); }
void EngineInlineShape::setCropRight(float points) { crop(Picture::Side::right, points); }
void EngineInlineShape::setCropTop(float points) { crop(Picture::Side::top, points); }
void EngineInlineShape::setCropBottom(float points) { crop(Picture::Side::bottom, points); }

// Points count on the picture in its natural size, of which the file tells a part.
void EngineInlineShape::crop(Picture::Side side, float points) {
    change([=](Picture& picture) {
        const bool isWidth = side == Picture::Side::left || side == Picture::Side::right;
        const std::int32_t whole = isWidth ? picture.naturalWidth() : picture.naturalHeight();
        picture.setCrop(side, whole > 0 ? points * twipsPerPoint / whole : 0);
    });
}

void EngineInlineShape::Outline::setWeight(float points) {
    shape_.change([=](Picture& picture) { picture.setLineWeight(points); });
}
void EngineInlineShape::Outline::setTransparency(float part) {
    shape_.change([=](Picture& picture) { picture.setLineTransparency(part); });
}
void EngineInlineShape::Outline::setVisible(bool visible) {
    shape_.change([=](Picture& picture) { picture.setLineVisible(visible); });
}

EngineInlineShape& EngineInlineShapes::shapeOf(std::size_t blob) {
    auto& item = items_[blob];
    if (!item) {
        item = std::make_unique<EngineInlineShape>(document_, blob);
    }
    return *item;
}

Picture EngineInlineShapes::read(const std::filesystem::path& path) const {
    const Bytes file = contentOf(path);
    if (auto picture = Picture::fromImage(file)) {
        return std::move(*picture);
    }
    const PictureConverter* converter = document_.services().pictures;
    const auto converted = converter != nullptr ? converter->convert(file) : std::nullopt;
    if (auto picture = converted ? Picture::fromImage(*converted) : std::nullopt) {
        return std::move(*picture);
    }
    throw RunTimeError(error::invalidCall,
                       u"不能插入图片“" + path.filename().u16string() +
                           u"”：文件已损坏，或者不是 PNG、JPEG、GIF、BMP、EMF、WMF 图片。");
}

InlineShape& EngineInlineShapes::AddPicture(const std::filesystem::path& path, bool /*linkToFile*/,
                                            bool /*saveWithDocument*/) {
    const Picture picture = read(path);
    DocumentTables& tables = document_.change().tables();
    const std::size_t blob = tables.blobs.size();
    tables.blobs.push_back(picture.blob());

    StoryEditor editor = document_.editor();
    editor.typeCharacter(u'\x01', [&](PropertyListId typing) {
        const Bytes list =
            withSprm32(tables.lists[typing], sprm::CPicLocation, static_cast<std::uint32_t>(blob));
        return tables.lists.intern(withSprm8(list, sprm::CFSpec, 1));
    });
    return shapeOf(blob);
}

InlineShape& EngineInlineShapes::Item(int index) {
    WorkingStory& story = document_.story();
    const PropertyLists& lists = document_.read().tables().lists;
    const Insertion& selection = document_.insertion();
    const std::u16string text = story.text(selection.start, std::min(selection.end, story.size()));
    int number = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\x01') {
            continue;
        }
        const ByteView look =
            lists[story.characterProperties(selection.start + static_cast<Cp>(i))];
        if (findSprm(look, sprm::CPicLocation) && ++number == index) {
            return shapeOf(sprmValue(look, sprm::CPicLocation, 0));
        }
    }
    throw memberNotFound();
}

} // namespace qvnd::word
