#pragma once

#include <filesystem>

namespace qvnd::word {

class FillFormat {
public:
    virtual ~FillFormat() = default;
    virtual void setVisible(bool visible) = 0;
    virtual void setTransparency(float part) = 0;
};

class LineFormat {
public:
    virtual ~LineFormat() = default;
    virtual void setWeight(float points) = 0;
    virtual void setTransparency(float part) = 0;
    virtual void setVisible(bool visible) = 0;
};

class PictureFormat {
public:
    virtual ~PictureFormat() = default;
    virtual void setBrightness(float part) = 0;
    virtual void setContrast(float part) = 0;
    virtual void setCropLeft(float points) = 0;
    virtual void setCropRight(float points) = 0;
    virtual void setCropTop(float points) = 0;
    virtual void setCropBottom(float points) = 0;
};

class InlineShape {
public:
    virtual ~InlineShape() = default;
    virtual FillFormat& Fill() = 0;
    virtual LineFormat& Line() = 0;
    virtual word::PictureFormat& PictureFormat() = 0;
    virtual void setLockAspectRatio(bool lock) = 0;
    virtual void setHeight(float points) = 0;
    virtual void setWidth(float points) = 0;
};

class InlineShapes {
public:
    virtual ~InlineShapes() = default;
    virtual InlineShape& AddPicture(const std::filesystem::path& path, bool linkToFile,
                                    bool saveWithDocument) = 0;
    // Counted from 1; 5941 when there is no such shape.
    virtual InlineShape& Item(int index) = 0;
};

} // namespace qvnd::word
