#pragma once

#include "store/modMain.h"

#include <QDate>
#include <QString>

namespace qvnd::store {

// Each makes one database file with its tables. A file is used as it is ever after: none is
// upgraded, and nothing checks its tables. Engine errors go to the caller.

// Db_UsTemplate.mdb: 遍历表, 当前表, 标书表, temp. Leaves it open in gDbUser.
void CreateUserDb(modMain& state, const QString& path);

// Db_Template.mdb: 遍历表 alone. Leaves it open in gDbTemplate.
void CreateTemplateDb(modMain& state, const QString& path);

// Db_BidSet.mdb: the format tables with their first rows, `today` on the cover. Leaves it open in
// gDbBidSet.
void CreateBidSetDb(modMain& state, const QString& path, const QDate& today);

} // namespace qvnd::store
