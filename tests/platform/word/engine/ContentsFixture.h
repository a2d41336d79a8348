#pragma once

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/ContentsField.h"
#include "platform/word/engine/EngineFixture.h"
#include "platform/word/engine/StyleLookup.h"

#include <algorithm>
#include <string>

namespace qvnd::test {

// A document with headings and a contents of them.
class ContentsTest : public EngineTest {
protected:
    void heading(std::u16string_view words, char16_t level) {
        type(words);
        selection().setStyle(document().styles().Item(std::u16string(u"标题 ") + level));
        selection().TypeParagraph();
    }
    void twoHeadings() {
        type(u"目录");
        selection().TypeParagraph();
        selection().TypeParagraph();
        heading(u"第一章", u'1');
        heading(u"第一节", u'2');
    }
    word::TableOfContents& addAt(int place, const word::TableOfContentsOptions& options = {}) {
        return document().tablesOfContents().Add(*document().Range(place, place), options);
    }
    // Contents of the two headings with those options.
    void expectContents(const word::TableOfContentsOptions& options, const std::u16string& entries,
                        const std::u16string& code) {
        twoHeadings();
        addAt(2, options);
        EXPECT_EQ(shown(), entries);
        EXPECT_EQ(instruction(), code);
    }
    // What those contents show, a line an entry.
    std::u16string shown(std::size_t contents = 0) {
        const auto fields = word::contentsFields(story());
        std::u16string result;
        std::u16string line;
        for (const char16_t c : story().text(fields.at(contents).start, fields[contents].end)) {
            line += c == u'\t' ? u'>' : c;
        }
        const auto code = line.find(u'\x14');
        return entryLines(line.substr(code + 1, line.size() - code - 2));
    }
    static std::u16string entryLines(const std::u16string& text) {
        std::u16string result;
        for (std::size_t at = 0; at <= text.size();) {
            const auto end = std::min(text.find(u'\r', at), text.size());
            result += word::entryText(text.substr(at, end - at)) + u'|';
            at = end + 1;
        }
        return result;
    }
    // Of the first level, in twips from the left edge of the text.
    int tabPosition() {
        const word::DocumentTables& tables = document().read().tables();
        const auto style = word::styleNamed(tables.styles, u"目录 1");
        const auto tabs = word::findSprm(tables.lists[tables.styles.styles.at(*style)->paragraph],
                                         word::sprm::PChgTabsPapx);
        return tabs ? tabs->operand[3] | (tabs->operand[4] << 8) : -1;
    }
    std::u16string instruction() {
        const auto fields = word::contentsFields(story());
        const std::u16string code = story().text(fields.at(0).start + 1, fields[0].end);
        return code.substr(0, code.find(u'\x14'));
    }
};

} // namespace qvnd::test
