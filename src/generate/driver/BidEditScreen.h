#pragma once

#include <QString>

namespace qvnd::generate {

// What the plan edit window shows: the pointer and the preview of a document. Whatever concerns the
// preview may throw RunTimeError.
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
    // Opens the loaded document in its own application (verb 2).
    virtual void activatePreview() = 0;
};

} // namespace qvnd::generate
