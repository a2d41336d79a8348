#include "generate/SimilarDocuments.h"

#include "generate/GenerationWorld.h"
#include "outline/TemplateWorld.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/engine/EngineApplication.h"
#include "support/Errors.h"
#include "support/FixedFonts.h"
#include "support/Text.h"

#include <functional>
#include <stdexcept>

using namespace qvnd;
using namespace qvnd::test;
using generate::SimilarDocuments;

namespace {

// The plan P with the document 管理目标 (P.1.2), shown in TrvEdit.
struct SimilarDocumentsDialog : testing::Test, TemplateWorld {
    SimilarDocumentsDialog() {
        makePlan("P", {{"P", "P"}, {"P.1", "部署"}, {"P.1.2", "管理目标", "是"}});
        const auto rs = state.gDbUser->OpenRecordset(QStringLiteral("Select * from P order by ID"));
        outline::FillOutlineTree(*rs, TrvEdit);
        TrvEdit.Select(&TrvEdit.Item(QStringLiteral("P.1.2")));
    }

    void makeNamedTemplate(const QString& name, const std::vector<OutlineRowText>& rows) {
        makeTable(*state.gDbTemplate, name, rows);
        registerName(*state.gDbTemplate, name);
    }
    // Two templates, both with a document of that name.
    void makeTwoTemplates() {
        makeNamedTemplate("甲", {{"甲", "甲"},
                                 {"甲.1", "管理目标", "是"},
                                 {"甲.2", "别的", "是"},
                                 {"甲.3", "管理目标", "是"}});
        makeNamedTemplate("乙", {{"乙", "乙"}, {"乙.4", "管理目标", "是"}});
    }
    generate::SimilarDocumentsServices surroundings() {
        return {messages, dialogs, windows, *factory, session, screen, longRun};
    }
    SimilarDocuments loaded() {
        SimilarDocuments dialog(state, TrvEdit, surroundings());
        dialog.Load();
        return dialog;
    }
    QStringList paths(const SimilarDocuments& dialog) const {
        QStringList found;
        for (const auto& row : dialog.ListView1()) {
            found << QString(row.path).remove(folder.root());
        }
        return found;
    }
    std::string logged() const {
        std::string lines;
        for (const auto& line : log.lines) {
            lines += line + "\n";
        }
        return lines;
    }
    void expectMessage(const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, icon);
        EXPECT_EQ(messages.shown[0].title, title);
    }

    outline::OutlineTree TrvEdit{QStringLiteral("TrvEdit")};
    FakeWordProcessorWindows windows;
    generate::WordSession session;
    RecordingScreen screen{log};
    word::ApplicationFactory* factory = &word;
};

// The list

TEST_F(SimilarDocumentsDialog, TheLastTemplateComesFirstAndWithinOneTheRowsKeepTheirOrder) {
    makeTwoTemplates();
    const auto dialog = loaded();
    EXPECT_EQ(paths(dialog), QStringList({"Sys/标书模板/乙/乙.4.doc", "Sys/标书模板/甲/甲.1.doc",
                                          "Sys/标书模板/甲/甲.3.doc"}));
    EXPECT_EQ(dialog.ListView1()[0].text, "管理目标");
}

TEST_F(SimilarDocumentsDialog, OnlyDocumentsOfThatNameAreListed) {
    makeNamedTemplate("甲",
                      {{"甲", "管理目标"}, {"甲.1", "管理目标"}, {"甲.2", "管理目标2", "是"}});
    EXPECT_TRUE(loaded().ListView1().empty());
}

TEST_F(SimilarDocumentsDialog, TheFolderIsTheFirstPartOfTheKeyAndNotTheTablesName) {
    makeNamedTemplate("甲", {{"甲", "甲"}, {"丙.7", "管理目标", "是"}});
    EXPECT_EQ(paths(loaded()), QStringList{"Sys/标书模板/丙/丙.7.doc"});
}

TEST_F(SimilarDocumentsDialog, TheFileNeedNotBeThere) {
    makeTwoTemplates();
    EXPECT_FALSE(folder.exists("Sys/标书模板/甲"));
    EXPECT_EQ(loaded().ListView1().size(), 3U);
}

TEST_F(SimilarDocumentsDialog, AFolderOrTheRootListsNothingAndLeavesTheButtons) {
    makeNamedTemplate("甲", {{"甲", "部署", "是"}, {"甲.1", "P", "是"}});
    for (const char* key : {"P.1", "P"}) {
        TrvEdit.Select(&TrvEdit.Item(QString(key)));
        const auto dialog = loaded();
        EXPECT_TRUE(dialog.ListView1().empty());
        EXPECT_TRUE(dialog.cmdInsertEnabled());
        EXPECT_TRUE(dialog.cmdOpenEnabled());
    }
}

TEST_F(SimilarDocumentsDialog, TheButtonsAreAvailableWithRowsAndNotWithNone) {
    EXPECT_FALSE(loaded().cmdInsertEnabled());
    EXPECT_FALSE(loaded().cmdOpenEnabled());
    makeTwoTemplates();
    EXPECT_TRUE(loaded().cmdInsertEnabled());
    EXPECT_TRUE(loaded().cmdOpenEnabled());
}

TEST_F(SimilarDocumentsDialog, AQuoteInTheNameBreaksTheStatement) {
    makeTwoTemplates();
    TrvEdit.setText(*TrvEdit.SelectedItem(), "管理'目标");
    SimilarDocuments dialog(state, TrvEdit, surroundings());
    EXPECT_EQ(errorNumberOf([&] { dialog.Load(); }), error::syntaxError);
    EXPECT_TRUE(dialog.ListView1().empty());
}

TEST_F(SimilarDocumentsDialog, AnUnlistedTableEndsTheListWithTheRowsBefore) {
    makeTwoTemplates();
    registerName(*state.gDbTemplate, "无");
    SimilarDocuments dialog(state, TrvEdit, surroundings());
    EXPECT_EQ(errorNumberOf([&] { dialog.Load(); }), error::tableNotFound);
    EXPECT_EQ(dialog.ListView1().size(), 3U);
}

TEST_F(SimilarDocumentsDialog, NamesWithWildcardsEmojiAndRightToLeftTextAreTakenAsTheyAre) {
    const QString name = "🏗️ [a-z]*? مشروع";
    makeNamedTemplate("甲", {{"甲", "甲"}, {"甲.1", name, "是"}, {"甲.2", "🏗️ ax", "是"}});
    TrvEdit.setText(*TrvEdit.SelectedItem(), name);
    EXPECT_EQ(paths(loaded()), QStringList{"Sys/标书模板/甲/甲.1.doc"});
}

TEST_F(SimilarDocumentsDialog, BrowsingAppendsTheChosenFileAtTheEnd) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialogs.chosen = folder.path("别处/目标.旧.doc");
    dialog.cmdBrowse();
    EXPECT_EQ(dialog.ListView1().size(), 4U);
    EXPECT_EQ(dialog.ListView1()[3].text, "目标");
    EXPECT_EQ(dialog.ListView1()[3].path, folder.path("别处/目标.旧.doc"));
    EXPECT_EQ(dialogs.asked[0].title, "打开文档");
    EXPECT_EQ(dialogs.asked[0].filter, "Word文档(*.doc)|*.doc");
}

TEST_F(SimilarDocumentsDialog, CancellingTheFileDialogEndsInSilence) {
    auto dialog = loaded();
    dialog.cmdBrowse();
    EXPECT_TRUE(dialog.ListView1().empty());
    EXPECT_TRUE(messages.shown.empty());
}

// Inserting

TEST_F(SimilarDocumentsDialog, InsertsInFrontAndShowsTheResultInThisOrder) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(1);
    EXPECT_TRUE(dialog.cmdInsert());
    EXPECT_EQ(logged(), R"(create Word.Application
Documents.Open 用户模板/P/P.1.2.doc
OpenedDocument.Activate
Selection.InsertFile Sys/标书模板/甲/甲.1.doc
ActiveDocument.Close true
preview on
preview load 用户模板/P/P.1.2.doc
preview update
Application.Quit
Application dropped
)");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SimilarDocumentsDialog, TheKeyIsTrimmedForTheNameOfItsFile) {
    makeTwoTemplates();
    TrvEdit.Select(&TrvEdit.AddChild("P", "P.7 ", "管理目标", outline::image::document,
                                     outline::image::documentSelected));
    auto dialog = loaded();
    dialog.select(0);
    EXPECT_TRUE(dialog.cmdInsert());
    EXPECT_TRUE(logged().find("Documents.Open 用户模板/P/P.7.doc\n") != std::string::npos)
        << logged();
}

TEST_F(SimilarDocumentsDialog, WithAnEmptyListTheInvisibleWordProcessorIsLeftRunning) {
    auto dialog = loaded();
    EXPECT_FALSE(dialog.cmdInsert());
    EXPECT_EQ(logged(), "create Word.Application\n");
    EXPECT_TRUE(session.held());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SimilarDocumentsDialog, NothingIsStartedWhileAWordProcessorHoldsADocumentOpen) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    windows.open = true;
    EXPECT_FALSE(dialog.cmdInsert());
    EXPECT_EQ(logged(), "");
    expectMessage("对不起，请先关闭Word文档！", desktop::Icon::information, "");
    EXPECT_EQ(windows.asked,
              QStringList({folder.path("用户模板/P"), folder.path("Sys/标书模板/乙")}));
}

TEST_F(SimilarDocumentsDialog, ASecondInsertionInTheFirstIsRefused) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    log.at("Selection.InsertFile", [&] { EXPECT_FALSE(dialog.cmdInsert()); });
    EXPECT_TRUE(dialog.cmdInsert());
    expectMessage("对不起，请先关闭Word文档！", desktop::Icon::information, "");
    EXPECT_TRUE(dialog.cmdInsert()) << "the next one may run again";
}

TEST_F(SimilarDocumentsDialog, AnInsertionShowsItsProgressAndEndsIt) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(1);
    dialog.cmdInsert();
    EXPECT_EQ(longRun.shown, QStringList({"插入文档 0", "正在打开“P.1.2.doc”……",
                                          "正在插入“甲.1.doc”……", "正在保存“P.1.2.doc”……"}));
    EXPECT_FALSE(longRun.running);
}

TEST_F(SimilarDocumentsDialog, ACancelledInsertionSavesNothingAndSaysNothing) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(1);
    longRun.cancel = [this] { return longRun.shown.size() == 3; };
    EXPECT_FALSE(dialog.cmdInsert());
    EXPECT_EQ(logged().find("Close"), std::string::npos) << logged();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(longRun.running);
    EXPECT_FALSE(session.held()) << "nobody sees the changed document";
    log.failAt("Documents.Open", error::invalidCall, u"转换已停止。");
    longRun.cancel = [] { return true; };
    EXPECT_FALSE(dialog.cmdInsert());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SimilarDocumentsDialog, CancelledWhileTheTargetIsReadTheOtherIsNotRead) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(1);
    longRun.cancel = [] { return true; };
    EXPECT_FALSE(dialog.cmdInsert());
    EXPECT_EQ(logged(), "create Word.Application\nDocuments.Open 用户模板/P/P.1.2.doc\n"
                        "OpenedDocument.Activate\nApplication dropped\n");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SimilarDocumentsDialog, OnceTheTargetIsSavedNothingOffersToCancel) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(1);
    log.at("Selection.InsertFile", [this] { EXPECT_TRUE(longRun.canCancel); });
    log.at("ActiveDocument.Close", [this] {
        EXPECT_FALSE(longRun.canCancel);
        longRun.cancel = [] { return true; };
    });
    EXPECT_TRUE(dialog.cmdInsert()) << "too late";
    EXPECT_NE(logged().find("preview load 用户模板/P/P.1.2.doc"), std::string::npos) << logged();
    EXPECT_FALSE(longRun.running);
}

TEST_F(SimilarDocumentsDialog, WhatIsNoRunTimeErrorIsToldEachTimeAndTheNextInsertionMayRun) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    for (int i = 0; i < 2; ++i) {
        log.at("ActiveDocument.Close", [] { throw std::logic_error("odd"); });
        messages.shown.clear();
        EXPECT_FALSE(dialog.cmdInsert());
        expectMessage("程序内部出错，这一步没有完成。（odd）", desktop::Icon::exclamation, "提示");
        EXPECT_FALSE(longRun.running);
        EXPECT_FALSE(session.isAtWork());
    }
    log.at("preview activate", [] { throw std::logic_error("odd"); });
    messages.shown.clear();
    dialog.cmdOpen();
    expectMessage("程序内部出错，这一步没有完成。（odd）", desktop::Icon::none, "");
    EXPECT_TRUE(dialog.cmdInsert());
}

TEST_F(SimilarDocumentsDialog, WhateverTheFileDialogFailsWithEndsInSilence) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialogs.whileOpen = [] { throw std::logic_error("odd"); };
    dialog.cmdBrowse();
    EXPECT_EQ(dialog.ListView1().size(), 3U);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SimilarDocumentsDialog, AnErrorIsShownAndTheWordProcessorStays) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    log.failAt("Selection.InsertFile", error::memberNotFound, u"找不到文件");
    EXPECT_FALSE(dialog.cmdInsert());
    expectMessage("找不到文件", desktop::Icon::exclamation, "提示");
    EXPECT_EQ(logged().find("Close"), std::string::npos);
    EXPECT_EQ(logged().find("Quit"), std::string::npos);
    EXPECT_TRUE(session.held());
}

TEST_F(SimilarDocumentsDialog, WithoutASelectedRowTheOpenedDocumentIsNotChanged) {
    makeTwoTemplates();
    auto dialog = loaded();
    EXPECT_FALSE(dialog.cmdInsert());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(logged(), "create Word.Application\n"
                        "Documents.Open 用户模板/P/P.1.2.doc\n"
                        "OpenedDocument.Activate\n");
}

// Opening alone

TEST_F(SimilarDocumentsDialog, OpensTheSelectedRowInThePreviewAndStartsItsApplication) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(2);
    dialog.cmdOpen();
    EXPECT_EQ(logged(), "preview on\npreview load Sys/标书模板/甲/甲.3.doc\npreview activate\n");
}

TEST_F(SimilarDocumentsDialog, WithoutASelectedRowThereIsNothingToOpen) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.cmdOpen();
    expectMessage("没有文档，所以不能打开！", desktop::Icon::exclamation, "警告！");
    EXPECT_EQ(logged(), "");
}

TEST_F(SimilarDocumentsDialog, AnyOtherErrorOfOpeningShowsItsDescription) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    log.failAt("preview activate", 31031, u"没有可以打开此文件的程序");
    dialog.cmdOpen();
    expectMessage("没有可以打开此文件的程序", desktop::Icon::none, "");
}

TEST_F(SimilarDocumentsDialog, ADocumentThatThePreviewRefusesIsOpenedAllTheSame) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    log.failAt("preview load", error::documentNotShown, u"设有打开密码");
    dialog.cmdOpen();
    EXPECT_EQ(logged(), "preview on\npreview load Sys/标书模板/乙/乙.4.doc\npreview activate\n");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(screen.lateFailure) << "nor is it told when that turns out later";
}

TEST_F(SimilarDocumentsDialog, WhatTurnsOutBehindAnInsertionIsToldAsItsOwnFailures) {
    makeTwoTemplates();
    auto dialog = loaded();
    dialog.select(0);
    dialog.cmdInsert();
    ASSERT_TRUE(screen.lateFailure);
    screen.lateFailure(RunTimeError(31024, u"无法显示"));
    expectMessage("无法显示", desktop::Icon::exclamation, "提示");
}

// The command that has opened the dialog runs until it closes.
TEST_F(SimilarDocumentsDialog,
       WhatTurnsOutLaterIsToldWhileTheDialogIsOpenButNotWithinItsInsertion) {
    makeTwoTemplates();
    const RunTimeError late(31024, u"无法显示");
    state.Command.run([&] {
        auto dialog = loaded();
        dialog.select(0);
        dialog.cmdInsert();
        longRun.cancel = [&] {
            EXPECT_FALSE(screen.lateFailure(late));
            return false;
        };
        EXPECT_TRUE(dialog.cmdInsert());
        EXPECT_TRUE(messages.shown.empty());
        EXPECT_TRUE(screen.lateFailure(late));
        EXPECT_EQ(messages.shown.size(), 1U);
    });
}

TEST_F(SimilarDocumentsDialog, WhatTurnsOutBehindItWaitsUntilNoCommandRuns) {
    makeTwoTemplates();
    state.Command.run([&] {
        auto dialog = loaded();
        dialog.select(0);
        dialog.cmdInsert();
    });
    const RunTimeError late(31024, u"无法显示");
    state.Command.run([&] { EXPECT_FALSE(screen.lateFailure(late)); });
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(screen.lateFailure(late));
    EXPECT_EQ(messages.shown.size(), 1U);
}

// With the real engine

struct SimilarDocumentsOnDisk : SimilarDocumentsDialog {
    struct NoReport : word::ImportReport {
        void notCarried(const std::filesystem::path& path, std::u16string_view) override {
            ADD_FAILURE() << path;
        }
    };
    struct NoQuestion : word::UnsavedChangesQuestion {
        bool save(const std::filesystem::path& path) override {
            ADD_FAILURE() << path;
            return false;
        }
    };

    void write(const QString& name, std::u16string_view text) {
        folder.makeFolder(QFileInfo(name).path());
        word::EngineApplication writer(services_);
        word::Document& file = writer.documents().Add();
        writer.Selection().TypeText(text);
        file.SaveAs(files::toPath(folder.path(name)));
    }
    QString textOf(const QString& name) {
        const auto data = word::readDocument(files::toPath(folder.path(name)));
        return QString::fromStdU16String(word::documentText(data.main, data.tables)).trimmed();
    }

    test::FixedPageNumbers pages;
    NoReport report;
    NoQuestion question;
    word::EngineServices services_{pages, report, question};
    word::EngineApplicationFactory engine{services_};
};

TEST_F(SimilarDocumentsOnDisk, TheTextIsInsertedInFrontOfWhatTheDocumentHolds) {
    makeTwoTemplates();
    write("用户模板/P/P.1.2.doc", u"原有内容");
    write("Sys/标书模板/甲/甲.1.doc", u"模板内容");
    factory = &engine;
    auto dialog = loaded();
    dialog.select(1);
    EXPECT_TRUE(dialog.cmdInsert());
    EXPECT_EQ(textOf("用户模板/P/P.1.2.doc").simplified(), "模板内容 原有内容");
    EXPECT_EQ(textOf("Sys/标书模板/甲/甲.1.doc"), "模板内容");
}

TEST_F(SimilarDocumentsOnDisk, WithAnEmptyListNoFileIsChanged) {
    write("用户模板/P/P.1.2.doc", u"原有内容");
    const QByteArray before = folder.read("用户模板/P/P.1.2.doc");
    factory = &engine;
    auto dialog = loaded();
    dialog.cmdInsert();
    EXPECT_EQ(folder.read("用户模板/P/P.1.2.doc"), before);
}

TEST_F(SimilarDocumentsOnDisk, AMissingTemplateFileChangesNothingAndIsTold) {
    makeTwoTemplates();
    write("用户模板/P/P.1.2.doc", u"原有内容");
    const QByteArray before = folder.read("用户模板/P/P.1.2.doc");
    factory = &engine;
    auto dialog = loaded();
    dialog.select(0);
    EXPECT_FALSE(dialog.cmdInsert());
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(folder.read("用户模板/P/P.1.2.doc"), before);
}

} // namespace
