#include "platform/word/engine/BulletImport.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/Md4.h"
#include "platform/word/docfile/text/BulletPictures.h"

namespace qvnd::word {

BulletImport::BulletImport(DocumentTables& target, const DocumentTables& source,
                           PropertyRewriter& rewriter)
    : target_(target), source_(source), rewriter_(rewriter), known_(source.bulletPictures.size()) {
    const std::vector<PropertyListId>& there = target.bulletPictures;
    for (std::uint32_t i = 0; !known_.empty() && i < there.size(); ++i) {
        if (isBulletPicture(target.lists[there[i]])) {
            places_.try_emplace(shownBy(target, there[i]), i);
        }
    }
}

// What tells the picture of a character with these properties from others.
BulletImport::Digest BulletImport::shownBy(const DocumentTables& tables,
                                           PropertyListId properties) {
    const auto location = findSprm(tables.lists[properties], sprm::CPicLocation);
    const std::uint32_t index =
        location ? LittleEndianReader(location->operand, "sprmCPicLocation").u32() : 0;
    if (!location || index >= tables.blobs.size() || !tables.blobs[index]) {
        return {};
    }
    const auto [digest, isNew] = digests_.try_emplace(tables.blobs[index].get());
    if (isNew) {
        digest->second = md4(*tables.blobs[index]);
    }
    return digest->second;
}

std::optional<std::uint32_t> BulletImport::picture(std::uint32_t index) {
    if (index >= known_.size() || !isBulletPicture(source_.lists[source_.bulletPictures[index]])) {
        return std::nullopt;
    }
    std::optional<std::uint32_t>& known = known_[index];
    if (!known) {
        const PropertyListId wanted = source_.bulletPictures[index];
        std::vector<PropertyListId>& there = target_.bulletPictures;
        const auto next = static_cast<std::uint32_t>(there.size());
        const auto [place, isNew] = places_.try_emplace(shownBy(source_, wanted), next);
        known = place->second;
        if (isNew) {
            there.push_back(PropertyListId::empty); // while its own properties come
            there[next] = rewriter_.rewritten(wanted);
        }
    }
    return known;
}

void BulletImport::bringAll() {
    for (std::uint32_t index = 0; index < known_.size(); ++index) {
        picture(index);
    }
}

} // namespace qvnd::word
