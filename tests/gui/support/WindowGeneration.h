#pragma once

#include "gui/support/PlanEditWindow.h"

#include "generate/windows/FindingsWindow.h"
#include "platform/files/Paths.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "startup/GenerationWord.h"
#include "support/FakeOffice.h"

#include <QLabel>
#include <QProgressBar>
#include <QScopedValueRollback>

namespace qvnd::test {

// The plan edit window on a running generation with our own engine.
class WindowGeneration : public PlanEditWindow {
protected:
    static inline const QString busy =
        "对不起，请您先关闭Word文档。如不在任务栏显示请按Ctrl+Alt+Del ！";

    void stop() { dlgTB()->findChild<QPushButton*>("cmdStop")->click(); }
    int progress() { return dlgTB()->findChild<QProgressBar*>("PrgBid")->value(); }
    QString label() { return dlgTB()->findChild<QLabel*>("Label1")->text(); }
    // Whenever events run: at every step of the progress, as each moves the bar by a hundredth.
    void atEachYield(const std::function<void()>& act) {
        world.events.whileServed = [this, act] {
            if (dlgTB() && !isActing_) {
                const QScopedValueRollback acting(isActing_, true);
                act();
            }
        };
    }
    bool isAt(const QString& shown, int done) { return label() == shown && progress() == done; }
    QString textOfFinished() const {
        const auto data = word::readDocument(files::toPath(finished()));
        return QString::fromStdU16String(word::documentText(data.main, data.tables));
    }
    // A document of a former run. It stays as it is, or a whole one takes its place.
    void writeEarlier() { writeDocumentTo(finished(), u"先前的正文"); }
    void expectHas(const QStringList& pieces) const {
        const QString text = textOfFinished();
        for (const QString& piece : pieces) {
            EXPECT_TRUE(text.contains(piece)) << piece.toStdString() << " is not in\n"
                                              << text.toStdString();
        }
    }
    void expectHasNot(const QStringList& pieces) const {
        const QString text = textOfFinished();
        for (const QString& piece : pieces) {
            EXPECT_FALSE(text.contains(piece)) << piece.toStdString() << " is in\n"
                                               << text.toStdString();
        }
    }
    // All but the text of T.1.1, in the place of the document of a former run.
    void expectWholeBesidesTheFirst() const {
        expectHas({"目录", "第一章 工程概况", "编制依据", "部署正文"});
        expectHasNot({"依据正文", "先前的正文"});
    }
    void expectWhole() const {
        expectHas({"目录", "第一章 工程概况", "依据正文", "部署正文"});
        expectHasNot({"先前的正文"});
    }
    void expectBodyAlone() const {
        expectHas({"依据正文", "部署正文"});
        expectHasNot({"目录", "先前的正文"});
    }
    // Every command of the window but those of the generation.
    void chooseAllOthers() {
        for (const char* name :
             {"mnuBidSet", "mnuBul", "mnuBrowsebid", "mnuBack", "mnuBidData", "mnuBidLike",
              "mnuOpenDoc", "mnuDocOpen", "mnuBrowseDoc", "mnuCheck", "mnuReport", "mnuPdf"}) {
            item(name).setEnabled(true);
            choose(name);
        }
        for (const char* name :
             {"打开类似文档", "标书设置", "浏览", "返回", "资料库", "打开文档"}) {
            press(name);
        }
        click("T.1");
    }
    // Behind a run in which they were chosen: none of them was carried out.
    void expectNoneOfTheOthers() {
        EXPECT_EQ(settingsShown, 0);
        EXPECT_TRUE(frame.asked.isEmpty());
        EXPECT_TRUE(shell.opened.isEmpty() && shell.started.isEmpty() && shell.basedOn.isEmpty());
        EXPECT_EQ(preview.shown, QStringList{finished()});
        EXPECT_TRUE(pdf.printed.isEmpty());
        EXPECT_EQ(form->findChild<generate::FindingsWindow*>(), nullptr)
            << "neither check nor report";
    }

    int settingsShown = 0;

private:
    bool isActing_ = false;
};

// The office suite behind it: a script.
class WindowGenerationWithASuite : public WindowGeneration {
protected:
    void withSuite(const QByteArray& script, const office::OfficeSuite::Stop& isStopped = {}) {
        suite.setScript(script);
        const office::OfficeSuite office(suite.folder.path("profile"),
                                         suite.folder.path("office.sh"), isStopped);
        real = std::make_unique<startup::GenerationWord>(world.messages, office, world.longRun,
                                                         world.events);
        generation = &real->factory();
        generationRecord = real.get();
        suitePrinter = std::make_unique<office::SuitePdfPrinter>(office);
        printer = suitePrinter.get();
    }

    FakeOffice suite;
    std::unique_ptr<startup::GenerationWord> real;
    std::unique_ptr<office::SuitePdfPrinter> suitePrinter;
};

} // namespace qvnd::test
