// What a drop on the open plan costs on a long outline: moves within it, and copies from a
// template.

#include "outline/OutlineRows.h"
#include "outline/TreeDrag.h"
#include "outline/TreeLoading.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/jet/DBEngine.h"
#include "platform/word/model/Application.h"
#include "store/PlanTables.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace {

using namespace qvnd;

const QString plan = QStringLiteral("工程甲");

class Silence : public desktop::MessageBoxes,
                public desktop::SplashScreen,
                public desktop::FileDialogs,
                public desktop::Events,
                public desktop::LongRun,
                public word::ApplicationFactory {
public:
    desktop::Answer show(const desktop::Message& message) override {
        std::printf("%s\n", qPrintable(message.text));
        return message.buttons == desktop::Buttons::yesNo ? desktop::Answer::no
                                                          : desktop::Answer::ok;
    }
    void show() override {}
    void tell(const QString& /*text*/) override {}
    void unload() override {}
    desktop::ChosenFile open(const desktop::OpenFileQuestion& /*question*/) override { return {}; }
    void doEvents() override {}
    void begin(const QString& /*title*/, int /*pieces*/) override {}
    void next(const QString& /*text*/) override {}
    bool isCancelled() override { return false; }
    void end() override {}
    std::unique_ptr<word::Application> create() override { return nullptr; }
};

// A plan of so many rows, two documents among ten of them: a first chapter with half of them, and
// chapters of ten. A template of a tenth of that.
class Plan {
public:
    explicit Plan(int rows) {
        const QString root = files::withSeparator(directory_.path());
        QDir(root).mkpath("Sys/标书模板/模板");
        QDir(root).mkpath("plans/" + plan);
        state_.AppPath = directory_.path();
        state_.gSysPath = root + "Sys/";
        state_.gUserTplPath = root + "plans/";
        state_.gFso = std::make_unique<files::DiskFileSystem>();
        state_.gWs = &state_.DBEngine.Workspaces(0);
        state_.gDbUser = state_.gWs->CreateDatabase(root + "user.mdb", {});
        state_.gDbTemplate = state_.gWs->CreateDatabase(root + "template.mdb", {});
        for (const char* table : {"遍历表", "当前表"}) {
            jet::TableDef names(table);
            names.Fields = {jet::TableDef::CreateField("名称", jet::FieldType::Memo)};
            state_.gDbUser->TableDefs().Append(names);
            const auto rs = state_.gDbUser->OpenRecordset(QString(table));
            rs->AddNew();
            rs->Set(u"名称", plan);
            rs->Update();
        }
        state_.gDbUser->TableDefs().Append(store::outlineTable("temp"));
        fill(*state_.gDbUser, plan, rows, root + "plans/");
        fill(*state_.gDbTemplate, "模板", rows / 10, root + "Sys/标书模板/");
        show(*state_.gDbUser, plan, workbench_.TrvCurrent);
        show(*state_.gDbTemplate, "模板", workbench_.TrvTemplate);
    }

    double move(const QString& key, const QString& target) {
        workbench_.TrvCurrent.Select(&workbench_.TrvCurrent.Item(key));
        outline::OLEStartDrag(workbench_);
        return drop(target);
    }
    double copy(const QString& key, const QString& target) {
        workbench_.TrvTemplate.Select(&workbench_.TrvTemplate.Item(key));
        workbench_.copySourceKey = key;
        return drop(target);
    }
    QString lastChapter() const { return workbench_.TrvCurrent.Item(1).childList().back()->Key(); }
    QString lastDocument() const {
        return workbench_.TrvCurrent.Item(lastChapter()).childList()[4]->Key();
    }

private:
    static void fill(jet::Database& db, const QString& name, int rows, const QString& folder) {
        db.TableDefs().Append(store::outlineTable(name));
        const auto table = db.OpenRecordset(name);
        outline::addRow(*table, {name, name, false});
        QString chapter = name + ".1";
        outline::addRow(*table, {chapter, QStringLiteral("第 1 项"), false});
        for (int i = 2; i < rows; ++i) {
            const QString number = u'.' + QString::number(i);
            const bool isChapter = i > rows / 2 && i % 10 == 1;
            chapter = isChapter ? name + number : chapter;
            const QString key = isChapter ? chapter : chapter + number;
            const bool isDocument = i % 10 == 3 || i % 10 == 6;
            outline::addRow(*table, {key, QStringLiteral("第 %1 项").arg(i), isDocument});
            QFile file(folder + name + u'/' + key + ".doc");
            if (isDocument && file.open(QIODevice::WriteOnly)) {
                file.write("document");
            }
        }
    }
    static void show(jet::Database& db, const QString& name, outline::OutlineTree& tree) {
        const auto rs = db.OpenRecordset("Select * From " + name);
        outline::FillOutlineTree(*rs, tree);
    }
    double drop(const QString& target) {
        QElapsedTimer clock;
        clock.start();
        const auto dropped = outline::OLEDragDrop(
            state_, workbench_, {silence_, silence_, silence_, silence_, silence_, silence_},
            &workbench_.TrvCurrent.Item(target));
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        if (!dropped.done) {
            std::printf("failed: %s\n", qPrintable(dropped.failure));
        }
        return seconds;
    }

    QTemporaryDir directory_;
    Silence silence_;
    modMain state_;
    outline::Workbench workbench_;
};

void print(const char* what, const std::function<double(Plan&)>& command) {
    double seconds[2];
    const int rows[2] = {1000, 10000};
    for (int i = 0; i < 2; ++i) {
        Plan outline(rows[i]);
        seconds[i] = command(outline);
    }
    std::printf("%-58s 1000 rows %.3f s, 10000 rows %.3f s, growth %.1f\n", what, seconds[0],
                seconds[1], seconds[1] / seconds[0]);
}

} // namespace

int main() {
    print("document from the end to the outline's beginning",
          [](Plan& outline) { return outline.move(outline.lastDocument(), plan); });
    print("single folder copied from a template",
          [](Plan& outline) { return outline.copy("模板.1.2", plan); });
    print("folder with half of all rows moved down",
          [](Plan& outline) { return outline.move(plan + ".1", outline.lastChapter()); });
    print("template of a tenth of the rows copied",
          [](Plan& outline) { return outline.copy("模板", outline.lastChapter()); });
    return 0;
}
