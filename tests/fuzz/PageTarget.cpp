#include "fuzz/PageTarget.h"

#include "fuzz/DocumentTarget.h"
#include "platform/drawing/PagePainter.h"
#include "platform/pictures/PageImages.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/layout/LayoutSource.h"
#include "platform/word/layout/PagesOnDemand.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace qvnd::test {

namespace {

constexpr std::size_t mostPages = 40;
constexpr int pixelsAcross = 50;

// What a viewer does: finds pages as somebody scrolls, and shows them again.
class Viewer {
public:
    Viewer(const word::DocumentContent& document, drawing::FontFaces& fonts,
           const layout::LayoutOptions& options)
        : source_(layout::sourceOf(document)), pages_(source_, fonts, options),
          painter_(fonts, pictures::pageImage) {
        while (pages_.sizes().size() < mostPages && pages_.findNext()) {
        }
    }

    std::size_t printed() {
        std::size_t bytes = 0;
        const auto pdf = painter_.pdf([&](word::ByteView part) { bytes += part.size(); });
        for (std::size_t sheet = 0; sheet < pages_.sizes().size(); ++sheet) {
            pdf->add(pages_.page(sheet));
        }
        pdf->finish();
        return bytes;
    }

    bool showsTheSameAgain() {
        const std::size_t last = pages_.sizes().size() - 1;
        const drawing::PixelImage first = shown(0);
        const drawing::PixelImage middle = shown(last / 2);
        shown(last);
        return first.pixels == shown(0).pixels && middle.pixels == shown(last / 2).pixels;
    }

private:
    drawing::PixelImage shown(std::size_t sheet) {
        return painter_.image(pages_.page(sheet), pixelsAcross);
    }

    layout::LayoutSource source_;
    layout::PagesOnDemand pages_;
    drawing::PagePainter painter_;
};

} // namespace

PageTarget::PageTarget()
    : fonts_{drawing::FontFaces(drawing::FontChoice::named),
             drawing::FontFaces(drawing::FontChoice::here)} {}

FuzzTarget::Outcome PageTarget::run(word::ByteView file) {
    word::DocumentContent document;
    try {
        document = word::readDocument(file);
    } catch (const word::FormatError&) {
        return {};
    }
    const bool here = std::count(file.begin(), file.end(), std::uint8_t{0}) % 2 == 1;
    Viewer viewer(document, fonts_.at(here ? 1 : 0),
                  here ? layout::officeOptions() : layout::LayoutOptions{});
    Outcome outcome{true, {}};
    if (viewer.printed() == 0) {
        outcome.fault += " an empty PDF";
    }
    if (!viewer.showsTheSameAgain()) {
        outcome.fault += " another page when it was shown again";
    }
    return outcome;
}

std::vector<word::Bytes> PageTarget::ownFiles() const { return DocumentTarget().ownFiles(); }

} // namespace qvnd::test
