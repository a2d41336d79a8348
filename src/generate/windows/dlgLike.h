#pragma once

#include "generate/SimilarDocuments.h"

#include <QDialog>

class QPushButton;
class QTreeWidget;

namespace qvnd::generate {

// The dialog "打开类似文档": lists template documents of the selected document's name, inserts one
// into it or opens one alone.
class dlgLike : public QDialog {
    Q_OBJECT

public:
    // All of it outlives the dialog.
    dlgLike(modMain& state, const outline::OutlineTree& TrvEdit,
            const SimilarDocumentsServices& services, QWidget* parent = nullptr);

    // The load: an error shows its description, with the rows found before it in the list.
    void Load();

private:
    void cmdBrowse();
    void cmdInsert();
    void build();
    void buildList();
    QPushButton* button(const QString& name, const QString& text, void (dlgLike::*command)());
    void cmdOpen();
    void fill();
    void select(int row);

    desktop::MessageBoxes& messages_;
    SimilarDocuments dialog_;
    QTreeWidget* ListView1_;
    QPushButton* cmdInsert_ = nullptr;
    QPushButton* cmdOpen_ = nullptr;
};

} // namespace qvnd::generate
