#pragma once

#include "platform/jet/legacy/LegacyDatabase.h"

#include <QByteArray>

#include <optional>

namespace qvnd::jet::legacy {

// What one process hands to the other. The bytes may come from a process gone astray: anything
// that is no whole list or table gives nothing.

QByteArray bytesOf(const QStringList& names);
std::optional<QStringList> namesIn(const QByteArray& bytes);

QByteArray bytesOf(const LegacyTable& table);
std::optional<LegacyTable> tableIn(const QByteArray& bytes);

} // namespace qvnd::jet::legacy
