#pragma once

#include <QRect>
#include <QSize>

namespace qvnd::generate {

// Where the panes of the plan edit window stand, in pixels of the form: the outline, the splitter,
// the preview. The rules are in twips, 15 to a pixel.
class BidEditLayout {
public:
    struct Places {
        QRect TbarBidSet;
        QRect TrvEdit;
        QRect Image1; // the splitter
        QRect PicEdit;
    };

    // A form of 4000 twips or less in width or height is left as it was; any other gives the
    // outline 0.3 of the width again. True when the places changed.
    bool resize(const QSize& form, int toolbarHeight);

    // The splitter on its way, by the pointer's place in the splitter's own coordinates. It follows
    // only between 0.3 and 0.7 of the form's width, in a form wider than 6000 twips and higher than
    // 5000.
    void drag(int x);
    // The end of a drag, under the same sizes: a splitter that was let go outside stands at the
    // limit passed, and the panes meet there.
    void drop();

    Places places() const;

private:
    bool isSplitterFree_ = false; // by the form's size of now, though the places be older

    double width_ = 0; // all in twips
    double height_ = 0;
    double paneHeight_ = 0;
    double splitter_ = 0; // its left edge
    double wanted_ = 0;   // where the pointer wants it
    double treeWidth_ = 0;
    double previewLeft_ = 0;
    double previewWidth_ = 0;
};

} // namespace qvnd::generate
