#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <optional>

namespace qvnd::word {

// An inline picture (PICFAndOfficeArtData, [MS-DOC] 2.9.192) under work: it is read from a blob of
// the Data stream or made from a picture file, changed, and written to a new blob.
class Picture {
public:
    enum class Side : std::uint8_t { left, right, top, bottom };

    // A new picture in its natural size, its aspect ratio locked, without line and fill. A picture
    // larger than the format's longest side (31680 twips) is scaled down in proportion.
    // Nothing when the file is no picture of a kind that documents keep (PNG, JPEG, BMP, EMF, WMF).
    static std::optional<Picture> fromImage(ByteView imageFile);
    // A picture of a store of drawings (OfficeArtFBSE with the picture in it, or the picture) as it
    // is shown at that size in twips, cropped and lit as the shape that showed it.
    static Picture fromStore(Bytes entry, const art::ShapeProperties& shape, std::int64_t width,
                             std::int64_t height);
    // Nothing when the blob holds something else (form field, hyperlink, ...).
    static std::optional<Picture> fromBlob(ByteView blob);

    DataBlob blob() const;

    // Shown size in twips, at least 1. Setting one side never changes the other.
    std::int32_t width() const;
    std::int32_t height() const;
    void setWidth(std::int32_t twips);
    void setHeight(std::int32_t twips);
    // Natural size in twips, before cropping and scaling.
    std::int32_t naturalWidth() const;
    std::int32_t naturalHeight() const;

    // Cuts off a part of the natural width or height (0 nothing, 0.5 half). What stays keeps its
    // scale, so the shown size shrinks with it.
    // The changes below have no effect on a picture that came without a shape record.
    void setCrop(Side side, double part);
    void setBrightness(double part); // 0 black, 0.5 as it is, 1 white
    void setContrast(double part);   // 0 grey, 0.5 as it is, 1 strongest
    void setLineVisible(bool visible);
    void setLineWeight(double points);
    void setLineTransparency(double part); // 0 opaque, 1 invisible
    void setFillVisible(bool visible);
    void setFillTransparency(double part);
    void setLockAspectRatio(bool lock);

    // The picture itself as it is kept: an entry of a picture store or a blip.
    ByteView stored() const { return rest_; }

    // Those of the shape record; nothing without one.
    const std::optional<art::ShapeProperties>& properties() const { return properties_; }

private:
    // Where one direction's numbers stand: offsets in the head, numbers of properties.
    struct Dimension {
        std::size_t goalAt;
        std::size_t scaleAt;
        std::uint16_t cropStart;
        std::uint16_t cropEnd;
    };
    static const Dimension horizontal;
    static const Dimension vertical;

    static Picture framed(Bytes picture, double width, double height);

    Picture() = default;
    void readShape(LittleEndianReader& reader);
    std::int32_t headField(std::size_t at) const;
    void setHeadField(std::size_t at, std::int32_t value);
    std::int32_t shown(const Dimension& dimension) const;
    void setShown(const Dimension& dimension, std::int32_t twips);
    double cropped(std::uint16_t opid) const;
    double visible(const Dimension& dimension) const; // the part that crops leave
    void set(std::uint16_t opid, std::uint32_t value);
    void setFlag(std::uint16_t opid, std::uint32_t flag, bool on);
    art::ShapeProperties& propertyTable();

    Bytes head_; // PICF, and the name of a linked picture
    bool hasShape_ = false;
    Bytes beforeProperties_; // records of the shape before its property table, and behind it
    std::optional<art::ShapeProperties> properties_;
    Bytes afterProperties_;
    Bytes rest_; // the picture itself
};

} // namespace qvnd::word
