#include "platform/word/engine/FieldCodes.h"

#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace qvnd::word {

namespace {

bool isQuote(char16_t c) { return c == u'"' || c == u'\u201C' || c == u'\u201D'; }
bool isSpace(char16_t c) { return c == u' ' || c == u'\t' || c == u'\u3000' || c == 0x0D; }

// Splits the characters that it is handed into words.
class WordSplitter {
public:
    void take(Cp at, char16_t c) {
        if (isQuote(c)) {
            endWord();
            quoted_ = !quoted_;
        } else if (!quoted_ && isSpace(c)) {
            endWord();
        } else if (c >= u' ' || c == u'\t') {
            if (word_.text.empty()) {
                word_.at = at;
            }
            word_.text.push_back(c);
        }
    }
    void endWord() {
        if (!word_.text.empty()) {
            words_.push_back(word_);
            word_ = {};
        }
    }
    std::vector<FieldWord> words() {
        endWord();
        return std::move(words_);
    }

private:
    std::vector<FieldWord> words_;
    FieldWord word_;
    bool quoted_ = false;
};

bool namesBookmarkFirst(std::u16string_view command) {
    constexpr std::array<std::u16string_view, 7> commands{
        u"ref", u"pageref", u"noteref", u"ftnref", u"gotobutton", u"set", u"ask"};
    return std::find(commands.begin(), commands.end(), command) != commands.end();
}

// The switch behind which a bookmark stands.
std::u16string_view bookmarkSwitch(std::u16string_view command) {
    if (command == u"hyperlink") {
        return u"\\l";
    }
    return command == u"toc" || command == u"index" ? std::u16string_view(u"\\b")
                                                    : std::u16string_view{};
}

} // namespace

std::vector<FieldPlace> fieldPlaces(const Story& story) {
    std::vector<FieldPlace> places;
    std::vector<FieldPlace> open;
    for (const FieldMark& mark : story.fields) {
        if (mark.character == fieldBegin) {
            open.push_back({mark.at, std::nullopt, mark.at, mark.data});
        } else if (!open.empty() && mark.character == fieldSeparator) {
            open.back().separator = mark.at;
        } else if (!open.empty() && mark.character == fieldEnd) {
            open.back().end = mark.at;
            places.push_back(open.back());
            open.pop_back();
        }
    }
    return places;
}

std::vector<std::vector<FieldWord>> fieldWords(const Story& story) {
    struct Open {
        WordSplitter splitter;
        bool inCode = true;
    };
    std::vector<std::vector<FieldWord>> words;
    std::vector<Open> open; // a character belongs to the innermost one
    auto mark = story.fields.begin();
    for (Cp at = 0; at < story.size(); ++at) {
        if (mark == story.fields.end() || mark->at != at) {
            if (!open.empty() && open.back().inCode) {
                open.back().splitter.take(at, story.text[at]);
            }
            continue;
        }
        const char16_t character = (mark++)->character;
        if (character == fieldBegin) {
            if (!open.empty()) {
                open.back().splitter.endWord();
            }
            open.emplace_back();
        } else if (!open.empty() && character == fieldSeparator) {
            open.back().inCode = false;
        } else if (!open.empty()) {
            words.push_back(open.back().splitter.words());
            open.pop_back();
        }
    }
    return words;
}

std::vector<FieldWord> bookmarkWords(const std::vector<FieldWord>& words) {
    std::vector<FieldWord> named;
    if (words.empty()) {
        return named;
    }
    const std::u16string command = foldedName(words.front().text);
    if (namesBookmarkFirst(command)) {
        if (words.size() > 1) {
            named.push_back(words[1]);
        }
        return named;
    }
    const std::u16string_view wanted = bookmarkSwitch(command);
    for (std::size_t i = 1; !wanted.empty() && i + 1 < words.size(); ++i) {
        if (foldedName(words[i].text) == wanted) {
            named.push_back(words[i + 1]);
        }
    }
    if (wanted.empty() && words.size() == 1) {
        named.push_back(words.front()); // a bookmark's name alone is a reference to it
    }
    return named;
}

} // namespace qvnd::word
