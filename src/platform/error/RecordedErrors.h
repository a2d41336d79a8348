#pragma once

#include "platform/error/RunTimeError.h"

#include <optional>

namespace qvnd {

// For a command that goes on behind every failure and asks afterwards what failed: it runs each of
// its statements through this, at the statement's place. A statement that ends well changes
// nothing of what is recorded.
class RecordedErrors {
public:
    // True when the statement ended well. What it did before it failed stays done.
    template <class Statement>
    bool statement(Statement run) {
        try {
            run();
            return true;
        } catch (const RunTimeError& failure) {
            last_ = failure;
            if (!first_) {
                first_ = failure;
            }
            return false;
        }
    }

    // The number of the latest failure; 0 until a statement has failed.
    long number() const { return last_ ? last_->number() : 0; }
    // The first and the latest failure; nothing until a statement has failed.
    const std::optional<RunTimeError>& first() const { return first_; }
    const std::optional<RunTimeError>& last() const { return last_; }

private:
    std::optional<RunTimeError> first_;
    std::optional<RunTimeError> last_;
};

} // namespace qvnd
