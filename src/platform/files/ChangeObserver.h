#pragma once

#include <QString>

namespace qvnd::files {

// Told of each change of files and folders before it is made, so that what goes can be kept. Paths
// are as spelt on disk. What it throws refuses the change, with nothing done.
class ChangeObserver {
public:
    virtual ~ChangeObserver() = default;

    // The name gets other content, its first, or none. The bytes that it had are not written to.
    virtual void beforeReplacing(const QString& file) = 0;
    // The bytes themselves are about to be changed.
    virtual void beforeEditing(const QString& file) = 0;
    virtual void beforeMakingFolder(const QString& folder) = 0;
    // With all that is in it. True when the observer has moved the folder away, which then is gone.
    virtual bool takeFolder(const QString& folder) = 0;
    // A folder gets another name, which is free.
    virtual void beforeMovingFolder(const QString& from, const QString& to) = 0;
};

} // namespace qvnd::files
