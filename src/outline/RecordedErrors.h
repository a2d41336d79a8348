#pragma once

#include "platform/error/RunTimeError.h"

#include <optional>

namespace qvnd::outline {

// For a command that goes on behind every failure: it runs each of its statements through this, at
// the statement's place. The number kept is that of the latest failure; a statement that ends well
// does not change it.
class RecordedErrors {
public:
    // True when the statement ended well. What it did before it failed stays done.
    template <class Statement>
    bool statement(Statement run) {
        try {
            run();
            return true;
        } catch (const RunTimeError& failure) {
            number_ = failure.number();
            if (!first_) {
                first_ = failure;
            }
            return false;
        }
    }

    // 0 until a statement has failed.
    long number() const { return number_; }
    // The first failure, for whoever tells why a command did nothing.
    const std::optional<RunTimeError>& first() const { return first_; }

private:
    long number_ = 0;
    std::optional<RunTimeError> first_;
};

} // namespace qvnd::outline
