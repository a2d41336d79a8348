#include "outline/OutlineKeys.h"

#include "platform/error/RunTimeError.h"

#include <QList>

#include <algorithm>
#include <limits>

namespace qvnd::outline {

namespace {

bool isNumber(QStringView text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

QString tableOfKey(const QString& key) { return key.section(u'.', 0, 0); }

bool isKeyOf(const QString& table, const QString& key) {
    if (!key.startsWith(table, Qt::CaseInsensitive)) {
        return false;
    }
    // Nothing before the first point.
    const auto parts = QStringView(key).mid(table.size()).split(u'.');
    return parts.front().isEmpty() && std::all_of(parts.begin() + 1, parts.end(), isNumber);
}

int depthOfKey(const QString& key) { return static_cast<int>(key.count(u'.')); }

QString parentKeyOf(const QString& key) {
    const qsizetype cut = key.lastIndexOf(u'.');
    return cut < 0 ? key : key.left(cut);
}

std::int16_t toInteger(std::int64_t number) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (number < Limits::min() || number > Limits::max()) {
        throw RunTimeError(error::overflow, u"溢出");
    }
    return static_cast<std::int16_t>(number);
}

QString newKey(const QString& parentKey, std::int16_t base, std::int16_t count) {
    return parentKey + u'.' + QString::number(toInteger(std::int64_t{base} + count));
}

} // namespace qvnd::outline
