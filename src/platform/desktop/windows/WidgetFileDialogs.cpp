#include "platform/desktop/windows/WidgetFileDialogs.h"

#include "platform/error/RunTimeError.h"

#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QLocale>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

// Names the kinds of files in Chinese; the toolkit's translation does not know them.
class FileKinds : public QFileIconProvider {
public:
    QString type(const QFileInfo& file) const override {
        return file.isDir() ? u"文件夹"_s : file.suffix().toUpper() + u" 文件"_s;
    }
};

// Dates in the program's language, not in that of the desktop.
class OwnDates : public QIdentityProxyModel {
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    QVariant data(const QModelIndex& index, int role) const override {
        constexpr int dates = 3; // the column of QFileSystemModel
        const auto* files = qobject_cast<const QFileSystemModel*>(sourceModel());
        if (files != nullptr && index.column() == dates && role == Qt::DisplayRole) {
            return QLocale().toString(files->lastModified(mapToSource(index)),
                                      QLocale::ShortFormat);
        }
        return QIdentityProxyModel::data(index, role);
    }
};

// Several files must exist; one may be typed that does not.
class OpenDialog : public QFileDialog {
public:
    OpenDialog(QWidget* parent, const QString& title, const QString& folder)
        : QFileDialog(parent, title, folder) {
        setProxyModel(new OwnDates(this));
    }

    void accept() override {
        const QStringList typed = selectedFiles();
        if (typed.size() == 1 && !QFileInfo::exists(typed.constFirst())) {
            setFileMode(AnyFile);
        }
        QFileDialog::accept();
    }
};

// Where there is no such folder the dialog would take its name for that of a file.
QString firstFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

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
        folder_ = firstFolder();
    }
    FileKinds kinds; // read by a thread of the dialog to its end
    OpenDialog dialog(parent_, question.title, folder_);
    dialog.setIconProvider(&kinds);
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
