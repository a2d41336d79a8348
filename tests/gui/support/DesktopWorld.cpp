#include "gui/support/DesktopWorld.h"

#include "plans/DlgNew.h"
#include "startup/FirstStart.h"
#include "support/FakeLongRun.h"

namespace qvnd::test {

namespace {

const std::vector<OutlineRowText> belowPlan{{"甲.1", "工程概况"},
                                            {"甲.1.1", "编制依据", "是"},
                                            {"甲.2", "施工部署", "是"},
                                            {"甲.2.1", "进度计划", "是"},
                                            {"甲.3", "质量保证"}};
const std::vector<OutlineRowText> pattern{
    {"模板", "模板"}, {"模板.1", "土方"}, {"模板.1.1", "开挖", "是"}, {"模板.2", "安全", "是"}};

void writeDocuments(const QString& folder, const std::vector<OutlineRowText>& rows) {
    for (const OutlineRowText& row : rows) {
        QFile file(folder + row.key + ".doc");
        if (row.isDocument == u"是" && file.open(QIODevice::WriteOnly)) {
            file.write("document");
        }
    }
}

void fillPlan(modMain& state) {
    const auto rows = state.gDbUser->OpenRecordset("Select * from 甲");
    for (const OutlineRowText& row : belowPlan) {
        OutlineWorld::add(*rows, row);
    }
    writeDocuments(state.gUserTplPath + "甲" + files::separator(), belowPlan);
}

void makeTemplate(modMain& state) {
    const QString folder =
        files::withSeparator(files::withSeparator(state.gSysPath + "标书模板") + "模板");
    QDir().mkpath(folder);
    const auto copy =
        state.gWs->CreateDatabase(folder + "模板.mdb", QString::fromUtf16(jet::dbLangGeneral));
    OutlineWorld::makeTable(*copy, "模板", pattern);
    OutlineWorld::makeTable(*state.gDbTemplate, "模板", pattern);
    const auto list = state.gDbTemplate->OpenRecordset("Select * from 遍历表");
    list->AddNew();
    list->Set(u"名称", QStringLiteral("模板"));
    list->Update();
    writeDocuments(folder, pattern);
}

} // namespace

DesktopWorld::DesktopWorld(desktop::MessageBoxes& messages, desktop::FileDialogs& dialogs,
                           word::ApplicationFactory& word)
    : messages_(messages), dialogs_(dialogs), word_(word) {
    startup::layOutProgramFolder(folder.path());
    startup::Program program(registry, services());
    program.start(folder.path());
    plans::DlgNew dialog(program.state(), program.workbench(), messages_, splash_,
                         plans::ShowMode::newPlan);
    dialog.form.TxtName = QStringLiteral("甲");
    dialog.form.DTP = QDate(2026, 2, 10);
    dialog.BtnOk();
    fillPlan(program.state());
    makeTemplate(program.state());
    program.exit();
}

outline::Services DesktopWorld::services() {
    static FakeLongRun longRun;
    return {messages_, splash_, dialogs_, events, word_, longRun};
}

bool DesktopWorld::start() {
    ended_ = false;
    run_ = std::make_unique<startup::DesktopRun>(startup::DesktopServices{
        registry,
        services(),
        inputs,
        fonts,
        *helpWindow,
        shell,
        makePreview,
        prepare,
        [this] { ended_ = true; },
        {word_, openDocuments, windows, inUse, pdf, record, converter, makeView}});
    return run_->start(folder.path());
}

} // namespace qvnd::test
