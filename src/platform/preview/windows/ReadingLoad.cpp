#include "platform/preview/windows/ReadingLoad.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/preview/OwnReading.h"
#include "platform/word/engine/DocumentSource.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>
#include <QThread>
#include <QThreadPool>

#include <condition_variable>
#include <mutex>
#include <optional>

namespace qvnd::preview {

namespace {

constexpr ReadingLimits firstLimits{80, 8'000};
constexpr double dotsPerPoint = 300.0 / 72; // sharp on fine screens, and no finer

// The part that crops leave, at a size that screens can show.
QImage decoded(const Picture& picture) {
    QByteArray bytes = picture.file;
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(false);
    const QSize natural = reader.size();
    const double partWidth = 1 - picture.cropLeft - picture.cropRight;
    const double partHeight = 1 - picture.cropTop - picture.cropBottom;
    if (!natural.isValid() || partWidth <= 0 || partHeight <= 0) {
        return reader.read();
    }
    const double needed = picture.width / partWidth * dotsPerPoint;
    if (natural.width() > needed && needed > 1) {
        reader.setScaledSize(natural.scaled(qRound(needed), natural.height(), Qt::KeepAspectRatio));
    }
    const QImage whole = reader.read();
    const QRectF part(picture.cropLeft * whole.width(), picture.cropTop * whole.height(),
                      partWidth * whole.width(), partHeight * whole.height());
    return part.toAlignedRect() == whole.rect() ? whole : whole.copy(part.toAlignedRect());
}

std::optional<RunTimeError> failureOf(const std::exception& failure) {
    if (const auto* named = dynamic_cast<const RunTimeError*>(&failure)) {
        return *named;
    }
    return RunTimeError(error::invalidCall, u"读取文档时出现意外的错误。");
}

} // namespace

// What thread and receiver share.
struct ReadingLoad::Shared : std::enable_shared_from_this<Shared> {
    std::mutex lock; // of isDone and isLate
    std::condition_variable ready;
    Mailbox::Sender mail;
    Receiver receiver;
    bool isDone = false;
    bool isLate = false; // the receiver did not wait for it
    // Written before isDone.
    Pages first;
    bool isWhole = false;
    std::optional<RunTimeError> failure;

    Shared(Mailbox::Sender sender, Receiver given)
        : mail(std::move(sender)), receiver(std::move(given)) {}

    void finish() {
        const std::scoped_lock guard(lock);
        isDone = true;
        if (isLate) {
            mail.post([self = shared_from_this()] { self->handOverLate(); });
        }
        ready.notify_all();
    }

    void handOverLate() {
        if (failure) {
            receiver.failed(QString::fromStdU16String(failure->description()));
        } else {
            receiver.read(std::move(first), isWhole);
        }
    }
};

// The thread's side.
class ReadingLoad::Work {
public:
    Work(std::shared_ptr<Shared> shared, QString path, QString lastLine, QThread* target)
        : shared_(std::move(shared)), path_(std::move(path)), lastLine_(std::move(lastLine)),
          target_(target) {}

    void run() {
        DocumentReading reading;
        const auto document = readFirstPages(reading);
        if (document && reading.isCut && shared_->mail.isOpen()) {
            reading = ownReading(*document);
            handOver(pagesOf(reading));
        }
        decodePictures(reading.pictures);
    }

private:
    std::optional<word::DocumentContent> readFirstPages(DocumentReading& reading) {
        try {
            word::DocumentContent document = word::readDocumentFile(files::toPath(path_));
            reading = ownReading(document, firstLimits);
            shared_->first = pagesOf(reading);
            shared_->isWhole = !reading.isCut;
            shared_->finish();
            return document;
        } catch (const std::exception& failure) {
            shared_->failure = failureOf(failure);
            shared_->finish();
            return std::nullopt;
        }
    }

    Pages pagesOf(const DocumentReading& reading) const {
        auto pages = std::make_unique<ReadingPages>(reading, lastLine_);
        QCoreApplication::processEvents(); // its timers belong to this thread
        pages->moveTo(target_);
        return pages;
    }

    // A queued call can be copied, pages cannot.
    void handOver(Pages pages) {
        const auto held = std::make_shared<Pages>(std::move(pages));
        shared_->mail.post(
            [shared = shared_, held] { shared->receiver.read(std::move(*held), true); });
    }

    void decodePictures(const std::vector<Picture>& pictures) {
        for (std::size_t i = 0; i < pictures.size() && shared_->mail.isOpen(); ++i) {
            const QImage image = decoded(pictures[i]);
            if (!image.isNull()) {
                shared_->mail.post(
                    [shared = shared_, i, image] { shared->receiver.picture(i, image); });
            }
        }
    }

    std::shared_ptr<Shared> shared_;
    QString path_;
    QString lastLine_;
    QThread* target_;
};

// The pages draw with the fonts of the thread that made them, and those end with it: so no thread
// ends for having nothing to do.
ReadingLoad::ReadingLoad(const QString& path, const QString& lastLine, Receiver receiver)
    : shared_(std::make_shared<Shared>(mailbox_.sender(), std::move(receiver))) {
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    QThreadPool::globalInstance()->start(
        [work = std::make_shared<Work>(shared_, path, lastLine, QThread::currentThread())] {
            work->run();
        });
}

ReadingLoad::~ReadingLoad() = default;

ReadingLoad::Pages ReadingLoad::wait(std::chrono::milliseconds patience) {
    std::unique_lock guard(shared_->lock);
    if (!shared_->ready.wait_for(guard, patience, [this] { return shared_->isDone; })) {
        shared_->isLate = true;
        return nullptr;
    }
    if (shared_->failure) {
        throw RunTimeError(*shared_->failure);
    }
    return std::move(shared_->first);
}

} // namespace qvnd::preview
