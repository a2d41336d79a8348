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
};

} // namespace qvnd::preview
