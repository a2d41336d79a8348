#pragma once

#include "platform/desktop/FileDialogs.h"

#include <QFileDialog>
#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace qvnd::desktop {

// "标签|*.doc|标签|*.rtf" as the name filters of a file dialog. A label that shows its pattern in
// brackets keeps it; what the dialog lists goes by the pattern alone.
QStringList nameFilters(const QString& filter);

// The desktop's own dialog for opening a file. A name may be typed that does not exist. It opens in
// the folder of the last choice, at first in the user's documents.
class WidgetFileDialogs : public FileDialogs {
public:
    explicit WidgetFileDialogs(QWidget* parent = nullptr) : parent_(parent) {}

    ChosenFile open(const OpenFileQuestion& question) override;
    std::vector<ChosenFile> openSeveral(const OpenFileQuestion& question) override;

private:
    std::vector<ChosenFile> choose(const OpenFileQuestion& question, QFileDialog::FileMode mode);

    QPointer<QWidget> parent_;
    QString folder_;
};

} // namespace qvnd::desktop
