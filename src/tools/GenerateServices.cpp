#include "tools/GenerateServices.h"

#include "tools/ProgramRun.h"
#include "tools/Session.h"

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

QString fileName(const std::filesystem::path& path) {
    return QString::fromStdU16String(path.filename().u16string());
}

} // namespace

void LossMessages::notCarried(const std::filesystem::path& path, std::u16string_view what) {
    collected_.notCarried(path, what);
    tell(path, what);
}

void LossMessages::converted(const std::filesystem::path& path, std::u16string_view what) {
    collected_.converted(path, what);
    tell(path, what);
}

void LossMessages::changed(const std::filesystem::path& path, std::u16string_view what) {
    collected_.changed(path, what);
}

void LossMessages::tell(const std::filesystem::path& path, std::u16string_view what) {
    const QString loss = QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size()));
    dlgTB_.hide();
    messages_.tell(fileName(path) + u'：' + loss, desktop::Icon::information, u"提示"_s);
    dlgTB_.show();
}

TerminalGeneration::TerminalGeneration(Session& session, const GenerateOptions& options)
    : session_(session), options_(options), messages_(session.messages()),
      bar_(session.output().err()), pages_(options.pages, options.fonts, messages_),
      losses_(messages_, dlgTB()), unsaved_(messages_), controls_(options), locks_(processes_),
      factory_({pages_, losses_, unsaved_, &pictures_, &documents_}) {}

desktop::ProgressDialog& TerminalGeneration::dlgTB() {
    if (standardErrorIsATerminal())
        return bar_;
    return noBar_;
}

generate::GenerationServices TerminalGeneration::services() {
    return {factory_, messages_, dlgTB(), events_, locks_, screen_, controls_};
}

generate::ProgramState TerminalGeneration::program() {
    return {session_.program().state(), options_.switches, word_};
}

} // namespace qvnd::tools
