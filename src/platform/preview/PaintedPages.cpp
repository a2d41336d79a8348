#include "platform/preview/PaintedPages.h"

#include "platform/preview/OpenDocument.h"

#include <QElapsedTimer>
#include <QThreadPool>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace qvnd::preview {

namespace {

constexpr int betweenReports = 100; // milliseconds
constexpr double twipsPerPoint = 20;

word::DocumentRefusal failureOf(const std::exception& failure) {
    if (const auto* refusal = dynamic_cast<const word::DocumentRefusal*>(&failure)) {
        return *refusal;
    }
    if (const auto* named = dynamic_cast<const RunTimeError*>(&failure)) {
        return word::DocumentRefusal(*named);
    }
    return word::DocumentRefusal({error::invalidCall, u"读取文档时出现意外的错误。"});
}

} // namespace

// What both threads share. The document belongs to the one at work.
struct PaintedPages::Shared : std::enable_shared_from_this<Shared> {
    Shared(QString file, std::shared_ptr<FontShelf> shelf, std::function<int(QSizeF)> width,
           Mailbox::Sender sender, Receiver given)
        : path(std::move(file)), fonts(std::move(shelf)), firstWidth(std::move(width)),
          mail(std::move(sender)), receiver(std::move(given)) {}

    const QString path;
    const std::shared_ptr<FontShelf> fonts;
    const std::function<int(QSizeF)> firstWidth;
    const Mailbox::Sender mail;
    const Receiver receiver;

    std::mutex lock; // of what follows
    std::condition_variable ready;
    bool isAtWork = true;
    bool isOpen = false; // or will never be
    bool isLate = false; // the receiver did not wait for it
    First first;
    std::optional<word::DocumentRefusal> failure;
    std::vector<Wanted> wanted;

    std::unique_ptr<OpenDocument> document;
    bool isWhole = false;
    QElapsedTimer sinceReport;

    void start() {
        QThreadPool::globalInstance()->start([self = shared_from_this()] { self->work(); });
    }

    void work() {
        try {
            if (!document) {
                open();
            }
            while (mail.isOpen()) {
                if (!workOn()) {
                    return; // and whoever begins next has the document
                }
            }
            document.reset();
        } catch (const std::exception& failed) {
            fail(failureOf(failed));
        }
    }

    void open() {
        document = std::make_unique<OpenDocument>(path, fonts);
        document->pages().findNext();
        First opened{sizes(), {}, false};
        opened.image = document->paint(0, firstWidth(opened.sizes.front()));
        sinceReport.start();
        const std::scoped_lock guard(lock);
        first = std::move(opened);
        isOpen = true;
        if (isLate) {
            handOverFirst();
        }
        ready.notify_all();
    }

    void handOverFirst() {
        post([first = first](const Receiver& to) {
            to.found(first.sizes, first.isWhole);
            to.painted(0, first.image);
        });
    }

    void fail(const word::DocumentRefusal& failed) {
        const std::scoped_lock guard(lock);
        isAtWork = false;
        const bool isHandedOver = isOpen;
        isOpen = true;
        failure = failed;
        if (isLate || isHandedOver) {
            post([failed](const Receiver& to) { to.failed(failed); });
        }
        ready.notify_all();
    }

    // One page; false when there is nothing to do.
    bool workOn() {
        if (const auto next = takeWanted()) {
            paint(*next);
            return true;
        }
        if (!isWhole) {
            findMore();
            return true;
        }
        const std::scoped_lock guard(lock);
        isAtWork = !wanted.empty();
        return isAtWork;
    }

    std::optional<Wanted> takeWanted() {
        const std::scoped_lock guard(lock);
        const auto known = document->pages().sizes().size();
        std::erase_if(wanted, [&](const Wanted& it) {
            return it.page < 0 || (isWhole && static_cast<std::size_t>(it.page) >= known);
        });
        const auto found = std::find_if(wanted.begin(), wanted.end(), [&](const Wanted& it) {
            return static_cast<std::size_t>(it.page) < known;
        });
        if (found == wanted.end()) {
            return std::nullopt;
        }
        const Wanted taken = *found;
        wanted.erase(found);
        return taken;
    }

    void paint(const Wanted& next) {
        const QImage image = document->paint(static_cast<std::size_t>(next.page), next.width);
        post([page = next.page, image](const Receiver& to) { to.painted(page, image); });
    }

    void findMore() {
        isWhole = !document->pages().findNext();
        if (isWhole || sinceReport.elapsed() > betweenReports) {
            sinceReport.start();
            post(
                [found = sizes(), whole = isWhole](const Receiver& to) { to.found(found, whole); });
        }
        if (isWhole && document->pages().round() > 1) {
            post([](const Receiver& to) { to.outdated(); });
        }
    }

    Sizes sizes() const {
        Sizes points;
        for (const layout::PageSize& size : document->pages().sizes()) {
            points.emplace_back(size.width / twipsPerPoint, size.height / twipsPerPoint);
        }
        return points;
    }

    template <class Call>
    void post(Call call) {
        mail.post([self = shared_from_this(), call = std::move(call)] { call(self->receiver); });
    }
};

PaintedPages::PaintedPages(const QString& path, std::shared_ptr<FontShelf> fonts,
                           std::function<int(QSizeF)> firstWidth, Receiver receiver)
    : shared_(std::make_shared<Shared>(path, std::move(fonts), std::move(firstWidth),
                                       mailbox_.sender(), std::move(receiver))) {
    shared_->start();
}

// A long document is taken down by the other thread too.
PaintedPages::~PaintedPages() {
    const std::scoped_lock guard(shared_->lock);
    if (!shared_->isAtWork) {
        QThreadPool::globalInstance()->start([shared = shared_] { shared->document.reset(); });
    }
}

PaintedPages::First PaintedPages::wait(std::chrono::milliseconds patience) {
    std::unique_lock guard(shared_->lock);
    if (!shared_->ready.wait_for(guard, patience, [this] { return shared_->isOpen; })) {
        shared_->isLate = true;
        return {};
    }
    if (shared_->failure) {
        throw word::DocumentRefusal(*shared_->failure);
    }
    return std::move(shared_->first);
}

void PaintedPages::want(std::vector<Wanted> pages) {
    const std::scoped_lock guard(shared_->lock);
    shared_->wanted = std::move(pages);
    if (!shared_->isAtWork && shared_->document && !shared_->failure) {
        shared_->isAtWork = true;
        shared_->start();
    }
}

} // namespace qvnd::preview
