#pragma once

#include <QHash>
#include <QString>

namespace qvnd::files {

// The names that folders hold, each folder read once, so that a run of many look-ups costs what the
// look-ups cost and not a reading of the folder for each. What other programs change meanwhile is
// not seen: for the length of one command, no longer.
class FolderNames {
public:
    // As files::resolved says.
    QString resolved(const QString& path);

    // A file has come by ourselves; `path` as spelt on disk.
    void add(const QString& path);
    // One has gone: its folder is read anew, as a name in another case may be left.
    void remove(const QString& path);
    void forgetAll() { folders_.clear(); }

private:
    // The spellings on disk, by the names without case.
    using Names = QHash<QString, QString>;

    Names& namesIn(const QString& folder);

    QHash<QString, Names> folders_;
};

} // namespace qvnd::files
