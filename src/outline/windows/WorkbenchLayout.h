#pragma once

#include <QRect>
#include <QSize>

namespace qvnd::outline {

// Where the panes of the workbench stand, in pixels of the form: above, the open plan and the
// preview with a vertical bar between them; below, behind a horizontal bar, the libraries and the
// two buttons. The rules are in twips, 15 to a pixel.
class WorkbenchLayout {
public:
    struct Places {
        QRect TbarBid;
        QRect TabCurrent;
        QRect lblResize; // the vertical bar
        QRect fraSee;
        QRect imgSpliter; // the horizontal bar
        QRect TabTemplate;
        QRect cmdEdit;
        QRect cmdExit;
    };

    // A form narrower than 5000 twips or lower than 4000 is left as it was; any other puts both
    // bars back to where they stand at first. True when the places changed.
    bool resize(const QSize& form);

    // A bar on its way, by the pointer's place in the bar's own coordinates. It follows only
    // between its limits: 0.4 and 0.7 of the form's width, 0.3 and 0.7 of its height.
    void dragVertical(int x);
    void dragHorizontal(int y);
    // The end of a drag: a bar whose drag ended outside its limits stands at the one passed.
    void drop();

    Places places() const;

private:
    // A bar's place between its limits, in twips.
    struct Bar {
        double place = 0;
        double wanted = 0;
        double low = 0;
        double high = 0;

        void put(double at, double size);
        void drag(double to);
        void drop();
    };

    double width_ = 0; // of the form, in twips
    double height_ = 0;
    Bar left_;  // the left edge of the vertical bar
    Bar upper_; // its height
};

} // namespace qvnd::outline
