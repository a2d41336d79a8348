#pragma once

#include "platform/word/layout/LineComposer.h"
#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace qvnd::test {

// Lines of ten Chinese characters of 10 points: 2000 twips.
class ComposedLines : public testing::Test {
protected:
    ComposedLines() {
        setting.width = 2000;
        format.spacesLatin = format.spacesDigits = false;
    }

    void type(std::u32string_view text) {
        for (const char32_t c : text) {
            layout::TextItem item;
            item.character = c;
            item.size = 200;
            item.format = &look;
            item.at = static_cast<word::Cp>(items.items.size());
            item.width = fonts.advance(0, c) * item.size;
            item.kind = c == U'\t'   ? layout::TextItem::Kind::tab
                        : c == U'\v' ? layout::TextItem::Kind::lineBreak
                        : c == U'\f' ? layout::TextItem::Kind::pageBreak
                                     : layout::TextItem::Kind::character;
            items.items.push_back(item);
        }
        items.markSize = items.characterWidth = 200;
    }

    const layout::Strips& compose() {
        strips = layout::composeLines(items, format, fonts, setting);
        return strips;
    }

    // The texts of the lines, runs joined.
    std::vector<std::u16string> lines() {
        std::vector<std::u16string> result;
        for (const layout::Strip& strip : compose()) {
            std::u16string text;
            for (const layout::PlacedText& run : strip.layer.texts) {
                text += run.text;
            }
            result.push_back(text);
        }
        return result;
    }

    double leftOf(std::size_t line) { return compose()[line].layer.texts.front().x; }
    double rightOf(std::size_t line) {
        const layout::PlacedText& run = compose()[line].layer.texts.back();
        double x = run.x;
        for (const float advance : run.advances) {
            x += advance;
        }
        return x;
    }

    FixedFonts fonts;
    word::ResolvedText look;
    layout::ParagraphItems items;
    word::ResolvedParagraph format;
    layout::LineSetting setting;
    layout::Strips strips;
};

} // namespace qvnd::test
