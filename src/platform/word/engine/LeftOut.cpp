#include "platform/word/engine/LeftOut.h"

#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/SideStories.h"
#include "platform/word/engine/SectionProperties.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace qvnd::word {

namespace {

void say(std::vector<std::u16string>& lines, int count, std::u16string_view what,
         std::u16string_view measure, std::u16string_view rest = u"未能带入") {
    if (count > 0) {
        lines.push_back(std::u16string(what) + u" " + digits(count) + u" " +
                        std::u16string(measure) + std::u16string(rest));
    }
}

void sayRenamed(std::vector<std::u16string>& lines,
                const std::vector<ImportChanges::Renamed>& renamed, std::u16string_view what,
                std::u16string_view measure, std::u16string_view why) {
    if (!renamed.empty()) {
        const ImportChanges::Renamed& first = renamed.front();
        say(lines, static_cast<int>(renamed.size()), what, measure,
            u"改了名（如“" + first.before + u"”改为“" + first.behind + u"”），" +
                std::u16string(why));
    }
}

// Whether there is more than marks and spaces: text, a table, a picture.
bool holdsContent(const Story& story) {
    return std::any_of(story.text.begin(), story.text.end(), [](char16_t c) {
        return (c > u' ' && c != u'\u3000') || c == 0x01 || c == 0x07 || c == 0x08;
    });
}

// Whether the last section shows a header or footer, its own or that of a section before it.
bool showsHeaderAtTheEnd(const DocumentContent& source) {
    HeaderSet shown;
    for (const HeaderSet& set : source.headers) {
        for (std::size_t kind = 0; kind < set.size(); ++kind) {
            shown[kind] = set[kind].empty() ? shown[kind] : set[kind];
        }
    }
    return std::any_of(shown.begin(), shown.end(),
                       [](const SlicedText& header) { return holdsContent(*joined(header)); });
}

// Such a page changes how tables and pictures fit; other margins hardly do.
bool turnsOrDividesThePageAtTheEnd(const DocumentContent& source) {
    constexpr std::uint32_t landscape = 2;
    if (source.sections.empty()) {
        return false;
    }
    const ByteView page = source.tables.lists[source.sections.back().properties];
    return sprmValue(page, sprm::SBOrientation, 1) == landscape ||
           sprmValue(page, sprm::SCcolumns, 0) > 0;
}

void sayCounts(std::vector<std::u16string>& lines, const DocumentContent& source,
               const ImportLosses& losses) {
    for (const SidePart& row : sideParts) {
        say(lines, losses.sideStories[static_cast<std::size_t>(row.kind)], factsOf(row.part).name,
            row.measure);
    }
    say(lines, source.unread.textBoxes, u"文本框", u"个");
    say(lines, losses.drawings, u"浮动图形", u"个");
    say(lines, losses.shapePictures, u"图形的图片", u"张", u"未能带入，一个文档最多 4095 张");
    say(lines, losses.objects, u"嵌入对象", u"个", u"没有数据，只带入了其图片");
    say(lines, losses.pictures, u"图片", u"个", u"没有数据，未能带入");
    say(lines, losses.lists, u"列表", u"个", u"的编号未能带入，一个文档最多 2046 个列表");
    say(lines, losses.fonts, u"字体", u"种", u"未能带入，一个文档最多 32767 种字体");
    say(lines, losses.styles, u"样式", u"种", u"未能带入，一个文档最多 4093 种样式");
    say(lines, losses.bookmarks, u"书签", u"个",
        u"未能带入，一个文档最多 16380 个书签，其中 2380 个留给目录");
    say(lines, losses.longFormats, u"格式", u"种",
        u"过于繁复，只带入了一部分，用它们的文字可能与原来不同");
}

struct KindOfUnread {
    UnreadKind kind{};
    const char16_t* line = nullptr;
    bool ofContent = true; // else of the file, which an insertion does not ask for
};

constexpr std::array<KindOfUnread, 16> kindsOfUnread{{
    {UnreadKind::macros, u"宏未能带入"},
    {UnreadKind::toolbars, u"自定义的工具栏或快捷键未能带入"},
    {UnreadKind::embeddedFonts, u"嵌入的字体未能带入，没有安装这些字体的电脑会用别的字体显示"},
    {UnreadKind::mailMerge, u"邮件合并的设置未能带入"},
    {UnreadKind::contentControls, u"内容控件未能带入，其文字不变"},
    {UnreadKind::subdocuments, u"主控文档与子文档的链接未能带入"},
    {UnreadKind::editableRanges, u"允许编辑的区域未能带入，其文字不变"},
    {UnreadKind::moveMarks, u"修订中的移动标记未能带入，其文字不变"},
    {UnreadKind::autoText, u"自动图文集未能带入"},
    {UnreadKind::captions, u"自动插入题注的设置未能带入", false},
    {UnreadKind::routing, u"传送名单未能带入", false},
    {UnreadKind::envelope, u"邮件的信头未能带入", false},
    {UnreadKind::writePassword, u"修改权限密码未能带入", false},
    {UnreadKind::readOnlyAdvice, u"建议以只读方式打开的设置未能带入", false},
    {UnreadKind::signature, u"数字签名未能带入", false},
    {UnreadKind::customXml, u"附带的 XML 数据未能带入，正文不变", false},
}};

enum class Coming : std::uint8_t { inserted, opened };

// What no document of this program holds, wherever it comes from.
void sayForeignKinds(std::vector<std::u16string>& lines, const DocumentContent& source,
                     const ImportLosses& losses, Coming coming) {
    for (const KindOfUnread& row : kindsOfUnread) {
        if (source.unread.kinds.contains(row.kind) && (row.ofContent || coming == Coming::opened)) {
            lines.emplace_back(row.line);
        }
    }
    if (losses.divisions) {
        lines.emplace_back(u"网页分区的边距和边框未能带入");
    }
}

} // namespace

bool namesDivisions(const PropertyLists& lists) {
    for (std::size_t id = 0; id < lists.size(); ++id) {
        const ByteView list = lists[static_cast<PropertyListId>(id)];
        if (sprmValue(list, sprm::PIpgp, 0) != 0 || sprmValue(list, sprm::TIpgp, 0) != 0) {
            return true;
        }
    }
    return false;
}

void count(Missing missing, ImportLosses& losses) {
    losses.pictures += missing == Missing::picture ? 1 : 0;
    losses.objects += missing == Missing::object ? 1 : 0;
    losses.drawings += missing == Missing::drawing ? 1 : 0;
}

std::vector<std::u16string> leftOutOf(const DocumentContent& source, const ImportLosses& losses) {
    std::vector<std::u16string> lines = source.unread.remarks;
    sayCounts(lines, source, losses);
    if (turnsOrDividesThePageAtTheEnd(source)) {
        lines.emplace_back(u"文件最后一节的横向页面或分栏未能带入，按方案的页面排版");
    }
    if (showsHeaderAtTheEnd(source)) {
        lines.emplace_back(source.sections.size() > 1 ? u"文件最后一节的页眉页脚未能带入"
                                                      : u"文件自带的页眉页脚未能带入");
    }
    sayForeignKinds(lines, source, losses, Coming::inserted);
    if (!source.information.variables.empty()) {
        lines.emplace_back(u"文档变量未能带入，显示它们的域保持现有的文字");
    }
    if (readDop(source.settings, dop::protectedForForms) != 0) {
        lines.emplace_back(u"窗体保护未能带入");
    }
    return lines;
}

std::vector<std::u16string> leftOutOf(const ContentsLosses& losses) {
    std::vector<std::u16string> lines;
    say(lines, static_cast<int>(losses.entries), u"目录中的标题", u"个",
        u"没有页码和链接，一个文档最多 16380 个书签");
    say(lines, static_cast<int>(losses.bookmarks), u"隐藏的书签", u"个",
        u"没有保留，目录需要它们的位置");
    return lines;
}

std::vector<std::u16string> changesOf(const ImportChanges& changes) {
    std::vector<std::u16string> lines;
    sayRenamed(lines, changes.bookmarks, u"书签", u"个",
               u"因为别的文档已有同名的书签，引用它们的地方已一并更改");
    sayRenamed(lines, changes.lists, u"列表", u"个",
               u"因为别的文档已有同名的列表，引用它们的地方已一并更改");
    sayRenamed(lines, changes.styles, u"样式", u"种", u"因为方案中已有同名而定义不同的样式");
    say(lines, changes.footnotes, u"脚注", u"个", u"与全文的脚注连续编号，编号可能与原文件不同");
    say(lines, changes.endnotes, u"尾注", u"个", u"与全文的尾注连续编号，编号可能与原文件不同");
    if (changes.pages) {
        lines.emplace_back(u"文件自定的起始页码没有采用，页码接着前面的内容");
    }
    if (changes.pageForm) {
        lines.emplace_back(u"文件自定的页码形式没有采用，页码与前面的内容形式相同");
    }
    return lines;
}

std::vector<std::u16string> leftOutOfOpened(const DocumentContent& source,
                                            const ImportLosses& losses) {
    std::vector<std::u16string> lines = source.unread.remarks;
    sayCounts(lines, source, losses);
    say(lines, source.unread.smartTags, u"智能标记", u"个", u"未能带入，其文字不变");
    sayForeignKinds(lines, source, losses, Coming::opened);
    if (source.unread.information) {
        lines.emplace_back(u"文档属性（标题、作者等）已损坏，未能带入");
    }
    return lines;
}

} // namespace qvnd::word
