#include "store/FormatDefaults.h"

#include "store/Names.h"

namespace qvnd::store {

namespace {

constexpr QStringView usualFont = u"仿宋_GB2312";
constexpr QStringView usualSize = u"小四";

using Pair = std::pair<QStringView, QStringView>;

SeedRow row(std::initializer_list<Pair> values) {
    SeedRow result;
    for (const auto& [field, value] : values) {
        result.emplace_back(field.toString(), value.toString());
    }
    return result;
}

// A heading style can give no number beyond the last of these.
constexpr QStringView chineseNumbers[] = {
    u"一",   u"二",   u"三",   u"四",   u"五",   u"六",   u"七",   u"八",   u"九",   u"十",
    u"十一", u"十二", u"十三", u"十四", u"十五", u"十六", u"十七", u"十八", u"十九", u"二十",
};

std::vector<SeedRow> numberingRows() {
    std::vector<SeedRow> rows;
    int number = 0;
    for (const QStringView chinese : chineseNumbers) {
        const QString capital(QChar(u'A' + number));
        const QString small(QChar(u'a' + number));
        const QString digits = QString::number(++number);
        rows.push_back(row({{field::chineseNumber, chinese},
                            {field::arabicNumber, digits},
                            {field::capitalLetter, capital},
                            {field::smallLetter, small},
                            {field::ordinal, digits}}));
    }
    return rows;
}

std::vector<SeedRow> coverRows(const QDate& today) {
    const QString day = today.toString(QStringLiteral("yyyy-M-d"));
    return {row({{field::projectName, u"工程名称"},
                 {field::officeName, u"单位名称"},
                 {field::pictureWidth, u"10"},
                 {field::pictureHeight, u"10"},
                 {field::projectFont, usualFont},
                 {field::officeFont, usualFont},
                 {field::dateFont, usualFont},
                 {field::projectSize, usualSize},
                 {field::officeSize, usualSize},
                 {field::dateSize, usualSize},
                 {field::date, day}})};
}

SeedRow chapterRow(QStringView level, QStringView before, QStringView sample, QStringView behind,
                   QStringView style, QStringView startsPage) {
    return row({{field::level, level},
                {field::font, usualFont},
                {field::size, usualSize},
                {field::before, before},
                {field::sample, sample},
                {field::numberStyle, style},
                {field::behind, behind},
                {field::position, u"中"},
                {field::startsPage, startsPage},
                {field::withTitle, yes}});
}

std::vector<SeedRow> chapterRows() {
    return {
        chapterRow(u"1", u"第", u"一", u"章", u"一型", yes),
        chapterRow(u"2", u"第", u"一", u"节", u"一型", no),
        chapterRow(u"3", u"第", u"一", u"小节", u"一型", no),
        chapterRow(u"4", u"", u"一", u"", u"一型", no),
        chapterRow(u"5", u"(", u"一", u")", u"一型", no),
        chapterRow(u"6", u"[", u"一", u"]", u"一型", no),
        chapterRow(u"7", u"", u"1", u"", u"I型", no),
        chapterRow(u"8", u"(", u"1", u")", u"I型", no),
        // The sample does not fit the style; installations have it so, and it stays.
        chapterRow(u"9", u"[", u"一", u"]", u"I型", no),
    };
}

std::vector<SeedRow> headerFooterRows() {
    return {row({{field::withHeader, yes},
                 {field::headerText, u"页眉"},
                 {field::headerPosition, u"中"},
                 {field::headerFont, usualFont},
                 {field::headerSize, usualSize},
                 {field::withFooter, yes},
                 {field::footerText, u"页脚"},
                 {field::footerPosition, u"中"},
                 {field::footerFont, usualFont},
                 {field::footerSize, usualSize},
                 {field::leader, u"轻虚线"},
                 {field::levelsShown, u"3"},
                 {field::withPageNumbers, yes}})};
}

std::vector<SeedRow> pageSetupRows() {
    return {row({{field::bodyFont, usualFont},
                 {field::bodySize, usualSize},
                 {field::marginTop, u"1.5"},
                 {field::marginBottom, u"1.5"},
                 {field::marginLeft, u"1.5"},
                 {field::marginRight, u"1.5"},
                 {field::gutter, u"0"},
                 {field::gutterSide, u"边"},
                 {field::headerDistance, u"1"},
                 {field::footerDistance, u"1"}})};
}

} // namespace

std::vector<SeedRow> formatDefaults(QStringView name, const QDate& today) {
    if (name == table::numbering) {
        return numberingRows();
    }
    if (name == table::cover) {
        return coverRows(today);
    }
    if (name == table::chapters) {
        return chapterRows();
    }
    if (name == table::headerFooter) {
        return headerFooterRows();
    }
    return name == table::pageSetup ? pageSetupRows() : std::vector<SeedRow>{};
}

} // namespace qvnd::store
