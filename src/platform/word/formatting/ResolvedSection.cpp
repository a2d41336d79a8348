#include "platform/word/formatting/ResolvedSection.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

constexpr int leastText = 720;
constexpr std::size_t mostColumns = 44;
constexpr std::uint32_t headingLevels = 9;

void keepRoom(SectionPaper& paper) {
    paper.width = std::max(paper.width, 2 * leastText);
    paper.height = std::max(paper.height, 2 * leastText);
    if (paper.textWidth() < leastText) {
        paper.left = paper.right = (paper.width - leastText) / 2;
    }
    if (paper.textHeight() < leastText) {
        paper.top = paper.bottom = (paper.height - leastText) / 2;
    }
}

// Widths and gaps of single columns, where they are not all alike.
struct UnevenColumns {
    std::array<int, mostColumns> widths{};
    std::array<int, mostColumns> gaps{};
    bool given = false;

    // ColumnOperand: the column's number and a length.
    void take(const SprmView& entry, std::array<int, mostColumns>& lengths) {
        if (entry.operand.size() >= 3 && entry.operand[0] < mostColumns) {
            lengths.at(entry.operand[0]) = entry.operand[1] | (entry.operand[2] << 8);
            given = true;
        }
    }
};

// SPgbPropOperand of [MS-DOC].
void setPages(PageBorders& borders, std::uint32_t properties) {
    using Pages = PageBorders::Pages;
    constexpr std::uint32_t appliesTo = 0x07;
    constexpr std::uint32_t offsetFrom = 0xE0;
    const std::uint32_t pages = properties & appliesTo;
    borders.pages = pages == 1 ? Pages::first : pages == 2 ? Pages::allButFirst : Pages::all;
    borders.fromEdge = (properties & offsetFrom) != 0;
}

// True for a property of the borders.
bool takeBorder(PageBorders& borders, const SprmView& entry) {
    switch (entry.opcode) {
    case sprm::SBrcTop80:
    case sprm::SBrcTop:
        borders.top = borderOf(entry);
        return true;
    case sprm::SBrcLeft80:
    case sprm::SBrcLeft:
        borders.left = borderOf(entry);
        return true;
    case sprm::SBrcBottom80:
    case sprm::SBrcBottom:
        borders.bottom = borderOf(entry);
        return true;
    case sprm::SBrcRight80:
    case sprm::SBrcRight:
        borders.right = borderOf(entry);
        return true;
    case sprm::SPgbProp:
        setPages(borders, numberOf(entry));
        return true;
    default:
        return false;
    }
}

std::vector<ResolvedSection::Column> columnsOf(const SectionPaper& paper, int count, int gap,
                                               const UnevenColumns& uneven, bool even) {
    std::vector<ResolvedSection::Column> columns;
    const int width = std::max(1, (paper.textWidth() - (count - 1) * gap) / count);
    int left = 0;
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const bool own = !even && uneven.given && uneven.widths.at(at) > 0;
        columns.push_back({left, own ? uneven.widths.at(at) : width});
        left += columns.back().width + (own ? uneven.gaps.at(at) : gap);
    }
    return columns;
}

} // namespace

ResolvedSection resolvedSectionOf(ByteView properties, bool gutterOnTop) {
    ResolvedSection format;
    format.paper = sectionPaper(properties, gutterOnTop);
    keepRoom(format.paper);
    int count = 1;
    int gap = leastText;
    bool even = true;
    UnevenColumns uneven;
    for (const SprmView& entry : parseSprms(properties).sprms) {
        if (takeBorder(format.borders, entry)) {
            continue;
        }
        const std::uint32_t value = numberOf(entry);
        switch (entry.opcode) {
        case sprm::SBkc:
            format.start = static_cast<ResolvedSection::Start>(std::min<std::uint32_t>(value, 4));
            break;
        case sprm::SCcolumns:
            count = static_cast<int>(std::min<std::uint32_t>(value + 1, mostColumns));
            break;
        case sprm::SDxaColumns:
            gap = std::clamp<int>(signedNumberOf(entry), 0, 31680);
            break;
        case sprm::SFEvenlySpaced:
            even = value != 0;
            break;
        case sprm::SDxaColWidth:
            uneven.take(entry, uneven.widths);
            break;
        case sprm::SDxaColSpacing:
            uneven.take(entry, uneven.gaps);
            break;
        case sprm::SLBetween:
            format.lineBetweenColumns = value != 0;
            break;
        case sprm::SDyaHdrTop:
            format.headerTop = static_cast<int>(value);
            break;
        case sprm::SDyaHdrBottom:
            format.footerBottom = static_cast<int>(value);
            break;
        case sprm::SDyaTop:
            format.topIsFixed = signedNumberOf(entry) < 0;
            break;
        case sprm::SDyaBottom:
            format.bottomIsFixed = signedNumberOf(entry) < 0;
            break;
        case sprm::SFTitlePage:
            format.hasTitlePage = value != 0;
            break;
        case sprm::SFPgnRestart:
            format.restartsNumbers = value != 0;
            break;
        case sprm::SPgnStart97:
        case sprm::SPgnStart:
            format.firstNumber = static_cast<int>(value & 0x7FFFFFFF);
            break;
        case sprm::SNfcPgn:
            format.numberForm = value;
            break;
        case sprm::SiHeadingPgn:
            format.chapterLevel = value <= headingLevels ? value : 0;
            break;
        case sprm::ScnsPgn:
            format.chapterSign = value <= 4 ? static_cast<ResolvedSection::ChapterSign>(value)
                                            : ResolvedSection::ChapterSign::hyphen;
            break;
        case sprm::SClm:
            format.grid = static_cast<GridKind>(std::min<std::uint32_t>(value, 3));
            break;
        case sprm::SDyaLinePitch:
            format.linePitch = std::clamp<int>(signedNumberOf(entry), 0, 31680);
            break;
        case sprm::SDxtCharSpace:
            format.characterSpacing = static_cast<std::int32_t>(value);
            break;
        case sprm::SVjc:
            format.textPlace =
                static_cast<ResolvedSection::TextPlace>(std::min<std::uint32_t>(value, 3));
            break;
        default:
            break;
        }
    }
    format.columns = columnsOf(format.paper, count, gap, uneven, even);
    return format;
}

} // namespace qvnd::word
