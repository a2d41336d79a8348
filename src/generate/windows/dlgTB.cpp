#include "generate/windows/dlgTB.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

constexpr int barSteps = 1000;
constexpr int usualWidth = 360;
constexpr double visibleStep = 0.0099; // of the bar
constexpr qint64 betweenEventsMs = 40;

} // namespace

dlgTB::dlgTB(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::CustomizeWindowHint |
                          Qt::WindowStaysOnTopHint),
      Label1_(new QLabel(u"正在生成..."_s)), PrgBid_(new QProgressBar) {
    setObjectName(u"dlgTB"_s);
    setWindowTitle(u"生成卷宗编制"_s);
    setAccessibleName(windowTitle());
    setModal(false);
    Label1_->setObjectName(u"Label1"_s);
    Label1_->setMinimumWidth(usualWidth);
    PrgBid_->setObjectName(u"PrgBid"_s);
    PrgBid_->setAccessibleName(u"进度"_s);
    PrgBid_->setRange(0, barSteps);
    auto* cmdStop = new QPushButton(u"停止"_s);
    cmdStop->setObjectName(u"cmdStop"_s);
    cmdStop->setAccessibleName(u"停止"_s);
    cmdStop->setAutoDefault(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1_);
    layout->addWidget(PrgBid_);
    layout->addWidget(cmdStop, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    // A key that was meant for the window behind stops nothing; Tab leads to the button.
    Label1_->setFocusPolicy(Qt::TabFocus);
    Label1_->setFocus();
    connect(cmdStop, &QPushButton::clicked, this, &dlgTB::stopPressed);
}

void dlgTB::setProgress(double part) { PrgBid_->setValue(qRound(part * barSteps)); }

void dlgTB::setLabel(const QString& text) { Label1_->setText(text); }

void dlgTB::reject() { emit stopPressed(); }

void ProgressWindow::show() {
    const bool comesBack = !std::exchange(isMissing_, false);
    if (isStopped_ || !comesBack) {
        return;
    }
    if (!dialog_) {
        dialog_.reset(new dlgTB(parent_));
        QObject::connect(dialog_.get(), &dlgTB::stopPressed, dialog_.get(), [this] { stop(); });
    }
    dialog_->show();
    dialog_->raise();
    serveEvents();
}

void ProgressWindow::hide() {
    if (dialog_) {
        dialog_->hide();
    } else {
        isMissing_ = true;
    }
}

void ProgressWindow::unload() {
    takeDown();
    isStopped_ = false;
    isMissing_ = false;
}

void ProgressWindow::takeDown() {
    hide();
    dialog_.reset();
}

void ProgressWindow::stop() {
    events_.doEvents();
    state_.StopRequested = true;
    isStopped_ = true;
    takeDown();
}

void ProgressWindow::setProgress(double part) {
    if (dialog_) {
        dialog_->setProgress(part);
    }
    if (std::abs(part - servedAt_) >= visibleStep) {
        servedAt_ = part;
        serveEvents();
    } else {
        serveEventsInTime();
    }
}

void ProgressWindow::setLabel(const QString& text) {
    if (dialog_) {
        dialog_->setLabel(text);
    }
    serveEvents();
}

void ProgressWindow::serveEvents() {
    events_.doEvents();
    sinceEvents_.start();
}

void ProgressWindow::serveEventsInTime() {
    if (!sinceEvents_.isValid() || sinceEvents_.elapsed() >= betweenEventsMs) {
        serveEvents();
    }
}

} // namespace qvnd::generate
