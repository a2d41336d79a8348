#pragma once

#include <QByteArray>

namespace qvnd::test {

// A variable of the environment that has another value as long as the object lives.
class ChangedVariable {
public:
    ChangedVariable(const char* name, const QByteArray& value)
        : name_(name), before_(qgetenv(name)), wasSet_(qEnvironmentVariableIsSet(name)) {
        qputenv(name_, value);
    }
    ~ChangedVariable() { wasSet_ ? qputenv(name_, before_) : qunsetenv(name_); }
    ChangedVariable(const ChangedVariable&) = delete;
    ChangedVariable& operator=(const ChangedVariable&) = delete;

private:
    const char* name_;
    QByteArray before_;
    bool wasSet_;
};

} // namespace qvnd::test
