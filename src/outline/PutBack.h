#pragma once

#include "platform/history/Step.h"
#include "store/modMain.h"

#include <QString>
#include <QStringList>

#include <cstdint>

namespace qvnd::outline {

// What came back.
struct PutBack {
    QString key;         // of the node, in the outline as it is now; empty for a file
    QStringList names;   // of the nodes, or of the file
    QStringList missing; // of the documents among them of whose file the history has no content
};

// True for a change that can be taken out of its step by itself: a node that went, was changed or
// was replaced by another one, and a file that went or was replaced.
bool canPutBack(const history::Change& change);

// Takes one change out of a step; everything else stays as it is now.
//
// A node that went comes back with all nodes below it and with the files of its documents, as they
// were before the step. It becomes the last child of its parent, wherever that has been moved,
// under its earlier key; where that key is another node's by now, or the parent has another one,
// under one more than the largest among the parent's children. So does a node that another one has
// replaced under its key; that one stays. Where nodes below it have stayed it comes back alone, to
// its place before them. A node that was changed gets its earlier name, wherever it was moved;
// where it has gone since it comes back like one that went. A file gets its earlier content.
//
// Errors: 5 when the outline or the node's parent is no longer there, for a file that no step has
// changed since, and for one that is another node's document now; 53 when the history has no
// content for a file; nothing is changed then. Those of files and store pass.
PutBack putBack(modMain& state, std::int64_t step, const history::Change& change);

// The file that a change is about, itself or that of a document's node, where the history has what
// it held before the step; empty for anything else.
QString fileBefore(modMain& state, std::int64_t step, const history::Change& change);

// Where such a file goes when it is taken out: into the work folder, under the name of its node or
// its own, with the time of the step. No file is there yet.
QString takenOutPath(const modMain& state, const history::Step& step, const QString& file,
                     const QString& name);

} // namespace qvnd::outline
