#pragma once

#include "whole/PlannersDesk.h"
#include "whole/RecordedPlanner.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace qvnd::test {

// A command of a planner, on the plans that RealCommands makes.
struct RealCommand {
    const char* label;
    std::function<void(Planner&)> does;
};

inline void PrintTo(const RealCommand& command, std::ostream* out) { *out << command.label; }

// Plan 甲 has the folder 甲.1 with the document 甲.1.1 and the document 甲.3, and so has the
// template 模.
inline const QString folderNode = QStringLiteral("甲.1");
inline const QString documentNode = QStringLiteral("甲.3");

inline void pasteFromTemplate(Planner& planner) {
    planner.click(folderNode);
    planner.pressTemplate(QStringLiteral("模.1.1"));
    planner.copy();
    planner.paste(true);
}

inline std::vector<RealCommand> outlineCommands() {
    const auto on = [](const QString& node, const std::function<void(Planner&)>& command) {
        return [node, command](Planner& planner) {
            planner.click(node);
            command(planner);
        };
    };
    const auto onTemplate = [](const QString& node) {
        return [node](Planner& planner) {
            planner.pressTemplate(node);
            planner.deleteTemplate();
        };
    };
    return {
        {"NewPlan", [](Planner& planner) { planner.newPlan("乙"); }},
        {"NewPlanOverAnOldFolder", [](Planner& planner) { planner.newPlan("甲", true); }},
        {"DeletePlan", on("甲", [](Planner& planner) { planner.deletePlan(); })},
        {"AddFolder",
         on(folderNode,
            [](Planner& planner) { planner.addFolder(outline::AddMode::beside, "新"); })},
        {"AddDocument", on(folderNode,
                           [](Planner& planner) {
                               planner.addDocument(outline::AddMode::beside,
                                                   planner.folder.path("files/新.doc"));
                           })},
        {"DeleteSubtree", on(folderNode, [](Planner& planner) { planner.deleteNode(); })},
        {"DeleteRoot", on("甲", [](Planner& planner) { planner.deleteNode(); })},
        {"Rename", on(folderNode, [](Planner& planner) { planner.rename("改了"); })},
        {"Drag", [](Planner& planner) { planner.drag(documentNode, folderNode); }},
        {"Paste", pasteFromTemplate},
        {"StoreTemplate", [](Planner& planner) { planner.storeTemplate(); }},
        {"DeleteTemplate", onTemplate("模")},
        {"DeleteNodeOfATemplate", onTemplate("模.1")},
    };
}

inline std::vector<RealCommand> deskCommands() {
    const auto settings = [](const std::function<void(format::BidSetForm&)>& work) {
        return [work](Planner& planner) {
            PlannersDesk desk(planner);
            desk.inputs.answers = {"常用"};
            desk.settings(work);
        };
    };
    return {
        {"SettingLibrary", settings([](format::BidSetForm& form) {
             form.headerFooter.chkHeader.click();
             form.settingLibrary.cmdSaveSet.click();
         })},
        {"CustomPage",
         settings([](format::BidSetForm& form) { form.customPage.cmdSelfBld.click(); })},
        {"Information", [](Planner& planner) { PlannersDesk(planner).information("别人"); }},
        {"Generation", [](Planner& planner) { PlannersDesk(planner).generate(); }},
        {"SimilarDocument",
         [](Planner& planner) {
             planner.click(documentNode);
             PlannersDesk(planner).insertSimilar(0);
         }},
    };
}

inline std::vector<RealCommand> realCommands() {
    std::vector<RealCommand> all = outlineCommands();
    for (RealCommand& command : deskCommands()) {
        all.push_back(std::move(command));
    }
    return all;
}

// The states before a command and behind it; the command is done.
class RealCommands : public RecordedPlanner, public testing::WithParamInterface<RealCommand> {
protected:
    RealCommands() {
        for (const char* name : {"模", "甲"}) {
            make(name);
            if (name == QStringLiteral("模")) {
                planner.storeTemplate();
                planner.click(name);
                planner.deletePlan();
            }
        }
        PlannersDesk(planner).writeDocument("files/新.doc", u"新");
        planner.restart();
        before = onDisk();
        run();
        behind = onDisk();
        EXPECT_NE(behind, before);
    }

    // As the windows run it; the step, if there is one.
    std::optional<history::Step> run(desktop::MessageBoxes* boxes = nullptr) {
        outline::RecordedCommand recorded(planner.state(), planner.current(), "删除(&D)...",
                                          boxes ? *boxes : planner.messages);
        try {
            GetParam().does(planner);
        } catch (const RunTimeError&) { // NOLINT(bugprone-empty-catch): told by the windows
        }
        const auto step = recorded.finish();
        wasRefused = recorded.wasRefused();
        return step;
    }
    bool undo() {
        return outline::undo(planner.state(), planner.workbench(), planner.services()).has_value();
    }
    bool redo() {
        return outline::redo(planner.state(), planner.workbench(), planner.services()).has_value();
    }

    // Of the program that has ended, or stands still: keeps its files, and brings them back later.
    void keep() { kept_ = keptNow(); }
    void bringBack() { bringBack(*kept_); }
    using Kept = std::unique_ptr<TemporaryFolder>;
    Kept keptNow() const {
        Kept kept = std::make_unique<TemporaryFolder>(inMemory());
        for (const char* name : inIt) {
            copyWithTimes(planner.folder.path(name), kept->path(name));
        }
        return kept;
    }
    void bringBack(const TemporaryFolder& kept) {
        for (const char* name : inIt) {
            std::filesystem::remove_all(files::toPath(planner.folder.path(name)));
            copyWithTimes(kept.path(name), planner.folder.path(name));
        }
    }

    WorkSpaceState before;
    WorkSpaceState behind;
    bool wasRefused = false;

private:
    static constexpr const char* inIt[] = {"Sys", "工程文档管理"};

    void make(const QString& plan) {
        planner.newPlan(plan);
        planner.click(plan);
        planner.addFolder(outline::AddMode::below, "章");
        PlannersDesk(planner).writeDocument("files/文.doc", (plan + "的文").toStdU16String());
        for (const QString& parent : {plan + ".1", plan}) {
            planner.click(parent);
            planner.addDocument(outline::AddMode::below, planner.folder.path("files/文.doc"));
        }
    }

    Kept kept_;
};

} // namespace qvnd::test
