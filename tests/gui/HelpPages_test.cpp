#include "platform/desktop/windows/HelpSearch.h"
#include "support/HelpFile.h"
#include "support/PlanEditWindow.h"
#include "support/SourceFolder.h"
#include "support/Text.h"
#include "support/WorkbenchWindow.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

using namespace qvnd;
using namespace Qt::StringLiterals;

namespace {

QString inSource(const QString& path) {
    return QString::fromStdString(test::sourceFolder().string()) + path;
}

// Below src: the texts of its files that bear one of the names.
QString sourceTexts(const QStringList& names) {
    QString all;
    QDirIterator files(inSource(u"/src"_s), names, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly)) {
            all += QString::fromUtf8(file.readAll());
        }
    }
    return all;
}

QStringList matches(const QString& text, const QString& pattern) {
    QStringList found;
    auto match = QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption)
                     .globalMatch(text);
    while (match.hasNext()) {
        found << match.next().captured(1);
    }
    found.removeDuplicates();
    return found;
}

// "添加文档(&E)..." is read as 添加文档.
QString spoken(const QString& caption) {
    QString text = caption;
    static const QRegularExpression mnemonic(u"\\s*\\(&.\\)"_s);
    return text.remove(mnemonic).remove(u'&').remove(u"..."_s).trimmed();
}

struct HelpPages : test::HelpFile {
    QString html(const QUrl& page) { return help.html(page); }
    QString text(const QUrl& page) {
        QTextDocument document;
        document.setHtml(html(page));
        return document.toPlainText();
    }
    QString title(const QUrl& page) {
        return matches(html(page), u"<title>(.*?)</title>"_s).value(0);
    }
    QString allTexts() {
        QString all;
        for (const QUrl& page : help.pages()) {
            all += text(page);
        }
        return all;
    }
    bool has(const QUrl& url) { return !help.data(url.adjusted(QUrl::RemoveFragment)).isEmpty(); }

    QList<const QHelpContentItem*> contents() {
        QHelpContentModel* model = help.engine().contentModel();
        EXPECT_TRUE(QTest::qWaitFor([&] { return model->rowCount() > 0; }));
        QList<const QHelpContentItem*> all;
        add(*model, {}, all);
        return all;
    }
    static void add(const QHelpContentModel& model, const QModelIndex& parent,
                    QList<const QHelpContentItem*>& all) {
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex entry = model.index(row, 0, parent);
            all << model.contentItemAt(entry);
            add(model, entry, all);
        }
    }
    QStringList keywords() {
        QHelpIndexModel* model = help.engine().indexModel();
        EXPECT_TRUE(QTest::qWaitFor([&] { return model->rowCount() > 0; }));
        return model->stringList();
    }
};

TEST_F(HelpPages, EveryPageHasATitleAHeadingAndTheStyle) {
    ASSERT_GT(help.pages().size(), 15);
    for (const QUrl& page : help.pages()) {
        const QString source = html(page);
        EXPECT_FALSE(title(page).isEmpty()) << qPrintable(page.fileName());
        EXPECT_TRUE(source.contains("<h1>" + title(page) + "</h1>")) << qPrintable(page.fileName());
        EXPECT_TRUE(source.contains("href=\"help.css\"")) << qPrintable(page.fileName());
    }
}

TEST_F(HelpPages, LinesOfTheSourceJoinWithoutABlankBetweenChineseCharacters) {
    static const QRegularExpression blank(
        u"[\\x{4e00}-\\x{9fff}，。；：、]\\s*\\n\\s*[\\x{4e00}-\\x{9fff}]"_s);
    for (const QUrl& page : help.pages()) {
        EXPECT_FALSE(html(page).contains(blank)) << qPrintable(page.fileName());
        EXPECT_FALSE(text(page).contains("， ")) << qPrintable(page.fileName());
    }
    EXPECT_TRUE(QString::fromUtf8(help.data(help.home())).contains(blank)) << "the source itself";
}

TEST_F(HelpPages, EveryEntryOfTheContentsLeadsToThePageOfItsTitle) {
    for (const QHelpContentItem* entry : contents()) {
        EXPECT_EQ(title(entry->url()), entry->title()) << qPrintable(entry->url().toString());
    }
}

TEST_F(HelpPages, EveryPageStandsInTheContentsOnce) {
    QList<QUrl> inContents;
    for (const QHelpContentItem* entry : contents()) {
        inContents << entry->url();
    }
    for (const QUrl& page : help.pages()) {
        EXPECT_EQ(inContents.count(page), 1) << qPrintable(page.fileName());
    }
}

TEST_F(HelpPages, EveryKeywordLeadsToOnePage) {
    ASSERT_GT(keywords().size(), 80);
    for (const QString& keyword : keywords()) {
        const QList<QHelpLink> links = help.engine().documentsForKeyword(keyword);
        ASSERT_EQ(links.size(), 1) << qPrintable(keyword);
        EXPECT_TRUE(has(links[0].url)) << qPrintable(keyword);
    }
}

TEST_F(HelpPages, EveryLinkAndEveryPictureIsInTheFile) {
    int pictures = 0;
    for (const QUrl& page : help.pages()) {
        for (const QString& link : matches(html(page), u"href=\"([^\"]*)\""_s)) {
            EXPECT_TRUE(has(page.resolved(QUrl(link))))
                << qPrintable(page.fileName()) << " to " << qPrintable(link);
        }
        for (const QString& picture : matches(html(page), u"src=\"([^\"]*)\""_s)) {
            ++pictures;
            EXPECT_FALSE(QImage::fromData(help.data(page.resolved(QUrl(picture)))).isNull())
                << qPrintable(page.fileName()) << " shows " << qPrintable(picture);
        }
    }
    EXPECT_GT(pictures, 15);
}

TEST_F(HelpPages, EveryPictureIsShownByAPage) {
    QString all;
    for (const QUrl& page : help.pages()) {
        all += html(page);
    }
    const QDir folder(inSource(u"/share/help/pictures"_s));
    for (const QString& picture : folder.entryList({u"*.png"_s})) {
        EXPECT_TRUE(all.contains("pictures/" + picture)) << qPrintable(picture);
    }
}

TEST_F(HelpPages, EveryWindowOfTheProgramHasItsPage) {
    const QStringList windows =
        matches(sourceTexts({u"*.cpp"_s}),
                u"setObjectName\\(u\"((?:MainForm|frm|dlg|Dlg)\\w*|HelpWindow)\"_s\\)"_s);
    EXPECT_GE(windows.size(), 6) << qPrintable(windows.join(' '));
    for (const QString& window : windows) {
        EXPECT_FALSE(help.pageOf(window).isEmpty()) << qPrintable(window);
    }
}

TEST_F(HelpPages, AMessageBoxHasItsPage) { EXPECT_FALSE(help.pageOf("messages").isEmpty()); }

// Guards against a message that was worded anew.
TEST_F(HelpPages, EveryMessageThatIsExplainedIsOneOfTheProgram) {
    static const QRegularExpression blanks(u"\\s|\\\\n|\""_s);
    const QString program = sourceTexts({u"*.cpp"_s}).remove(blanks);
    const QStringList rows = matches(html(help.pageOf("messages")), u"<tr><td>(.*?)</td>"_s);
    ASSERT_GT(rows.size(), 25);
    static const QRegularExpression gaps(u"……| / |…"_s);
    for (const QString& row : rows) {
        for (QString piece : row.split(gaps, Qt::SkipEmptyParts)) {
            EXPECT_TRUE(program.contains(piece.remove(blanks)))
                << qPrintable(row) << ": " << qPrintable(piece);
        }
    }
}

TEST_F(HelpPages, SearchFindsThePageForWhatAPlannerLooksFor) {
    std::vector<desktop::HelpText> texts;
    for (const QUrl& page : help.pages()) {
        texts.push_back({page, title(page), text(page)});
    }
    const desktop::HelpSearch search(std::move(texts));
    const std::pair<QString, QString> expected[] = {{u"删除方案"_s, u"plan-deleting.html"_s},
                                                    {u"打开密码"_s, u"trouble.html"_s},
                                                    {u"工程信息"_s, u"DlgNew.html"_s},
                                                    {u"cfgpath"_s, u"folders.html"_s},
                                                    {u"qvndctl generate"_s, u"generating.html"_s},
                                                    {u"九级深度"_s, u"dlgAddDoc.html"_s},
                                                    {u"存入方案模板"_s, u"templates.html"_s},
                                                    {u"旧版本"_s, u"older.html"_s}};
    for (const auto& [words, page] : expected) {
        QStringList first;
        for (const desktop::HelpHit& hit : search.find(words)) {
            first << hit.page.fileName();
        }
        EXPECT_TRUE(first.mid(0, 4).contains(page))
            << qPrintable(words) << " found " << qPrintable(first.join(' '));
    }
}

struct HelpOnWorkbench : test::WorkbenchWindow {
    test::TemporaryFolder cache;
    desktop::HelpCollection help{test::builtHelpFile(), cache.path("help")};

    QString pageText(const QString& window) {
        QTextDocument document;
        document.setHtml(help.html(help.pageOf(window)));
        return document.toPlainText();
    }
};

TEST_F(HelpOnWorkbench, ItsPagesNameEveryMenuItemAndEveryButton) {
    open();
    const QString told = pageText("frmBid") + pageText("templates");
    int items = 0;
    for (const QMenu* menu : form->findChildren<QMenu*>()) {
        for (const QAction* action : menu->actions()) {
            const QString caption = spoken(action->text());
            if (!action->objectName().startsWith("mnu") || caption.isEmpty()) {
                continue;
            }
            ++items;
            EXPECT_TRUE(told.contains(caption)) << qPrintable(caption);
        }
    }
    EXPECT_GT(items, 20);
    for (const QAction* button : toolbar().actions()) {
        EXPECT_TRUE(button->isSeparator() || told.contains(button->toolTip()))
            << qPrintable(button->toolTip());
    }
}

struct HelpOnPlanEditing : test::PlanEditWindow {
    test::TemporaryFolder cache;
    desktop::HelpCollection help{test::builtHelpFile(), cache.path("help")};
};

TEST_F(HelpOnPlanEditing, ItsPageNamesEveryMenuItemAndEveryButton) {
    open();
    QTextDocument document;
    document.setHtml(help.html(help.pageOf("frmBidEdit")));
    const QString told = document.toPlainText();
    for (const QMenu* menu : form->findChildren<QMenu*>()) {
        for (const QAction* action : menu->actions()) {
            EXPECT_TRUE(told.contains(spoken(action->text()))) << qPrintable(action->text());
        }
    }
    for (const QAction* button : form->findChild<generate::BidEditToolbar*>()->actions()) {
        EXPECT_TRUE(button->isSeparator() || told.contains(button->toolTip()))
            << qPrintable(button->toolTip());
    }
}

} // namespace
