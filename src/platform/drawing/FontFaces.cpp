#include "platform/drawing/FontFaces.h"

#include "platform/drawing/CharacterTable.h"
#include "platform/drawing/FontFeatures.h"
#include "platform/drawing/KnownFaces.h"
#include "platform/drawing/PublishedWidths.h"
#include "platform/error/RunTimeError.h"
#include "platform/error/Utf8.h"
#include "platform/word/formatting/NameFolding.h"
#include "platform/word/formatting/Symbols.h"
#include "platform/word/layout/CharacterClasses.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H
#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace qvnd::drawing {

namespace {

using layout::FaceHeights;
using layout::FaceId;
using layout::FaceRequest;

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

Pattern patternOf(const FaceRequest& request, std::optional<char32_t> mustHave) {
    Pattern pattern(FcPatternCreate(), &FcPatternDestroy);
    const std::string family = toUtf8(request.name);
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_NORMAL);
    FcPatternAddInteger(pattern.get(), FC_SLANT, request.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    if (request.eastAsian) {
        FcPatternAddString(pattern.get(), FC_LANG, reinterpret_cast<const FcChar8*>("zh-cn"));
    }
    if (mustHave) {
        FcCharSet* characters = FcCharSetCreate();
        FcCharSetAddChar(characters, *mustHave);
        FcPatternAddCharSet(pattern.get(), FC_CHARSET, characters);
        FcCharSetDestroy(characters);
    }
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

// The bytes of a table of a face; none where it has no such table.
std::string tableOf(FT_Face face, FT_ULong tag) {
    FT_ULong size = 0;
    if (FT_Load_Sfnt_Table(face, tag, 0, nullptr, &size) != 0) {
        return {};
    }
    std::string table(size, 0);
    return FT_Load_Sfnt_Table(face, tag, 0, reinterpret_cast<FT_Byte*>(table.data()), &size) == 0
               ? table
               : std::string();
}

// The file of a face and its place in it.
struct FaceFile {
    std::string path;
    int index = 0;
    std::u16string family;
    bool bold = false;
    bool italic = false;
    bool operator<(const FaceFile& other) const {
        return std::tie(path, index) < std::tie(other.path, other.index);
    }
};

// Faces that tell the height of their lines. Type 1 files, of which some desktops have a copy of
// each face, do not.
class MeasuredFaces {
public:
    MeasuredFaces() : faces_(FcFontSetCreate(), &FcFontSetDestroy) {
        const FcFontSet* all = FcConfigGetFonts(nullptr, FcSetSystem);
        for (int i = 0; all != nullptr && i < all->nfont; ++i) {
            FcChar8* format = nullptr;
            if (FcPatternGetString(all->fonts[i], FC_FONTFORMAT, 0, &format) == FcResultMatch &&
                std::string_view(reinterpret_cast<const char*>(format)) != "Type 1") {
                FcPatternReference(all->fonts[i]);
                FcFontSetAdd(faces_.get(), all->fonts[i]);
            }
        }
    }

    Pattern match(FcPattern* wanted) const {
        FcFontSet* set = faces_.get();
        FcResult result = FcResultNoMatch;
        return {FcFontSetMatch(nullptr, &set, 1, wanted, &result), &FcPatternDestroy};
    }

private:
    std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> faces_;
};

std::optional<FaceFile> bestFile(const MeasuredFaces& faces, const FaceRequest& request,
                                 std::optional<char32_t> mustHave) {
    const Pattern wanted = patternOf(request, mustHave);
    const Pattern found = faces.match(wanted.get());
    FcChar8* path = nullptr;
    if (!found || FcPatternGetString(found.get(), FC_FILE, 0, &path) != FcResultMatch) {
        return std::nullopt;
    }
    FaceFile file;
    file.path = reinterpret_cast<const char*>(path);
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &file.index);
    int weight = FC_WEIGHT_NORMAL;
    int slant = FC_SLANT_ROMAN;
    FcPatternGetInteger(found.get(), FC_WEIGHT, 0, &weight);
    FcPatternGetInteger(found.get(), FC_SLANT, 0, &slant);
    file.bold = weight >= FC_WEIGHT_DEMIBOLD;
    file.italic = slant != FC_SLANT_ROMAN;
    FcChar8* family = nullptr;
    if (FcPatternGetString(found.get(), FC_FAMILY, 0, &family) == FcResultMatch) {
        file.family = fromUtf8(reinterpret_cast<const char*>(family));
    }
    return file;
}

bool isMark(char32_t c) {
    return (c >= 0x300 && c <= 0x36F) || (c >= 0x200B && c <= 0x200F) || c == 0xFEFF;
}

} // namespace

class FontFaces::Store {
public:
    explicit Store(FontChoice choice) : choice_(choice) {
        if (FT_Init_FreeType(&library_) != 0 ||
            !bestFile(installed_, {u"serif", false, false, false}, {})) {
            throw RunTimeError(5, u"这台电脑上没有可用的字体。");
        }
    }
    ~Store() {
        for (auto& [file, face] : files_) {
            FT_Done_Face(face);
        }
        FT_Done_FreeType(library_);
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    FaceId face(const FaceRequest& request) {
        const Key key{request.name, request.bold, request.italic, request.eastAsian};
        const auto known = requests_.find(key);
        if (known != requests_.end()) {
            return known->second;
        }
        FaceRequest asked = request;
        if (choice_ == FontChoice::here && word::isSymbolFont(request.name)) {
            asked.name = u"OpenSymbol"; // which the office suite shows symbols in
        }
        if (requests_.size() >= mostRequests) {
            return 0;
        }
        const auto file = bestFile(installed_, asked, std::nullopt);
        const FaceId id = add(asked, request.name, *file);
        requests_.emplace(key, id);
        return id;
    }

    FaceId shownBy(FaceId id, char32_t c) {
        Face& face = *faces_[id];
        FaceId& shown = face.shownBy[c];
        if (shown == unknownFace) {
            shown = c < 0x20 || glyphOf(face, c) != 0 ? id : standInFor(id, c);
        }
        return shown;
    }

    double advance(FaceId id, char32_t c) {
        Face& face = *faces_[id];
        float& width = face.advances[c];
        if (std::isnan(width)) {
            width = static_cast<float>(measure(face, c));
        }
        return width;
    }

    FaceHeights heights(FaceId id) const { return faces_[id]->heights; }

    layout::Ligature ligature(FaceId id, std::u32string_view text) {
        Face& face = *faces_[id];
        if (!face.ligatures) {
            face.ligatures = Ligatures(tableOf(face.face, TTAG_GSUB));
        }
        std::array<std::uint16_t, longestLigature> glyphs{};
        const std::size_t length =
            face.ligatures->empty() ? 0 : std::min(text.size(), longestLigature);
        for (std::size_t i = 0; i < length; ++i) {
            glyphs[i] = static_cast<std::uint16_t>(glyphOf(face, text[i]));
        }
        const Ligatures::Entry* found = face.ligatures->find(std::span(glyphs.data(), length));
        return found != nullptr
                   ? layout::Ligature{found->others.size() + 1, advanceOf(face, found->glyph)}
                   : layout::Ligature{};
    }

    double kerning(FaceId id, char32_t before, char32_t after) {
        Face& face = *faces_[id];
        if (choice_ == FontChoice::named) { // whose kerning is not known
            return 0;
        }
        if (!face.kerning) {
            face.kerning = Kerning(tableOf(face.face, TTAG_GPOS));
        }
        const int units = face.kerning->between(static_cast<std::uint16_t>(glyphOf(face, before)),
                                                static_cast<std::uint16_t>(glyphOf(face, after)));
        return units / std::max<double>(face.face->units_per_EM, 1);
    }

    // Marks are painted where the layout puts them.
    double drawnAdvance(FaceId id, char32_t c) {
        Face& face = *faces_[id];
        if (!face.known) {
            return advance(id, c);
        }
        const auto [known, isNew] = face.drawnAdvances.try_emplace(c, 0.0F);
        if (isNew) {
            known->second = static_cast<float>(isMark(c) ? 0 : glyphWidth(face, c));
        }
        return known->second;
    }

    FT_UInt glyph(FaceId id, char32_t c) const { return glyphOf(*faces_[id], c); }

    DrawnFace drawn(FaceId id) const {
        const Face& face = *faces_[id];
        return {face.face, face.embolden, face.slant, nullptr};
    }

private:
    using Key = std::tuple<std::u16string, bool, bool, bool>;

    // Bounds for damaged documents: fonts that are told apart, and searches of all fonts for the
    // missing characters of one face, each of which takes about a millisecond.
    static constexpr std::size_t mostRequests = 4096;
    static constexpr std::size_t mostSearches = 256;
    static constexpr FaceId unknownFace = std::numeric_limits<FaceId>::max();
    static constexpr std::size_t longestLigature = 4; // of Latin letters

    struct Face {
        FaceRequest request;
        std::u16string symbols; // the symbol font whose codes it shows
        FT_Face face = nullptr;
        FaceHeights heights;
        std::optional<KnownFace> known;          // whose measures count
        const PublishedWidths* widths = nullptr; // of its Latin letters, where they are known
        bool embolden = false;
        bool slant = false;
        std::optional<Ligatures> ligatures; // once they have been asked for
        std::optional<Kerning> kerning;
        CharacterTable<float> advances{std::nanf("")}; // not a number while it is not known
        CharacterTable<FaceId> shownBy{unknownFace};
        std::size_t searches = 0; // for stand-ins
        std::unordered_map<char32_t, float> drawnAdvances;
        std::map<FaceFile, FaceId> standInsByFile;
    };

    FT_Face open(const FaceFile& file) {
        const auto known = files_.find(file);
        if (known != files_.end()) {
            return known->second;
        }
        FT_Face face = nullptr;
        if (FT_New_Face(library_, file.path.c_str(), file.index, &face) != 0) {
            throw RunTimeError(5, u"读不了字体文件：" + fromUtf8(file.path));
        }
        files_.emplace(file, face);
        return face;
    }

    FaceId add(const FaceRequest& request, const std::u16string& font, const FaceFile& file) {
        auto face = std::make_unique<Face>();
        face->request = request;
        face->symbols = word::isSymbolFont(font) ? font : std::u16string();
        face->face = open(file);
        face->embolden = request.bold && !file.bold;
        face->slant = request.italic && !file.italic;
        if (choice_ == FontChoice::named) {
            face->known = knownFace(request.name);
            face->widths = publishedWidths(request.name, request.bold, request.italic);
        }
        face->heights = face->known ? face->known->heights : ownHeights(*face);
        faces_.push_back(std::move(face));
        return static_cast<FaceId>(faces_.size() - 1);
    }

    // The face itself where no other has the character.
    FaceId standInFor(FaceId id, char32_t c) {
        Face& face = *faces_[id];
        if (++face.searches > mostSearches) {
            const auto known = std::find_if(
                face.standInsByFile.begin(), face.standInsByFile.end(),
                [&](const auto& standIn) { return glyphOf(*faces_[standIn.second], c) != 0; });
            return known == face.standInsByFile.end() ? id : known->second;
        }
        if (const auto file = bestFile(installed_, face.request, shownCharacter(face, c))) {
            const FaceId other = addStandIn(face, *file);
            return glyphOf(*faces_[other], c) != 0 ? other : id;
        }
        return id;
    }

    // A stand-in for some characters: in a known face they have that face's room. The office suite
    // gives every line the room of the face that was asked for.
    FaceId addStandIn(Face& face, const FaceFile& file) {
        const auto known = face.standInsByFile.find(file);
        if (known != face.standInsByFile.end()) {
            return known->second;
        }
        const FaceId id = add(face.request, face.symbols, file);
        if (choice_ == FontChoice::here) {
            faces_[id]->heights = face.heights;
        }
        face.standInsByFile.emplace(file, id);
        return id;
    }

    FaceHeights ownHeights(const Face& face) const {
        const double units = std::max<double>(face.face->units_per_EM, 1);
        const double ascent = face.face->ascender / units;
        const double descent = -face.face->descender / units;
        const double line = face.face->height / units;
        if (choice_ == FontChoice::named && face.request.eastAsian) {
            return eastAsianHeights(ascent, descent);
        }
        return {ascent, descent, std::max(0.0, line - ascent - descent)};
    }

    double measure(const Face& face, char32_t c) const {
        if (isMark(c)) {
            return 0;
        }
        if (face.known && face.known->eastAsian &&
            (layout::isEastAsian(c) ||
             (face.request.eastAsian && layout::isFullWidthInChineseFonts(c)))) {
            return 1;
        }
        if (face.known && face.known->halfWidthLatin) {
            return layout::isFullWidthInChineseFonts(c) ? 1 : 0.5;
        }
        constexpr double thousandths = 1000;
        const char32_t index = c - U' ';
        return face.widths != nullptr && index < face.widths->size()
                   ? face.widths->at(index) / thousandths
                   : glyphWidth(face, c);
    }

    // What a code of a symbol font stands for.
    static char32_t shownCharacter(const Face& face, char32_t c) {
        const bool isCode = !face.symbols.empty() && c >= 0xF000 && c < 0xF100;
        return isCode ? word::symbolAsText(static_cast<char16_t>(c), face.symbols) : c;
    }

    static FT_UInt glyphOf(const Face& face, char32_t c) {
        return FT_Get_Char_Index(face.face, shownCharacter(face, c));
    }

    static double glyphWidth(const Face& face, char32_t c) {
        return advanceOf(face, glyphOf(face, c));
    }

    static double advanceOf(const Face& face, FT_UInt glyph) {
        if (FT_Load_Glyph(face.face, glyph, FT_LOAD_NO_SCALE) != 0) {
            return 0.5;
        }
        return static_cast<double>(face.face->glyph->metrics.horiAdvance) /
               std::max<double>(face.face->units_per_EM, 1);
    }

    FontChoice choice_;
    MeasuredFaces installed_;
    FT_Library library_ = nullptr;
    std::map<FaceFile, FT_Face> files_;
    std::map<Key, FaceId> requests_;
    std::vector<std::unique_ptr<Face>> faces_;
};

FontFaces::FontFaces(FontChoice choice) : store_(std::make_shared<Store>(choice)) {}
FontFaces::~FontFaces() = default;

FaceId FontFaces::face(const FaceRequest& request) { return store_->face(request); }
FaceId FontFaces::shownBy(FaceId face, char32_t character) {
    return store_->shownBy(face, character);
}
double FontFaces::advance(FaceId face, char32_t character) {
    return store_->advance(face, character);
}
FaceHeights FontFaces::heights(FaceId face) { return store_->heights(face); }
layout::Ligature FontFaces::ligature(FaceId face, std::u32string_view text) {
    return store_->ligature(face, text);
}
double FontFaces::kerning(FaceId face, char32_t before, char32_t after) {
    return store_->kerning(face, before, after);
}
double FontFaces::drawnAdvance(FaceId face, char32_t character) const {
    return store_->drawnAdvance(face, character);
}
unsigned FontFaces::glyph(FaceId face, char32_t character) const {
    return store_->glyph(face, character);
}
DrawnFace FontFaces::drawn(FaceId face) const {
    DrawnFace drawn = store_->drawn(face);
    drawn.owner = store_;
    return drawn;
}

std::unique_ptr<layout::FontMetrics> openNamedFonts() {
    return std::make_unique<FontFaces>(FontChoice::named);
}

} // namespace qvnd::drawing
