#pragma once

#include "platform/word/docfile/pictures/Picture.h"
#include "platform/word/model/InlineShapes.h"

#include <functional>
#include <map>
#include <memory>

namespace qvnd::word {

class EngineDocument;

// The picture that is kept at one place of the picture table. Its settings are written back at
// once; a picture that cannot be read, such as form data, has none and throws 5941.
class EngineInlineShape : public InlineShape, private FillFormat, private word::PictureFormat {
public:
    EngineInlineShape(EngineDocument& document, std::size_t blob)
        : document_(document), blob_(blob), line_(*this) {}

    FillFormat& Fill() override { return *this; }
    LineFormat& Line() override { return line_; }
    word::PictureFormat& PictureFormat() override { return *this; }
    void setLockAspectRatio(bool lock) override;
    // Throws 4608, with the limits in its description, for a length that is 0 or less or longer
    // than the format's longest side; the picture keeps the one that it has.
    void setHeight(float points) override;
    void setWidth(float points) override;

private:
    class Outline : public LineFormat {
    public:
        explicit Outline(EngineInlineShape& shape) : shape_(shape) {}
        void setWeight(float points) override;
        void setTransparency(float part) override;
        void setVisible(bool visible) override;

    private:
        EngineInlineShape& shape_;
    };

    void setVisible(bool visible) override; // of the fill, as is the transparency
    void setTransparency(float part) override;
    void setBrightness(float part) override;
    void setContrast(float part) override;
    void setCropLeft(float points) override;
    void setCropRight(float points) override;
    void setCropTop(float points) override;
    void setCropBottom(float points) override;

    void crop(Picture::Side side, float points);
    void change(const std::function<void(Picture&)>& change);

    EngineDocument& document_;
    std::size_t blob_;
    Outline line_;
};

// The pictures of the selection.
class EngineInlineShapes : public InlineShapes {
public:
    explicit EngineInlineShapes(EngineDocument& document) : document_(document) {}

    // At the insertion point, which ends behind the picture. Always kept in the document: a link
    // would break with the first move of the file. A picture of a format that documents do not
    // hold goes through the converter of the services. Throws 53 for a missing file, 5 for one
    // that is no picture.
    InlineShape& AddPicture(const std::filesystem::path& path, bool linkToFile,
                            bool saveWithDocument) override;
    InlineShape& Item(int index) override;

private:
    Picture read(const std::filesystem::path& path) const;
    EngineInlineShape& shapeOf(std::size_t blob);

    EngineDocument& document_;
    std::map<std::size_t, std::unique_ptr<EngineInlineShape>> items_;
};

} // namespace qvnd::word
