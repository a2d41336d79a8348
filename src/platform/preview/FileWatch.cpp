#include "platform/preview/FileWatch.h"

#include <QFileInfo>

namespace qvnd::preview {

namespace {

constexpr std::chrono::milliseconds settled{300};

} // namespace

FileWatch::FileWatch(std::function<void()> changed) : changed_(std::move(changed)) {
    settling_.setSingleShot(true);
    settling_.setInterval(settled);
    QObject::connect(&settling_, &QTimer::timeout, &settling_, [this] { look(); });
    const auto wait = [this] { settling_.start(); };
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &settling_, wait);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settling_, wait);
}

void FileWatch::watch(const QString& path) {
    settling_.stop();
    for (const QStringList& watched : {watcher_.files(), watcher_.directories()}) {
        if (!watched.isEmpty()) {
            watcher_.removePaths(watched);
        }
    }
    path_ = path;
    if (!path_.isEmpty()) {
        seen_ = stamp();
        watcher_.addPath(QFileInfo(path_).path());
        follow();
    }
}

// A file that takes another's place is not the one that was watched.
void FileWatch::follow() {
    if (QFileInfo::exists(path_) && !watcher_.files().contains(path_)) {
        watcher_.addPath(path_);
    }
}

FileWatch::Stamp FileWatch::stamp() const {
    const QFileInfo file(path_);
    return {file.lastModified(), file.size()};
}

void FileWatch::setPaused(bool isPaused) {
    isPaused_ = isPaused;
    if (!isPaused_ && !path_.isEmpty()) {
        settling_.start();
    }
}

void FileWatch::look() {
    if (isPaused_ || !QFileInfo::exists(path_)) {
        return;
    }
    follow();
    const Stamp now = stamp();
    if (std::exchange(seen_, now) != now) {
        changed_();
    }
}

} // namespace qvnd::preview
