#include "outline/windows/CommandToolbar.h"

#include "outline/windows/OutlineIcons.h"

#include <QLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

// The bar is 450 twips high; the style's own margins would squeeze the buttons in it.
constexpr int sideMargin = 4;
constexpr int narrowMargin = 1;

} // namespace

CommandToolbar::CommandToolbar(const QString& name, const std::vector<Button>& buttons,
                               QWidget* parent)
    : QToolBar(parent) {
    setObjectName(name);
    setAccessibleName(u"工具栏"_s);
    setIconSize({20, 20});
    layout()->setContentsMargins(sideMargin, narrowMargin, sideMargin, narrowMargin);
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (const Button& button : buttons) {
        add(button);
    }
}

void CommandToolbar::add(const Button& button) {
    if (button.key.isEmpty()) {
        addSeparator();
        return;
    }
    QAction* action = addAction(commandIcon(button.icon), button.key);
    action->setToolTip(button.tip);
    action->setObjectName(objectName() + u'_' + button.key);
    QWidget* face = widgetForAction(action);
    face->setAccessibleName(button.tip);
    face->setFocusPolicy(Qt::TabFocus);
    connect(action, &QAction::triggered, this, [this, key = button.key] { emit buttonClick(key); });
}

} // namespace qvnd::outline
