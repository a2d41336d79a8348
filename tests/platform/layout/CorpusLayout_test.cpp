#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/layout/DocumentLayout.h"
#include "support/Corpus.h"
#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <random>

namespace qvnd::layout {
namespace {

using Letters = std::map<char16_t, int>;

// Letters and digits of the scripts that are most of a document; symbols, blanks and hyphens are
// shown in other ways.
void add(Letters& letters, const std::u16string& text) {
    for (const char16_t c : text) {
        const bool isLetter = (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') ||
                              (c >= u'a' && c <= u'z') || (c >= 0x4E00 && c < 0xA000);
        if (isLetter) {
            ++letters[c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c];
        }
    }
}

// Texts that are left out on purpose, and fields that are counted anew.
bool showsOtherText(const word::DocumentContent& document) {
    word::FormatResolver formats(document.tables);
    const auto main = word::joined(document.main);
    const bool isUnseen =
        std::any_of(main->characters.begin(), main->characters.end(), [&](const auto& run) {
            const word::ResolvedText& look = formats.text(0, run.properties);
            return look.hidden || look.deleted;
        });
    const bool counts =
        std::any_of(main->fields.begin(), main->fields.end(), [](const word::FieldMark& mark) {
            return mark.character == 0x13 && (mark.data == 0x21 || mark.data == 0x1A);
        });
    return isUnseen || counts;
}

TEST(CorpusLayout, NoLetterOfADocumentIsLost) {
    const auto files = test::readableCorpusFiles();
    if (files.empty()) {
        GTEST_SKIP() << "no documents of other programs here (QVND_CORPUS names their folder)";
    }
    test::FixedFonts fonts;
    int compared = 0;
    for (const auto& path : files) {
        const word::DocumentContent document = word::readDocument(path);
        if (showsOtherText(document)) {
            continue;
        }
        Letters wanted;
        add(wanted, word::documentText(document.main, document.tables));
        Letters shown;
        const LayoutSource source = sourceOf(document);
        DocumentLayout layout(source, fonts, {});
        while (const auto page = layout.nextPage()) {
            for (const PlacedText& text : page->layer.texts) {
                add(shown, text.text);
            }
        }
        for (const auto& [letter, count] : wanted) {
            EXPECT_GE(shown[letter], count) << path.filename() << " " << unsigned{letter};
        }
        ++compared;
    }
    EXPECT_GT(compared, 50);
}

TEST(CorpusLayout, ChangedFilesAreLaidOutOrRefused) {
    const auto files = test::readableCorpusFiles();
    if (files.empty()) {
        GTEST_SKIP() << "no documents of other programs here (QVND_CORPUS names their folder)";
    }
    constexpr std::size_t largest = 100'000;
    test::FixedFonts fonts;
    std::mt19937 random(20260210);
    int laidOut = 0;
    for (const auto& path : files) {
        std::ifstream in(path, std::ios::binary);
        word::Bytes bytes(std::istreambuf_iterator<char>(in), {});
        if (bytes.size() > largest) {
            continue;
        }
        for (int change = 0; change < 30; ++change) {
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        }
        try {
            const word::DocumentContent document = word::readDocument(bytes);
            const LayoutSource source = sourceOf(document);
            DocumentLayout layout(source, fonts, {});
            std::size_t pages = 0;
            while (layout.nextPage()) {
                ++pages;
            }
            // Each page holds a line at least, and sections may leave pages empty.
            EXPECT_LE(pages, 2 * (bytes.size() + document.sections.size())) << path.filename();
            ++laidOut;
        } catch (const word::FormatError&) {
            continue;
        }
    }
    EXPECT_GT(laidOut, 20);
}

} // namespace
} // namespace qvnd::layout
