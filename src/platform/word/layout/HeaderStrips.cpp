#include "platform/word/layout/HeaderStrips.h"

#include "platform/word/docfile/format/Dop.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

constexpr std::uint8_t pageCountField = 0x1A; // NUMPAGES, [MS-DOC] 2.9.90

} // namespace

HeaderStrips::HeaderStrips(StoryReader::Shared& shared)
    : shared_(shared),
      facingPages_(word::readDop(shared.source.settings, word::dop::facingPages) != 0) {}

// One that a section does not have is that of the section before.
const word::SlicedText* HeaderStrips::shown(std::size_t section, word::HeaderKind kind) const {
    const auto& headers = shared_.source.headers;
    for (std::size_t at = std::min(section + 1, headers.size()); at-- > 0;) {
        const word::SlicedText& found = headers[at][static_cast<std::size_t>(kind)];
        if (!found.empty()) {
            return &found;
        }
    }
    return nullptr;
}

HeaderStrips::Set HeaderStrips::set(const Of& page, word::HeaderKind first, word::HeaderKind even,
                                    word::HeaderKind odd, const PageFields& fields,
                                    const LineSetting& setting) {
    const word::HeaderKind kind = page.firstPage                  ? first
                                  : facingPages_ && page.evenPage ? even
                                                                  : odd;
    const word::SlicedText* text = shown(page.section, kind);
    Set result;
    if (text == nullptr) {
        return result;
    }
    auto& [story, composer] = headers_[text];
    if (!composer) {
        story = word::joined(*text);
        composer = std::make_unique<BlockComposer>(shared_, *story);
    }
    showsPageCount_ =
        showsPageCount_ ||
        std::any_of(story->fields.begin(), story->fields.end(), [](const word::FieldMark& mark) {
            return mark.character == 0x13 && mark.data == pageCountField;
        });
    composer->setPage(fields, true);
    const Strips strips = composer->composeAll(setting);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        result.height += i > 0 ? gapBetween(strips[i - 1], strips[i], true) : strips[i].before;
        result.layer.append(strips[i].layer, 0, result.height);
        result.height += strips[i].height;
    }
    result.height += strips.empty() ? 0 : strips.back().after;
    return result;
}

HeaderStrips::Set HeaderStrips::header(const Of& page, const PageFields& fields,
                                       const LineSetting& setting) {
    using Kind = word::HeaderKind;
    return set(page, Kind::firstHeader, Kind::evenHeader, Kind::oddHeader, fields, setting);
}

HeaderStrips::Set HeaderStrips::footer(const Of& page, const PageFields& fields,
                                       const LineSetting& setting) {
    using Kind = word::HeaderKind;
    return set(page, Kind::firstFooter, Kind::evenFooter, Kind::oddFooter, fields, setting);
}

} // namespace qvnd::layout
