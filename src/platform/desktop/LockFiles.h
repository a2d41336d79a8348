#pragma once

#include "platform/desktop/WordProcessorWindows.h"
#include "platform/files/FilesInUse.h"

#include <optional>

namespace qvnd::desktop {

class Processes;

// What an office suite writes into ".~lock.<name>#" beside a document that it holds open:
// user, account, host, time and profile, with commas between, a semicolon at the end and a
// backslash before a comma, semicolon or backslash of the texts themselves.
struct OfficeLock {
    QString host;
    // A "file:" address; empty when the lock names none.
    QString profile;
};

// Nothing when the text is no such lock.
std::optional<OfficeLock> parseOfficeLock(const QString& text);

// Finds open documents by the lock files beside them:
// - ".~lock.<name>#" counts, unless it names this machine and no office suite of its profile runs
//   here, or its document is gone;
// - "~$<name>" of the other word processor (which leaves out up to two first characters of the
//   name) counts while its document is there, for it does not tell where its owner runs; a lock of
//   the first kind beside it that does not count speaks for it too, as one suite writes both.
// Only documents of a word processor are looked at, by their extension.
class LockFiles : public WordProcessorWindows, public files::FilesInUse {
public:
    // The processes must outlive the object.
    explicit LockFiles(Processes& processes);

    bool isOpenIn(const QStringList& folders) override;
    bool isDocumentOpen(const QString& path) override;
    bool isAnyOpenIn(const QString& folder) override;

private:
    bool isOpen(const QString& folder, const QString& document, const QStringList& names);
    bool isAlive(const QString& lockFile);

    Processes& processes_;
};

} // namespace qvnd::desktop
