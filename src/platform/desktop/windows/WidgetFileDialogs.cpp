#include "platform/desktop/windows/WidgetFileDialogs.h"

#include "platform/error/RunTimeError.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

// Several files must exist; one may be typed that does not.
class OpenDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    void accept() override {
        const QStringList typed = selectedFiles();
        if (typed.size() == 1 && !QFileInfo::exists(typed.constFirst())) {
            setFileMode(AnyFile);
        }
        QFileDialog::accept();
    }
};

} // namespace

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
    return choose(question, QFileDialog::AnyFile).front();
}

std::vector<ChosenFile> WidgetFileDialogs::openSeveral(const OpenFileQuestion& question) {
    return choose(question, QFileDialog::ExistingFiles);
}

std::vector<ChosenFile> WidgetFileDialogs::choose(const OpenFileQuestion& question,
                                                  QFileDialog::FileMode mode) {
    if (!QFileInfo(folder_).isDir()) {
        folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    }
    OpenDialog dialog(parent_, question.title, folder_);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(mode);
    dialog.setNameFilters(nameFilters(question.filter));
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setDefaultSuffix(question.defaultExtension);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        throw RunTimeError(error::dialogCancelled, u"选定“取消”。");
    }
    std::vector<ChosenFile> chosen;
    for (const QString& path : dialog.selectedFiles()) {
        chosen.push_back({QDir::toNativeSeparators(path), QFileInfo(path).fileName()});
    }
    folder_ = QFileInfo(dialog.selectedFiles().constFirst()).path();
    return chosen;
}

} // namespace qvnd::desktop
