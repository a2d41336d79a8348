#pragma once

#include "platform/jet/Database.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace qvnd::format {

// A setting that has another value than before.
struct SettingChange {
    QString name; // as the user knows it: "页边距上", "第2级标题的字号"
    QString before;
    QString after;
};

// The settings as the four working tables, the selection row and the row of the custom page in use
// hold them at one moment.
class SettingsNow {
public:
    // A table that cannot be read has no settings.
    explicit SettingsNow(jet::Database& gDbBidSet);

    // What has another value in `later`, in the order of the tables and their fields; settings that
    // stand in only one of both do not count.
    QList<SettingChange> changesUntil(const SettingsNow& later) const;
    // Null for a setting that stands nowhere.
    std::optional<QString> textOf(const QString& name) const;

private:
    struct Setting {
        QString name;
        QString text;
    };

    void read(jet::Database& gDbBidSet, QStringView table);

    QList<Setting> settings_;
};

// Libraries that the dialog has shown: boxes and options that really change then write to the
// working tables, though the user has not chosen the library.
class ShownLibraries {
public:
    // Has `show` put the library `name` into the controls. Its errors pass.
    void show(jet::Database& gDbBidSet, const QString& name, const std::function<void()>& show);
    // What they have written and nothing has changed since.
    QList<SettingChange> standing(const SettingsNow& now) const;
    const QStringList& names() const { return names_; }
    void forget();

private:
    void add(const QString& name, const QList<SettingChange>& changes);

    QStringList names_; // of those that have written something
    QList<SettingChange> changes_;
};

// Sentences for the user; each empty where there is nothing to tell.
//
// What the load of the dialog changes by itself: the cover's names, and 是否右对齐.
QString wordsOfLoad(const QList<SettingChange>& changes);
// What the libraries that were shown have written.
QString wordsOfShown(const QStringList& libraries, const QList<SettingChange>& changes);
// That 取消, Escape and the close box take nothing back, with what stays; what was `told` already
// is not told once more.
QString wordsOfKept(const QList<SettingChange>& changes, const QList<SettingChange>& told = {});
// That 确定 has given up an entry of a library that generation used so far.
QString wordsOfDecided(const QList<SettingChange>& changes);

} // namespace qvnd::format
