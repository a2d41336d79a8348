#include "generate/settings/SettingsRow.h"

#include "platform/error/RunTimeError.h"
#include "store/FontSizeToPoints.h"

namespace qvnd::generate {

SettingsRow::SettingsRow(jet::Database& database, const QString& query)
    : rows_(database.OpenRecordset(query)) {}

jet::Value SettingsRow::value(QStringView field) const {
    if (!opened())
        throw RunTimeError(error::objectNotSet, u"这一页格式设置的表没有打开。");
    return rows_->Get(field);
}

QString SettingsRow::text(QStringView field) const {
    const jet::Value held = value(field);
    if (held.IsNull())
        throw RunTimeError(error::invalidUseOfNull, u"无效使用 Null");
    return held.ToText();
}

float SettingsRow::fontSize(QStringView field) const {
    return store::FontSizeToPoints(text(field));
}

bool SettingsRow::equals(QStringView field, QStringView text) const {
    const jet::Value held = value(field);
    return !held.IsNull() && held.ToText() == text;
}

std::optional<word::Alignment> alignmentOf(QStringView position) {
    if (position == u"左")
        return word::Alignment::left;
    if (position == u"中")
        return word::Alignment::center;
    if (position == u"右")
        return word::Alignment::right;
    return std::nullopt;
}

} // namespace qvnd::generate
