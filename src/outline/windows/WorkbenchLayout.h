#pragma once

#include <QRect>
#include <QSize>

#include <optional>

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

    // Where the bars stand in a form of a given size.
    struct Bars {
        QSize form;            // in pixels
        double vertical = 0;   // the left edge of the vertical bar, in twips
        double horizontal = 0; // the height of the vertical bar, in twips
    };

    // The smallest form, in pixels, that holds panes of these sizes and the toolbar wherever its
    // bars stand.
    static QSize leastSize(int toolbarWidth, const QSize& plan, const QSize& preview,
                           const QSize& libraries);

    // A form narrower than 5000 twips or lower than 4000 is left as it was; any other puts both
    // bars back to where they stand at first. True when the places changed.
    bool resize(const QSize& form);

    Bars bars() const;
    // A form of that size has its bars there from now on, until one of them is dragged. Bars
    // outside of their limits are left where they are.
    void restore(const Bars& bars);

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

        // `low` and `high` are set from the form's size, the place from `at`.
        void put(double at, double lowest, double size);
        bool allows(double at) const { return at >= low && at <= high; }
        void drag(double to);
        void drop();
    };

    void putBars();

    QSize form_;       // in pixels
    double width_ = 0; // of the form, in twips
    double height_ = 0;
    std::optional<Bars> restored_;
    Bar left_;  // the left edge of the vertical bar
    Bar upper_; // its height
};

} // namespace qvnd::outline
