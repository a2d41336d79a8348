#pragma once

#include "platform/history/HistoryFile.h"
#include "platform/history/Step.h"

namespace qvnd::history {

// "删除[施工部署]": the caption, and the name of what the command was about: the selected node
// where the command changed it, else what came first; "添加[甲 等 9 个文档]" where several nodes
// came, each counted with all that came below it.
QString titleOf(const CommandFrame& frame, const QList<Change>& changes);

// Whether the database is a plan's or template's own copy of its tables: it lies in a folder of its
// own name and follows the central ones.
bool isOwnCopy(const QString& path);

// The plan whose outline alone was changed, or where no outline was, whose documents alone, where
// that is not the open one; else the open one.
QString planOf(const QList<Change>& changes, const QString& open);

// Whether nothing was changed but which plan is open, a scratch table, and plans' own copies of
// their tables.
bool isMinor(const QList<Change>& changes, const QList<FileChange>& files);

// The changes without those of the bookkeeping, which say nothing to the user.
QList<Change> shown(QList<Change> changes);

// What a user calls a database: "用户方案", "甲 文件夹中的大纲". A file that is none of those of
// the program has its own name.
QString databaseWord(const QString& path);

// The name that what a change took away, replaced or renamed had before it.
QString nameBefore(const Change& change);

// One line for a change, as the list of the history shows it: "删去节点 施工部署（甲.1）".
QString lineOf(const Change& change);

// What an undo or redo has done beyond what was asked, a sentence each: steps that it has made of
// changes from outside, automatic steps that went back with it, and files whose content is gone. Of
// many the first are named.
QString outsideNote(const QStringList& titles);
QString goneAlongNote(const QStringList& titles);
QString lostNote(const QStringList& files);

// About files that are out of reach, see Places.h: whether the rest of an undo or redo, or of a
// command that was killed, may be done without them, why it is not, and that it was.
QString leaveOutQuestion(const QStringList& files);
QString killedOutOfReach(const QStringList& files);
QString outOfReachRefusal();
QString leftOutNote(const QStringList& files);

} // namespace qvnd::history
