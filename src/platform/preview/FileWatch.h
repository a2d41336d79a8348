#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QString>
#include <QTimer>

#include <functional>
#include <utility>

namespace qvnd::preview {

// Tells that a file has been written anew, in place or by another file of its name, once nothing
// more has come for a third of a second. A file that is gone is waited for. Works in the thread of
// the object's events.
class FileWatch {
public:
    explicit FileWatch(std::function<void()> changed);

    // Watches this file from now on, as it is now; an empty path watches nothing.
    void watch(const QString& path);
    // Paused it tells nothing; a change in the meantime is told when the pause is over.
    void setPaused(bool isPaused);

private:
    using Stamp = std::pair<QDateTime, qint64>; // last change, size

    void look();
    void follow();
    Stamp stamp() const;

    std::function<void()> changed_;
    QString path_;
    Stamp seen_;
    bool isPaused_ = false;
    QFileSystemWatcher watcher_;
    QTimer settling_;
};

} // namespace qvnd::preview
