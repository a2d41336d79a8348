#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>

// What the headings are numbered from. A place outside a table raises error 9 (subscript out of
// range).
namespace qvnd::generate {

// The Chinese number words of 序号表, 一型, places 0 to 20; place 0 stays empty.
class NumberWords {
public:
    static constexpr int last = 20;

    const QString& at(int number) const;
    void set(int number, const QString& word);

private:
    std::array<QString, last + 1> words_;
};

// The fields of 章节设置表 in the order in which the grid keeps them, counted from 1.
enum class ChapterColumn {
    级别 = 1,
    字体,
    字号,
    前缀,
    中缀,
    序号标志,
    后缀,
    位置,
    置页头,
    带该级标题,
};

// The heading settings as texts, rows 0 to 9. Row r is the r-th record in table order, whatever
// its 级别 says; row 0 stays empty.
class ChapterGrid {
public:
    static constexpr int lastRow = 9;
    static constexpr int lastColumn = 10;

    const QString& at(int row, ChapterColumn column) const;
    void set(int row, ChapterColumn column, const QString& text);

private:
    std::array<std::array<QString, lastColumn + 1>, lastRow + 1> cells_;
};

// The running numbers of the outline levels 0 to 30. A number beyond 16 bits raises error 6
// (overflow).
class LevelCounters {
public:
    static constexpr int deepest = 30;

    int at(int level) const;
    void advance(int level);
    // Sets every level deeper than `level` to 0.
    void clearBelow(int level);
    // Sets all levels to 0.
    void clear() { counters_.fill(0); }

private:
    std::array<std::int16_t, deepest + 1> counters_{};
};

} // namespace qvnd::generate
