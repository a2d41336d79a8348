#include "generate/driver/RebuildContents.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "store/ProgramFiles.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

bool holdsAnyFile(files::FileSystemObject& gFso, const QString& folder) {
    return gFso.FolderExists(folder) && !gFso.Files(folder).empty();
}

void openFinished(const ProgramState& program, const GenerationServices& services) {
    WordSession& session = program.word;
    session.hold(services.wordProcessor.create());
    session.application().setVisible(true);
    const QString path = store::finishedDocument(program.modMain.gWorkPath);
    session.keepDocument(session.application().documents().Open(files::toPath(path)));
    session.document().Activate();
}

// The word processor's own words for it name neither the document nor the contents.
void deleteContents(word::TablesOfContents& contents) {
    try {
        contents.Item(1).Delete();
    } catch (const RunTimeError& failure) {
        if (failure.number() != error::memberNotFound)
            throw;
        throw RunTimeError(failure.number(), u"“施工方案.doc”里没有目录，请重新生成施工方案。");
    }
}

void replaceContents(WordSession& session) {
    word::TablesOfContents& contents = session.activeDocument().tablesOfContents();
    deleteContents(contents);
    word::TableOfContentsOptions options;
    options.AddedStyles = u"标题 1,1";
    contents.Add(session.selection().Range(), options);
    contents.Item(1).setTabLeader(word::TabLeader::dots);
}

} // namespace

bool RebuildContents(const ProgramState& program, const GenerationServices& services,
                     const std::function<bool()>& isCancelled) {
    if (!holdsAnyFile(*program.modMain.gFso, program.modMain.gWorkPath)) {
        services.messages.tell(u"还没生成标书!"_s, desktop::Icon::exclamation);
        return false;
    }
    const WordSession::Work work(program.word);
    openFinished(program, services);
    const bool goesOn = !isCancelled();
    if (goesOn)
        replaceContents(program.word);
    program.word.activeDocument().setSaved(true);
    program.word.application().Quit();
    program.word.dropDocument();
    return goesOn && !isCancelled();
}

} // namespace qvnd::generate
