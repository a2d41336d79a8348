#include "platform/desktop/windows/WidgetFileDialogs.h"

#include "platform/error/RunTimeError.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

QStringList nameFilters(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        // Qt takes the last brackets for the pattern; the label's own stay in front of them.
        QString patterns = parts[i + 1];
        filters << parts[i] + u" ("_s + patterns.replace(u';', u' ') + u")"_s;
    }
    return filters;
}

ChosenFile WidgetFileDialogs::open(const OpenFileQuestion& question) {
    if (!QFileInfo(folder_).isDir()) {
        folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    }
    QFileDialog dialog(parent_, question.title, folder_);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(nameFilters(question.filter));
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setDefaultSuffix(question.defaultExtension);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        throw RunTimeError(error::dialogCancelled, u"选定“取消”。");
    }
    const QString path = dialog.selectedFiles().constFirst();
    folder_ = QFileInfo(path).path();
    return {QDir::toNativeSeparators(path), QFileInfo(path).fileName()};
}

} // namespace qvnd::desktop
