#pragma once

#include <QFile>
#include <QFileInfo>

#include <array>
#include <sys/inotify.h>
#include <unistd.h>

namespace qvnd::test {

// Counts how often changes of a database became lasting since the object was made: with each time
// its journal goes.
class Commits {
public:
    explicit Commits(const QString& database)
        : journal_(QFile::encodeName(QFileInfo(database).fileName() + "-journal")),
          watch_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        const QByteArray folder = QFile::encodeName(QFileInfo(database).canonicalPath());
        // Equal events in a row would come as one.
        if (inotify_add_watch(watch_, folder.constData(), IN_CREATE | IN_DELETE) < 0) {
            qFatal("the folder cannot be watched");
        }
    }
    ~Commits() { close(watch_); }
    Commits(const Commits&) = delete;
    Commits& operator=(const Commits&) = delete;

    int count() {
        alignas(inotify_event) std::array<char, 1 << 16> events;
        for (ssize_t size = 0; (size = read(watch_, events.data(), events.size())) > 0;) {
            for (ssize_t at = 0; at < size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
                const bool ofJournal = event->len > 0 && journal_ == event->name;
                count_ += ofJournal && (event->mask & IN_DELETE) != 0 ? 1 : 0;
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            }
        }
        return count_;
    }

private:
    QByteArray journal_;
    int watch_;
    int count_ = 0;
};

} // namespace qvnd::test
