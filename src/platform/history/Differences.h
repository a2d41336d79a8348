#pragma once

#include "platform/history/Step.h"

#include <QByteArray>
#include <QSet>

#include <optional>

namespace qvnd::history {

// What came, went and changed between two images of a database, in the order of the tables' names
// and of the rows. Of `tables`, or of all where a caller does not know which were changed. A table
// made anew under its old name is compared by its rows; rows are told apart by their field Key
// where they have one. Rows that have only other automatic numbers are no change.
QList<Change> differences(const QString& databaseName, const QByteArray& before,
                          const QByteArray& after, const std::optional<QSet<QString>>& tables);

} // namespace qvnd::history
