#include "startup/windows/frmAbout.h"

#include "platform/error/IgnoringErrors.h"
#include "startup/SystemInformation.h"
#include "startup/windows/Pictures.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace qvnd::startup {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(96, 96);

QLabel* label(const QString& name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setWordWrap(true);
    return label;
}

} // namespace

frmAbout::frmAbout(registry::Registry& registry, desktop::MessageBoxes& messages,
                   desktop::Shell& shell, QWidget* parent)
    : QDialog(parent), registry_(registry), messages_(messages), shell_(shell) {
    setObjectName(u"frmAbout"_s);
    setWindowTitle(u"关于 "_s + QApplication::applicationName());
    auto* picture = label(u"Image1"_s, {});
    picture->setAccessibleName(u"程序图标"_s);
    picture->setPixmap(startup::picture(u"qvnd"_s, pictureSize));
    picture->setAlignment(Qt::AlignTop);

    auto* texts = new QVBoxLayout;
    buildTexts(*texts);
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(picture);
    top->addLayout(texts, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 16);
    layout->setSpacing(16);
    layout->addLayout(top);
    layout->addWidget(buildButtons());
    setMinimumWidth(440);
}

void frmAbout::buildTexts(QVBoxLayout& texts) {
    QLabel* title = label(u"lblTitle"_s, QApplication::applicationName() + u"——QVND"_s);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    title->setFont(font);
    texts.addWidget(title);
    texts.addWidget(label(u"lblVersion"_s, u"版本 "_s + QApplication::applicationVersion()));
    texts.addSpacing(8);
    texts.addWidget(
        label(u"lblDisclaimer"_s,
              u"本程序用于编制施工组织方案。生成的文件在递交之前，请由编制人和审批人核对。"_s));
    texts.addStretch();
}

QWidget* frmAbout::buildButtons() {
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins({});
    row->addStretch();
    const auto add = [&](const QString& name, const QString& caption, auto act) {
        auto* button = new QPushButton(caption);
        button->setObjectName(name);
        connect(button, &QPushButton::clicked, this, act);
        row->addWidget(button);
        return button;
    };
    add(u"cmdOK"_s, u"确定"_s, [this] { accept(); })->setDefault(true);
    add(u"cmdSysInfo"_s, u"系统信息(&S)..."_s, [this] { StartSysInfo(); });
    return buttons;
}

void frmAbout::StartSysInfo() {
    const auto program = systemInformationProgram(registry_);
    if (!program || !ignoringErrors([&] { shell_.run(*program); })) {
        messages_.tell(u"此时系统信息不可用"_s, desktop::Icon::information, u"提示"_s);
    }
}

} // namespace qvnd::startup
