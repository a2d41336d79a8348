#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/engine/PropertyRewriter.h"

#include <array>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// Adds the pictures of a document's bullets to another document. Documents that were made from each
// other have the same pictures: of equal ones the target holds one.
class BulletImport {
public:
    // All outlive the object.
    BulletImport(DocumentTables& target, const DocumentTables& source, PropertyRewriter& rewriter);

    // Translates an operand of sprmCPbiIBullet; nothing where the source has no such picture.
    std::optional<std::uint32_t> picture(std::uint32_t index);

    // Brings those that no list of the text shows.
    void bringAll();

private:
    using Digest = std::array<std::uint8_t, 16>;

    Digest shownBy(const DocumentTables& tables, PropertyListId properties);

    DocumentTables& target_;
    const DocumentTables& source_;
    PropertyRewriter& rewriter_;
    std::vector<std::optional<std::uint32_t>> known_;  // by index in the source
    std::map<Digest, std::uint32_t> places_;           // in the target, by what they show
    std::unordered_map<const Bytes*, Digest> digests_; // many characters may show one picture
};

} // namespace qvnd::word
