#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace qvnd::tools {

// A command line that is not of the known form: exit status 2.
class UsageError : public std::exception {
public:
    explicit UsageError(QString reason) : reason_(std::move(reason)) {}
    const QString& reason() const { return reason_; }
    const char* what() const noexcept override { return "wrong usage"; }

private:
    QString reason_;
};

} // namespace qvnd::tools
