#include "platform/word/engine/ContentsField.h"

#include "platform/word/docfile/document/StoryParts.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SprmList.h"
#include "platform/word/engine/StoryBuilder.h"

#include <algorithm>
#include <optional>
#include <string>

namespace qvnd::word {

namespace {

std::u16string decimal(int number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

std::u16string instruction(const TableOfContentsOptions& options) {
    std::u16string code = u" TOC";
    if (options.UseHeadingStyles) {
        code += u" \\o \"" + decimal(options.UpperHeadingLevel) + u"-" +
                decimal(options.LowerHeadingLevel) + u"\"";
    }
    if (!options.AddedStyles.empty()) {
        code += u" \\t \"" + options.AddedStyles + u"\"";
    }
    if (!options.IncludePageNumbers) {
        code += u" \\n";
    } else if (!options.RightAlignPageNumbers) {
        code += u" \\p \" \"";
    }
    return code + u" \\h \\z ";
}

class ContentsBuilder {
public:
    ContentsBuilder(PropertyLists& lists, const TableOfContentsOptions& options)
        : options_(options), builder_(story_), mark_(SprmList().byte(sprm::CFSpec, 1).in(lists)) {}

    Story build(const std::vector<ContentsEntry>& entries, std::span<const StyleIndex> styles) {
        builder_.fieldBegin(field::toc, mark_);
        builder_.text(instruction(options_), plain_);
        builder_.fieldSeparator(mark_);
        if (entries.empty()) {
            builder_.text(u"未找到目录项。", plain_);
        }
        for (std::size_t i = 0; i < entries.size(); ++i) {
            entry(entries[i]);
            if (i + 1 < entries.size()) {
                const auto level = static_cast<std::size_t>(entries[i].level - 1);
                builder_.mark(u'\r', {styles[level], PropertyListId::empty}, plain_);
            }
        }
        builder_.fieldEnd(field::hasSeparator, mark_);
        return std::move(story_);
    }

private:
    void entry(const ContentsEntry& entry) {
        if (entry.bookmark.empty()) {
            builder_.text(entry.text, plain_);
            return;
        }
        builder_.fieldBegin(field::hyperlink, mark_);
        builder_.text(u" HYPERLINK \\l \"" + entry.bookmark + u"\" ", plain_);
        builder_.fieldSeparator(mark_);
        builder_.text(entry.text, plain_);
        if (options_.IncludePageNumbers) {
            builder_.text(options_.RightAlignPageNumbers ? u"\t" : u" ", plain_);
            pageNumber(entry.bookmark);
        }
        builder_.fieldEnd(field::hasSeparator | field::nested, mark_);
    }

    void pageNumber(const std::u16string& bookmark) {
        builder_.fieldBegin(field::pageRef, mark_);
        builder_.text(u" PAGEREF " + bookmark + u" \\h ", plain_);
        builder_.fieldSeparator(mark_);
        builder_.text(u"1", plain_); // until the pages are known
        builder_.fieldEnd(field::hasSeparator | field::nested, mark_);
    }

    const TableOfContentsOptions& options_;
    Story story_;
    StoryBuilder builder_;
    PropertyListId mark_;
    PropertyListId plain_ = PropertyListId::empty;
};

// The name behind PAGEREF in a field's code.
std::u16string bookmarkOf(std::u16string_view code) {
    const std::size_t keyword = code.find(u"PAGEREF");
    if (keyword == code.npos) {
        return {};
    }
    const std::size_t start = code.find_first_not_of(u" \"", keyword + 7);
    if (start == code.npos) {
        return {};
    }
    return std::u16string(code.substr(start, code.find_first_of(u" \"", start) - start));
}

bool isOneLine(std::u16string_view text) {
    return std::none_of(text.begin(), text.end(), endsParagraph);
}

} // namespace

Story contentsField(PropertyLists& lists, const std::vector<ContentsEntry>& entries,
                    const TableOfContentsOptions& options, std::span<const StyleIndex> styles) {
    return ContentsBuilder(lists, options).build(entries, styles);
}

std::vector<FieldSpan> contentsFields(const WorkingStory& story) {
    std::vector<FieldSpan> found;
    int depth = 0;
    bool isContents = false;
    Cp start = 0;
    story.forEachFieldMark([&](Cp at, const FieldMark& mark) {
        if (mark.character == 0x13) {
            if (depth++ == 0) {
                isContents = mark.data == field::toc;
                start = at;
            }
        } else if (mark.character == 0x15 && depth > 0 && --depth == 0 && isContents) {
            found.push_back({start, at + 1});
        }
    });
    return found;
}

StoryEdits pageNumberEdits(const Story& contents, const PageOfBookmark& pageOf) {
    StoryEdits numbers;
    const std::u16string_view text = contents.text;
    // Behind the begin mark and the separator of the innermost field; 0 when it is no PAGEREF.
    Cp code = 0;
    Cp number = 0;
    for (const FieldMark& mark : contents.fields) {
        if (mark.character == 0x13) {
            code = mark.data == field::pageRef ? mark.at + 1 : 0;
            number = 0;
        } else if (mark.character == 0x14) {
            number = code != 0 ? mark.at + 1 : 0;
        } else {
            if (number != 0 && number < mark.at) {
                const std::u16string_view shown = text.substr(number, mark.at - number);
                const auto page = pageOf(bookmarkOf(text.substr(code, number - 1 - code)));
                if (page && *page != shown && isOneLine(shown)) {
                    numbers.replace(number, mark.at - number, *page);
                }
            }
            code = number = 0;
        }
    }
    return numbers;
}

} // namespace qvnd::word
