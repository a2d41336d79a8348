#include "outline/AddDocument.h"

#include "outline/AddFiles.h"
#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/BesideEvents.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/UnexpectedErrors.h"
#include "platform/files/Paths.h"
#include "platform/files/Trim.h"
#include "platform/jet/TransactionScope.h"
#include "platform/word/engine/DocumentSource.h"
#include "store/OutlineFolders.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <exception>

namespace qvnd::outline {

using desktop::Icon;

namespace {

// Part 0 joined with the parts 1 to upperBound - leftOut.
QString joined(const QString& title, qsizetype leftOut) {
    const QStringList parts = title.split(u'.');
    const qsizetype upperBound = parts.size() - 1;
    return parts.mid(0, std::max<qsizetype>(1, upperBound - leftOut + 1)).join(u'.');
}

bool hasDocument(const OutlineNode& parent, const QString& name) {
    const auto& children = parent.childList();
    return std::any_of(children.begin(), children.end(), [&](const OutlineNode* node) {
        return node->Image() == image::document && node->Text() == name;
    });
}

// Why the engine refuses a file, and what it would have to be converted from; both empty for one
// that it reads.
struct Reading {
    QString refusal;
    QString foreignFormat;
};

Reading readingOf(const std::filesystem::path& path) {
    try {
        word::readDocumentFile(path);
        return {};
    } catch (const word::DocumentRefusal& refusal) {
        return {desktop::descriptionOf(refusal),
                QString::fromStdU16String(refusal.formatToConvert())};
    } catch (const std::exception& failure) {
        return {desktop::descriptionOf(runTimeErrorOf(failure)), {}};
    }
}

} // namespace

QString storedName(const QString& fileTitle) { return joined(files::Trim(fileTitle), 1); }

QString comparedName(const QString& fileTitle) { return joined(fileTitle, 2); }

AddDocument::AddDocument(modMain& state, Workbench& workbench, const Services& services)
    : state_(state), workbench_(workbench), services_(services) {}

template <class Command>
Added AddDocument::guarded(Command command) {
    const OutlineNode* selected = workbench_.TrvCurrent.SelectedItem();
    if (!selected) {
        return Added::nothingSelected;
    }
    copied_.clear();
    try {
        // By its key: dialog, question and word processor let events run, and the tree with them.
        const QString plan = tableOfKey(selected->Key());
        const Added outcome = command(Selected{selected->Key(), selected->Text()});
        if (outcome == Added::added) {
            remarkIfUnreadable(plan);
        }
        return outcome;
    } catch (const std::exception& cause) {
        const RunTimeError failure = runTimeErrorOf(cause);
        if (failure.number() == error::dialogCancelled) {
            return Added::cancelled;
        }
        services_.messages.tell(desktop::descriptionOf(failure), Icon::exclamation,
                                QStringLiteral("提示"));
        return Added::failed;
    }
}

Added AddDocument::mnuEQDoc() {
    return guarded([this](const Selected& selected) { return addBeside(selected); });
}

Added AddDocument::mnuLTDoc() {
    return guarded([this](const Selected& selected) { return addBelow(selected); });
}

Added AddDocument::addBeside(const Selected& selected) {
    const QString& selectedKey = selected.key;
    const QString plan = tableOfKey(selectedKey);
    jet::Database& db = *state_.gDbUser;
    createMissingFolders(plan);
    const std::vector<desktop::ChosenFile> files = services_.fileDialogs.openSeveral(
        {QStringLiteral("打开文档"),
         QStringLiteral("Word 文档 (*.doc)|*.doc|RTF  格式 (*.rft)|*.rtf"), QStringLiteral("doc")});
    if (files.size() > 1) {
        return addSeveral(AddMode::beside, selectedKey, files);
    }
    const desktop::ChosenFile& chosen = files.front();

    const std::int16_t insertPoint = idOfKey(db, selectedKey);
    const OutlineNode& parent = parentOf(workbench_.TrvCurrent.Item(selectedKey, selected.text));
    if (hasDocument(parent, comparedName(chosen.fileTitle))) {
        return refuse(Added::duplicateName, QStringLiteral("对不起，命名重复！"));
    }

    jet::TransactionScope changes(*state_.gWs);
    const std::int16_t base = moveRowsOut(db, plan, insertPoint);
    const QString parentKey = parentKeyOf(selectedKey);
    const auto family = rowsLike(db, plan, parentKey);
    newKey_ = outline::newKey(parentKey, base, toInteger(family->RecordCount()));
    if (!bringFileBeside(plan, chosen.fileName)) {
        return Added::answeredNo;
    }

    const QString name = storedName(chosen.fileTitle);
    addRow(*family, {newKey_, name, true});
    addToPlanCopy(plan, name);
    moveRowsBack(db, plan);
    changes.commit();

    const auto refilled = db.OpenRecordset("Select * from " + plan + " order by ID asc");
    workbench_.TrvCurrent.Clear();
    updateTree(*refilled, workbench_.TrvCurrent, {}, services_.splash);
    refreshAndSelect(name);
    return Added::added;
}

Added AddDocument::addBelow(const Selected& selected) {
    const QString& selectedKey = selected.key;
    const QString plan = tableOfKey(selectedKey);
    jet::Database& db = *state_.gDbUser;
    createMissingFolders(plan);
    const std::vector<desktop::ChosenFile> files = services_.fileDialogs.openSeveral(
        {QStringLiteral("打开文档"), QStringLiteral("Word文档 (*.doc)|*.doc|RTF格式 (*.rtf)|*.rtf"),
         QStringLiteral("doc")});
    if (files.size() > 1) {
        return addSeveral(AddMode::below, selectedKey, files);
    }
    const desktop::ChosenFile& chosen = files.front();

    const TableEnd end = endOf(db, plan);
    const std::int16_t base = toInteger(end.lastId - end.count);
    const auto family = rowsLike(db, plan, selectedKey);
    newKey_ = outline::newKey(selectedKey, base, toInteger(family->RecordCount()));
    if (!bringFile(chosen.fileName, documentPath(state_, plan, newKey_),
                   QStringLiteral("此文件不存在。要创建此文件？"))) {
        return Added::answeredNo;
    }

    const QString name = storedName(chosen.fileTitle);
    if (depthOfKey(newKey_) > deepestLevel) {
        return refuse(Added::tooDeep, QStringLiteral("对不起，系统最多支持九级深度！"));
    }
    if (hasDocument(workbench_.TrvCurrent.Item(selectedKey, selected.text), name)) {
        return refuse(Added::duplicateName, QStringLiteral("对不起，命名重复！"));
    }
    addRow(*family, {newKey_, name, true});
    addToPlanCopy(plan, name);
    workbench_.TrvCurrent.AddChild(selectedKey, newKey_, name, image::document,
                                   image::documentSelected);
    refreshAndSelect(name);
    return Added::added;
}

Added AddDocument::addSeveral(AddMode mode, const QString& selectedKey,
                              const std::vector<desktop::ChosenFile>& files) {
    QStringList paths;
    for (const desktop::ChosenFile& file : files) {
        paths << file.fileName;
    }
    const FilesAdded done = addFiles(state_, workbench_, services_, selectedKey, paths, mode);
    if (done.newKeys.isEmpty()) {
        return Added::failed;
    }
    newKey_ = done.newKeys.back();
    return Added::added;
}

Added AddDocument::refuse(Added reason, const QString& text) {
    services_.messages.tell(text, Icon::information, QStringLiteral("警告！"));
    return reason;
}

void AddDocument::createMissingFolders(const QString& plan) {
    const QString plans =
        files::withSeparator(state_.AppPath) + "Sys" + files::separator() + "用户模板";
    for (const QString& folder :
         {plans, store::templatesFolder(state_), store::planFolder(state_, plan)}) {
        if (!state_.gFso->FolderExists(folder)) {
            state_.gFso->CreateFolder(folder);
        }
    }
}

// False when the file is not there and the user does not want it made.
bool AddDocument::bringFile(const QString& source, const QString& target, const QString& question) {
    if (!state_.gFso->FileExists(source)) {
        if (!services_.messages.ask(source + u'\n' + question, Icon::question)) {
            return false;
        }
        makeEmptyDocument(target);
    } else if (source.right(3).toUpper() == u"DOC") {
        state_.gFso->CopyFile(source, target, true);
        copied_ = source;
    } else {
        convert(source, target);
    }
    return true;
}

// The rows that were moved out for a file that the user does not want any more come back.
bool AddDocument::bringFileBeside(const QString& plan, const QString& source) {
    try {
        return bringFile(source, documentPath(state_, plan, newKey_),
                         QStringLiteral("此文件不存在。要创建此文件吗？"));
    } catch (const RunTimeError& failure) {
        if (failure.number() == error::dialogCancelled) {
            undoRowsOut(*state_.gDbUser, plan);
        }
        throw;
    }
}

void AddDocument::remarkIfUnreadable(const QString& plan) {
    if (copied_.isEmpty()) {
        return;
    }
    const QString name = QFileInfo(copied_).fileName();
    const std::filesystem::path path = files::toPath(documentPath(state_, plan, newKey_));
    desktop::LongRun& progress = services_.longRun;
    const desktop::LongRunScope scope(progress, QStringLiteral("添加文档"), 0);
    progress.offerNoCancel(); // a file that is being read cannot be let go of
    progress.next(QStringLiteral("“%1”已加入大纲，正在检查它能否照原样放入……").arg(name));
    Reading reading;
    desktop::runBesideEvents([&] { reading = readingOf(path); }, [&] { progress.isCancelled(); });
    if (!reading.foreignFormat.isEmpty()) {
        state_.Remarks << QStringLiteral("“%1”已加入大纲；它不是 Word 97-2003 文档，而是%2，"
                                         "生成时由办公套件转换，没有安装办公套件时不能放入。")
                              .arg(name, reading.foreignFormat);
    } else if (!reading.refusal.isEmpty()) {
        state_.Remarks << QStringLiteral("“%1”已加入大纲，但生成时不能照原样放入：%2")
                              .arg(name, reading.refusal.section(QStringLiteral("”："), 1));
    }
}

void AddDocument::makeEmptyDocument(const QString& target) {
    const QString normal = state_.gWordRoot + "Templates" + files::separator() + "Normal.dot";
    if (state_.gFso->FileExists(normal)) {
        state_.gFso->CopyFile(normal, target, true);
        return;
    }
    const auto application = services_.word.create();
    application->documents().Add().SaveAs(files::toPath(target));
    services_.events.doEvents();
    application->Quit();
    services_.events.doEvents();
}

// Whatever a cancelled conversion ends with, it is no failure.
void AddDocument::convert(const QString& source, const QString& target) {
    desktop::LongRun& progress = services_.longRun;
    const desktop::LongRunScope scope(progress, QStringLiteral("添加文档"), 0);
    progress.next(QStringLiteral("正在转换“%1”……").arg(QFileInfo(source).fileName()));
    const auto application = services_.word.create();
    try {
        word::Document& opened = application->documents().Open(files::toPath(source));
        leaveIfCancelled();
        opened.SaveAs(files::toPath(target));
    } catch (const std::exception&) {
        leaveIfCancelled();
        throw;
    }
    services_.events.doEvents();
    application->Quit();
    services_.events.doEvents();
}

void AddDocument::leaveIfCancelled() const {
    if (services_.longRun.isCancelled()) {
        throw RunTimeError(error::dialogCancelled, u"添加已取消。");
    }
}

// The row goes to the end of that copy: rows that moved in the working table do not move there.
void AddDocument::addToPlanCopy(const QString& plan, const QString& name) {
    if (state_.gDbPlan) {
        state_.gDbPlan->Close();
    }
    state_.gDbPlan = state_.gWs->OpenDatabase(store::planDatabasePath(state_, plan));
    {
        const auto copy = state_.gDbPlan->OpenRecordset(plan, jet::OpenAs::Table);
        addRow(*copy, {newKey_, name, true});
    }
    state_.gDbPlan->Close();
    state_.gDbPlan.reset();
}

void AddDocument::refreshAndSelect(const QString& name) {
    refreshUserPlans(state_, workbench_, services_.messages, services_.splash);
    workbench_.TrvCurrent.Select(&workbench_.TrvCurrent.Item(newKey_, name));
}

} // namespace qvnd::outline
