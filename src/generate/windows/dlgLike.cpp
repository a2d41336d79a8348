#include "generate/windows/dlgLike.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/UnexpectedErrors.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <exception>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

constexpr QSize usualSize{640, 320};
constexpr int nameWidth = 220;

} // namespace

dlgLike::dlgLike(modMain& state, const outline::OutlineTree& TrvEdit,
                 const SimilarDocumentsServices& services, QWidget* parent)
    : QDialog(parent), messages_(services.messages), dialog_(state, TrvEdit, services),
      ListView1_(new QTreeWidget) {
    setObjectName(u"dlgLike"_s);
    setWindowTitle(u"打开类似文档"_s);
    setAccessibleName(windowTitle());
    buildList();
    build();
    resize(usualSize);
}

void dlgLike::buildList() {
    ListView1_->setObjectName(u"ListView1"_s);
    ListView1_->setAccessibleName(u"类似文档"_s);
    ListView1_->setHeaderLabels({u"文档名称"_s, u"路径"_s});
    ListView1_->setRootIsDecorated(false);
    ListView1_->setUniformRowHeights(true);
    ListView1_->setTextElideMode(Qt::ElideMiddle);
    ListView1_->header()->resizeSection(0, nameWidth);
    connect(ListView1_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        dialog_.select(item ? std::optional<std::size_t>(ListView1_->indexOfTopLevelItem(item))
                            : std::nullopt);
    });
    connect(ListView1_, &QTreeWidget::itemDoubleClicked, this, &dlgLike::cmdInsert);
}

QPushButton* dlgLike::button(const QString& name, const QString& text, void (dlgLike::*command)()) {
    auto* made = new QPushButton(text);
    made->setObjectName(name);
    made->setAccessibleName(text);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, command);
    return made;
}

void dlgLike::build() {
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(button(u"cmdBrowse"_s, u"浏览..."_s, &dlgLike::cmdBrowse));
    buttons->addStretch();
    cmdInsert_ = button(u"cmdInsert"_s, u"插入文档"_s, &dlgLike::cmdInsert);
    cmdOpen_ = button(u"cmdOpen"_s, u"独立打开"_s, &dlgLike::cmdOpen);
    buttons->addWidget(cmdInsert_);
    buttons->addWidget(cmdOpen_);
    auto* cmdExit = button(u"cmdExit"_s, u"关  闭"_s, &dlgLike::reject);
    cmdExit->setAccessibleName(u"关闭"_s);
    buttons->addWidget(cmdExit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(ListView1_);
    layout->addLayout(buttons);
    ListView1_->setFocus();
}

void dlgLike::Load() {
    try {
        dialog_.Load();
    } catch (const std::exception& failure) {
        messages_.tell(desktop::descriptionOf(runTimeErrorOf(failure)));
    }
    fill();
    select(0);
}

void dlgLike::fill() {
    ListView1_->clear();
    for (const SimilarDocuments::Row& row : dialog_.ListView1()) {
        auto* item = new QTreeWidgetItem({row.text, QDir::toNativeSeparators(row.path)});
        item->setToolTip(1, row.path);
        ListView1_->addTopLevelItem(item);
    }
    cmdInsert_->setEnabled(dialog_.cmdInsertEnabled());
    cmdOpen_->setEnabled(dialog_.cmdOpenEnabled());
}

void dlgLike::select(int row) { ListView1_->setCurrentItem(ListView1_->topLevelItem(row)); }

// A file that has just been chosen is the one that is meant.
void dlgLike::cmdBrowse() {
    const std::size_t before = dialog_.ListView1().size();
    dialog_.cmdBrowse();
    if (dialog_.ListView1().size() > before) {
        fill();
        select(static_cast<int>(before));
    }
}

void dlgLike::cmdInsert() { dialog_.cmdInsert(); }

void dlgLike::cmdOpen() { dialog_.cmdOpen(); }

} // namespace qvnd::generate
