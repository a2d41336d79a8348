#include "format/SettingsChanges.h"

#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

// More settings are only counted.
constexpr qsizetype mostNamed = 5;

constexpr std::array tables{store::table::cover, store::table::chapters, store::table::headerFooter,
                            store::table::pageSetup, store::table::selection};

QString nameOf(const jet::Recordset& row, QStringView table, const QString& field) {
    return table == store::table::chapters
               ? u"第%1级标题的%2"_s.arg(row.Get(store::field::level).TextOrEmpty(), field)
               : field;
}

QString quoted(const QString& text) { return u'“' + text + u'”'; }

QString listed(const QList<SettingChange>& changes) {
    QStringList parts;
    for (const SettingChange& change : changes.mid(0, mostNamed)) {
        parts << u"%1由%2改为%3"_s.arg(change.name, quoted(change.before), quoted(change.after));
    }
    const QString rest =
        changes.size() > mostNamed ? u" 等 %1 项"_s.arg(changes.size()) : QString();
    return parts.join(u"，"_s) + rest;
}

} // namespace

SettingsNow::SettingsNow(jet::Database& gDbBidSet) {
    for (const QStringView table : tables) {
        ignoringErrors([&] { read(gDbBidSet, table); });
    }
}

void SettingsNow::read(jet::Database& gDbBidSet, QStringView table) {
    const auto rows = gDbBidSet.OpenRecordset(u"Select * from "_s + table.toString());
    for (; !rows->Eof(); rows->MoveNext()) {
        for (const jet::Field& field : rows->Fields()) {
            settings_.append(
                {nameOf(*rows, table, field.Name), rows->Get(field.Name).TextOrEmpty()});
        }
    }
}

QList<SettingChange> SettingsNow::changesUntil(const SettingsNow& later) const {
    QList<SettingChange> changes;
    for (const Setting& before : settings_) {
        const auto after =
            std::find_if(later.settings_.begin(), later.settings_.end(),
                         [&](const Setting& setting) { return setting.name == before.name; });
        if (after != later.settings_.end() && after->text != before.text) {
            changes.append({before.name, before.text, after->text});
        }
    }
    return changes;
}

QString wordsOfLoad(const QList<SettingChange>& changes) {
    return changes.isEmpty() ? QString() : u"打开设置时自动改动了：%1。"_s.arg(listed(changes));
}

QString wordsOfKept(const QList<SettingChange>& changes) {
    return changes.isEmpty() ? QString()
                             : u"设置已保留，取消和关闭不撤回改动：%1。"_s.arg(listed(changes));
}

QString wordsOfDecided(const QList<SettingChange>& changes) {
    QStringList lost;
    for (const auto& [field, called] : {std::pair(store::field::withCover, u"封面格式库"_s),
                                        std::pair(store::field::withSetting, u"标书设置库"_s),
                                        std::pair(store::field::withCustomPages, u"自定义库"_s)}) {
        for (const SettingChange& change : changes) {
            if (change.name == field && change.before == store::yes) {
                lost << called;
            }
        }
    }
    return lost.isEmpty()
               ? QString()
               : u"没有选中“选用库”，生成时不再采用%1中的设置。"_s.arg(lost.join(u"、"_s));
}

} // namespace qvnd::format
