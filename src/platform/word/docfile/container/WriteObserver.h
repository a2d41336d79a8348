#pragma once

#include <filesystem>

namespace qvnd::word {

// Told before a file on the real file system is changed, so that its content can be kept. What it
// throws refuses the change.
class WriteObserver {
public:
    WriteObserver() = default;
    WriteObserver(const WriteObserver&) = delete;
    WriteObserver& operator=(const WriteObserver&) = delete;
    virtual ~WriteObserver() = default;

    // The name gets other content or its first; the bytes that it had are not written to.
    virtual void beforeReplacing(const std::filesystem::path& file) = 0;
    // The bytes themselves are about to be changed.
    virtual void beforeEditing(const std::filesystem::path& file) = 0;
};

// Has the observer told of every change by documents of this process, until null takes it away:
// documents are written deep below the commands that ask for it.
void observeWrites(WriteObserver* observer);

} // namespace qvnd::word
