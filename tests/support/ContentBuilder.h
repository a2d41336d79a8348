#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/styles/FontTable.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::test {

// A run of text with its character properties.
struct Words {
    std::u16string text;
    word::Bytes properties;
};

inline Words plain(std::u16string text) { return {std::move(text), {}}; }
inline Words bold(std::u16string text) {
    return {std::move(text), word::withSprm8({}, word::sprm::CFBold, 1)};
}

// A small document under work: a few styles and fonts, one section, text in fragments. It always
// ends in one empty paragraph, a fragment of its own.
class ContentBuilder {
public:
    ContentBuilder() {
        namespace w = qvnd::word;
        content.tables.fonts = {w::makeFont(u"Times New Roman"), w::makeFont(u"宋体")};
        content.tables.styles.defaultFonts = {0, 1, 0, 0};
        content.tables.styles.styles.resize(15);
        addStyle(0, u"Normal", 0, w::StyleDefinition::none, w::StyleKind::paragraph);
        addStyle(1, u"heading 1", 1, 0, w::StyleKind::paragraph);
        addStyle(10, u"Default Paragraph Font", 65, w::StyleDefinition::none,
                 w::StyleKind::character);
        content.settings = w::defaultDop();
        content.sections.push_back({0, w::PropertyListId::empty});
        end_ = fragment({plain(u"\r")});
        content.main.push_back({end_, 0, 1});
        count(1);
    }

    // A fragment of one story, a paragraph ending at every mark in the text.
    std::shared_ptr<const word::Story> fragment(const std::vector<Words>& words,
                                                word::StyleIndex style = 0,
                                                const word::Bytes& paragraph = {}) {
        word::Story story;
        for (const Words& part : words) {
            story.text += part.text;
            story.characters.push_back({static_cast<word::Cp>(part.text.size()),
                                        content.tables.lists.intern(part.properties)});
        }
        const auto properties = content.tables.lists.intern(paragraph);
        word::Cp begin = 0;
        for (word::Cp at = 0; at < story.size(); ++at) {
            if (story.text[at] == u'\r' || at + 1 == story.size()) {
                story.paragraphs.push_back({at + 1 - begin, style, properties});
                begin = at + 1;
            }
        }
        return std::make_shared<const word::Story>(std::move(story));
    }

    // Puts the fragment before the last paragraph.
    void add(std::shared_ptr<const word::Story> story) {
        const word::Cp length = story->size();
        content.main.insert(content.main.end() - 1, {std::move(story), 0, length});
        count(length);
    }
    void add(const std::vector<Words>& words, word::StyleIndex style = 0,
             const word::Bytes& paragraph = {}) {
        add(fragment(words, style, paragraph));
    }

    // The main text as it reads.
    std::u16string text() const {
        std::u16string result;
        for (const word::StorySlice& slice : content.main) {
            result += slice.fragment->text.substr(slice.begin, slice.length);
        }
        return result;
    }

    word::DocumentContent content;

private:
    void addStyle(std::size_t index, std::u16string name, std::uint16_t sti,
                  word::StyleIndex basedOn, word::StyleKind kind) {
        word::StyleDefinition style;
        style.name = std::move(name);
        style.sti = sti;
        style.basedOn = basedOn;
        style.kind = kind;
        style.next = static_cast<word::StyleIndex>(index);
        content.tables.styles.styles[index] = std::move(style);
    }
    void count(word::Cp length) { content.sections.back().length += length; }

    std::shared_ptr<const word::Story> end_;
};

} // namespace qvnd::test
