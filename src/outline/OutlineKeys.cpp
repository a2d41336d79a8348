#include "outline/OutlineKeys.h"

#include "platform/error/RunTimeError.h"

#include <limits>

namespace qvnd::outline {

QString tableOfKey(const QString& key) { return key.section(u'.', 0, 0); }

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
