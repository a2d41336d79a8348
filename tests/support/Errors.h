#pragma once

#include "platform/error/RunTimeError.h"

#include <optional>
#include <string>

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

// Its description; empty when it ends well.
template <class Action>
std::u16string descriptionOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& e) {
        return e.description();
    }
    return {};
}

} // namespace qvnd::test
