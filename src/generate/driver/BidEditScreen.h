#pragma once

#include "platform/error/RunTimeError.h"

#include <QString>

#include <functional>

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
    // Tells what loadPreview() would have thrown, where that turns out later: once, and not when
    // something else has been loaded since. An answer of false means that it was not told yet.
    using PreviewFailed = std::function<bool(const RunTimeError&)>;
    virtual void onLatePreviewFailure(const PreviewFailed& /*failed*/) {}
    virtual void updatePreview() = 0;
    // Opens the loaded document in its own application (verb 2).
    virtual void activatePreview() = 0;
};

// The same with the sizes of the preview: the view of the document (OleEdit) in its pane (PicEdit),
// and the scroll bar (VSEdit).
class BidEditPane : public BidEditScreen {
public:
    // Brings the view down to the pane, width and height, when it is larger.
    virtual void shrinkPreview() = 0;
    // Gives the scroll bar ten steps when the view is taller than the pane, else none.
    virtual void setScrollSteps() = 0;
};

} // namespace qvnd::generate
