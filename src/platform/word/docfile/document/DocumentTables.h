#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Drawing.h"
#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/objects/EmbeddedObjects.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// What property lists point to. Inside the program every operand that names a font, a style, a
// list or a piece of the Data stream is an index into these tables; the reader makes it so and
// the writer turns it back into what the file needs.
namespace qvnd::word {

// An entry of the font table (FFN). `record` is the FFN without its length byte, as it came.
struct FontEntry {
    std::u16string name;
    std::u16string alternateName;
    Bytes record;
};

enum class StyleKind : std::uint8_t { paragraph = 1, character = 2, table = 3, list = 4 };

// What a style was before a tracked change of its definition (StkParaUpxGrLPUpxRM and
// StkCharUpxGrLPUpxRM).
struct OriginalStyle {
    std::uint32_t date = 0;                           // DTTM
    std::uint16_t author = 0;                         // index into the authors of revisions
    PropertyListId paragraph = PropertyListId::empty; // that of a paragraph style only
    PropertyListId character = PropertyListId::empty;
};

// An entry of the style sheet (STD).
struct StyleDefinition {
    static constexpr StyleIndex none = 0x0FFF;
    static constexpr std::uint16_t userDefined = 0x0FFE;

    std::u16string name;    // without aliases
    std::u16string aliases; // behind the name, joined by ","; may be empty
    StyleKind kind = StyleKind::paragraph;
    std::uint16_t sti = userDefined; // number of a built-in style, else userDefined
    StyleIndex basedOn = none;       // istdBase
    // A style of paragraphs whose file names a style of characters as its base: `basedOn` is the
    // standard style instead.
    bool namesCharacterBase = false;
    StyleIndex next = 0;        // istdNext
    StyleIndex link = 0;        // istdLink of Stdf's post-2000 part, 0 for none
    std::uint16_t flags = 0;    // grfstd: fAutoRedef, fHidden, fSemiHidden, fLocked, ...
    std::uint16_t priority = 0; // iPriority: the place in lists of styles, 0 to 99
    PropertyListId paragraph = PropertyListId::empty; // UpxPapx without istd
    PropertyListId character = PropertyListId::empty; // UpxChpx
    PropertyListId table = PropertyListId::empty;     // UpxTapx of a table style
    std::optional<OriginalStyle> original;            // paragraph and character styles only
};

struct StyleSheet {
    std::vector<std::optional<StyleDefinition>> styles; // by istd; the first 15 are fixed places
    std::array<std::uint16_t, 4> defaultFonts{};        // rgftcStandardChpStsh and ftcBi
    std::vector<std::uint32_t> latent; // mpstiilsd: flags and priority of each built-in style
};

// A level of a list (LVL).
struct ListLevel {
    std::array<std::uint8_t, 28> head{};              // LVLF; its two lengths are 0
    PropertyListId paragraph = PropertyListId::empty; // grpprlPapx
    PropertyListId character = PropertyListId::empty; // grpprlChpx
    std::u16string text;                              // xst: number text with level places 0..8
};

struct ListDefinition { // LSTF with its levels
    std::int32_t lsid = 0;
    std::int32_t tplc = 0;
    std::array<StyleIndex, 9> linkedStyles{}; // rgistdPara
    std::uint8_t flags = 0;
    std::uint8_t grfhic = 0;
    std::vector<ListLevel> levels; // 1 for a simple list, else 9
    std::u16string name;           // SttbListNames
};

struct ListLevelOverride { // LFOLVL
    std::int32_t startAt = 0;
    std::uint32_t flags = 0; // iLvl, fStartAt, fFormatting, grfhic as in the file
    std::optional<ListLevel> level;
};

struct ListOverride { // LFO; sprmPIlfo names it, counted from 1
    std::int32_t lsid = 0;
    std::uint8_t fieldKind = 0; // ibstFltAutoNum
    std::uint8_t grfhic = 0;
    std::vector<ListLevelOverride> levels;
};

// A self-contained piece of the Data stream: a picture (PICFAndOfficeArtData), form field or
// hyperlink data (NilPICFAndBinData). Shared, since a merge keeps it as it is.
using DataBlob = std::shared_ptr<const Bytes>;

// A text that a character of the main story stands for: a note or a comment. It is never
// changed.
struct SideStory {
    std::shared_ptr<const Story> text; // ends in a paragraph mark
    bool automatic = true;             // a note numbered by the program, else marked by the user
    std::u16string author;             // of a comment
    std::u16string initials;
    std::uint32_t date = 0;  // DTTM; 0 when it is not known
    std::uint32_t depth = 0; // of a comment: one more than that of the comment that it answers
    bool ink = false;        // whether a comment is written by hand
};

struct DocumentTables {
    PropertyLists lists;
    StyleSheet styles;
    std::vector<FontEntry> fonts;
    std::vector<ListDefinition> listDefinitions;
    std::vector<ListOverride> listOverrides;
    std::vector<DataBlob> blobs;            // operand of sprmCPicLocation
    std::vector<EmbeddedObjectRef> objects; // operand of sprmCObjLocation, for sprmCPicLocation
    std::vector<std::u16string> authors;    // of revisions; operand of sprmCIbstRMark and its kin
    // The properties of the characters that show the pictures of bullets; operand of
    // sprmCPbiIBullet. Those that show none keep the place of a picture that is damaged.
    std::vector<PropertyListId> bulletPictures;
    std::vector<SideStory> sideStories;  // named by anchors
    std::vector<Drawing> drawings;       // named by anchors
    std::optional<Drawing> background;   // the shape that fills the pages; it has no place
    std::vector<DataBlob> shapePictures; // entries of a store, the picture within: encodeBlip()
    std::vector<ShapeText> shapeTexts;
    std::uint32_t shapes = 0;    // in all drawings
    std::uint32_t nextOrder = 0; // above the orders of all drawings
};

} // namespace qvnd::word
