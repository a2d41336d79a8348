#pragma once

#include <QString>

namespace qvnd::preview {

// The pane in which a window shows a document.
class DocumentPreview {
public:
    virtual ~DocumentPreview() = default;

    // Makes the pane visible with the .doc in it; an absolute path, native separators. Throws
    // RunTimeError when the file cannot be shown.
    virtual void show(const QString& path) = 0;
    // Closes the document and hides the pane.
    virtual void hide() = 0;
    // False while the file is being written again and again: the pages seen stay until it is true
    // again. A pane that does not follow its file by itself need not care.
    virtual void setFollowing(bool /*follows*/) {}
};

} // namespace qvnd::preview
