#include "outline/windows/PreviewFrame.h"

#include <QLabel>
#include <QResizeEvent>
#include <QScrollBar>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

constexpr int scrollSteps = 10;
constexpr int scrollBarGap = 4; // 60 twips

} // namespace

PreviewFrame::PreviewFrame(QWidget& Olesee, preview::DocumentPreview& document, QWidget* parent)
    : QFrame(parent), Olesee_(Olesee), document_(document), PicSee_(new QWidget(this)),
      VSSee_(new QScrollBar(Qt::Vertical, this)),
      hint_(new QLabel(u"双击文档即可在此预览"_s, PicSee_)) {
    setObjectName(u"fraSee"_s);
    setAccessibleName(u"文档预览"_s);
    setFrameShape(QFrame::StyledPanel);
    PicSee_->setObjectName(u"PicSee"_s);
    PicSee_->setAccessibleName(u"预览区"_s);
    PicSee_->setAutoFillBackground(true);
    PicSee_->setBackgroundRole(QPalette::Midlight);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    PicSee_->installEventFilter(this);
    VSSee_->setObjectName(u"VSSee"_s);
    VSSee_->setAccessibleName(u"预览滚动条"_s);
    VSSee_->setRange(0, 0);
    VSSee_->setSingleStep(1);
    VSSee_->setPageStep(1);
    VSSee_->setFocusPolicy(Qt::StrongFocus);
    Olesee_.setParent(PicSee_);
    Olesee_.setObjectName(u"Olesee"_s);
    Olesee_.hide();
    Olesee_.installEventFilter(this);
    connect(VSSee_, &QScrollBar::valueChanged, this, &PreviewFrame::scrollView);
}

void PreviewFrame::showDocument(const QString& path) {
    document_.show(path);
    path_ = path;
    Olesee_.show();
    Olesee_.move(0, 0);
    fitView();
}

void PreviewFrame::hideDocument() {
    document_.hide();
    Olesee_.hide();
    fitView();
}

int PreviewFrame::viewHeight() const {
    const int width = PicSee_->width();
    const int wanted =
        Olesee_.hasHeightForWidth() ? Olesee_.heightForWidth(width) : Olesee_.sizeHint().height();
    return std::max(wanted, PicSee_->height());
}

// A view that fits beside the scroll bar needs none and has all of the frame.
void PreviewFrame::fitView() {
    const QRect inside = contentsRect();
    const int gap = VSSee_->sizeHint().width() + scrollBarGap;
    PicSee_->setGeometry(inside.adjusted(0, 0, -gap, 0));
    const bool taller = !Olesee_.isHidden() && viewHeight() > PicSee_->height();
    const double place = -double(Olesee_.y()) / std::max(1, Olesee_.height());
    if (!taller) {
        PicSee_->setGeometry(inside);
    }
    VSSee_->setMaximum(taller ? scrollSteps : 0);
    VSSee_->setVisible(taller);
    hint_->setVisible(Olesee_.isHidden());
    hint_->resize(PicSee_->size());
    Olesee_.resize(PicSee_->width(), taller ? viewHeight() : PicSee_->height());
    Olesee_.move(0, taller ? -qRound(place * Olesee_.height()) : 0);
}

void PreviewFrame::scrollView() {
    const int height = Olesee_.height();
    Olesee_.move(0, height > PicSee_->height() ? -qRound(VSSee_->value() * height * 0.1) : 0);
}

// The view may have moved itself.
void PreviewFrame::followView() {
    const QSignalBlocker asItIs(VSSee_);
    VSSee_->setValue(qRound(-double(Olesee_.y()) * scrollSteps / std::max(1, Olesee_.height())));
}

bool PreviewFrame::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &Olesee_ && event->type() == QEvent::Move) {
        followView();
    } else if (watched == &Olesee_ && event->type() == QEvent::MouseButtonDblClick) {
        emit openRequested(path_);
        return true;
    } else if (watched == PicSee_ && event->type() == QEvent::LayoutRequest) {
        fitView();
    } else if (watched == PicSee_ && event->type() == QEvent::Wheel) {
        const bool up = static_cast<QWheelEvent*>(event)->angleDelta().y() > 0;
        VSSee_->triggerAction(up ? QScrollBar::SliderSingleStepSub
                                 : QScrollBar::SliderSingleStepAdd);
        return true;
    }
    return QFrame::eventFilter(watched, event);
}

void PreviewFrame::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    const QRect inside = contentsRect();
    const int bar = VSSee_->sizeHint().width();
    VSSee_->setGeometry(inside.right() - bar + 1, inside.top(), bar, inside.height());
    fitView();
}

} // namespace qvnd::outline
