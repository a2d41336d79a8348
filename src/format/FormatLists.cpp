#include "format/FormatLists.h"

#include "store/FontSizeToPoints.h"
#include "store/Names.h"

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

struct Leader {
    QStringView entry;
    QStringView word;
};

constexpr Leader leaders[] = {{u"(无)", u"无"},
                              {u"......", u"轻虚线"},
                              {u"------", u"断连线"},
                              {u"———", u"连连线"},
                              {u"．．．．．", u"重虚线"}};

QStringList leaderEntries() {
    QStringList entries;
    for (const Leader& leader : leaders) {
        entries << leader.entry.toString();
    }
    return entries;
}

} // namespace

const QStringList& sizeList() {
    static const QStringList sizes =
        store::namedFontSizes() +
        u"5 5.5 6.5 7.5 8 9 10 10.5 11 12 14 16 18 20 22 24 26 28 36 48 72"_s.split(u' ');
    return sizes;
}

const QStringList& levelList() {
    static const QStringList levels = u"1 2 3 4 5 6 7 8 9"_s.split(u' ');
    return levels;
}

const QStringList& sampleList() {
    static const QStringList samples{u"一"_s, u"1"_s, u"A"_s, u"a"_s};
    return samples;
}

const QStringList& leaderList() {
    static const QStringList entries = leaderEntries();
    return entries;
}

const QStringList& childStyleList() {
    static const QStringList styles{u"无"_s, u"1、"_s, u"1."_s, u"A."_s,
                                    u"1)"_s, u"a)"_s,  u"A)"_s, u"I."_s};
    return styles;
}

std::optional<QString> numberStyleOf(const QString& sample, RowIs row) {
    namespace field = store::field;
    if (sample == u"一") {
        return field::chineseNumber.toString();
    }
    if (sample == u"1") {
        return field::arabicNumber.toString();
    }
    if (sample == u"A") {
        return field::capitalLetter.toString();
    }
    if (sample == u"a") {
        return row == RowIs::there ? field::smallLetter.toString() : u"a型"_s;
    }
    return std::nullopt;
}

std::optional<QString> leaderWordOf(const QString& entry) {
    for (const Leader& leader : leaders) {
        if (leader.entry == entry) {
            return leader.word.toString();
        }
    }
    return std::nullopt;
}

std::optional<QString> leaderEntryOf(const QString& word) {
    for (const Leader& leader : leaders) {
        if (leader.word == word) {
            return leader.entry.toString();
        }
    }
    return std::nullopt;
}

} // namespace qvnd::format
