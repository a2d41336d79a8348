#include "outline/windows/EmptyPlanHint.h"

#include "outline/Workbench.h"
#include "platform/desktop/windows/NamedButton.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

constexpr int hintMargin = 8;
constexpr double titleScale = 1.3; // against the usual font

QLabel* label(const QString& name) {
    auto* made = new QLabel;
    made->setObjectName(name);
    made->setAlignment(Qt::AlignCenter);
    made->setWordWrap(true);
    return made;
}

QPushButton* hintButton(const QString& name, const QString& caption, const QString& spoken) {
    QPushButton* made = desktop::namedButton(name, caption, spoken);
    made->setAutoDefault(true);
    return made;
}

} // namespace

EmptyPlanHint::EmptyPlanHint(QWidget* viewport)
    : QWidget(viewport), title_(label(u"hintTitle"_s)), text_(label(u"hintText"_s)) {
    setObjectName(u"EmptyPlanHint"_s);
    QFont font = title_->font();
    font.setPointSizeF(font.pointSizeF() * titleScale);
    title_->setFont(font);
    text_->setForegroundRole(QPalette::PlaceholderText);

    auto* create = hintButton(u"hintNew"_s, u"新建方案(&N)..."_s, u"新建方案"_s);
    auto* guide = hintButton(u"hintGuide"_s, u"查看使用说明(&G)"_s, u"查看使用说明"_s);
    connect(create, &QPushButton::clicked, this, &EmptyPlanHint::newPlan);
    connect(guide, &QPushButton::clicked, this, &EmptyPlanHint::openGuide);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(hintMargin, hintMargin, hintMargin, hintMargin);
    layout->addStretch();
    layout->addWidget(title_);
    layout->addWidget(text_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(create);
    buttons->addWidget(guide);
    buttons->addStretch();
    layout->addSpacing(hintMargin);
    layout->addLayout(buttons);
    layout->addStretch();
    viewport->installEventFilter(this);
    hide();
}

void EmptyPlanHint::apply(const Workbench& workbench) {
    if (workbench.TrvTemplate_Us.Count() == 0) {
        title_->setText(u"还没有施工方案"_s);
        text_->setText(u"先新建一个方案，再往里添加文件夹和文档。"_s);
    } else {
        title_->setText(u"没有打开的方案"_s);
        text_->setText(u"在下面的“用户方案”中单击一个方案的名称打开它，或者新建一个方案。"_s);
    }
    const bool isWanted = workbench.TrvCurrent.Count() == 0;
    if (!isWanted && isAncestorOf(window()->focusWidget())) {
        parentWidget()->setFocus();
    }
    setVisible(isWanted);
}

bool EmptyPlanHint::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace qvnd::outline
