#include "platform/word/engine/FieldCodes.h"

#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace qvnd::word {

namespace {

bool isQuote(char16_t c) { return c == u'"' || c == u'\u201C' || c == u'\u201D'; }
bool isSpace(char16_t c) { return c == u' ' || c == u'\t' || c == u'\u3000' || c == 0x0D; }

// Collects the words of a text that it is handed in stretches; no word reaches over two of them,
// but what stands in quotation marks may.
class WordSplitter {
public:
    WordSplitter(std::u16string_view text, std::vector<FieldWord>& words)
        : text_(text), words_(words) {}

    void take(Cp begin, Cp end) {
        Cp start = begin; // of the word
        for (Cp at = begin; at < end; ++at) {
            const char16_t c = text_[at];
            const bool parts = isQuote(c) || (!quoted_ && isSpace(c)) || (c < u' ' && c != u'\t');
            if (parts) {
                endWord(start, at);
                start = at + 1;
                quoted_ = quoted_ != isQuote(c);
            }
        }
        endWord(start, end);
    }

private:
    void endWord(Cp start, Cp end) {
        if (start < end) {
            words_.push_back({start, end - start, quoted_ ? Cp{1} : Cp{0}});
        }
    }

    std::u16string_view text_;
    std::vector<FieldWord>& words_;
    bool quoted_ = false;
};

constexpr std::uint32_t noMark = 0xFFFFFFFF;

// By mark: of one that begins a field the mark that ends it, of all others nothing.
std::vector<std::uint32_t> endsOfFields(const std::vector<FieldMark>& marks) {
    std::vector<std::uint32_t> ends(marks.size(), noMark);
    std::uint32_t open = noMark; // the innermost; until it ends, its entry is the one around it
    for (std::uint32_t i = 0; i < marks.size(); ++i) {
        if (marks[i].character == fieldBegin) {
            ends[i] = open;
            open = i;
        } else if (marks[i].character == fieldEnd && open != noMark) {
            const std::uint32_t around = ends[open];
            ends[open] = i;
            open = around;
        }
    }
    while (open != noMark) {
        open = std::exchange(ends[open], noMark);
    }
    return ends;
}

// Visits the stretches of the code of the field that begins at that mark, without the fields in it.
// Answers the mark behind the code.
template <class Visit>
std::uint32_t forEachStretch(const std::vector<FieldMark>& marks,
                             const std::vector<std::uint32_t>& ends, std::uint32_t begin,
                             Visit visit) {
    Cp from = marks[begin].at + 1;
    std::uint32_t next = begin + 1;
    for (; marks[next].character == fieldBegin; next = ends[next] + 1) {
        visit(from, marks[next].at);
        from = marks[ends[next]].at + 1;
    }
    visit(from, marks[next].at);
    return next;
}

FieldPlace placeOf(const std::vector<FieldMark>& marks, std::uint32_t begin,
                   std::uint32_t behindCode, std::uint32_t end) {
    FieldPlace place{marks[begin].at, std::nullopt, marks[end].at, marks[begin].data};
    if (behindCode != end) {
        place.separator = marks[behindCode].at;
    }
    return place;
}

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

// Visits the parts of a word that consist of a name's characters alone.
void forEachNameIn(const FieldWord& word, const Story& story, const FieldWordVisitor& visit) {
    const std::u16string_view text = word.in(story);
    for (std::size_t at = 0; word.quoted == 0 && at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isOfName(text[end])) {
            ++end;
        }
        const bool isFunction = end < text.size() && text[end] == u'(';
        if (end > at && !isFunction && !isCell(text.substr(at, end - at))) {
            visit({word.at + static_cast<Cp>(at), static_cast<Cp>(end - at)});
        }
        at = std::max(end, at + 1);
    }
}

using FieldWords = std::span<const FieldWord>;

// Visits the names in the words up to the first switch.
void forEachNameOfFormula(FieldWords words, const Story& story, const FieldWordVisitor& visit) {
    for (const FieldWord& word : words) {
        if (word.in(story).starts_with(u'\\')) {
            return;
        }
        forEachNameIn(word, story, visit);
    }
}

// Visits the names in front of the first sign of a comparison, and in the word behind it.
void forEachNameOfComparison(const FieldCode& code, const FieldWordVisitor& visit) {
    const FieldWords arguments = FieldWords(code.words).subspan(1);
    const auto sign = std::find_if(arguments.begin(), arguments.end(), [&](const FieldWord& word) {
        const std::u16string_view text = word.in(code.story);
        return word.quoted == 0 && std::any_of(text.begin(), text.end(), isComparison);
    });
    if (sign == arguments.end()) {
        return;
    }
    auto compared = static_cast<std::size_t>(sign - arguments.begin()) + 1;
    compared += isComparison(sign->in(code.story).back()) && compared < arguments.size() ? 1 : 0;
    forEachNameOfFormula(arguments.first(compared), code.story, visit);
}

// One backslash; the path of a server begins with two.
bool isSwitch(const FieldCode& code, std::size_t index) {
    const std::u16string_view text = code.word(index);
    return code.words[index].quoted == 0 && text.starts_with(u'\\') && !text.starts_with(u"\\\\");
}

// Whether a HYPERLINK leads to a file: a word is neither a switch nor the argument of one.
bool leadsToFile(const FieldCode& code) {
    constexpr std::array<std::u16string_view, 3> alone{u"\\m", u"\\n", u"\\h"};
    const std::size_t count = code.words.size();
    for (std::size_t i = 1; i < count; ++i) {
        if (!isSwitch(code, i)) {
            return true;
        }
        const bool hasArgument =
            std::find(alone.begin(), alone.end(), foldedName(code.word(i))) == alone.end();
        i += hasArgument && i + 1 < count && !isSwitch(code, i + 1) ? 1 : 0;
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

void forEachField(const Story& story, const std::function<void(const FieldPlace&)>& visit) {
    const std::vector<FieldMark>& marks = story.fields;
    const std::vector<std::uint32_t> ends = endsOfFields(marks);
    for (std::uint32_t i = 0; i < marks.size(); ++i) {
        if (ends[i] != noMark) {
            const std::uint32_t behindCode = forEachStretch(marks, ends, i, [](Cp, Cp) {});
            visit(placeOf(marks, i, behindCode, ends[i]));
        }
    }
}

void forEachFieldCode(const Story& story, const FieldCodeVisitor& visit) {
    const std::vector<FieldMark>& marks = story.fields;
    const std::vector<std::uint32_t> ends = endsOfFields(marks);
    FieldCode code{story, {}};
    for (std::uint32_t i = 0; i < marks.size(); ++i) {
        if (ends[i] != noMark) {
            code.words.clear();
            WordSplitter splitter(story.text, code.words);
            const std::uint32_t behindCode = forEachStretch(
                marks, ends, i, [&](Cp begin, Cp end) { splitter.take(begin, end); });
            visit(placeOf(marks, i, behindCode, ends[i]), code);
        }
    }
}

void forEachBookmarkWord(const FieldCode& code, const FieldWordVisitor& visit) {
    const std::vector<FieldWord>& words = code.words;
    if (words.empty()) {
        return;
    }
    const std::u16string command = foldedName(code.word(0));
    if (namesBookmarkFirst(command)) {
        if (words.size() > 1) {
            visit(words[1]);
        }
        return;
    }
    if (command.starts_with(u'=')) {
        forEachNameOfFormula(words, code.story, visit);
        return;
    }
    if (compares(command)) {
        forEachNameOfComparison(code, visit);
        return;
    }
    if (command == u"seq" && words.size() > 2 && !isSwitch(code, 2)) {
        visit(words[2]);
    }
    const std::u16string_view wanted = bookmarkSwitch(command);
    const bool elsewhere = command == u"hyperlink" && leadsToFile(code);
    for (std::size_t i = 1; !wanted.empty() && !elsewhere && i + 1 < words.size(); ++i) {
        if (isSwitch(code, i) && foldedName(code.word(i)) == wanted) {
            visit(words[i + 1]);
        }
    }
    if (wanted.empty() && words.size() == 1 && !standsAlone(command)) {
        visit(words.front()); // a bookmark's name alone is a reference to it
    }
}

std::optional<FieldWord> listNameWord(const FieldCode& code) {
    const bool names =
        code.words.size() > 1 && !isSwitch(code, 1) && foldedName(code.word(0)) == u"listnum";
    return names ? std::optional(code.words[1]) : std::nullopt;
}

} // namespace qvnd::word
