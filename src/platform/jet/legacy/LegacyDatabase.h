#pragma once

#include "platform/jet/TableDef.h"
#include "platform/jet/Value.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace qvnd::jet::legacy {

// A table of a database of an older installation, as it was read.
struct LegacyTable {
    QString Name;
    // Name and type; the sizes are not told.
    std::vector<Field> Fields;
    // One value for each field, rows in the order of the file, which may differ from that of an ID.
    std::vector<std::vector<Value>> Rows;

    // The position of a field by its name without regard to case; -1 when there is none.
    int PositionOf(QStringView field) const;
};

// A database file of an older installation, for reading.
class LegacyDatabase {
public:
    virtual ~LegacyDatabase() = default;

    // The users' tables; those that the engine keeps for itself are left out.
    virtual QStringList TableNames() const = 0;
    // The table of that name without regard to case, whole. Error 3078 when there is none, 3343
    // when the file is damaged, 3051 when it could not be read this time.
    virtual LegacyTable Table(const QString& name) const = 0;
};

// Opens such files.
class LegacyReader {
public:
    virtual ~LegacyReader() = default;

    // Is this a file of that kind, whole or damaged? False for one that is missing.
    virtual bool Recognizes(const QString& path) const = 0;
    // Error 3343 when the file is damaged, 3051 when it may not or could not be read this time;
    // the description names it.
    virtual std::unique_ptr<LegacyDatabase> Open(const QString& path) const = 0;
};

} // namespace qvnd::jet::legacy
