#include "store/FontSizeToPoints.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Trim.h"
#include "platform/jet/Value.h"

namespace qvnd::store {

namespace {

struct NamedSize {
    QStringView name;
    float points;
};

constexpr NamedSize namedSizes[] = {
    {u"初号", 48},   {u"小初", 36},   {u"一号", 26},    {u"小一", 24},
    {u"二号", 22},   {u"小二", 18},   {u"三号", 16},    {u"小三", 15},
    {u"四号", 14},   {u"小四", 12},   {u"五号", 10.5F}, {u"小五", 9},
    {u"六号", 7.5F}, {u"小六", 6.5F}, {u"七号", 5.5F},  {u"八号", 5},
};

// What the last comparison falls through to; no name stands for it.
constexpr float unknownSize = 10;

float pointsOfName(QStringView name) {
    for (const NamedSize& size : namedSizes) {
        if (size.name == name) {
            return size.points;
        }
    }
    return unknownSize;
}

} // namespace

float FontSizeToPoints(const QString& text) {
    const QString trimmed = files::Trim(text);
    try {
        return jet::singleOf(trimmed);
    } catch (const RunTimeError& failure) {
        return failure.number() == error::typeMismatch ? pointsOfName(trimmed) : 0;
    }
}

QStringList namedFontSizes() {
    QStringList names;
    for (const NamedSize& size : namedSizes) {
        names << size.name.toString();
    }
    return names;
}

} // namespace qvnd::store
