#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RecordedErrors.h"
#include "platform/files/FileSystemObject.h"

#include <QSet>
#include <QString>

#include <vector>

namespace qvnd::outline {

// Moves the files of documents whose keys change: every file is first copied to its new name; when
// the rows bear the new keys, the old files go. So wherever the run ends in between, each row's
// file is there.
class DocumentMove {
public:
    // `folder` ends in a separator; a document's file bears its key.
    DocumentMove(files::FileSystemObject& fso, desktop::MessageBoxes& messages,
                 RecordedErrors& errors, QString folder);

    // Copies one file, over whatever has the new name. A document may have none.
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
        RecordedErrors errors;
        bool copied = false;
    };

    QString pathOf(const QString& key) const { return folder_ + key + ".doc"; }
    void tryToCopy(File& file);
    void tryToDelete(File& file);
    void deleteOld(File& file);

    files::FileSystemObject& fso_;
    desktop::MessageBoxes& messages_;
    RecordedErrors& errors_;
    QString folder_;
    std::vector<File> files_;
};

} // namespace qvnd::outline
