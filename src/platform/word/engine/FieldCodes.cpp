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
        } else if ((!quoted_ && isSpace(c)) || (c < u' ' && c != u'\t')) {
            endWord(); // its characters lie one behind the other
        } else {
            if (word_.text.empty()) {
                word_.at = at;
                word_.quoted = quoted_;
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

bool compares(std::u16string_view command) {
    return command == u"if" || command == u"compare" || command == u"skipif" ||
           command == u"nextif";
}

bool isComparison(char16_t c) { return c == u'=' || c == u'<' || c == u'>'; }

bool isOfName(char16_t c) {
    return c >= 0x80 || c == u'_' || (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') ||
           (c >= u'A' && c <= u'Z');
}

// One or two letters and a number: a cell of the table that the formula stands in.
bool isCell(std::u16string_view name) {
    const std::u16string folded = foldedName(name);
    const std::size_t letters = folded.find_first_not_of(u"abcdefghijklmnopqrstuvwxyz");
    return letters != std::u16string::npos && letters >= 1 && letters <= 2 &&
           folded.find_first_not_of(u"0123456789", letters) == std::u16string::npos;
}

// The parts of a word that consist of a name's characters alone.
std::vector<FieldWord> namesIn(const FieldWord& word) {
    std::vector<FieldWord> names;
    const std::u16string& text = word.text;
    for (std::size_t at = 0; !word.quoted && at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isOfName(text[end])) {
            ++end;
        }
        const bool isFunction = end < text.size() && text[end] == u'(';
        if (end > at && !isFunction && !isCell(text.substr(at, end - at))) {
            names.push_back({word.at + static_cast<Cp>(at), text.substr(at, end - at)});
        }
        at = std::max(end, at + 1);
    }
    return names;
}

// The words up to the first switch.
std::vector<FieldWord> namesOfFormula(const std::vector<FieldWord>& words) {
    std::vector<FieldWord> names;
    for (const FieldWord& word : words) {
        if (word.text.starts_with(u'\\')) {
            break;
        }
        const std::vector<FieldWord> more = namesIn(word);
        names.insert(names.end(), more.begin(), more.end());
    }
    return names;
}

// What stands in front of the first sign of a comparison, and the word behind it.
std::vector<FieldWord> namesOfComparison(const std::vector<FieldWord>& words) {
    const auto sign = std::find_if(words.begin() + 1, words.end(), [](const FieldWord& word) {
        return !word.quoted && std::any_of(word.text.begin(), word.text.end(), isComparison);
    });
    if (sign == words.end()) {
        return {};
    }
    std::vector<FieldWord> compared(words.begin() + 1, sign + 1);
    if (isComparison(sign->text.back()) && sign + 1 != words.end()) {
        compared.push_back(sign[1]);
    }
    return namesOfFormula(compared);
}

// One backslash; the path of a server begins with two.
bool isSwitch(const FieldWord& word) {
    return !word.quoted && word.text.starts_with(u'\\') && !word.text.starts_with(u"\\\\");
}

// Whether a HYPERLINK leads to a file: a word is neither a switch nor the argument of one.
bool leadsToFile(const std::vector<FieldWord>& words) {
    constexpr std::array<std::u16string_view, 3> alone{u"\\m", u"\\n", u"\\h"};
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (!isSwitch(words[i])) {
            return true;
        }
        const bool hasArgument =
            std::find(alone.begin(), alone.end(), foldedName(words[i].text)) == alone.end();
        i += hasArgument && i + 1 < words.size() && !isSwitch(words[i + 1]) ? 1 : 0;
    }
    return false;
}

// The commands with a switch behind which a bookmark stands.
std::u16string_view bookmarkSwitch(std::u16string_view command) {
    if (command == u"hyperlink") {
        return u"\\l";
    }
    if (command == u"xe" || command == u"ta") {
        return u"\\r";
    }
    const bool isTable = command == u"toc" || command == u"index" || command == u"toa";
    return isTable ? std::u16string_view(u"\\b") : std::u16string_view{};
}

// Commands that need no words behind them. A bookmark may bear such a name; the word alone is still
// the command.
bool standsAlone(std::u16string_view command) {
    constexpr std::array<std::u16string_view, 39> commands{
        u"addressblock", u"author",      u"autonum",      u"autonumlgl",   u"autonumout",
        u"bidioutline",  u"comments",    u"createdate",   u"date",         u"edittime",
        u"filename",     u"filesize",    u"formcheckbox", u"formdropdown", u"formtext",
        u"greetingline", u"keywords",    u"lastsavedby",  u"listnum",      u"mergerec",
        u"mergeseq",     u"next",        u"numchars",     u"numpages",     u"numwords",
        u"page",         u"printdate",   u"revnum",       u"savedate",     u"section",
        u"sectionpages", u"seq",         u"subject",      u"template",     u"time",
        u"title",        u"useraddress", u"userinitials", u"username"};
    return std::find(commands.begin(), commands.end(), command) != commands.end();
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
    if (command.starts_with(u'=')) {
        return namesOfFormula(words);
    }
    if (compares(command)) {
        return namesOfComparison(words);
    }
    if (command == u"seq" && words.size() > 2 && !isSwitch(words[2])) {
        named.push_back(words[2]);
    }
    const std::u16string_view wanted = bookmarkSwitch(command);
    const bool elsewhere = command == u"hyperlink" && leadsToFile(words);
    for (std::size_t i = 1; !wanted.empty() && !elsewhere && i + 1 < words.size(); ++i) {
        if (isSwitch(words[i]) && foldedName(words[i].text) == wanted) {
            named.push_back(words[i + 1]);
        }
    }
    if (wanted.empty() && words.size() == 1 && !standsAlone(command)) {
        named.push_back(words.front()); // a bookmark's name alone is a reference to it
    }
    return named;
}

std::optional<FieldWord> listNameWord(const std::vector<FieldWord>& words) {
    const bool names =
        words.size() > 1 && !isSwitch(words[1]) && foldedName(words.front().text) == u"listnum";
    return names ? std::optional(words[1]) : std::nullopt;
}

} // namespace qvnd::word
