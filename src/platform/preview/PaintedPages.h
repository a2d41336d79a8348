#pragma once

#include "platform/preview/FontShelf.h"
#include "platform/preview/Mailbox.h"
#include "platform/word/engine/DocumentSource.h"

#include <QImage>
#include <QSizeF>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace qvnd::preview {

// The pages of a document, laid out and painted by another thread: first of all the first page,
// then what is asked for, and beside that the ends of all the others. Everything is handed over in
// the thread that made the object; after its end nothing comes any more, and the other thread stops
// at the next page.
class PaintedPages {
public:
    // In points.
    using Sizes = std::vector<QSizeF>;
    struct Receiver {
        // The pages found so far, at first one or more, at last all of them. Never from within a
        // call.
        std::function<void(const Sizes&, bool isWhole)> found;
        std::function<void(int page, const QImage&)> painted;
        // The number of pages is known now, and pages painted before show another.
        std::function<void()> outdated;
        std::function<void(const word::DocumentRefusal&)> failed; // what comes later than wait()
    };
    struct Wanted {
        int page = 0;
        int width = 0; // pixels
        bool operator==(const Wanted&) const = default;
    };

    // `firstWidth`: how wide the first page is to be painted.
    PaintedPages(const QString& path, std::shared_ptr<FontShelf> fonts,
                 std::function<int(QSizeF)> firstWidth, Receiver receiver);
    ~PaintedPages();
    PaintedPages(const PaintedPages&) = delete;
    PaintedPages& operator=(const PaintedPages&) = delete;

    // The first page, found and painted.
    struct First {
        Sizes sizes; // empty when it is not there yet
        QImage image;
        bool isWhole = false;
    };
    // The first page if it is there in time; else the receiver gets it. Throws DocumentRefusal,
    // with any number, when the document cannot be read. To be called once, before anything else.
    First wait(std::chrono::milliseconds patience);
    // These pages are to be painted, the most urgent first; those asked for before are not, unless
    // they are at work.
    void want(std::vector<Wanted> pages);

private:
    struct Shared;

    Mailbox mailbox_;
    std::shared_ptr<Shared> shared_;
};

} // namespace qvnd::preview
