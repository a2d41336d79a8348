#pragma once

#include "platform/error/RunTimeError.h"

#include <exception>

namespace qvnd {

// Runs one statement with any error of it ignored: what it did before it failed stays done.
// Meant for a single statement at its place, never for a block. True when it ended well.
template <class Statement>
bool ignoringErrors(Statement statement) {
    try {
        statement();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

// The same for one error alone; every other one passes through.
template <class Statement>
bool ignoringError(long number, Statement statement) {
    try {
        statement();
        return true;
    } catch (const RunTimeError& failure) {
        if (failure.number() != number) {
            throw;
        }
        return false;
    }
}

} // namespace qvnd
