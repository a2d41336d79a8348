#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/word/engine/DocumentConverter.h"

#include <optional>
#include <vector>

namespace qvnd::test {

// Answers every file with `result`, or fails with `failure` when that is set.
class FakeDocumentConverter : public word::DocumentConverter {
public:
    bool isAvailable() const override { return isInstalled; }
    word::Bytes converted(const std::filesystem::path& file) override {
        asked.push_back(file);
        if (failure) {
            throw RunTimeError(*failure);
        }
        return result;
    }

    bool isInstalled = true;
    word::Bytes result;
    std::optional<RunTimeError> failure;
    std::vector<std::filesystem::path> asked;
};

} // namespace qvnd::test
