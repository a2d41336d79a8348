#pragma once

#include "store/modMain.h"

#include <QDate>
#include <QString>

namespace qvnd::store {

// Each makes one database file with its tables. The tables of a file that exists are not checked,
// and none is added to it. Errors of the store pass through.

// Db_UsTemplate.mdb: 遍历表, 当前表, 标书表, temp. Leaves it open in gDbUser.
void CreateUserDb(modMain& state, const QString& path);

// Db_Template.mdb: 遍历表 alone. Leaves it open in gDbTemplate.
void CreateTemplateDb(modMain& state, const QString& path);

// Db_BidSet.mdb: the format tables with their first rows, `today` on the cover. Leaves it open in
// gDbBidSet.
void CreateBidSetDb(modMain& state, const QString& path, const QDate& today);

} // namespace qvnd::store
