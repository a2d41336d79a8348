#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RecordedErrors.h"
#include "store/modMain.h"

#include <QSet>
#include <QString>

#include <vector>

namespace qvnd::outline {

// Moves the files of documents whose keys change: every file is first copied to its new name; when
// the rows bear the new keys, the old files go. So wherever the run ends in between, each row's
// file is there.
class DocumentMove {
public:
    DocumentMove(const modMain& state, desktop::MessageBoxes& messages, RecordedErrors& errors,
                 QString plan);

    // Copies one file, over whatever has the new name. A document may have none; one whose key
    // names no file (see documentPath) is recorded and left out.
    void copy(const QString& oldKey, const QString& newKey);

    // Deletes the old files; `keysNow` are the keys of all rows. A file stays that has no whole
    // copy under a new key of a row, or whose own key is that of a row.
    //
    // While the number of the latest failure of a file is 70 (in use), asks
    // the user to close it and tries again, so that there is one more box when it has been closed;
    // what was saved meanwhile is copied as well.
    void deleteOld(const QSet<QString>& keysNow);

private:
    struct File {
        QString oldKey;
        QString newKey;
        QString oldPath;
        QString newPath;
        RecordedErrors errors;
        bool copied = false;
    };

    void tryToCopy(File& file);
    void tryToDelete(File& file);
    void deleteOld(File& file);

    const modMain& state_;
    desktop::MessageBoxes& messages_;
    RecordedErrors& errors_;
    QString plan_;
    std::vector<File> files_;
};

} // namespace qvnd::outline
