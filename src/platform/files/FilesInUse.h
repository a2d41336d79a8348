#pragma once

#include <QString>

namespace qvnd::files {

// Which documents a program outside holds open, as far as that does not show in a lock on the file
// itself.
class FilesInUse {
public:
    virtual ~FilesInUse() = default;

    // Whether the document is open. A file that does not exist is not. Never throws.
    virtual bool isDocumentOpen(const QString& path) = 0;
    // Whether any document straight in the folder is open: one look for all of them. Never throws.
    virtual bool isAnyOpenIn(const QString& folder) = 0;
};

} // namespace qvnd::files
