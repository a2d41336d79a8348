#include "generate/windows/BidEditToolbar.h"

#include "outline/windows/OutlineIcons.h"

#include <QLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

// The bar is 450 twips high; the style's own margins would squeeze the buttons in it.
constexpr int sideMargin = 4;
constexpr int narrowMargin = 1;

struct Button {
    QString key; // empty: a separator
    QString tip;
    QString icon;
};

const std::array<Button, BidEditToolbar::positions>& buttons() {
    static const std::array<Button, BidEditToolbar::positions> all{{
        {u"标书设置"_s, u"施工方案设置"_s, u"settings"_s},
        {u"生成标书"_s, u"生成卷宗编制"_s, u"generate"_s},
        {u"浏览"_s, u"浏览卷宗编制"_s, u"browse"_s},
        {u"打开文档"_s, u"打开文档"_s, u"open"_s},
        {},
        {u"打开类似文档"_s, u"打开类似文档"_s, u"similar"_s},
        {u"资料库"_s, u"资料库"_s, u"cabinet"_s},
        {},
        {u"返回"_s, u"返回"_s, u"back"_s},
    }};
    return all;
}

} // namespace

BidEditToolbar::BidEditToolbar(QWidget* parent) : QToolBar(parent) {
    setObjectName(u"TbarBidSet"_s);
    setAccessibleName(u"工具栏"_s);
    setIconSize({20, 20});
    layout()->setContentsMargins(sideMargin, narrowMargin, sideMargin, narrowMargin);
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    std::size_t position = 1;
    for (const Button& button : buttons()) {
        QAction*& action = buttons_[position++];
        if (button.key.isEmpty()) {
            action = addSeparator();
            continue;
        }
        action = addAction(outline::commandIcon(button.icon), button.key);
        action->setToolTip(button.tip);
        action->setObjectName(u"TbarBidSet_"_s + button.key);
        QWidget* face = widgetForAction(action);
        face->setAccessibleName(button.tip);
        face->setFocusPolicy(Qt::TabFocus);
        connect(action, &QAction::triggered, this,
                [this, &button] { emit buttonClick(button.key); });
    }
}

} // namespace qvnd::generate
