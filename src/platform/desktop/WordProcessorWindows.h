#pragma once

#include <QStringList>

namespace qvnd::desktop {

// Whether a word processor holds a document open that a command is about to use.
class WordProcessorWindows {
public:
    virtual ~WordProcessorWindows() = default;

    // True when a document of one of the folders is open (sub-folders are not looked at).
    // A folder that does not exist holds nothing. Never throws.
    virtual bool isOpenIn(const QStringList& folders) = 0;
};

} // namespace qvnd::desktop
