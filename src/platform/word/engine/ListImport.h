#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/engine/PropertyRewriter.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// Adds lists to a document, each as a new one, so that no numbering continues that of another
// document. Lists that have only bullets are shared when they are equal.
class ListImport {
public:
    // Whether a style of the source is or may still be added to the target.
    using MayComeAlong = std::function<bool(StyleIndex)>;

    ListImport(DocumentTables& target, const DocumentTables& source, PropertyRewriter& rewriter,
               MayComeAlong mayComeAlong);

    // Translates an operand of sprmPIlfo; 0 where the source has no such
    // list.
    std::uint16_t list(std::uint16_t ilfo);

    // Whether a list with the same definition as this one has been asked for and come.
    bool cameAlong(std::uint16_t ilfo) const;

    // Sets the linked styles of the levels. `cameAlong` answers the index in the target of a style
    // that was added, nothing for any other.
    void linkStyles(const std::function<std::optional<StyleIndex>(StyleIndex)>& cameAlong);

    // How many lists were left out: a document holds at most 2046.
    int withoutRoom() const { return withoutRoom_; }

private:
    struct Brought {
        std::size_t definition = 0; // in the target
        const ListDefinition* source = nullptr;
    };

    std::uint16_t bring(const ListOverride& list);
    std::int32_t bringDefinition(const ListDefinition& definition);
    bool comesAsPlainBullets(const ListDefinition& definition) const;
    std::optional<std::uint16_t> sharedBullets(const ListDefinition& definition);
    void indexBullets();
    ListLevel rewritten(const ListLevel& level);
    ListDefinition inTarget(const ListDefinition& definition);
    std::int32_t freshNumber(std::int32_t lsid) const;
    bool isFree(std::int32_t lsid) const;
    const ListDefinition* sourceDefinition(std::int32_t lsid) const;

    DocumentTables& target_;
    const DocumentTables& source_;
    PropertyRewriter& rewriter_;
    MayComeAlong mayComeAlong_;
    std::vector<std::optional<std::uint16_t>> known_;  // by index of the source's override
    std::map<std::int32_t, std::int32_t> definitions_; // lsid here, lsid there
    std::map<std::int32_t, std::uint16_t> plain_;      // lsid here: override without levels
    std::unordered_map<std::int32_t, const ListDefinition*> sourceDefinitions_; // by lsid
    // Lists of the target with nothing but bullets, by all that shows of them; filled when it is
    // first asked for.
    std::optional<std::map<Bytes, std::uint16_t>> bullets_;
    std::vector<Brought> brought_;
    int withoutRoom_ = 0;
};

} // namespace qvnd::word
