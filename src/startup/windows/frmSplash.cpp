#include "startup/windows/frmSplash.h"

#include "startup/windows/Pictures.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>

namespace qvnd::startup {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize imageSize(520, 300);

} // namespace

frmSplash::frmSplash()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      waiting_(new QLabel(this)) {
    setObjectName(u"frmSplash"_s);
    setWindowTitle(u"TREL卷宗编制系统"_s);
    auto* image = new QLabel(this);
    image->setObjectName(u"Image1"_s);
    image->setAccessibleName(u"启动画面"_s);
    image->setPixmap(picture(u"splash"_s, imageSize));
    image->setGeometry(QRect(QPoint(0, 0), imageSize));
    setFixedSize(imageSize);

    auto* label = new QLabel(u"TREL卷宗编制系统"_s, this);
    label->setObjectName(u"Label1"_s);
    label->setAlignment(Qt::AlignHCenter);
    label->setGeometry(0, 206, imageSize.width(), 48);
    label->setStyleSheet(u"color: white; font-size: 26px; font-weight: bold;"_s);
    waiting_->setObjectName(u"waiting"_s);
    waiting_->setAlignment(Qt::AlignHCenter);
    waiting_->setWordWrap(true);
    waiting_->setGeometry(16, 250, imageSize.width() - 32, 44);
    waiting_->setStyleSheet(u"color: white;"_s);
    waiting_->raise();
    if (const QScreen* screen = QApplication::primaryScreen()) {
        move(screen->geometry().center() - rect().center());
    }
}

void frmSplash::tell(const QString& text) { waiting_->setText(text); }

void WidgetSplash::show() {
    if (!form_) {
        form_ = std::make_unique<frmSplash>();
        form_->show();
    }
    QApplication::processEvents();
}

void WidgetSplash::tell(const QString& text) {
    if (form_) {
        form_->tell(text);
        QApplication::processEvents();
    }
}

void WidgetSplash::unload() { form_.reset(); }

} // namespace qvnd::startup
