#pragma once

#include "platform/history/Step.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace qvnd::outline {

// What a command did beyond what its name says, in one or more sentences for the user; empty when
// it did nothing more. Told from what has changed alone, so that every command is covered:
//
// - rows that went although neither the selected node nor a node below it is theirs, and that did
//   not come back under another key: "同时移除了 5 个节点：…"; so a node whose key another one has
//   taken;
// - outlines and libraries of settings that stand in no list, as the command that made them has
//   failed, and a setting library whose deletion has stopped at a table that it lacks;
// - a document node that went because its file was missing;
// - nodes that are left without a node above them, and so are not shown any more, nor is what lies
//   behind them;
// - outlines that a refresh has forgotten, and those that the start has found in their folders;
// - files that were overwritten or went while their nodes stay, files that went with a deletion
//   although they are no node's, and files that came without a node, such as a stray copy.
//
// `rows` answers keys and names of the rows that an outline has now, in their order; `database` is
// the file name of the one that holds it.
using OutlineRows = QList<std::pair<QString, QString>>;
using OutlineNow = std::function<OutlineRows(const QString& database, const QString& outline)>;
QString beyondAsked(const history::CommandFrame& frame, const QList<history::Change>& changes,
                    const OutlineNow& rows);

// The first five of the names; that there are more says 等.
QString listed(const QStringList& names);

} // namespace qvnd::outline
