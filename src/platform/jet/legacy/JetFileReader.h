#pragma once

#include "platform/jet/legacy/LegacyDatabase.h"

#include <chrono>

namespace qvnd::jet::legacy {

// Reads genuine Jet 3 and 4 and ACE files. The file is looked at by a process of its own, so a
// damaged one cannot bring the program down; reading never changes it. A file counts as damaged
// when it cannot be read whole: every row that a table tells of, every memo.
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
