#include "tools/GenerateCommand.h"

#include "generate/driver/BuildBid.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"
#include "tools/CollectedMessages.h"
#include "tools/GenerateOptions.h"
#include "tools/GenerateServices.h"
#include "tools/PageNumberChoice.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/TerminalProgress.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

using generate::BuildOutcome;

// What is told about a finished document.
struct Generated {
    QString output;
    int nodes = 0; // without the root
    int documents = 0;
    int pages = 0; // 0: not known
    QStringList messages;
    double seconds = 0;
};

void loadOutline(ProgramRun& run, const QString& plan, outline::OutlineTree& TrvEdit) {
    requirePlan(run, plan);
    const auto rows =
        run.state().gDbUser->OpenRecordset(u"Select * from ["_s + plan + u"] order by ID asc"_s);
    outline::FillOutlineTree(*rows, TrvEdit);
}

int documentsIn(const outline::OutlineTree& tree) {
    int count = 0;
    for (int i = 1; i <= tree.Count(); ++i)
        count += tree.Item(i).Image() == outline::image::document ? 1 : 0;
    return count;
}

void tell(Output& output, const Generated& done) {
    const QJsonObject json{
        {u"output"_s, done.output},
        {u"nodes"_s, done.nodes},
        {u"documents"_s, done.documents},
        {u"pages"_s, done.pages > 0 ? QJsonValue(done.pages) : QJsonValue()},
        {u"messages"_s, QJsonArray::fromStringList(done.messages)},
        {u"seconds"_s, done.seconds},
    };
    const QString pages = done.pages > 0 ? u"，%1 页"_s.arg(done.pages) : QString();
    output.result(json, u"%1\n%2 个节点，%3 个文档%4，用时 %5 秒"_s.arg(done.output)
                            .arg(done.nodes)
                            .arg(done.documents)
                            .arg(pages)
                            .arg(done.seconds, 0, 'f', 2));
}

// Why there is no document where no box has said it.
void explain(Output& output, BuildOutcome outcome) {
    if (outcome == BuildOutcome::stopped)
        output.note(u"生成中途停止，“施工方案.doc”没有完成。"_s);
    if (outcome == BuildOutcome::notSaved)
        output.note(u"“施工方案.doc”没有保存。"_s);
}

// One run of the command with everything that it reaches for.
class GenerateRun {
public:
    GenerateRun(Session& session, const GenerateOptions& options)
        : session_(session), options_(options), messages_(session.messages()),
          bar_(session.output().err()), losses_(messages_, dlgTB()), unsaved_(messages_),
          controls_(options), locks_(processes_),
          factory_({pages_.source(options.pages), losses_, unsaved_, &pictures_}) {}

    ExitStatus run() {
        if (!pages_.offers(options_.pages)) {
            session_.output().note(u"没有安装办公软件，不能用它的页码。"_s);
            return ExitStatus::refused;
        }
        QElapsedTimer timer;
        timer.start();
        outline::OutlineTree TrvEdit(u"TrvEdit"_s);
        loadOutline(session_.program(), options_.plan, TrvEdit);
        const BuildOutcome outcome = build(TrvEdit);
        explain(session_.output(), outcome);
        if (outcome != BuildOutcome::finished)
            return ExitStatus::refused;
        tell(session_.output(),
             {session_.program().state().gWorkPath + u"施工方案.doc"_s, TrvEdit.Count() - 1,
              documentsIn(TrvEdit), pages_.source(options_.pages).pages(), messages_.texts(),
              static_cast<double>(timer.elapsed()) / 1000});
        return ExitStatus::done;
    }

private:
    desktop::ProgressDialog& dlgTB() {
        if (standardErrorIsATerminal())
            return bar_;
        return noBar_;
    }

    BuildOutcome build(const outline::OutlineTree& TrvEdit) {
        const generate::GenerationServices services{factory_, messages_, dlgTB(),  events_,
                                                    locks_,   screen_,   controls_};
        const BuildOutcome outcome = generate::BuildBid(
            {session_.program().state(), options_.switches, word_}, services, window_, TrvEdit);
        dlgTB().unload();
        return outcome;
    }

    Session& session_;
    const GenerateOptions& options_;
    CollectedMessages messages_;
    PageNumberChoice pages_;
    pictures::PictureDecoder pictures_;
    TerminalProgress bar_;
    NoProgress noBar_;
    LossMessages losses_;
    AskedQuestion unsaved_;
    GivenControls controls_;
    NoEvents events_;
    NoScreen screen_;
    desktop::SystemProcesses processes_;
    desktop::LockFiles locks_;
    word::EngineApplicationFactory factory_;
    generate::WordSession word_;
    generate::BidEditState window_;
};

ExitStatus generatePlan(Session& session, const QStringList& words) {
    const GenerateOptions options(words);
    return GenerateRun(session, options).run();
}

} // namespace

std::vector<Command> generateCommands() {
    return {{u"generate"_s, GenerateOptions::parameters(), u"生成工作文件夹中的“施工方案.doc”"_s,
             generatePlan}};
}

} // namespace qvnd::tools
