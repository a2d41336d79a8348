#pragma once

#include "platform/word/docfile/writer/DrawingParts.h"

#include <functional>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qvnd::word {

// Where a file keeps what drawings name.
struct DrawingStores {
    // The offset of a picture in the WordDocument stream, by its entry of
    // DocumentTables::shapePictures; the same for equal pictures, and with every call.
    std::function<std::uint32_t(const DataBlob& entry)> picture;
    // The number of an embedded object's storage.
    std::function<std::uint32_t(const EmbeddedObjectRef& object)> object;
};

// The structures of one part: PlcSpaMom, PlcftxbxTxt, PlcfTxbxBkd, or their likes for headers.
struct DrawingTables {
    // The anchors: `positions`, then `kept` bytes from `keptFrom` on of what the call before came
    // to, then `anchors`.
    Bytes positions;
    std::size_t keptFrom = 0;
    std::size_t kept = 0;
    Bytes anchors;
    Bytes boxes;
    Bytes breaks;
};

// Encodes the growing drawings of one document, save after save: the records of shapes that were
// there with the call before are not touched again. All calls get the same tables and stores. A
// document that does not go on from the one before is encoded anew.
class DrawingEncoder {
public:
    // OfficeArtContent, [MS-DOC] 2.9.172: `front`, then `kept` bytes from `keptFrom` on of what the
    // call before came to, then `back`; nothing when there is no drawing.
    struct Encoded {
        Bytes front;
        std::size_t keptFrom = 0;
        std::size_t kept = 0;
        Bytes back;
        DrawingTables main;
        DrawingTables headers;
    };
    // `mainEnd`, `headersEnd`: lengths of the two parts of the text. Linear in the records of new
    // drawings and in the number of all.
    Encoded encode(const DrawingPart& main, Cp mainEnd, const DrawingPart& headers, Cp headersEnd,
                   const DocumentTables& tables, const DrawingStores& stores);

private:
    // The shapes that show one text.
    struct Chain {
        std::uint32_t number = 0;                      // of the text, counted from 1
        std::uint32_t length = 0;                      // how many shapes
        std::map<std::uint16_t, std::uint32_t> shapes; // by link
    };
    // The records of drawings by their orders. A file has the lowest drawing first, and of two of
    // one order that with the earlier anchor.
    using Records = std::multimap<std::uint32_t, Bytes>;
    // The drawing of one part of the text (OfficeArtWordDrawing), as far as it is encoded.
    struct Group {
        std::uint32_t number = 0;          // counted from 1
        std::vector<std::uint32_t> placed; // the drawings; their order tells which copies they are
        std::size_t size = 0;              // of the records of its shapes
        std::unordered_map<CopyKey, std::uint32_t> ids;
        std::unordered_map<CopyKey, Chain> chains;
        // What shapes name and what was not there: a shape, a text.
        std::unordered_set<CopyKey> absentShapes;
        std::unordered_set<CopyKey> absentTexts;
        std::size_t cluster = 0; // the last of its own, counted from 1
        std::uint32_t lastId = 0;
        LittleEndianWriter anchors;    // Spa
        std::size_t positionsSize = 0; // of the last answer, in front of the anchors
        std::size_t anchorsSize = 0;   // and that of these
        std::vector<std::uint32_t> textStarts;
        LittleEndianWriter boxes; // FTXBXS
        std::vector<std::uint32_t> breaks;
        LittleEndianWriter owners; // Tbkd
    };
    struct Cluster {
        std::uint32_t drawing = 0;
        std::uint32_t used = 0;
    };
    // What one call works with.
    struct Call {
        const DocumentTables& tables;
        const DrawingStores& stores;
    };

    static bool goesOn(const Group& group, const DrawingPart& part, const DocumentTables& tables);
    bool liesOver(const DrawingPart& main, const DocumentTables& tables) const;
    Bytes begin(Group& group);
    Records add(Group& group, const DrawingPart& part, const Call& call);
    std::uint32_t newId(Group& group);
    void nameShapes(Group& group, const DrawingPart& part, const DocumentTables& tables);
    static void linkTexts(Group& group, const DrawingPart& part, const DocumentTables& tables);
    static void addTexts(Group& group, const DrawingPart& part, const DocumentTables& tables);
    Bytes addPlace(Group& group, const DrawingPart::Place& place, const Call& call);
    std::uint32_t valueOf(Group& group, const ShapeReference& reference, std::uint32_t copy,
                          const Call& call);
    static std::uint32_t textNumber(Group& group, const ShapeReference& reference,
                                    std::uint32_t copy, std::uint32_t shape);
    Bytes background(const Call& call);
    std::uint32_t pictureNumber(const DataBlob& stored, const DrawingStores& stores);
    Bytes sharedRecords() const;
    static DrawingTables tablesOf(Group& group, const DrawingPart& part, Cp end);

    Group main_;
    Group headers_;
    Bytes background_; // the records of the pages' background; none before the first drawing
    std::uint32_t topmost_ = 0;   // the highest order of the main text's drawings
    Bytes headersHead_;           // the record in front of the headers' drawings
    Records headerRecords_;       // of all drawings of the headers
    std::size_t frontSize_ = 0;   // of the last answer
    LittleEndianWriter pictures_; // entries of the store of pictures
    std::unordered_map<std::uint32_t, std::uint32_t> pictureNumbers_; // by offset, counted from 1
    std::vector<Cluster> clusters_;
    std::uint32_t shapeCount_ = 0;
};

} // namespace qvnd::word
