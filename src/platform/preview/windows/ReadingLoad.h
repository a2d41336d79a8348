#pragma once

#include "platform/preview/Mailbox.h"
#include "platform/preview/windows/ReadingPages.h"

#include <QImage>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

namespace qvnd::preview {

// Reads a document and lays out its pages in another thread: the first pages, of a long document
// then many more, then its pictures one after the other. Everything is handed over in the thread
// that made the object; after its end nothing comes any more.
class ReadingLoad {
public:
    using Pages = std::unique_ptr<ReadingPages>;
    struct Receiver {
        // The first pages when wait() came back without, and the longer reading. `isWhole`: nothing
        // more of it will come.
        std::function<void(Pages, bool isWhole)> read;
        std::function<void(const QString&)> failed; // later than wait(); the reason in Chinese
        std::function<void(std::size_t, const QImage&)> picture; // one of the pages', decoded
    };

    // `lastLine` goes behind a reading that is cut for good.
    ReadingLoad(const QString& path, const QString& lastLine, Receiver receiver);
    ~ReadingLoad();
    ReadingLoad(const ReadingLoad&) = delete;
    ReadingLoad& operator=(const ReadingLoad&) = delete;

    // The first pages if they are there in time, else nothing, and they come later. Throws
    // RunTimeError when the document cannot be read. To be called once.
    Pages wait(std::chrono::milliseconds patience);

private:
    struct Shared;
    class Work;

    Mailbox mailbox_;
    std::shared_ptr<Shared> shared_;
};

} // namespace qvnd::preview
