#pragma once

#include "platform/jet/legacy/LegacyDatabase.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace qvnd::store {

// What a Jet file of an older installation tells of a plan, whatever fields its tables have.

struct LegacyRow {
    QString Name;
    QString Key;
    QString IsDocument;
    std::int32_t Id = 0;
};

struct LegacyOutline {
    std::vector<LegacyRow> Rows; // in the order of their IDs
    bool KeysDiffer = true;      // no key twice, without regard to case
};

// The table `name`. IDs that are missing or given twice are all made anew, 1 and up; rows without
// IDs keep the order of the file. Error 3078 when there is no such table, or one without 名称 and
// Key; its description names `file`.
LegacyOutline legacyOutline(const jet::legacy::LegacyDatabase& database, const QString& name,
                            const QString& file);

// The first row of the table `name` + "Org", a value for each field of our information table (Null
// for one that it lacks); nothing when there is no such table, or it is empty.
std::optional<std::vector<jet::Value>>
legacyInformation(const jet::legacy::LegacyDatabase& database, const QString& name);

} // namespace qvnd::store
