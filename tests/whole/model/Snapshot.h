#pragma once

#include "support/Planner.h"
#include "whole/model/PlainProgram.h"

#include <QMap>

namespace qvnd::model {

// All that a command may change, as lines under the names of what holds them: databases with their
// tables and rows, the files of each folder with their texts, the trees on the screen.
using Snapshot = QMap<QString, QStringList>;

Snapshot snapshotOf(PlainProgram& program);

// Reads the program's databases and folders. A database is read anew only when its file's own
// count of changes has moved on.
class RealSnapshots {
public:
    explicit RealSnapshots(test::Planner& planner) : planner_(planner) {}

    Snapshot take();

private:
    struct Seen {
        QByteArray stamp;
        QStringList lines;
    };
    void addDatabase(Snapshot& snapshot, const QString& name, const QString& file,
                     jet::Database* open);
    void addFolders(Snapshot& snapshot, const QString& label, const QString& folder);

    test::Planner& planner_;
    QMap<QString, Seen> seen_;
};

} // namespace qvnd::model
