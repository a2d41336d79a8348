#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace qvnd::jet {

// Told of each change of a database before it begins, so that the state before it can be kept. What
// it throws refuses the change, with nothing done.
class ChangeObserver {
public:
    virtual ~ChangeObserver() = default;

    // A transaction of our own is about to begin on the file, or a whole database to take its
    // place. No other transaction is open on it.
    virtual void BeforeChange(const QString& path) = 0;
    // A database is about to be made where no file is.
    virtual void BeforeCreation(const QString& path) = 0;
    // The transaction is about to be committed, or the file replaced. `image` answers what the file
    // holds behind it, but for its counters of changes. Must not throw.
    virtual void BeforeCommit(const std::function<QByteArray()>& image) = 0;
    // Rows of the table were changed. `table` is its name in the file.
    virtual void AfterChange(const QString& path, const QString& table) = 0;
};

} // namespace qvnd::jet
