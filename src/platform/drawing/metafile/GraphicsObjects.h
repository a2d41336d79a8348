#pragma once

#include "platform/drawing/metafile/VectorPicture.h"
#include "platform/word/docfile/container/Bytes.h"

#include <map>
#include <optional>
#include <set>
#include <variant>

// What the records of both formats create, keep in a table, and select. Lengths are logical units.
namespace qvnd::drawing::metafile {

struct PenObject {
    std::optional<VectorPen> pen; // nothing: draws no line
    bool isCosmetic = false;      // its width does not grow with the drawing
};
struct BrushObject {
    std::optional<std::uint32_t> colour; // nothing, and neither of the others: fills nothing
    std::optional<VectorHatch> hatch{};
    std::shared_ptr<const PixelImage> tile{};
};
struct FontObject {
    std::u16string name;
    double height = 0; // positive: of a line; negative: of its characters; 0: some usual size
    double angle = 0;  // radians, counterclockwise
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckOut = false;
    unsigned charset = 0;
};
struct RegionObject {
    VectorPath area; // in units of the device
};
struct OtherObject {}; // a palette: takes a place and draws nothing
using GraphicsObject = std::variant<OtherObject, PenObject, BrushObject, FontObject, RegionObject>;

// 0x00BBGGRR as records have it.
std::uint32_t colourOfRecord(std::uint32_t bgr);
// PenStyle, [MS-WMF] 2.1.1.23; EMF has more of it above.
PenObject penOf(unsigned style, double width, std::uint32_t bgr);
// BrushStyle and HatchStyle, [MS-WMF] 2.1.1.4 and 2.1.1.12. A pattern, of which the style tells
// nothing more, is grey.
BrushObject brushOf(unsigned style, std::uint32_t bgr, unsigned hatch);
// A brush of that pattern; grey where there is none.
BrushObject patternBrush(std::optional<PixelImage> pattern);
// What the device has from the start ([MS-EMF] 2.1.31); nothing for a number that stands for none.
std::optional<GraphicsObject> stockObject(std::uint32_t number);

// A font ([MS-WMF] 2.2.1.2, [MS-EMF] 2.2.13); `wide`: with numbers of 32 bits and a name of UTF-16,
// as an EMF has it. Throws FormatError where it is cut off before its name.
FontObject readFont(word::LittleEndianReader& reader, bool wide);

// The objects of one file, by their numbers.
class ObjectTable {
public:
    // At the first free number, counted from 0, as a WMF has it.
    void add(const GraphicsObject& object);
    // At that number, as an EMF has it.
    void put(std::uint32_t number, const GraphicsObject& object) { objects_[number] = object; }
    void remove(std::uint32_t number);
    // Nothing where no object has the number.
    const GraphicsObject* find(std::uint32_t number) const;
    // The object of that number, if it is of that kind.
    template <class Kind>
    const Kind* get(std::uint32_t number) const {
        const GraphicsObject* object = find(number);
        return object != nullptr ? std::get_if<Kind>(object) : nullptr;
    }

private:
    std::map<std::uint32_t, GraphicsObject> objects_;
    std::set<std::uint32_t> free_; // numbers below `next_` that have no object
    std::uint32_t next_ = 0;
};

} // namespace qvnd::drawing::metafile
