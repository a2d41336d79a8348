#include "platform/preview/windows/PreviewPane.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/preview/windows/ReadingPages.h"
#include "platform/word/engine/DocumentSource.h"

#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

namespace {

// How long a window may stand still for a document that is read at once, and how large one is that
// hardly ever is.
constexpr std::chrono::milliseconds firstSight{80};
constexpr qint64 readInTime = 2'000'000;
constexpr QRgb desk = 0xFF8A9099;
constexpr int lineStep = 40;
constexpr double pageStep = 0.9; // of the area
constexpr int wheelStep = 120;   // pixels a notch, and a notch is 120 as well

void paintPaper(QPainter& painter, const QRect& page) {
    for (int i = 1; i <= 4; ++i) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 28 - 6 * i));
        painter.drawRoundedRect(page.adjusted(-i, -i + 1, i, i + 1), i, i);
    }
    painter.fillRect(page, Qt::white);
}

// Where exact pages follow, the reading is only a first sight.
QString cutLine(bool exactPagesFollow) {
    return exactPagesFollow ? u"文档较长，这里先显示开头部分，其余内容随精确版面显示。"_s
                            : u"文档较长，这里只显示开头部分，打开文档可查看全文。"_s;
}

} // namespace

PreviewPane::PreviewPane(PageConversion& conversion, QWidget* parent)
    : QWidget(parent), conversion_(conversion), notice_(new QLabel(this)) {
    setObjectName(u"Olesee"_s);
    setAccessibleName(u"文档视图"_s);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    notice_->setObjectName(u"lblNotice"_s);
    notice_->setWordWrap(true);
    notice_->setMargin(6);
    notice_->setAutoFillBackground(true);
    notice_->setBackgroundRole(QPalette::ToolTipBase);
    notice_->setForegroundRole(QPalette::ToolTipText);
    notice_->hide();
}

PreviewPane::~PreviewPane() = default;

// The first pages if they are there at once.
ReadingLoad::Pages PreviewPane::beginReading() {
    isRead_ = false;
    ReadingLoad::Receiver receiver;
    receiver.read = [this](ReadingLoad::Pages pages, bool) { showReading(std::move(pages)); };
    receiver.failed = [this](const QString& reason) {
        if (!showConverted()) {
            say(reason);
        }
    };
    receiver.picture = [this](std::size_t picture, const QImage& image) {
        if (reading_) {
            reading_->setImage(picture, image);
            update();
        }
    };
    load_ = std::make_unique<ReadingLoad>(path_, cutLine(conversion_.isAvailable()),
                                          std::move(receiver));
    const bool isLong = QFileInfo(path_).size() > readInTime;
    return load_->wait(isLong ? std::chrono::milliseconds(0) : firstSight);
}

void PreviewPane::show(const QString& path) {
    letGo();
    path_ = path;
    try {
        if (ReadingLoad::Pages pages = beginReading()) {
            showReading(std::move(pages));
        } else {
            say(u"正在读取文档……"_s);
        }
    } catch (const RunTimeError&) {
        if (!showConverted()) {
            hide();
            throw;
        }
    }
    watch_.watch(path_);
    QWidget::show();
}

void PreviewPane::readAnew() {
    wish_.reset();
    try {
        if (ReadingLoad::Pages pages = beginReading()) {
            showReading(std::move(pages));
        }
    } catch (const RunTimeError& failure) {
        if (!showConverted()) {
            say(QString::fromStdU16String(failure.description()));
        }
    }
}

// Waits for the exact pages of a document that our own engine does not read. False when the office
// suite is not there or would not know it either.
bool PreviewPane::showConverted() {
    if (!conversion_.isAvailable()) {
        return false;
    }
    const std::u16string format = word::formatToConvert(files::toPath(path_));
    if (format.empty()) {
        return false;
    }
    say(u"这是%1，正在由办公套件转换……"_s.arg(QString::fromStdU16String(format)));
    convert();
    return true;
}

void PreviewPane::hide() {
    letGo();
    QWidget::hide();
}

void PreviewPane::letGo() {
    watch_.watch({});
    wish_.reset();
    load_.reset();
    source_ = nullptr;
    isExact_ = false;
    exact_.reset();
    reading_.reset();
    path_.clear();
    pages_ = 0;
    column_ = PageColumn();
    places_.clear();
    setAccessibleDescription({});
    say({});
    updateGeometry();
    update();
}

void PreviewPane::showReading(ReadingLoad::Pages pages) {
    say({});
    const int top = -y(); // more pages come below, and nothing above moves
    const bool isFirst = !source_;
    reading_ = std::move(pages);
    showPages(*reading_);
    exact_.reset();
    isExact_ = false;
    if (!isFirst) {
        keepPlace(top);
    }
    if (!std::exchange(isRead_, true)) {
        convert();
    }
}

void PreviewPane::convert() {
    if (conversion_.isAvailable()) {
        wish_ = conversion_.convert(
            path_, [this](const PageConversion::Outcome& outcome) { takeConversion(outcome); });
    }
}

void PreviewPane::takeConversion(const PageConversion::Outcome& outcome) {
    QString failure = outcome.failure;
    if (failure.isEmpty()) {
        exact_ = std::make_unique<PdfPages>(outcome.pdf);
        if (!exact_->isValid()) {
            failure = u"转换的结果无法打开。"_s;
            QFile::remove(outcome.pdf); // the next look draws it anew
        }
    }
    if (!failure.isEmpty()) {
        exact_.reset();
        say(source_ ? failure + u"这里显示的是按内容读出的版面。"_s : failure);
        return;
    }
    connect(exact_.get(), &PdfPages::drawn, this, &PreviewPane::showExactPages);
    if (!source_) {
        say({});
        showExactPages();
        return;
    }
    exact_->prepare(std::min(pageSeen(), exact_->count() - 1), places_.front().width(),
                    devicePixelRatioF());
}

// Once the page that is seen is drawn, so that no white one comes in between.
void PreviewPane::showExactPages() {
    if (!isExact_) {
        const double place = -double(y()) / std::max(1, height());
        isExact_ = true;
        showPages(*exact_);
        load_.reset();
        reading_.reset();
        const int total = std::max(heightForWidth(width()), areaHeight());
        keepPlace(qRound(place * total));
    }
    update();
}

// The first one that reaches into the area.
int PreviewPane::pageSeen() const {
    const auto seen = std::find_if(places_.begin(), places_.end(),
                                   [this](const QRect& page) { return page.bottom() >= -y(); });
    return static_cast<int>(std::min(seen, places_.end() - 1) - places_.begin());
}

void PreviewPane::showPages(PageSource& source) {
    source_ = &source;
    pages_ = source.count();
    std::vector<QSizeF> sizes;
    sizes.reserve(static_cast<std::size_t>(pages_));
    for (int page = 0; page < pages_; ++page) {
        sizes.push_back(source.size(page));
    }
    column_ = PageColumn(std::move(sizes));
    places_ = column_.placesFor(width());
    setAccessibleDescription(u"%1，共 %2 页"_s.arg(QFileInfo(path_).fileName()).arg(pages_));
    updateGeometry();
    update();
}

QSize PreviewPane::sizeHint() const {
    constexpr int usualWidth = 480;
    return {usualWidth, column_.heightFor(usualWidth)};
}

void PreviewPane::say(const QString& text) {
    notice_->setText(text);
    notice_->setVisible(!text.isEmpty());
    placeNotice();
}

// At the top of what is seen, wherever the document has been scrolled to.
void PreviewPane::placeNotice() {
    notice_->setGeometry(0, std::max(0, -y()), width(), notice_->heightForWidth(width()));
}

void PreviewPane::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(event->rect(), QColor::fromRgb(desk));
    for (std::size_t page = 0; page < places_.size(); ++page) {
        const QRect exposed = event->rect() & places_[page];
        if (!exposed.isEmpty()) {
            paintPaper(painter, places_[page]);
            source_->paint(painter, static_cast<int>(page), places_[page], exposed);
        }
    }
}

void PreviewPane::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    placeNotice();
}

void PreviewPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    places_ = column_.placesFor(width());
    placeNotice();
}

int PreviewPane::areaHeight() const {
    return parentWidget() != nullptr ? parentWidget()->height() : height();
}

void PreviewPane::scrollTo(int top) {
    move(x(), -std::clamp(top, 0, std::max(0, height() - areaHeight())));
}

// Once the area has given the view its new height.
void PreviewPane::keepPlace(int top) {
    QMetaObject::invokeMethod(
        this, [this, top] { scrollTo(top); }, Qt::QueuedConnection);
}

void PreviewPane::keyPressEvent(QKeyEvent* event) {
    const int page = qRound(areaHeight() * pageStep);
    switch (event->key()) {
    case Qt::Key_PageUp:
        return scrollTo(-y() - page);
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        return scrollTo(-y() + page);
    case Qt::Key_Up:
        return scrollTo(-y() - lineStep);
    case Qt::Key_Down:
        return scrollTo(-y() + lineStep);
    case Qt::Key_Home:
        return scrollTo(0);
    case Qt::Key_End:
        return scrollTo(height());
    default:
        QWidget::keyPressEvent(event);
    }
}

void PreviewPane::wheelEvent(QWheelEvent* event) {
    const int pixels = event->pixelDelta().isNull()
                           ? event->angleDelta().y() * wheelStep / QWheelEvent::DefaultDeltasPerStep
                           : event->pixelDelta().y();
    scrollTo(-y() - pixels);
    event->accept();
}

} // namespace qvnd::preview
