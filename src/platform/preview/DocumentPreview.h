#pragma once

#include "platform/error/RunTimeError.h"

#include <QString>

#include <functional>

namespace qvnd::preview {

// The pane in which a window shows a document.
class DocumentPreview {
public:
    virtual ~DocumentPreview() = default;

    // Makes the pane visible with the .doc in it; an absolute path, native separators. Throws
    // RunTimeError when the file cannot be shown: error::documentNotShown for a file that is there
    // and is no document that the pane can show, else the number of the file's own error.
    virtual void show(const QString& path) = 0;
    // A pane that goes on reading behind show() tells here what show() would have thrown, once and
    // never from within a call. Where the answer is false it was not told, and the pane asks again
    // until it was. Forgotten at the next show() and hide().
    using Failed = std::function<bool(const RunTimeError&)>;
    virtual void onLateFailure(const Failed& /*failed*/) {}
    // Closes the document and hides the pane.
    virtual void hide() = 0;
    // False while the file is being written again and again: the pages seen stay until it is true
    // again. A pane that does not follow its file by itself need not care.
    virtual void setFollowing(bool /*follows*/) {}
};

} // namespace qvnd::preview
