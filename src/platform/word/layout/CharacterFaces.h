#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/ResolvedText.h"
#include "platform/word/layout/FontMetrics.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace qvnd::layout {

// The faces that the characters of a document stand in, by their formatting.
class CharacterFaces {
public:
    // `tables` and `fonts` must outlive the object. `office`: as the office suite chooses them.
    CharacterFaces(const word::DocumentTables& tables, FontMetrics& fonts, bool office)
        : tables_(tables), fonts_(fonts), office_(office) {}

    // The face that shows the character.
    FaceId of(const word::ResolvedText& format, char32_t c);
    // The face of a font of the document, whether or not it has a certain character.
    FaceId of(std::uint16_t font, bool asksForChinese, const word::ResolvedText& format);
    const std::u16string& nameOf(std::uint16_t font) const;
    // Whether a character that fonts of both scripts have is set in the East Asian one.
    bool isSetAsChinese(const word::ResolvedText& format, char32_t c) const;

private:
    // The index of the font and what is asked of it.
    using Key = std::pair<std::uint16_t, unsigned>;
    FaceId known(const Key& key, const word::ResolvedText& format);

    const word::DocumentTables& tables_;
    FontMetrics& fonts_;
    bool office_;
    std::map<Key, FaceId> faces_;
    // The last ones for Latin and for Chinese text: most characters stand in the face of the one
    // before.
    struct Last {
        std::optional<Key> key;
        FaceId face = 0;
    };
    std::array<Last, 2> last_;
};

} // namespace qvnd::layout
