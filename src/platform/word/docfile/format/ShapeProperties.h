#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <optional>
#include <vector>

// The property table of a shape (OfficeArtFOPT, [MS-ODRAW] 2.2.9).
namespace qvnd::word::art {

// Property numbers (opid). Those that end in 3F, 7F, BF, FF are sets of yes-or-no values: the low
// half has the values, the high half tells which of them count.
inline constexpr std::uint16_t protectionFlags = 0x007F;
inline constexpr std::uint16_t textOfShape = 0x0080; // lTxid: which text, and its part of it
inline constexpr std::uint16_t nextShape = 0x008A;   // hspNext: the next one of a chain of texts
inline constexpr std::uint16_t cropFromTop = 0x0100;
inline constexpr std::uint16_t cropFromBottom = 0x0101;
inline constexpr std::uint16_t cropFromLeft = 0x0102;
inline constexpr std::uint16_t cropFromRight = 0x0103;
inline constexpr std::uint16_t pib = 0x0104;
inline constexpr std::uint16_t pictureId = 0x010B; // the number in the name of an object's storage
inline constexpr std::uint16_t pictureContrast = 0x0108;
inline constexpr std::uint16_t pictureBrightness = 0x0109;
inline constexpr std::uint16_t fillOpacity = 0x0182;
inline constexpr std::uint16_t fillFlags = 0x01BF;
inline constexpr std::uint16_t lineOpacity = 0x01C1;
inline constexpr std::uint16_t lineWidth = 0x01CB;
inline constexpr std::uint16_t lineFlags = 0x01FF;
inline constexpr std::uint16_t masterShape = 0x0301;    // hspMaster
inline constexpr std::uint16_t shapeLink = 0x0382;      // pihlShape: where a click leads to
inline constexpr std::uint16_t shapeRelations = 0x0504; // pRelationTbl: triples of shapes

// The instance of a record counts them in 12 bits.
inline constexpr unsigned mostProperties = 0x0FFF;

// Whether the property is a set of yes-or-no values.
constexpr bool isFlags(std::uint16_t opid) { return (opid & 0x3F) == 0x3F; }

class ShapeProperties {
public:
    ShapeProperties() = default;
    // Reads the content of a record of type fopt with `count` properties (its instance).
    // Throws FormatError when the record is too short for what it counts.
    ShapeProperties(ByteView content, unsigned count);

    std::optional<std::uint32_t> value(std::uint16_t opid) const;
    void set(std::uint16_t opid, std::uint32_t value);
    // A property whose value names a picture (fBid).
    void setBlip(std::uint16_t opid, std::uint32_t value);
    // One yes-or-no value: `flag` is its bit in the low half.
    void setFlag(std::uint16_t opid, std::uint32_t flag, bool on);

    // A property as encode() writes it.
    struct Entry {
        std::uint16_t opid = 0;
        bool namesBlip = false; // fBid, and the picture is not in the table itself
        std::uint32_t value = 0;
        std::size_t valueAt = 0;     // offset in the encoded table
        std::size_t complexAt = 0;   // of its data behind all properties
        std::size_t complexSize = 0; // 0 for one without data
    };
    std::vector<Entry> entries() const;
    // Sets what is not set yet; of yes-or-no values those that do not count yet. Properties with
    // data of their own, and those that name pictures, stay as they are.
    void inherit(const ShapeProperties& defaults);

    unsigned count() const { return static_cast<unsigned>(properties_.size()); }
    // In ascending order of opid, as the format wants it.
    Bytes encode() const;

private:
    struct Property {
        std::uint16_t opid = 0; // with fBid and fComplex
        std::uint32_t value = 0;
        Bytes complex;
    };
    std::vector<Property> properties_;
};

} // namespace qvnd::word::art
