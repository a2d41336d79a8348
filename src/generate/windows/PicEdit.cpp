#include "generate/windows/PicEdit.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

constexpr int scrollSteps = 10;
constexpr int scrollBarGap = 3; // 50 twips
const QString invitation = u"双击左边的文档，即可在此预览"_s;

// What a key does to the scroll bar; nothing for other keys.
QAbstractSlider::SliderAction actionOf(int key) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        return QAbstractSlider::SliderSingleStepSub;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        return QAbstractSlider::SliderSingleStepAdd;
    case Qt::Key_Home:
        return QAbstractSlider::SliderToMinimum;
    case Qt::Key_End:
        return QAbstractSlider::SliderToMaximum;
    default:
        return QAbstractSlider::SliderNoAction;
    }
}

} // namespace

PicEdit::PicEdit(QWidget& view, preview::DocumentPreview& document, desktop::Shell& shell,
                 QWidget* parent)
    : QFrame(parent), view_(view), document_(document), shell_(shell), OleEdit_(new QWidget(this)),
      VSEdit_(new QScrollBar(Qt::Vertical, this)), hint_(new QLabel(invitation, this)) {
    setObjectName(u"PicEdit"_s);
    setAccessibleName(u"文档预览"_s);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Midlight);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setMargin(12);
    hint_->installEventFilter(this);
    OleEdit_->setObjectName(u"OleEdit"_s);
    OleEdit_->setAccessibleName(u"文档"_s);
    OleEdit_->hide();
    OleEdit_->installEventFilter(this);
    view_.setParent(OleEdit_);
    view_.setObjectName(u"EditView"_s);
    view_.installEventFilter(this);
    VSEdit_->setObjectName(u"VSEdit"_s);
    VSEdit_->setAccessibleName(u"预览滚动条"_s);
    VSEdit_->setPageStep(1);
    VSEdit_->setFocusPolicy(Qt::StrongFocus);
    VSEdit_->setRange(0, 0);
    VSEdit_->hide();
    connect(VSEdit_, &QScrollBar::valueChanged, this, &PicEdit::scroll);
}

void PicEdit::showHourglass() {
    window()->setCursor(Qt::WaitCursor);
    document_.setFollowing(false);
}

void PicEdit::showNormalPointer() {
    document_.setFollowing(true);
    window()->unsetCursor();
}

void PicEdit::turnPreviewOn() {
    isOn_ = true;
    fit();
}

void PicEdit::turnPreviewOff() {
    isOn_ = false;
    fit();
}

void PicEdit::removePreview() {
    path_.clear();
    refusal_.clear();
    isShown_ = false;
    document_.hide();
    fit();
}

void PicEdit::loadPreview(const QString& path) {
    removePreview();
    isShrunk_ = false;
    VSEdit_->setValue(0);
    path_ = files::resolved(path);
    try {
        document_.show(path_);
    } catch (const RunTimeError& failure) {
        refusal_ = desktop::descriptionOf(failure);
        fit();
        throw;
    }
    isShown_ = true;
    view_.show();
    fit();
}

// The view follows its file by itself.
void PicEdit::updatePreview() { view_.update(); }

void PicEdit::activatePreview() {
    if (path_.isEmpty())
        throw RunTimeError(error::objectNotSet, u"没有浏览的文档，请先浏览一个文档。");
    shell_.open(path_);
}

void PicEdit::shrinkPreview() {
    isShrunk_ = true;
    fit();
}

void PicEdit::setScrollSteps() { fit(); }

// The view of a document that is still being read grows later.
void PicEdit::fit() {
    const bool isSeen = isOn_ && isShown_;
    OleEdit_->setVisible(isSeen);
    hint_->setVisible(!isSeen);
    hint_->setText(isOn_ && !refusal_.isEmpty() ? refusal_ : invitation);
    hint_->setGeometry(rect());
    const int wanted =
        view_.hasHeightForWidth() ? view_.heightForWidth(width()) : view_.sizeHint().height();
    const int whole = std::max(wanted, height());
    OleEdit_->resize(width(), isShrunk_ ? height() : whole);
    const QPoint place = isShrunk_ ? view_.pos() : QPoint();
    view_.setGeometry(0, std::clamp(place.y(), height() - whole, 0), width(), whole);
    const bool isTaller = isSeen && OleEdit_->height() > height();
    VSEdit_->setMaximum(isTaller ? scrollSteps : 0);
    VSEdit_->setVisible(isTaller);
    VSEdit_->raise();
    scroll();
}

void PicEdit::scroll() {
    const int hidden = OleEdit_->height() - height();
    OleEdit_->move(0, hidden > 0 ? -qRound(hidden * 0.1 * VSEdit_->value()) : 0);
}

// A view taller than the pane has nothing to scroll to.
bool PicEdit::scrollsByItself(QEvent& event) {
    if (VSEdit_->maximum() == 0)
        return true;
    if (event.type() == QEvent::Wheel) {
        const bool up = static_cast<QWheelEvent&>(event).angleDelta().y() > 0;
        VSEdit_->triggerAction(up ? QAbstractSlider::SliderSingleStepSub
                                  : QAbstractSlider::SliderSingleStepAdd);
        return false;
    }
    const auto action = actionOf(static_cast<QKeyEvent&>(event).key());
    VSEdit_->triggerAction(action);
    return action == QAbstractSlider::SliderNoAction;
}

bool PicEdit::eventFilter(QObject* watched, QEvent* event) {
    if (watched == OleEdit_ && event->type() == QEvent::LayoutRequest) {
        fit();
        return true;
    }
    if (watched != &view_ && watched != hint_)
        return QFrame::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonDblClick) {
        emit openRequested();
        return true;
    }
    if (watched == hint_)
        return false;
    switch (event->type()) {
    case QEvent::Wheel:
    case QEvent::KeyPress:
        return !scrollsByItself(*event);
    default:
        return false;
    }
}

void PicEdit::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fit();
    VSEdit_->setGeometry(width() - VSEdit_->sizeHint().width() - scrollBarGap, 0,
                         VSEdit_->sizeHint().width(), height() - scrollBarGap);
}

} // namespace qvnd::generate
