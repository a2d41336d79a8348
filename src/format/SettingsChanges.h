#pragma once

#include "platform/jet/Database.h"

#include <QList>
#include <QString>

namespace qvnd::format {

// A setting that has another value than before.
struct SettingChange {
    QString name; // as the user knows it: "页边距上", "第2级标题的字号"
    QString before;
    QString after;
};

// The settings as the four working tables and the selection row hold them at one moment.
class SettingsNow {
public:
    // A table that cannot be read has no settings.
    explicit SettingsNow(jet::Database& gDbBidSet);

    // What has another value in `later`, in the order of the tables and their fields; settings that
    // stand in only one of both do not count.
    QList<SettingChange> changesUntil(const SettingsNow& later) const;

private:
    struct Setting {
        QString name;
        QString text;
    };

    void read(jet::Database& gDbBidSet, QStringView table);

    QList<Setting> settings_;
};

// Sentences for the user; each empty where there is nothing to tell.
//
// What the load of the dialog changes by itself: the cover's names, and 是否右对齐.
QString wordsOfLoad(const QList<SettingChange>& changes);
// That 取消, Escape and the close box take nothing back, with what stays.
QString wordsOfKept(const QList<SettingChange>& changes);
// That 确定 has given up an entry of a library that generation used so far.
QString wordsOfDecided(const QList<SettingChange>& changes);

} // namespace qvnd::format
