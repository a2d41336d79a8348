#pragma once

#include "platform/jet/legacy/LegacyDatabase.h"

#include <chrono>

namespace qvnd::jet::legacy {

// Reads genuine Jet 3, Jet 4 and ACE files in a child process, so that a damaged file cannot crash
// the program. The file is never changed. It counts as damaged unless every row that its tables
// declare, and every memo, can be read. One that could not be read this time (no process, memory or
// time for it, or a disk that fails) does not count as damaged: error 3051.
class JetFileReader : public LegacyReader {
public:
    // Reading is given up after this time and a second more for each megabyte of the file.
    explicit JetFileReader(std::chrono::milliseconds patience = std::chrono::seconds(5));

    bool Recognizes(const QString& path) const override;
    std::unique_ptr<LegacyDatabase> Open(const QString& path) const override;

private:
    std::chrono::milliseconds patience_;
};

} // namespace qvnd::jet::legacy
