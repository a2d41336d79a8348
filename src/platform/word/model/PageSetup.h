#pragma once

namespace qvnd::word {

// Applies to every section of the document. Lengths in points.
class PageSetup {
public:
    virtual ~PageSetup() = default;
    virtual void setTopMargin(float points) = 0;
    virtual void setBottomMargin(float points) = 0;
    virtual void setLeftMargin(float points) = 0;
    virtual void setRightMargin(float points) = 0;
    virtual void setGutter(float points) = 0;
    virtual void setGutterOnTop(bool onTop) = 0;
    virtual void setHeaderDistance(float points) = 0;
    virtual void setFooterDistance(float points) = 0;
};

} // namespace qvnd::word
