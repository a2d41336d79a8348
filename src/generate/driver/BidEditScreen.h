#pragma once

#include <QString>

namespace qvnd::generate {

// What the plan edit window shows while it generates: the pointer and the preview of a document.
class BidEditScreen {
public:
    virtual ~BidEditScreen() = default;

    virtual void showHourglass() = 0;
    virtual void showNormalPointer() = 0;

    virtual void turnPreviewOn() = 0;
    virtual void turnPreviewOff() = 0;
    virtual void removePreview() = 0;
    virtual void loadPreview(const QString& path) = 0;
    virtual void updatePreview() = 0;
};

} // namespace qvnd::generate
