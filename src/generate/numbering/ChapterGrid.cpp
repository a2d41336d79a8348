#include "generate/numbering/ChapterGrid.h"

#include "platform/error/RunTimeError.h"

namespace qvnd::generate {

namespace {

std::size_t subscript(int row) {
    if (row < 0 || row > ChapterGrid::lastRow)
        throw RunTimeError(error::subscriptOutOfRange, u"下标越界");
    return static_cast<std::size_t>(row);
}

} // namespace

const QString& ChapterGrid::at(int row, ChapterColumn column) const {
    return cells_[subscript(row)][static_cast<std::size_t>(column)];
}

void ChapterGrid::set(int row, ChapterColumn column, const QString& text) {
    cells_[subscript(row)][static_cast<std::size_t>(column)] = text;
}

} // namespace qvnd::generate
