#include "platform/word/layout/HeaderStrips.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/layout/PageFloats.h"
#include "platform/word/layout/StyleReferences.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

// A header is high enough for what floats in it and has its text keep clear.
void growAround(HeaderStrips::Set& set) {
    for (const AnchoredFloat& floating : set.floats) {
        const FloatPlace& place = floating.place;
        if (place.down == word::FrameSpot::Down::fromParagraph &&
            place.wrap != FloatPlace::Wrap::none) {
            set.height = std::max(set.height, floating.y + place.top + place.height);
        }
    }
}

bool hasStyleReference(const word::Story& story) {
    return std::any_of(story.fields.begin(), story.fields.end(), [](const word::FieldMark& mark) {
        return mark.character == word::fieldBegin && mark.data == styleReferenceField;
    });
}

// The text of any shape may be that of a header.
bool haveStyleReferences(const LayoutSource& source) {
    const auto inHeader = [](const word::SlicedText& text) {
        return std::any_of(text.begin(), text.end(), [](const word::StorySlice& slice) {
            return hasStyleReference(*slice.fragment);
        });
    };
    const auto& shapes = source.tables->shapeTexts;
    return std::any_of(source.headers.begin(), source.headers.end(),
                       [&](const word::HeaderSet& set) {
                           return std::any_of(set.begin(), set.end(), inHeader);
                       }) ||
           std::any_of(shapes.begin(), shapes.end(), [](const word::ShapeText& shape) {
               return shape.text && hasStyleReference(*shape.text);
           });
}

} // namespace

HeaderStrips::HeaderStrips(StoryReader::Shared& shared)
    : shared_(shared),
      facingPages_(word::readDop(shared.source.settings, word::dop::facingPages) != 0),
      showStyles_(!shared.officeText && haveStyleReferences(shared.source)) {}

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
    if (text == nullptr) {
        return {};
    }
    auto& [story, composer] = headers_[text];
    if (!composer) {
        story = word::joined(*text);
        shared_.headers.insert(story.get());
        composer = std::make_unique<BlockComposer>(shared_, *story);
    }
    composer->setPage(fields);
    Set set = stacked(composer->composeAll(setting), shared_.addsSpaces);
    growAround(set);
    set.layer.movePlanes(toHeader);
    for (AnchoredFloat& floating : set.floats) {
        movePlanes(floating, toHeader);
    }
    return set;
}

HeaderStrips::Both HeaderStrips::of(const Of& page, const PageFields& fields,
                                    const LineSetting& setting) {
    using Kind = word::HeaderKind;
    return {set(page, Kind::firstHeader, Kind::evenHeader, Kind::oddHeader, fields, setting),
            set(page, Kind::firstFooter, Kind::evenFooter, Kind::oddFooter, fields, setting)};
}

void putOn(Page& page, const HeaderStrips::Both& set, const word::ResolvedSection& section,
           const word::SectionPaper& paper) {
    putOn(page, set.header, paper, section.headerTop);
    putOn(page, set.footer, paper, paper.height - section.footerBottom - set.footer.height);
}

} // namespace qvnd::layout
