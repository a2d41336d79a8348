#include "generate/settings/SettingsChoice.h"

#include "platform/files/Trim.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

bool isYes(const jet::Value& flag) { return flag.TextOrEmpty() == u"是"; }

bool blank(const jet::Value& name) { return files::Trim(name.TextOrEmpty()).isEmpty(); }

QString libraryTable(const jet::Value& name, const QString& suffix, const QString& workingTable) {
    return blank(name) ? workingTable : name.ToText() + suffix;
}

} // namespace

std::optional<SelectionRow> readSelectionRow(jet::Database& gDbBidSet) {
    const auto rows = gDbBidSet.OpenRecordset(u"Select * from 是否设置表"_s);
    if (rows->Eof())
        return std::nullopt;
    return SelectionRow{rows->Get(u"是否封面"), rows->Get(u"封面名称"), rows->Get(u"是否设置"),
                        rows->Get(u"设置名称"), rows->Get(u"是否定义")};
}

QString bodyFontTable(const std::optional<SelectionRow>& row) {
    if (!row || files::Trim(row->是否设置.TextOrEmpty()) != u"是")
        return u"页面设置表"_s;
    return libraryTable(row->设置名称, u"页面"_s, u"页面设置表"_s);
}

QString pageTable(const std::optional<SelectionRow>& row) {
    if (!row || !isYes(row->是否设置))
        return u"页面设置表"_s;
    return libraryTable(row->设置名称, u"页面"_s, u"页面设置表"_s);
}

QString headerFooterTable(const std::optional<SelectionRow>& row) {
    if (!row || !isYes(row->是否设置))
        return u"页眉页脚表"_s;
    return libraryTable(row->设置名称, u"眉脚"_s, u"页眉页脚表"_s);
}

CoverChoice chooseCover(const std::optional<SelectionRow>& row) {
    CoverChoice choice{false, u"封面表"_s};
    if (!row)
        return choice;
    choice.customPage = isYes(row->是否定义);
    if (isYes(row->是否封面) && !blank(row->封面名称))
        choice.table = row->封面名称.ToText();
    return choice;
}

} // namespace qvnd::generate
