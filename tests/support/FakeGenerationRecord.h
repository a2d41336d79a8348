#pragma once

#include "generate/GenerationReport.h"

namespace qvnd::test {

// Tells what a test has put into it.
class FakeGenerationRecord : public generate::GenerationRecord {
public:
    void clear() override { ++cleared; }
    const std::vector<generate::CollectedLosses::Loss>& losses() const override { return lost; }
    int pages() const override { return pageCount; }
    std::optional<QString> whyEstimated() const override { return estimated; }

    std::vector<generate::CollectedLosses::Loss> lost;
    int pageCount = 0;
    std::optional<QString> estimated;
    int cleared = 0;
};

} // namespace qvnd::test
