#pragma once

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/pictures/Drawings.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

// Turns the anchored shapes of a file into drawings that any document can take over.
class CarriedDrawings {
public:
    // The part's table of text boxes; its rows are counted from 1.
    struct Texts {
        // The index in DocumentTables::shapeTexts of the text of a row; nothing when it has none.
        std::function<std::optional<std::uint32_t>(std::uint16_t number)> index;
        // The row that names a shape; 0 when none does.
        std::function<std::uint16_t(std::uint32_t shape)> rowOf;
    };

    // All outlive the object; pictures and objects are added to `tables`.
    CarriedDrawings(const Drawings& drawings, const EmbeddedObjects& objects,
                    DocumentTables& tables)
        : drawings_(drawings), objects_(objects), tables_(tables),
          budget_(drawings.picturesAtMost()) {}

    // Adds the drawing that an anchor (Spa) names and returns its index in
    // DocumentTables::drawings. A shape that is damaged, or has an anchor already, is replaced by a
    // plain one that shows its text or its picture. Nothing when it has neither.
    std::optional<std::uint32_t> add(DrawingOf part, ByteView spa, const Texts& texts);

    // The shape that fills the pages, without a place; nothing when it fills nothing.
    std::optional<Drawing> background();
    // Whether there is one that is damaged.
    bool damagedBackground() const { return damagedBackground_; }

    // How many members of groups were left out, because they are damaged.
    int damagedMembers() const { return damagedMembers_; }
    // How many pictures were left out, because a document holds no more.
    int picturesWithoutRoom() const { return picturesWithoutRoom_; }
    // How many shapes do without the defaults of the file's drawings, because those are more than
    // a shape or the memory has room for.
    int withoutDefaults() const { return withoutDefaults_; }

private:
    std::optional<Drawing> copied(ByteView record, const Texts& texts);
    Bytes plainShape(std::uint32_t id, bool mayShowText, const Texts& texts);
    // The text reference of a shape that names no text itself but is named by a row; 0 for none.
    std::uint32_t unnamedText(std::uint32_t id, const Texts& texts) const;
    // The references of `drawing` are still the file's numbers.
    void resolve(DrawingOf part, Drawing& drawing, const Texts& texts);
    std::optional<std::uint32_t> pictureOf(std::uint32_t number);
    std::optional<std::uint32_t> objectOf(std::uint32_t number);
    std::uint32_t newShape(DrawingOf part, std::uint32_t id);
    std::uint32_t shapeOf(DrawingOf part, std::uint32_t id);

    const Drawings& drawings_;
    const EmbeddedObjects& objects_;
    DocumentTables& tables_;
    // By number in the store.
    std::unordered_map<std::uint32_t, std::optional<std::uint32_t>> pictures_;
    // By identifier; those of the two drawings may be the same in a damaged file.
    std::array<std::unordered_map<std::uint32_t, std::uint32_t>, 2> shapes_;
    std::array<std::unordered_set<std::uint32_t>, 2> anchored_;
    std::unordered_set<std::uint32_t> present_; // shapes that are part of a drawing
    bool damagedBackground_ = false;
    int damagedMembers_ = 0;
    int picturesWithoutRoom_ = 0;
    int withoutDefaults_ = 0;
    CopyBudget budget_;                          // of pictures
    CopyBudget inherited_{std::size_t{2} << 20}; // of defaults that are written into shapes
    std::unordered_map<const EmbeddedObject*, std::uint32_t> objectPlaces_; // in the tables
    std::uint32_t indexedObjects_ = 0; // how many of the tables' stand there
};

} // namespace qvnd::word
