#include "generate/ForeignTexts.h"

#include "generate/settings/SettingsChoice.h"
#include "generate/settings/SettingsRow.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/files/Trim.h"
#include "store/Names.h"
#include "store/PlanLists.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

namespace field = store::field;

// A shorter name stands in too many texts that have nothing to do with it.
constexpr qsizetype leastToSearchFor = 2;

struct Story {
    QString called;
    QStringView wanted;
    QStringView text;
};

class Search {
public:
    Search(modMain& state, const QString& plan) : state_(state), plan_(plan) {
        ignoringErrors([&] { others_ = store::listedNames(*state.gDbUser); });
        others_.removeAll(plan);
    }

    std::vector<ForeignText> run() {
        ignoringErrors([&] { selection_ = readSelectionRow(*state_.gDbBidSet); });
        ignoringErrors([&] { lookAtCover(chooseCover(selection_)); });
        ignoringErrors([&] { lookAtHeaderAndFooter(headerFooterTable(selection_)); });
        return std::move(found_);
    }

private:
    SettingsRow rowOf(const QString& table) const {
        return {*state_.gDbBidSet, u"Select * from ["_s + table + u']'};
    }

    // The plan that a text names instead of this one; of several the one with the longest name.
    QString ownerOf(const QString& text) const {
        QString owner;
        const bool namesThis = text.contains(plan_);
        for (const QString& other : others_) {
            const bool isNamed =
                text == other || (other.size() >= leastToSearchFor && text.contains(other));
            if (isNamed && (!namesThis || other.contains(plan_)) && other.size() > owner.size())
                owner = other;
        }
        return owner;
    }

    QString contractorOf(const QString& plan) const {
        QString name;
        ignoringErrors([&] {
            const auto information = state_.gDbUser->OpenRecordset(
                u"Select * from ["_s + store::informationTableOf(plan) + u']');
            if (!information->Eof())
                name = files::Trim(information->Get(field::contractor).TextOrEmpty());
        });
        return name;
    }

    void lookAtCover(const CoverChoice& cover) {
        if (cover.customPage)
            return;
        const SettingsRow row = rowOf(cover.table);
        if (!row.hasRow())
            return;
        const bool isWorking = cover.table == store::table::cover;
        const QString project = files::Trim(row.value(field::projectName).TextOrEmpty());
        const QString owner = ownerOf(project);
        if (project == owner && !owner.isEmpty())
            found_.push_back(
                {u"封面的工程名称“%1”属于另一个方案“%2”。"_s.arg(project, owner), isWorking});
        else if (!owner.isEmpty()) // typed by hand: a load of the settings would replace it
            found_.push_back(
                {u"封面的工程名称“%1”中有另一个方案的名称“%2”。"_s.arg(project, owner)});
        lookAtOffice(files::Trim(row.value(field::officeName).TextOrEmpty()), isWorking);
    }

    void lookAtOffice(const QString& office, bool isWorking) {
        const QString own = contractorOf(plan_);
        if (office.isEmpty() || own.isEmpty() || office == own)
            return;
        for (const QString& other : others_)
            if (contractorOf(other) == office) {
                found_.push_back({u"封面的单位名称“%1”是另一个方案“%2”的施工单位，"
                                  "本方案的施工单位是“%3”。"_s.arg(office, other, own),
                                  isWorking});
                return;
            }
    }

    void lookAtHeaderAndFooter(const QString& table) {
        const SettingsRow row = rowOf(table);
        if (!row.hasRow())
            return;
        for (const Story& story : {Story{u"页眉"_s, field::withHeader, field::headerText},
                                   Story{u"页脚"_s, field::withFooter, field::footerText}}) {
            const QString text = files::Trim(row.value(story.text).TextOrEmpty());
            const QString owner = ownerOf(text);
            if (row.equals(story.wanted, store::yes) && !owner.isEmpty())
                found_.push_back(
                    {u"%1“%2”中有另一个方案的名称“%3”。"_s.arg(story.called, text, owner)});
        }
    }

    modMain& state_;
    QString plan_;
    QStringList others_;
    std::optional<SelectionRow> selection_;
    std::vector<ForeignText> found_;
};

} // namespace

std::vector<ForeignText> textsOfOtherPlans(modMain& state, const QString& plan) {
    return Search(state, plan).run();
}

} // namespace qvnd::generate
