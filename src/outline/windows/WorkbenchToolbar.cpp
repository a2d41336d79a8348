#include "outline/windows/WorkbenchToolbar.h"

#include "outline/Workbench.h"
#include "outline/windows/OutlineIcons.h"

#include <QLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

// The bar is 450 twips high; the style's own margins would squeeze the buttons in it.
constexpr int sideMargin = 4;
constexpr int narrowMargin = 1;

struct Button {
    QString key; // empty: a separator
    QString tip;
    QString icon;
};

const std::array<Button, WorkbenchToolbar::positions>& buttons() {
    static const std::array<Button, WorkbenchToolbar::positions> all{{
        {u"同夹"_s, u"添加同级文件夹"_s, u"folder-beside"_s},
        {u"下夹"_s, u"添加下级文件夹"_s, u"folder-below"_s},
        {},
        {u"同档"_s, u"添加同级文档"_s, u"document-beside"_s},
        {u"下档"_s, u"添加下级文档"_s, u"document-below"_s},
        {},
        {u"删除"_s, u"删除"_s, u"delete"_s},
        {u"重命名"_s, u"重命名"_s, u"rename"_s},
        {u"浏览"_s, u"浏览文档"_s, u"browse"_s},
        {},
        {u"复制"_s, u"复制"_s, u"copy"_s},
        {u"粘贴"_s, u"粘贴"_s, u"paste"_s},
        {},
        {u"编辑"_s, u"标书编辑"_s, u"edit"_s},
        {u"退出"_s, u"退出"_s, u"exit"_s},
    }};
    return all;
}

} // namespace

WorkbenchToolbar::WorkbenchToolbar(QWidget* parent) : QToolBar(parent) {
    setObjectName(u"TbarBid"_s);
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
        action = addAction(commandIcon(button.icon), button.key);
        action->setToolTip(button.tip);
        action->setObjectName(u"TbarBid_"_s + button.key);
        QWidget* face = widgetForAction(action);
        face->setAccessibleName(button.tip);
        face->setFocusPolicy(Qt::TabFocus);
        connect(action, &QAction::triggered, this,
                [this, &button] { emit buttonClick(button.key); });
    }
}

void WorkbenchToolbar::apply(const Workbench& workbench) {
    for (std::size_t position = 1; position <= positions; ++position) {
        buttons_[position]->setEnabled(workbench.TbarBid[position]);
    }
}

} // namespace qvnd::outline
