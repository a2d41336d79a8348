#pragma once

namespace qvnd::word {

enum class ViewType { normal = 1, outline = 2, page = 3, master = 5 };
enum class SeekView { mainDocument = 0, currentPageHeader = 9, currentPageFooter = 10 };

class View {
public:
    virtual ~View() = default;
    virtual int SplitSpecial() = 0;
    virtual ViewType Type() = 0;
    virtual void setType(ViewType type) = 0;
    // The Selection follows the view into that story.
    virtual void setSeekView(word::SeekView story) = 0;
};

class Pane {
public:
    virtual ~Pane() = default;
    virtual word::View& View() = 0;
    virtual void Close() = 0;
};

class Window {
public:
    virtual ~Window() = default;
    virtual word::View& View() = 0;
    virtual Pane& ActivePane() = 0;
    // Counted from 1; 5941 when there is no such pane.
    virtual Pane& Panes(int index) = 0;
};

} // namespace qvnd::word
