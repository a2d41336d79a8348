#include "outline/windows/NoteBar.h"

#include "platform/desktop/windows/NamedButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

constexpr int barMargin = 6;
constexpr qreal tint = 0.15; // of the highlight over the window's own colour

QPushButton* barButton(const QString& name, const QString& caption) {
    QPushButton* made = desktop::namedButton(name, caption, caption);
    made->setFocusPolicy(Qt::TabFocus);
    made->setAutoDefault(true);
    return made;
}

QColor mixed(const QColor& base, const QColor& over) {
    const auto part = [](float one, float other) {
        return static_cast<float>(one + (other - one) * tint);
    };
    return QColor::fromRgbF(part(base.redF(), over.redF()), part(base.greenF(), over.greenF()),
                            part(base.blueF(), over.blueF()));
}

} // namespace

NoteBar::NoteBar(QWidget* parent)
    : QWidget(parent), text_(new QLabel), undo_(barButton(u"noteUndo"_s, u"撤消"_s)),
      redo_(barButton(u"noteRedo"_s, u"恢复"_s)), details_(barButton(u"noteDetails"_s, u"详情"_s)) {
    setObjectName(u"NoteBar"_s);
    setAccessibleName(u"操作提示"_s);
    text_->setObjectName(u"noteText"_s);
    text_->setWordWrap(true);
    text_->setTextFormat(Qt::PlainText);
    connect(undo_, &QPushButton::clicked, this, &NoteBar::undo);
    connect(redo_, &QPushButton::clicked, this, &NoteBar::redo);
    connect(details_, &QPushButton::clicked, this, &NoteBar::details);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(barMargin, barMargin, barMargin, barMargin);
    layout->addWidget(text_, 1);
    layout->addWidget(undo_);
    layout->addWidget(redo_);
    layout->addWidget(details_);
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window,
                     mixed(colours.color(QPalette::Window), colours.color(QPalette::Highlight)));
    setPalette(colours);
    hide();
}

void NoteBar::tell(const QString& text, NoteOffer offer) {
    offer_ = offer;
    text_->setText(text);
    text_->setAccessibleName(text);
    undo_->setVisible(offer == NoteOffer::undo);
    redo_->setVisible(offer == NoteOffer::redo);
    details_->setVisible(offer != NoteOffer::nothing);
    show();
    emit changed();
}

void NoteBar::clear() {
    if (!isHidden()) {
        hide();
        emit changed();
    }
}

QString NoteBar::text() const { return text_->text(); }

NoteOffer NoteBar::offer() const { return isHidden() ? NoteOffer::nothing : offer_; }

int NoteBar::wantedHeight(int width) const { return isHidden() ? 0 : heightForWidth(width); }

} // namespace qvnd::outline
