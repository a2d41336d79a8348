#pragma once

#include <QString>

#include <array>
#include <cstddef>

namespace qvnd::generate {

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
// its 级别 says; row 0 stays empty. A row outside raises error 9 (subscript out of range).
class ChapterGrid {
public:
    static constexpr int lastRow = 9;
    static constexpr int lastColumn = 10;

    const QString& at(int row, ChapterColumn column) const;
    void set(int row, ChapterColumn column, const QString& text);

private:
    std::array<std::array<QString, lastColumn + 1>, lastRow + 1> cells_;
};

} // namespace qvnd::generate
