#pragma once

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/layout/DocumentLayout.h"
#include "support/ContentBuilder.h"
#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace qvnd::test {

using layout::DocumentLayout;
using layout::LayoutOptions;
using layout::LayoutSource;
using layout::Page;
using layout::PlacedText;
using layout::sourceOf;
using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

// A document on pages with room for ten lines of ten Chinese characters of 10 points.
class PagedDocument : public testing::Test {
protected:
    PagedDocument() {
        document.tables = std::move(builder.content.tables);
        document.settings = word::Bytes(builder.content.settings);
        document.sections.push_back({0, intern(section())});
    }

    static Bytes section() {
        Bytes list = withSprm16({}, sprm::SXaPage, 4000);
        list = withSprm16(list, sprm::SYaPage, 4000);
        for (const auto side : {sprm::SDxaLeft, sprm::SDxaRight, sprm::SDyaTop, sprm::SDyaBottom}) {
            list = withSprm16(list, side, 1000);
        }
        return list;
    }

    word::PropertyListId intern(const Bytes& list) { return document.tables.lists.intern(list); }

    word::Story story(const std::u16string& text, const Bytes& paragraph = {}) {
        word::Story result;
        append(result, text, paragraph);
        return result;
    }
    void append(word::Story& to, const std::u16string& text, const Bytes& paragraph = {}) {
        to.text += text;
        to.characters.push_back({static_cast<word::Cp>(text.size()), {}});
        std::size_t begin = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == u'\r') {
                to.paragraphs.push_back(
                    {static_cast<word::Cp>(at + 1 - begin), 0, intern(paragraph)});
                begin = at + 1;
            }
        }
    }
    void type(const std::u16string& text, const Bytes& paragraph = {}) {
        append(main, text, paragraph);
        document.sections.back().length = main.size() - before;
    }
    void paragraphs(int count) {
        for (int i = 0; i < count; ++i) {
            type(u"一\r");
        }
    }
    // A list whose numbers have the bits of alignment and stand before a mark.
    static word::ListDefinition numberedList(std::uint8_t alignment) {
        word::ListDefinition list;
        list.lsid = 77;
        list.linkedStyles.fill(word::StyleDefinition::none);
        list.levels.resize(9);
        list.levels[0].head[0] = 1;  // starts at 1
        list.levels[0].head[6] = 1;  // its number is the first character
        list.levels[0].head[15] = 2; // nothing follows
        list.levels[0].head[5] = alignment;
        list.levels[0].text = {0, u'、'};
        return list;
    }
    // Of the first section; `kind`: on which pages.
    void putHeader(word::HeaderKind kind, const word::Story& text) {
        document.headers.resize(1);
        document.headers[0][static_cast<std::size_t>(kind)] = word::slicesOf(text);
    }
    // A footer that shows the field of that code and kind.
    void putFieldFooter(const std::u16string& code, std::uint8_t kind) {
        word::Story footer = story(u"\x13" + code + u"\x14" + u"9\x15\r");
        const auto separator = static_cast<word::Cp>(code.size() + 1);
        footer.fields = {{0, 0x13, kind}, {separator, 0x14, 0}, {separator + 2, 0x15, 0}};
        putHeader(word::HeaderKind::oddFooter, footer);
    }
    // The note whose reference stands at that character.
    void putFootnote(word::Cp at, const std::u16string& text) {
        main.anchors = {{at, word::AnchorKind::footnote, 0}};
        document.tables.sideStories.push_back(
            {std::make_shared<const word::Story>(story(text)), true, {}, {}});
    }
    void nextSection(const Bytes& list) {
        before = main.size();
        document.sections.push_back({0, intern(list)});
        document.headers.resize(document.sections.size());
    }

    const LayoutSource& sourceOfAll() {
        document.main = word::slicesOf(main);
        source = sourceOf(document);
        return source;
    }
    std::vector<Page> pages() {
        sourceOfAll();
        layout = std::make_unique<DocumentLayout>(source, fonts, options);
        std::vector<Page> result;
        while (auto page = layout->nextPage()) {
            result.push_back(std::move(*page));
        }
        return result;
    }

    // The run of exactly that text.
    static const PlacedText& textAt(const Page& page, const std::u16string& text) {
        for (const PlacedText& run : page.layer.texts) {
            if (run.text == text) {
                return run;
            }
        }
        static const PlacedText none;
        ADD_FAILURE() << "no such text";
        return none;
    }

    // The first run that begins with that character.
    static const PlacedText& runWith(const Page& page, char16_t first) {
        for (const PlacedText& run : page.layer.texts) {
            if (run.text.front() == first) {
                return run;
            }
        }
        static const PlacedText none;
        ADD_FAILURE() << "no such text";
        return none;
    }

    static std::u16string textOf(const Page& page) {
        std::u16string text;
        for (const PlacedText& run : page.layer.texts) {
            text += run.text;
        }
        return text;
    }

    ContentBuilder builder;
    FixedFonts fonts;
    LayoutOptions options;
    word::Story main;
    word::DocumentContent document; // all but the main story
    LayoutSource source;
    std::unique_ptr<DocumentLayout> layout;
    word::Cp before = 0;
};

} // namespace qvnd::test
