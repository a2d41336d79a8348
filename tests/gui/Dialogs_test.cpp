#include "platform/desktop/windows/WidgetFileDialogs.h"
#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "support/ChangedVariable.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {
namespace {

// Runs `act` on the modal window once it stands.
template <typename Window>
void onceShown(const std::function<void(Window&)>& act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        act(*window);
    });
}

void press(QMessageBox& box, const QString& text) {
    for (QAbstractButton* button : box.buttons()) {
        if (button->text() == text) {
            button->click();
            return;
        }
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    box.reject();
}

TEST(WidgetMessageBoxes, ShowsTextTitleAndIconAsGiven) {
    WidgetMessageBoxes boxes;
    onceShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), u"对不起，名称不能为空!"_s);
        EXPECT_EQ(box.windowTitle(), u"警告！"_s);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        press(box, u"确定(&O)"_s);
    });
    EXPECT_EQ(boxes.show({u"对不起，名称不能为空!"_s, Icon::exclamation, u"警告！"_s, Buttons::ok}),
              Answer::ok);
}

TEST(WidgetMessageBoxes, ABoxWithoutATitleBearsTheProgramsName) {
    WidgetMessageBoxes boxes;
    onceShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), u"施工方案编制"_s);
        box.reject();
    });
    boxes.tell(u"出错"_s);
}

TEST(WidgetMessageBoxes, AnswersWithTheButtonThatWasPressed) {
    WidgetMessageBoxes boxes;
    onceShown<QMessageBox>([](QMessageBox& box) { press(box, u"是(&Y)"_s); });
    EXPECT_TRUE(boxes.ask(u"是否覆盖？"_s, Icon::question));
    onceShown<QMessageBox>([](QMessageBox& box) { press(box, u"否(&N)"_s); });
    EXPECT_FALSE(boxes.ask(u"是否覆盖？"_s, Icon::question));
}

TEST(WidgetMessageBoxes, TheCloseBoxAnswersAsTheButtonThatChangesNothing) {
    WidgetMessageBoxes boxes;
    onceShown<QMessageBox>([](QMessageBox& box) { box.reject(); });
    EXPECT_EQ(boxes.show({u"删除？"_s, Icon::question, {}, Buttons::okCancel}), Answer::cancel);
    onceShown<QMessageBox>([](QMessageBox& box) { box.reject(); });
    EXPECT_FALSE(boxes.ask(u"删除？"_s, Icon::question));
}

TEST(WidgetFileDialogs, FiltersKeepTheirLabelsAndListByThePatternAlone) {
    EXPECT_EQ(nameFilters(u"Word 文档 (*.doc)|*.doc|RTF  格式 (*.rft)|*.rtf"_s),
              (QStringList{u"Word 文档 (*.doc) (*.doc)"_s, u"RTF  格式 (*.rft) (*.rtf)"_s}));
}

TEST(WidgetFileDialogs, CancellingIsTheErrorThatCommandsExpect) {
    WidgetFileDialogs dialogs;
    onceShown<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"打开文档"_s);
        dialog.reject();
    });
    try {
        dialogs.open({u"打开文档"_s, u"Word文档 (*.doc)|*.doc"_s, u"doc"_s});
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error::dialogCancelled);
    }
}

// Makes the file and chooses it in the dialog.
ChosenFile choose(WidgetFileDialogs& dialogs, const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    onceShown<QFileDialog>([&](QFileDialog& dialog) {
        dialog.selectFile(path);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    return dialogs.open({u"打开文档"_s, u"Word文档 (*.doc)|*.doc"_s, u"doc"_s});
}

TEST(WidgetFileDialogs, OpensInTheFolderOfTheLastChoice) {
    const QTemporaryDir folder;
    WidgetFileDialogs dialogs;
    choose(dialogs, folder.filePath(u"a.doc"_s));
    onceShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), folder.path());
        dialog.reject();
    });
    EXPECT_THROW(dialogs.open({u"打开文档"_s, u"Word文档 (*.doc)|*.doc"_s, u"doc"_s}),
                 RunTimeError);
}

TEST(WidgetFileDialogs, AnswersWithTheFileAndItsTitle) {
    const QTemporaryDir folder;
    WidgetFileDialogs dialogs;
    const QString file = folder.filePath(u"土方 开挖.doc"_s);
    const ChosenFile chosen = choose(dialogs, file);
    EXPECT_EQ(chosen.fileTitle, u"土方 开挖.doc"_s);
    EXPECT_EQ(chosen.fileName, file);
}

// On a desktop that speaks English, as one without a language does.
TEST(WidgetFileDialogs, ListKindsAndDatesInChinese) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"甲.doc"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.setFileTime(QDateTime(QDate(2026, 5, 1), QTime(9, 30)), QFileDevice::FileModificationTime);
    file.close();
    QDir(folder.path()).mkdir(u"图纸"_s);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    onceShown<QFileDialog>([&](QFileDialog& dialog) {
        dialog.setDirectory(folder.path());
        const auto& list = *dialog.findChild<QTreeView*>(u"treeView"_s);
        const auto shown = [&list](int row, int column) {
            return list.model()->index(row, column, list.rootIndex()).data().toString();
        };
        ASSERT_TRUE(test::waitFor([&] { return list.model()->rowCount(list.rootIndex()) == 2; }));
        EXPECT_EQ(shown(0, 2), u"文件夹"_s);
        EXPECT_EQ(shown(1, 2), u"DOC 文件"_s);
        EXPECT_EQ(shown(1, 3), u"2026/5/1 09:30"_s);
        dialog.reject();
    });
    WidgetFileDialogs dialogs;
    EXPECT_THROW(dialogs.open({u"打开文档"_s, u"Word文档 (*.doc)|*.doc"_s, u"doc"_s}),
                 RunTimeError);
    QLocale::setDefault(before);
}

TEST(WidgetFileDialogs, WithoutAFolderOfDocumentsTheDialogOpensAtHome) {
    const QTemporaryDir home;
    const test::ChangedVariable place("HOME", home.path().toUtf8());
    onceShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), home.path());
        EXPECT_EQ(dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->text(), QString());
        dialog.reject();
    });
    WidgetFileDialogs dialogs;
    EXPECT_THROW(dialogs.open({u"打开文档"_s, u"Word文档 (*.doc)|*.doc"_s, u"doc"_s}),
                 RunTimeError);
}

// Chooses in the dialog for several files what `select` does.
std::vector<ChosenFile> chooseSeveral(const std::function<void(QFileDialog&)>& select) {
    WidgetFileDialogs dialogs;
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    onceShown<QFileDialog>([&](QFileDialog& dialog) {
        select(dialog);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    return dialogs.openSeveral({u"打开文档"_s, u"Word文档 (*.doc)|*.doc"_s, u"doc"_s});
}

void typeInto(const QFileDialog& dialog, const QString& names) {
    dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(names);
}

TEST(WidgetFileDialogs, AnswersWithSeveralFiles) {
    const QTemporaryDir folder;
    for (const QString& name : {u"甲.doc"_s, u"乙.doc"_s}) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const auto chosen = chooseSeveral([&](QFileDialog& dialog) {
        dialog.setDirectory(folder.path());
        typeInto(dialog, u"\"甲.doc\" \"乙.doc\""_s);
    });
    ASSERT_EQ(chosen.size(), 2U);
    EXPECT_EQ(chosen[0].fileName, folder.filePath(u"甲.doc"_s));
    EXPECT_EQ(chosen[1].fileTitle, u"乙.doc"_s);
}

TEST(WidgetFileDialogs, WhereSeveralCanBeChosenANameThatDoesNotExistCanBeTyped) {
    const QTemporaryDir folder;
    const auto chosen = chooseSeveral([&](QFileDialog& dialog) {
        dialog.setDirectory(folder.path());
        typeInto(dialog, u"新的"_s);
    });
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].fileName, folder.filePath(u"新的.doc"_s));
}

} // namespace
} // namespace qvnd::desktop
