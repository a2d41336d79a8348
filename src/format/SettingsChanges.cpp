#include "format/SettingsChanges.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

// More settings are only counted.
constexpr qsizetype mostNamed = 5;

constexpr std::array tables{store::table::cover,        store::table::chapters,
                            store::table::headerFooter, store::table::pageSetup,
                            store::table::selection,    store::table::currentCustomPages};

QString nameOf(const jet::Recordset& row, QStringView table, const QString& field) {
    if (table == store::table::currentCustomPages) {
        return u"自定义页"_s;
    }
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

std::optional<QString> SettingsNow::textOf(const QString& name) const {
    const auto found = std::find_if(settings_.begin(), settings_.end(),
                                    [&](const Setting& setting) { return setting.name == name; });
    return found == settings_.end() ? std::nullopt : std::optional(found->text);
}

QList<SettingChange> SettingsNow::changesUntil(const SettingsNow& later) const {
    QList<SettingChange> changes;
    for (const Setting& before : settings_) {
        const std::optional<QString> after = later.textOf(before.name);
        if (after && *after != before.text) {
            changes.append({before.name, before.text, *after});
        }
    }
    return changes;
}

void ShownLibraries::show(jet::Database& gDbBidSet, const QString& name,
                          const std::function<void()>& show) {
    const SettingsNow before(gDbBidSet);
    try {
        show();
    } catch (const RunTimeError&) {
        add(name, before.changesUntil(SettingsNow(gDbBidSet)));
        throw;
    }
    add(name, before.changesUntil(SettingsNow(gDbBidSet)));
}

void ShownLibraries::add(const QString& name, const QList<SettingChange>& changes) {
    if (!changes.isEmpty() && !names_.contains(name)) {
        names_ << name;
    }
    for (const SettingChange& change : changes) {
        const auto earlier =
            std::find_if(changes_.begin(), changes_.end(),
                         [&](const SettingChange& one) { return one.name == change.name; });
        if (earlier == changes_.end()) {
            changes_ << change;
        } else {
            earlier->after = change.after;
        }
    }
}

QList<SettingChange> ShownLibraries::standing(const SettingsNow& now) const {
    QList<SettingChange> standing = changes_;
    standing.removeIf([&](const SettingChange& change) {
        return change.before == change.after || now.textOf(change.name) != change.after;
    });
    return standing;
}

void ShownLibraries::forget() {
    names_.clear();
    changes_.clear();
}

QString wordsOfLoad(const QList<SettingChange>& changes) {
    return changes.isEmpty() ? QString() : u"打开设置时自动改动了：%1。"_s.arg(listed(changes));
}

QString wordsOfShown(const QStringList& libraries, const QList<SettingChange>& changes) {
    return changes.isEmpty() ? QString()
                             : u"显示“%1”时，其中的设置写入了现在的设置：%2。"_s.arg(
                                   libraries.join(u"”、“"_s), listed(changes));
}

QString wordsOfKept(const QList<SettingChange>& changes, const QList<SettingChange>& told) {
    QList<SettingChange> others = changes;
    others.removeIf([&](const SettingChange& change) {
        return std::any_of(told.begin(), told.end(), [&](const SettingChange& one) {
            return one.name == change.name && one.after == change.after;
        });
    });
    if (changes.isEmpty()) {
        return {};
    }
    const QString which = others.isEmpty() ? QString() : u'：' + listed(others);
    return u"设置已保留，取消和关闭不撤回改动%1。"_s.arg(which);
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
