#pragma once

#include "platform/word/engine/BulletImport.h"
#include "platform/word/engine/FontImport.h"
#include "platform/word/engine/ImportReferences.h"
#include "platform/word/engine/ListImport.h"
#include "platform/word/engine/PropertyRewriter.h"
#include "platform/word/engine/StyleImport.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qvnd::word {

// Adds the tables of one document to those of another, as far as its text uses them.
class ImportTables : public ImportReferences {
public:
    ImportTables(DocumentTables& target, const DocumentTables& source);

    PropertyRewriter& rewriter() { return rewriter_; }
    StyleImport& styles() { return styles_; }
    ListImport& lists() { return lists_; }
    const FontImport& fonts() const { return fonts_; }

    // Brings what no text names, the pictures of bullets and the styles of lists, and sets the
    // references between added styles and lists. Call it after all text is imported.
    void finish();

    std::optional<std::uint16_t> font(std::uint16_t ftc) override { return fonts_.font(ftc); }
    std::optional<StyleIndex> style(StyleIndex istd, StyleKind kind) override;
    std::uint16_t list(std::uint16_t ilfo) override { return lists_.list(ilfo); }
    std::optional<std::uint32_t> blob(std::uint32_t index) override;
    std::optional<std::uint32_t> object(std::uint32_t index) override;
    // Whether the target's drawings may show one more picture, or show an equal one already.
    // `index` names an existing picture here and below.
    bool hasRoomForShapePicture(std::uint32_t index);
    std::uint32_t shapePicture(std::uint32_t index);
    std::optional<std::uint32_t> bulletPicture(std::uint32_t index) override {
        return bullets_.picture(index);
    }
    std::optional<std::uint16_t> author(std::uint16_t index) override;

private:
    void bringListStyles();

    DocumentTables& target_;
    const DocumentTables& source_;
    std::u16string unknownAuthor_ = u"Unknown";
    std::unordered_map<std::u16string, std::uint16_t> authorPlaces_; // in the target
    std::size_t indexedAuthors_ = 0; // how many of the target's stand there
    FontImport fonts_;
    PropertyRewriter rewriter_;
    BulletImport bullets_;
    ListImport lists_;
    StyleImport styles_;
    std::vector<std::optional<std::uint32_t>> blobs_;   // by index in the source
    std::vector<std::optional<std::uint32_t>> objects_; // the same
    std::vector<std::optional<std::uint32_t>> shapePictures_;
    std::unordered_set<std::string_view> pictureDigests_; // of the target's
    std::size_t indexedPictures_ = 0;                     // how many of the target's stand there
};

} // namespace qvnd::word
