#include "platform/preview/windows/PagePane.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

namespace {

// How long a window may stand still for a document that is read at once, and how large one is that
// hardly ever is.
constexpr std::chrono::milliseconds firstSight{80};
constexpr qint64 readInTime = 2'000'000;
constexpr int progressAfter = 500; // milliseconds
constexpr int askAgainAfter = 100; // milliseconds
constexpr QRgb desk = 0xFF8A9099;
constexpr int lineStep = 40;
constexpr double pageStep = 0.9; // of the view
constexpr int wheelStep = 120;   // pixels a notch, and a notch is 120 as well

void paintPaper(QPainter& painter, const QRect& page) {
    for (int i = 1; i <= 4; ++i) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 28 - 6 * i));
        painter.drawRoundedRect(page.adjusted(-i, -i + 1, i, i + 1), i, i);
    }
    painter.fillRect(page, Qt::white);
}

QLabel* newLabel(const QString& name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setMargin(6);
    label->setAutoFillBackground(true);
    label->setBackgroundRole(QPalette::ToolTipBase);
    label->setForegroundRole(QPalette::ToolTipText);
    label->hide();
    return label;
}

// A file that is there and that nothing here can read as a document.
RunTimeError asShown(const RunTimeError& failure) {
    return failure.number() == error::invalidCall
               ? RunTimeError(error::documentNotShown, failure.description())
               : failure;
}

PageColumn columnOf(const PageSource& source) {
    std::vector<QSizeF> sizes;
    sizes.reserve(static_cast<std::size_t>(source.count()));
    for (int page = 0; page < source.count(); ++page) {
        sizes.push_back(source.size(page));
    }
    return PageColumn(std::move(sizes));
}

} // namespace

PagePane::PagePane(PageConversion& conversion, QWidget* parent)
    : QWidget(parent), conversion_(conversion), bar_(new QScrollBar(Qt::Vertical, this)),
      notice_(newLabel(u"lblNotice"_s, this)), progress_(newLabel(u"lblProgress"_s, this)),
      office_(new QAction(this)) {
    setObjectName(u"Olesee"_s);
    setAccessibleName(u"文档视图"_s);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    notice_->setWordWrap(true);
    bar_->setObjectName(u"PageBar"_s);
    bar_->setAccessibleName(u"页面滚动条"_s);
    bar_->setFocusPolicy(Qt::NoFocus); // the keys are the view's
    bar_->setSingleStep(lineStep);
    bar_->hide();
    connect(bar_, &QScrollBar::valueChanged, this, [this] { update(); });
    office_->setObjectName(u"mnuOfficePages"_s);
    office_->setText(conversion_.isAvailable() ? u"用办公套件的排版核对(&O)"_s
                                               : u"用办公套件的排版核对（没有安装 LibreOffice）"_s);
    office_->setCheckable(true);
    connect(office_, &QAction::toggled, this, &PagePane::setOfficeWanted);
    addAction(office_);
    telling_.setSingleShot(true);
    connect(&telling_, &QTimer::timeout, this, &PagePane::tellFailure);
    letGo();
}

PagePane::~PagePane() = default;

QSize PagePane::sizeHint() const {
    constexpr int usualWidth = 480;
    return {usualWidth, 0};
}

// The pages of the file, in the thread that reads it.
std::unique_ptr<OwnPages> PagePane::read() {
    const auto firstWidth = [room = roomWidth()](QSizeF first) {
        return PageColumn({first}).placesFor(room).front().width();
    };
    auto pages = std::make_unique<OwnPages>(path_, fonts_, firstWidth, devicePixelRatioF());
    connect(pages.get(), &OwnPages::found, this, &PagePane::grow);
    connect(pages.get(), &OwnPages::drawn, this, [this] { update(); });
    connect(pages.get(), &OwnPages::failed, this, [this](const word::DocumentRefusal& refusal) {
        if (!showConverted(refusal)) {
            failLate(asShown(refusal));
        }
    });
    return pages;
}

// Where no page is seen yet, what was asked for has failed. It is told behind the signal, whose
// sender may go while a box is open.
void PagePane::failLate(const RunTimeError& failure) {
    say(desktop::descriptionOf(failure));
    if (source_ == nullptr) {
        failure_ = failure;
        telling_.start(0);
    }
}

// While it is told a box is open, and the pane may show something else behind it, or be gone.
void PagePane::tellFailure() {
    const RunTimeError failure = *failure_;
    const Failed tell = std::exchange(lateFailure_, {});
    if (tell && !tell(failure)) {
        lateFailure_ = tell;
        telling_.start(askAgainAfter);
    }
}

void PagePane::show(const QString& path) {
    letGo();
    path_ = path;
    own_ = read();
    const bool isLong = QFileInfo(path_).size() > readInTime;
    try {
        if (own_->wait(isLong ? std::chrono::milliseconds(0) : firstSight)) {
            showPages(*own_);
        } else {
            say(u"正在读取文档……"_s);
        }
    } catch (const word::DocumentRefusal& refusal) {
        if (!showConverted(refusal)) {
            hide();
            throw asShown(refusal);
        }
    }
    watch_.watch(path_);
    QWidget::show();
}

void PagePane::readAnew() {
    wish_.reset();
    next_ = read();
    try {
        if (next_->wait(std::chrono::milliseconds(0))) {
            grow();
        }
    } catch (const word::DocumentRefusal& refusal) {
        if (!showConverted(refusal)) {
            say(desktop::descriptionOf(refusal));
        }
    }
}

// Waits for the office suite's pages of a document that our own engine does not read. False when
// the suite is not there or would not know it either.
bool PagePane::showConverted(const word::DocumentRefusal& refusal) {
    const std::u16string& format = refusal.formatToConvert();
    if (format.empty() || !conversion_.isAvailable()) {
        return false;
    }
    say(u"这是%1，正在由办公套件转换……"_s.arg(QString::fromStdU16String(format)));
    convert();
    return true;
}

// As soon as it reaches as far down as what is seen.
void PagePane::takeOver() {
    const bool reaches = columnOf(*next_).heightFor(roomWidth()) >= top() + height();
    if (source_ != nullptr && !reaches && !next_->isWhole()) {
        return;
    }
    next_->standIn(*own_);
    own_ = std::move(next_);
    say({});
    if (!isOffice_ || !office_->isChecked()) {
        forgetExact();
        showPages(*own_);
    }
    if (office_->isChecked()) {
        convert();
    }
}

void PagePane::hide() {
    letGo();
    QWidget::hide();
}

void PagePane::letGo() {
    watch_.watch({});
    telling_.stop();
    lateFailure_ = {};
    wish_.reset();
    source_ = nullptr;
    forgetExact();
    next_.reset();
    own_.reset();
    path_.clear();
    {
        const QSignalBlocker silent(office_);
        office_->setChecked(false);
    }
    office_->setEnabled(false);
    column_ = PageColumn();
    setAccessibleDescription({});
    progress_->hide();
    say({});
    place();
    bar_->setValue(0);
}

// More pages come below, and nothing above moves.
void PagePane::grow() {
    if (next_ && next_->count() > 0) {
        takeOver();
    } else if (!source_) {
        say({});
        showPages(*own_);
    } else if (source_ == own_.get()) {
        column_ = columnOf(*own_);
        place();
    }
    describe();
}

void PagePane::showPages(PageSource& source) {
    if (!source_) {
        sinceShown_.start();
    }
    telling_.stop();
    source_ = &source;
    // A document that our own engine does not read has no other pages to go back to.
    office_->setEnabled(conversion_.isAvailable() && own_->count() > 0);
    column_ = columnOf(source);
    place();
    describe();
}

void PagePane::describe() {
    if (!source_) {
        return;
    }
    const QString file = QFileInfo(path_).fileName();
    const QString count = isWhole() ? u"共 %1 页"_s : u"已排出 %1 页"_s;
    setAccessibleDescription(file + u'，' + count.arg(pageCount()));
    progress_->setText(count.arg(pageCount()) + u"……"_s);
    progress_->setVisible(!isWhole() && sinceShown_.elapsed() > progressAfter);
    progress_->adjustSize();
    progress_->move(0, height() - progress_->height());
}

// The office suite

void PagePane::setOfficeWanted(bool wanted) {
    if (wanted) {
        say(u"正在由办公套件排版……"_s);
        convert();
        return;
    }
    wish_.reset();
    say({});
    const bool isSeen = isOffice_;
    forgetExact();
    if (isSeen) {
        showInPlace(*own_);
    }
}

void PagePane::forgetExact() {
    isOffice_ = false;
    exact_.reset();
    coming_.reset();
}

void PagePane::convert() {
    wish_ = conversion_.convert(
        path_, [this](const PageConversion::Outcome& outcome) { takeConversion(outcome); });
}

void PagePane::takeConversion(const PageConversion::Outcome& outcome) {
    QString failure = outcome.failure;
    if (failure.isEmpty()) {
        coming_ = std::make_unique<PdfPages>(outcome.pdf);
        if (!coming_->isValid()) {
            failure = u"转换的结果无法打开。"_s;
            QFile::remove(outcome.pdf); // the next look draws it anew
        }
    }
    if (!failure.isEmpty()) {
        coming_.reset();
        office_->setChecked(false);
        if (source_) {
            say(failure + u"这里显示的是系统自己排的版面。"_s);
        } else {
            failLate({error::documentNotShown, failure.toStdU16String()});
        }
        return;
    }
    connect(coming_.get(), &PdfPages::drawn, this, &PagePane::showExactPages);
    const QSizeF first = coming_->size(0);
    coming_->prepare(std::min(pageSeen(), coming_->count() - 1),
                     PageColumn({first}).placesFor(roomWidth()).front().width(),
                     devicePixelRatioF());
}

// Once the page that is seen is drawn, so that no white one comes in between.
void PagePane::showExactPages() {
    if (coming_) {
        say({});
        showInPlace(*coming_);
        exact_ = std::move(coming_);
        isOffice_ = true;
        describe();
    }
    update();
}

// At the same part of the whole.
void PagePane::showInPlace(PageSource& source) {
    const double part = double(top()) / std::max(1, column_.heightFor(roomWidth()));
    showPages(source);
    scrollTo(qRound(part * column_.heightFor(roomWidth())));
}

// Places

int PagePane::roomWidth() const { return std::max(1, width() - bar_->sizeHint().width()); }

int PagePane::top() const { return bar_->value(); }

void PagePane::scrollTo(int top) { bar_->setValue(top); }

int PagePane::pageSeen() const {
    const auto seen =
        std::partition_point(places_.begin(), places_.end(),
                             [this](const QRect& page) { return page.bottom() < top(); });
    return places_.empty() ? 0
                           : static_cast<int>(std::min(seen, places_.end() - 1) - places_.begin());
}

// Room for the bar is always left, so that pages do not change their size when it comes.
void PagePane::place() {
    places_ = column_.placesFor(roomWidth());
    const int bar = bar_->sizeHint().width();
    bar_->setGeometry(width() - bar, 0, bar, height());
    bar_->setPageStep(std::max(1, qRound(height() * pageStep)));
    bar_->setRange(0, std::max(0, column_.heightFor(roomWidth()) - height()));
    bar_->setVisible(bar_->maximum() > 0);
    notice_->setGeometry(0, 0, roomWidth(), notice_->heightForWidth(roomWidth()));
    progress_->move(0, height() - progress_->height());
    update();
}

void PagePane::say(const QString& text) {
    notice_->setText(text);
    notice_->setVisible(!text.isEmpty());
    notice_->setGeometry(0, 0, roomWidth(), notice_->heightForWidth(roomWidth()));
}

void PagePane::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(event->rect(), QColor::fromRgb(desk));
    const QRect seen(0, top(), width(), height());
    painter.translate(0, -top());
    for (auto page = static_cast<std::size_t>(pageSeen());
         page < places_.size() && places_[page].top() <= seen.bottom(); ++page) {
        paintPaper(painter, places_[page]);
        source_->paint(painter, static_cast<int>(page), places_[page]);
    }
}

// The page that is seen stays where it is.
void PagePane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const std::vector<QRect> before = places_;
    const auto page = static_cast<std::size_t>(pageSeen());
    const int from = top();
    place();
    if (page < before.size() && before[page].height() > 0) {
        const double part = double(from - before[page].top()) / before[page].height();
        scrollTo(from == 0 ? 0 : places_[page].top() + qRound(part * places_[page].height()));
    }
}

void PagePane::scrollToPage(int page) {
    if (page >= 0 && page < static_cast<int>(places_.size())) {
        scrollTo(places_[static_cast<std::size_t>(page)].top());
    }
}

void PagePane::keyPressEvent(QKeyEvent* event) {
    const bool byPage = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_PageUp:
        return byPage ? scrollToPage(pageSeen() - 1) : scrollTo(top() - bar_->pageStep());
    case Qt::Key_PageDown:
        return byPage ? scrollToPage(pageSeen() + 1) : scrollTo(top() + bar_->pageStep());
    case Qt::Key_Space:
        return scrollTo(top() + bar_->pageStep());
    case Qt::Key_Up:
        return scrollTo(top() - lineStep);
    case Qt::Key_Down:
        return scrollTo(top() + lineStep);
    case Qt::Key_Home:
        return scrollTo(0);
    case Qt::Key_End:
        return scrollTo(bar_->maximum());
    default:
        QWidget::keyPressEvent(event);
    }
}

void PagePane::wheelEvent(QWheelEvent* event) {
    const int pixels = event->pixelDelta().isNull()
                           ? event->angleDelta().y() * wheelStep / QWheelEvent::DefaultDeltasPerStep
                           : event->pixelDelta().y();
    scrollTo(top() - pixels);
    event->accept();
}

} // namespace qvnd::preview
