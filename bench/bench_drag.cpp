// What a drop on the open plan costs on a long outline: moves within it, and copies from a
// template.

#include "OutlineBench.h"

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
using bench::plan;

// A plan of so many rows, two documents among ten of them: a first chapter with half of them, and
// chapters of ten. A template of a tenth of that.
class Plan : bench::OutlineWork {
public:
    explicit Plan(int rows) {
        const QString templates = store::templateFolder(state_, "模板");
        QDir().mkpath(templates);
        fill(*state_.gDbUser, plan, rows, store::planFolder(state_, plan));
        fill(*state_.gDbTemplate, "模板", rows / 10, templates);
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
            QFile file(folder + u'/' + key + ".doc");
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
        const auto dropped = outline::OLEDragDrop(state_, workbench_, services_,
                                                  &workbench_.TrvCurrent.Item(target));
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        if (!dropped.done) {
            std::printf("failed: %s\n", qPrintable(dropped.failure));
        }
        return seconds;
    }
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
