#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/engine/BookmarkNames.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/PropertyRewriter.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// Adds lists to a document, each as a new one, so that no numbering continues that of another
// document, and under a name that no other list has. Lists that have only bullets are shared when
// they are equal.
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

    // Whether LISTNUM fields of the source can name lists.
    bool hasNames() const { return !named_.empty(); }
    // What the list that such fields know by that name is called in the target; it comes along.
    // Nothing where it keeps its name, where the source has no such list, where there is no room.
    std::optional<std::u16string> newName(std::u16string_view name);

    // How many lists were left out: a document holds at most 2046.
    int withoutRoom() const { return withoutRoom_; }
    const std::vector<ImportChanges::Renamed>& renamed() const { return renamed_; }

private:
    struct Brought {
        std::size_t definition = 0; // in the target
        const ListDefinition* source = nullptr;
    };

    std::uint16_t bring(const ListOverride& list);
    std::int32_t bringDefinition(const ListDefinition& definition);
    std::u16string uniqueName(const ListDefinition& definition);
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
    std::unordered_map<std::u16string, const ListDefinition*> named_; // by folded name
    std::set<std::int32_t> inFields_;  // by lsid here: those that fields have named
    std::optional<UniqueNames> names_; // of the target's lists; filled when one comes with a name
    std::map<std::int32_t, std::u16string> newNames_; // by lsid here
    std::vector<ImportChanges::Renamed> renamed_;
    int withoutRoom_ = 0;
};

} // namespace qvnd::word
