#pragma once

#include <QFile>
#include <QString>

#include <functional>

namespace qvnd::files {

// How one attempt to lock an open file ended; `reason` is the system's own text of a failure.
struct LockAttempt {
    enum class Outcome { taken, held, failed };
    Outcome outcome = Outcome::taken;
    QString reason;
};

// Locks an open file for this process alone, or answers at once why not. The system takes the lock
// back with the last handle on the file.
LockAttempt systemLock(QFile& file);

// The lock "qvnd.lock" of a folder. While it is held, the file tells which program holds it.
class FileLock {
public:
    static constexpr QLatin1StringView fileName{"qvnd.lock"};
    using LockCall = std::function<LockAttempt(QFile&)>;

    // `lock` stands in for the system's call.
    explicit FileLock(const QString& folder, LockCall lock = systemLock);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // False while another program holds it. A folder that is missing is made. A file that may only
    // be read, as one that another user has made, is locked all the same, without telling who holds
    // it. Where no file can be made, nothing else in the folder can be written either, and there is
    // nothing to lock: true.
    //
    // Error 3051, with the reason, when the file is there but cannot be opened, and when the disk
    // takes no locks.
    bool tryTake();
    void giveBack();

    const QString& folder() const { return folder_; }
    // Which program holds it, as it says in the file itself; to be asked when tryTake was false.
    const QString& holder() const { return holder_; }

private:
    // False when there is no file and none can be made.
    bool open();
    void sign();
    [[noreturn]] void fail(const QString& reason) const;

    QString folder_;
    LockCall lock_;
    QFile file_;
    QString holder_;
};

} // namespace qvnd::files
