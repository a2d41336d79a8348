#include "platform/drawing/KnownFaces.h"

#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <array>

namespace qvnd::drawing {

namespace {

struct Row {
    std::u16string_view name; // folded
    double ascent;
    double descent;
    double leading; // external leading; East Asian faces have theirs by the rule
    bool eastAsian = false;
    bool halfWidthLatin = false;
};

// Ascent, descent and line gap of the horizontal header of each face.
constexpr std::array<Row, 52> rows{{
    {u"宋体", 0.859, 0.141, 0, true, true},
    {u"simsun", 0.859, 0.141, 0, true, true},
    {u"新宋体", 0.859, 0.141, 0, true, true},
    {u"nsimsun", 0.859, 0.141, 0, true, true},
    {u"宋体-方正超大字符集", 0.859, 0.141, 0, true, true},
    {u"黑体", 0.859, 0.141, 0, true, true},
    {u"simhei", 0.859, 0.141, 0, true, true},
    {u"仿宋", 0.859, 0.141, 0, true, true},
    {u"fangsong", 0.859, 0.141, 0, true, true},
    {u"仿宋_gb2312", 0.859, 0.141, 0, true, true},
    {u"fangsong_gb2312", 0.859, 0.141, 0, true, true},
    {u"楷体", 0.859, 0.141, 0, true, true},
    {u"kaiti", 0.859, 0.141, 0, true, true},
    {u"楷体_gb2312", 0.859, 0.141, 0, true, true},
    {u"kaiti_gb2312", 0.859, 0.141, 0, true, true},
    {u"隶书", 0.859, 0.141, 0, true, true},
    {u"lisu", 0.859, 0.141, 0, true, true},
    {u"幼圆", 0.859, 0.141, 0, true, true},
    {u"youyuan", 0.859, 0.141, 0, true, true},
    {u"方正小标宋简体", 0.859, 0.141, 0, true, true},
    {u"方正小标宋_gbk", 0.859, 0.141, 0, true, true},
    {u"微软雅黑", 1.058, 0.262, 0, true, false},
    {u"microsoft yahei", 1.058, 0.262, 0, true, false},
    {u"mingliu", 0.8, 0.2, 0, true, true},
    {u"pmingliu", 0.8, 0.2, 0, true, false},
    {u"细明体", 0.8, 0.2, 0, true, true},
    {u"新细明体", 0.8, 0.2, 0, true, false},
    {u"ms mincho", 0.859, 0.141, 0, true, true},
    {u"ms gothic", 0.859, 0.141, 0, true, true},
    {u"batang", 0.859, 0.141, 0, true, true},
    {u"times new roman", 0.891, 0.216, 0.042, false, false},
    {u"arial", 0.905, 0.212, 0.033, false, false},
    {u"arial black", 1.1, 0.31, 0, false, false},
    {u"arial narrow", 0.936, 0.212, 0, false, false},
    {u"arial unicode ms", 1.069, 0.271, 0, false, false},
    {u"helvetica", 0.905, 0.212, 0.033, false, false},
    {u"courier new", 0.833, 0.3, 0, false, false},
    {u"courier", 0.833, 0.3, 0, false, false},
    {u"calibri", 0.75, 0.25, 0.221, false, false},
    {u"cambria", 0.95, 0.222, 0, false, false},
    {u"candara", 0.742, 0.245, 0.233, false, false},
    {u"consolas", 0.743, 0.257, 0.17, false, false},
    {u"century", 0.985, 0.216, 0, false, false},
    {u"comic sans ms", 1.102, 0.291, 0, false, false},
    {u"garamond", 0.862, 0.263, 0, false, false},
    {u"georgia", 0.917, 0.219, 0, false, false},
    {u"tahoma", 1.0, 0.207, 0, false, false},
    {u"trebuchet ms", 0.939, 0.222, 0, false, false},
    {u"verdana", 1.005, 0.21, 0, false, false},
    {u"symbol", 1.005, 0.22, 0, false, false},
    {u"wingdings", 0.898, 0.211, 0, false, false},
    {u"bookman old style", 0.92, 0.26, 0, false, false},
}};

constexpr double eastAsianLine = 1.3; // of ascent and descent

bool isChineseName(std::u16string_view name) {
    return std::any_of(name.begin(), name.end(),
                       [](char16_t c) { return c >= 0x4E00 && c <= 0x9FFF; });
}

} // namespace

layout::FaceHeights eastAsianHeights(double ascent, double descent) {
    const double added = (eastAsianLine - 1) * (ascent + descent) / 2;
    return {ascent + added, descent + added, 0};
}

std::optional<KnownFace> knownFace(std::u16string_view name) {
    std::u16string folded = word::foldedName(name);
    if (folded.starts_with(u'@')) { // a face turned for vertical text
        folded.erase(0, 1);
    }
    const auto* row = std::find_if(rows.begin(), rows.end(),
                                   [&](const Row& known) { return known.name == folded; });
    if (row == rows.end() && isChineseName(folded)) {
        row = rows.begin();
    }
    if (row == rows.end()) {
        return std::nullopt;
    }
    KnownFace face;
    face.eastAsian = row->eastAsian;
    face.halfWidthLatin = row->halfWidthLatin;
    face.heights = row->eastAsian ? eastAsianHeights(row->ascent, row->descent)
                                  : layout::FaceHeights{row->ascent, row->descent, row->leading};
    return face;
}

} // namespace qvnd::drawing
