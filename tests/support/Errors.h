#pragma once

#include "platform/error/RunTimeError.h"

#include <optional>

namespace qvnd::test {

// The number of the run-time error that `action` throws; nothing when it ends well.
template <class Action>
std::optional<long> errorNumberOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& e) {
        return e.number();
    }
    return std::nullopt;
}

} // namespace qvnd::test
