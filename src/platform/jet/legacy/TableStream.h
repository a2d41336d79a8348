#pragma once

#include "platform/jet/legacy/LegacyDatabase.h"

#include <QByteArray>

#include <optional>

namespace qvnd::jet::legacy {

// Lists and tables as bytes for the pipe between two processes. The sender may have been killed or
// have written nonsense: reading gives nothing unless the bytes are one whole list or table.

QByteArray bytesOf(const QStringList& names);
std::optional<QStringList> namesIn(const QByteArray& bytes);

QByteArray bytesOf(const LegacyTable& table);
std::optional<LegacyTable> tableIn(const QByteArray& bytes);

} // namespace qvnd::jet::legacy
