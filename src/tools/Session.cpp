#include "tools/Session.h"

#include "outline/TakeBack.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "startup/Main.h"
#include "tools/ProgramRun.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace qvnd::tools {

Session::Session(const GlobalOptions& options, Output& output, QString caption)
    : options_(options), output_(output), caption_(std::move(caption)),
      messages_(output, options.yes), wait_(output),
      outsideFiles_(std::make_unique<desktop::OpenDocuments>()) {}

Session::~Session() {
    ignoringErrors([this] { finish(); });
    if (program_) {
        program_->exit();
    }
}

// What the command did beyond what its name says is told at its end.
bool Session::finish() {
    if (!recorded_) {
        return true;
    }
    const std::optional<history::Step> step = recorded_->finish();
    if (step && !step->note.isEmpty()) {
        output_.note(step->note);
    }
    const QString remarks = outline::takeRemarks(program_->state());
    if (!remarks.isEmpty() && !recorded_->wasRefused()) {
        output_.note(remarks);
    }
    return !recorded_->wasRefused();
}

void Session::tellWhatWasMended() {
    if (program_->state().HistoryFound.exitKilled) {
        output_.note(QStringLiteral("上次运行在退出时中断了；所做的操作都已保存。"));
    }
    hasEndedRestoration_ = program_->state().HistoryFound.restored;
    const QString mended = outline::takeMended(program_->state(), QStringLiteral("history undo "));
    if (!mended.isEmpty()) {
        output_.note(mended);
    }
}

files::FileSystemObject& Session::files() {
    return program_ ? *program_->state().gFso : outsideFiles_;
}

bool Session::mayWrite(const QString& file) {
    const QString path = QFileInfo(file).absoluteFilePath();
    const bool exists = QFileInfo::exists(path);
    if (exists && files().IsInUse(path)) {
        messages_.tell(
            QStringLiteral("“%1”正在另一个程序中打开，请先关闭它再操作。没有改动任何东西。")
                .arg(path),
            desktop::Icon::exclamation, desktop::hintTitle);
        return false;
    }
    if (exists && !messages_.ask(QStringLiteral("文件“%1”已经存在，要替换它吗？").arg(path),
                                 desktop::Icon::question)) {
        return false;
    }
    auto registry =
        registry::RegistryFile::read(files::withSeparator(options_.home) + "registry.reg");
    if (startup::isInWorkSpace(options_.home, registry, path)) {
        programAsLeft();
    }
    return true;
}

void Session::replace(const QString& target, const std::function<void(const QString&)>& draw) {
    const QTemporaryDir scratch;
    const QString drawn = scratch.filePath("drawn." + QFileInfo(target).suffix());
    draw(drawn);
    files().CopyFile(drawn, QFileInfo(target).absoluteFilePath(), true);
}

ProgramRun& Session::program() { return programLoaded(startup::Program::Load::usual); }

ProgramRun& Session::programAsLeft() { return programLoaded(startup::Program::Load::asLeft); }

ProgramRun& Session::programLoaded(startup::Program::Load load) {
    if (!program_) {
        auto run = std::make_unique<ProgramRun>(options_.home, messages_, wait_);
        if (!run->start(load)) {
            throw StartFailed();
        }
        program_ = std::move(run);
        tellWhatWasMended();
        recorded_ = std::make_unique<outline::RecordedCommand>(
            program_->state(), program_->workbench().TrvCurrent, caption_, messages_);
    }
    return *program_;
}

ExitStatus refusing(Session& session, const std::function<void()>& work) {
    try {
        work();
        return ExitStatus::done;
    } catch (const RunTimeError& failure) {
        session.messages().tell(desktop::descriptionOf(failure), desktop::Icon::exclamation,
                                QStringLiteral("警告！"));
        return ExitStatus::refused;
    }
}

} // namespace qvnd::tools
