#pragma once

#include <vector>

namespace qvnd::word {

// The paper of a section, its room for text. Lengths in twips.
struct PageShape {
    int textWidth = 8306;
    int textHeight = 13958;
    int columns = 1;
};

// Fills sheets from top to bottom, counted from 0.
class Pages {
public:
    void begin(const PageShape& shape);
    // Goes on at the top of a new sheet, unless nothing stands on the present one yet.
    void breakPage();
    // Starts a new sheet even when the present one is empty.
    void newSheet();

    // Puts lines one under the other, keeping two together at either end of a sheet; answers the
    // sheet of the first line. `before` is dropped at the top of a sheet; `keptBelow` is the room
    // that must be left under the last line for what may not be parted from it.
    int addLines(const std::vector<int>& heights, int before, int after, int keptBelow);
    // Puts a box that is not split unless it is higher than a sheet.
    int addBox(int height);

    int sheet() const { return sheet_; }
    const PageShape& shape() const { return shape_; }

private:
    int room() const { return shape_.textHeight - used_; }
    void nextColumn();

    PageShape shape_;
    int sheet_ = 0;
    int column_ = 0;
    int used_ = 0;
    bool empty_ = true;
};

} // namespace qvnd::word
