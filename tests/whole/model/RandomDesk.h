#pragma once

#include "outline/TakeBack.h"
#include "whole/PlannersDesk.h"

#include <random>

namespace qvnd::model {

// Commands outside the workbench, each with its choices at random among what is there: settings,
// their libraries, custom pages, the plan's information, generation, similar documents, and taking
// one change out of an earlier step.
class RandomDesk {
public:
    RandomDesk(test::Planner& planner, std::mt19937& random) : planner_(planner), random_(random) {}

    // Does one of them and tells which. Errors of those that do not tell them pass.
    QString act() {
        using Act = void (RandomDesk::*)();
        static constexpr std::pair<const char*, Act> acts[] = {
            {"setting", &RandomDesk::changeSetting},
            {"setting", &RandomDesk::changeSetting},
            {"setting library", &RandomDesk::useSettingLibraries},
            {"setting library", &RandomDesk::useSettingLibraries},
            {"cover library", &RandomDesk::useCoverLibraries},
            {"custom page", &RandomDesk::useCustomPages},
            {"choice", &RandomDesk::choose},
            {"information", &RandomDesk::inform},
            {"generate", &RandomDesk::generate},
            {"similar", &RandomDesk::insert},
            {"put back", &RandomDesk::putBack},
        };
        const auto& [name, does] = acts[random_() % std::size(acts)];
        planner_.messages.otherwise = isYes() ? desktop::Answer::yes : desktop::Answer::no;
        (this->*does)();
        return name;
    }

private:
    bool isYes() { return random_() % 3 != 0; }
    // Some are those of working tables and of plans.
    QString name() {
        static const QStringList names = {"常用", "备用", "页", "封面表", "甲'"};
        return names[static_cast<int>(random_() % 5)];
    }
    void clickAny(format::ListBox& list) {
        if (!list.entries().isEmpty()) {
            list.click(
                static_cast<qsizetype>(random_() % static_cast<unsigned>(list.entries().size())));
        }
    }
    // A library's own commands: show, save, delete.
    void useLibrary(format::ListBox& list, format::Button& save, format::Button& remove) {
        desk_.inputs.answers = {name()};
        clickAny(list);
        random_() % 3 != 0 ? save.click() : remove.click();
        desk_.inputs.answers.clear();
    }

    void changeSetting() {
        desk_.settings([this](format::BidSetForm& form) {
            switch (random_() % 6) {
            case 0:
                return form.headerFooter.chkHeader.click();
            case 1:
                return form.headerFooter.optFooterRight.click();
            case 2:
                form.page.txtPageupdis.type(QString::number(random_() % 4 + 1));
                return form.page.txtPageupdis.leave();
            case 3:
                form.headings.cmbClass.pick(static_cast<qsizetype>(random_() % 9));
                return form.headings.chkHead.click();
            case 4:
                form.cover.TxtPrjName.type(name());
                return form.cover.TxtPrjName.leave();
            default:
                return form.page.optTop.click();
            }
        });
    }
    void useSettingLibraries() {
        desk_.settings([this](format::BidSetForm& form) {
            auto& library = form.settingLibrary;
            form.headerFooter.chkfooter.click();
            useLibrary(library.lstSet, library.cmdSaveSet, library.cmdDeleteSet);
        });
    }
    void useCoverLibraries() {
        desk_.settings([this](format::BidSetForm& form) {
            auto& library = form.coverLibrary;
            useLibrary(library.lstcover, library.cmdSaveCover, library.cmdDeleteCover);
        });
    }
    void useCustomPages() {
        desk_.settings([this](format::BidSetForm& form) {
            auto& page = form.customPage;
            useLibrary(page.lstSelf, page.cmdSelfBld, page.cmdSelfDel);
        });
    }
    void choose() {
        desk_.settings([this](format::BidSetForm& form) {
            clickAny(form.settingLibrary.lstSet);
            clickAny(form.customPage.lstSelf);
            for (format::CheckBox* box : {&form.settingLibrary.chkSet, &form.coverLibrary.chkCover,
                                          &form.customPage.chkSelf}) {
                if (isYes()) {
                    box->click();
                }
            }
            form.cmdDecide();
        });
    }
    void inform() { desk_.information("编制人" + QString::number(random_() % 10)); }
    void generate() { desk_.generate(); }
    // Into a document that bears the name of one of a template, which mostly has been copied just
    // before.
    void insert() {
        const int count = planner_.templates().Count();
        const int from =
            count == 0 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(count));
        for (int i = from; i < count; ++i) {
            const outline::OutlineNode& node = planner_.templates().Item(i + 1);
            if (node.Image() == outline::image::document && planner_.current().Count() > 0) {
                planner_.dragTemplate(node.Key(), planner_.current().Item(1).Key());
                break;
            }
        }
        for (int i = 1; i <= planner_.current().Count(); ++i) {
            const outline::OutlineNode& node = planner_.current().Item(i);
            if (node.Image() == outline::image::document && isYes()) {
                planner_.click(node.Key());
                if (desk_.insertSimilar(random_())) {
                    return;
                }
            }
        }
    }
    void putBack() {
        history::History& history = *planner_.state().History;
        const QList<history::Step> steps = history.steps();
        for (int tries = 0; tries < 5 && !steps.isEmpty(); ++tries) {
            const history::Step& step =
                steps[static_cast<int>(random_() % static_cast<unsigned>(steps.size()))];
            for (const history::Change& change : history.changesOf(step.id)) {
                if (outline::canPutBack(change) && isYes()) {
                    outline::putBackAndShow(planner_.state(), planner_.workbench(),
                                            planner_.services(), step.id, change);
                    return;
                }
            }
        }
    }

    test::Planner& planner_;
    std::mt19937& random_;
    test::PlannersDesk desk_{planner_};
};

} // namespace qvnd::model
