#include "platform/word/engine/ImportTables.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/StyleLookup.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// Of a revision mark's author; the ones beyond go under the name of the first.
constexpr std::size_t mostAuthors = 0x7FFF;

std::array<std::uint16_t, 4> translated(const std::array<std::uint16_t, 4>& fonts,
                                        FontImport& import) {
    std::array<std::uint16_t, 4> result{};
    std::transform(fonts.begin(), fonts.end(), result.begin(),
                   [&](std::uint16_t ftc) { return import.font(ftc).value_or(0); });
    return result;
}

// The place of what both documents share from now on; it comes along when it is first asked for.
template <class Shared>
std::optional<std::uint32_t> shared(std::uint32_t index, const std::vector<Shared>& source,
                                    std::vector<Shared>& target,
                                    std::vector<std::optional<std::uint32_t>>& known) {
    if (index >= source.size() || !source[index]) {
        return std::nullopt;
    }
    if (!known[index]) {
        known[index] = static_cast<std::uint32_t>(target.size());
        target.push_back(source[index]);
    }
    return known[index];
}

// What an entry of a store of pictures says of its picture's bytes; equal pictures have equal ones.
std::string_view digestOf(const Bytes& entry) {
    constexpr std::size_t digestSize = 16;
    const std::string_view bytes(reinterpret_cast<const char*>(entry.data()), entry.size());
    const std::size_t at = art::headerSize + art::fbseUidAt;
    return bytes.substr(std::min(at, bytes.size()), digestSize);
}

} // namespace

ImportTables::ImportTables(DocumentTables& target, const DocumentTables& source)
    : target_(target), source_(source), fonts_(target.fonts, source.fonts),
      rewriter_(source.lists, target.lists, *this), bullets_(target, source, rewriter_),
      lists_(target, source, rewriter_,
             [this](StyleIndex istd) { return styles_.mayComeAlong(istd); }),
      styles_(target, source, rewriter_, *this, translated(source.styles.defaultFonts, fonts_)),
      blobs_(source.blobs.size()), objects_(source.objects.size()),
      shapePictures_(source.shapePictures.size()) {}

std::optional<StyleIndex> ImportTables::style(StyleIndex istd, StyleKind kind) {
    return hasStyle(source_.styles, istd, kind) ? styles_.style(istd) : std::nullopt;
}

std::optional<std::uint32_t> ImportTables::blob(std::uint32_t index) {
    return shared(index, source_.blobs, target_.blobs, blobs_);
}

std::optional<std::uint32_t> ImportTables::object(std::uint32_t index) {
    return shared(index, source_.objects, target_.objects, objects_);
}

bool ImportTables::hasRoomForShapePicture(std::uint32_t index) {
    const auto& pool = target_.shapePictures;
    if (shapePictures_[index] || pool.size() < art::mostPictures) {
        return true;
    }
    for (; indexedPictures_ < pool.size(); ++indexedPictures_) {
        pictureDigests_.insert(digestOf(*pool[indexedPictures_]));
    }
    return pictureDigests_.size() < art::mostPictures ||
           pictureDigests_.contains(digestOf(*source_.shapePictures[index]));
}

std::uint32_t ImportTables::shapePicture(std::uint32_t index) {
    return shared(index, source_.shapePictures, target_.shapePictures, shapePictures_).value();
}

std::optional<std::uint16_t> ImportTables::author(std::uint16_t index) {
    // A revision of nobody stays a revision; Word calls nobody this.
    const std::u16string& name =
        index < source_.authors.size() ? source_.authors[index] : unknownAuthor_;
    auto& authors = target_.authors;
    for (; indexedAuthors_ < authors.size(); ++indexedAuthors_) {
        authorPlaces_.try_emplace(authors[indexedAuthors_],
                                  static_cast<std::uint16_t>(indexedAuthors_));
    }
    if (const auto found = authorPlaces_.find(name); found != authorPlaces_.end()) {
        return found->second;
    }
    if (authors.size() >= mostAuthors) {
        return std::uint16_t{0};
    }
    authors.push_back(name);
    return static_cast<std::uint16_t>(authors.size() - 1);
}

void ImportTables::finish() {
    bullets_.bringAll();
    bringListStyles();
    styles_.finish();
    lists_.linkStyles([this](StyleIndex istd) { return styles_.cameAlong(istd); });
}

// The style of a list comes with its list.
void ImportTables::bringListStyles() {
    const auto& styles = source_.styles.styles;
    for (std::size_t istd = 0; istd < styles.size(); ++istd) {
        if (!styles[istd] || styles[istd]->kind != StyleKind::list) {
            continue;
        }
        const auto list = findSprm(source_.lists[styles[istd]->paragraph], sprm::PIlfo);
        if (list && lists_.cameAlong(LittleEndianReader(list->operand, "sprmPIlfo").u16())) {
            styles_.style(static_cast<StyleIndex>(istd));
        }
    }
}

} // namespace qvnd::word
