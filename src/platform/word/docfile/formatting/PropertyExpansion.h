#pragma once

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/document/DataBlobs.h"
#include "platform/word/docfile/document/DocumentTables.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

// Turns property lists as a file holds them into those of the program: complete in themselves,
// with an index of `tables.blobs` where the file has an offset into its Data stream, and of
// `tables.objects` where it has the name of an object.
class PropertyExpansion {
public:
    // Where property lists come from.
    struct Streams {
        ByteView data;
        std::size_t mainSize = 0; // of the WordDocument stream, which holds the lists
    };

    // All outlive the expansion; lists, blobs and objects are added to `tables`.
    PropertyExpansion(const Streams& streams, const EmbeddedObjects& objects,
                      DocumentTables& tables);

    // Keeps character entries only. A picture location that leads nowhere is left out; that of
    // an embedded object becomes its index, under the opcode sprmCObjLocation.
    PropertyListId characters(ByteView list);

    struct Paragraph {
        StyleIndex style = 0;
        PropertyListId properties = PropertyListId::empty;
    };
    // Keeps paragraph and table entries only. What sprmPHugePapx and sprmPTableProps refer to
    // stands in their place; what changes the style is applied to it and left out.
    Paragraph paragraph(StyleIndex style, ByteView list);

    // How many lists ended early, named data that is not there, or overlapped too many others.
    int damagedLists() const { return damagedLists_; }

private:
    PropertyListId expandedCharacters(ByteView list);
    void appendParagraphEntries(Bytes& result, StyleIndex& style, ByteView list, bool outer);
    std::optional<std::uint32_t> objectIndex(std::uint32_t number);
    void appendReferred(Bytes& result, StyleIndex& style, std::uint32_t offset);

    ByteView dataStream_;
    const EmbeddedObjects& objects_;
    DocumentTables& tables_;
    DataBlobCollector blobs_;
    std::unordered_map<std::string, PropertyListId> characters_;
    // By the list, the style behind it.
    std::unordered_map<std::string, Paragraph> paragraphs_;
    std::unordered_map<std::uint32_t, std::uint32_t> objectIndexes_; // by number in the file
    CopyBudget budget_;
    CopyBudget referredBudget_;
    int damagedLists_ = 0;
};

// Adds a piece's modifier (Prm) to the properties of its characters and paragraphs.
class PieceModifiers {
public:
    // All outlive the modifiers.
    PieceModifiers(const std::vector<Bytes>& complexModifiers, PropertyExpansion& expansion,
                   PropertyLists& lists)
        : complexModifiers_(complexModifiers), expansion_(expansion), lists_(lists) {}

    PropertyListId characters(PropertyListId properties, std::uint16_t modifier);
    PropertyExpansion::Paragraph paragraph(PropertyExpansion::Paragraph paragraph,
                                           std::uint16_t modifier);

private:
    struct Modifier {
        PropertyListId characters = PropertyListId::empty;
        Bytes all;
    };
    const Modifier& modifierOf(std::uint16_t modifier);
    Bytes joined(PropertyListId properties, ByteView added);

    const std::vector<Bytes>& complexModifiers_;
    PropertyExpansion& expansion_;
    PropertyLists& lists_;
    std::unordered_map<std::uint16_t, Modifier> modifiers_;
    std::unordered_map<std::uint64_t, PropertyListId> joined_;
    std::unordered_map<std::uint64_t, PropertyExpansion::Paragraph> joinedParagraphs_;
    CopyBudget budget_{std::size_t{16} * 1024 * 1024};
};

} // namespace qvnd::word
