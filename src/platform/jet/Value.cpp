#include "platform/jet/Value.h"

#include "platform/jet/DateText.h"
#include "platform/jet/Failure.h"

#include <cmath>
#include <limits>

namespace qvnd::jet {

namespace {

template <typename Whole>
Whole roundedTo(double number) {
    // nearbyint rounds a half to the even neighbour, as the language's own conversion does.
    const double whole = std::nearbyint(number);
    if (!(whole >= std::numeric_limits<Whole>::min() &&
          whole <= std::numeric_limits<Whole>::max())) {
        failOverflow();
    }
    return static_cast<Whole>(whole);
}

float narrowed(double number) {
    if (std::abs(number) > std::numeric_limits<float>::max()) {
        failOverflow();
    }
    return static_cast<float>(number);
}

} // namespace

QString Value::ToText() const {
    if (IsText()) {
        return std::get<QString>(held_);
    }
    if (IsDate()) {
        return textOfDate(std::get<QDateTime>(held_));
    }
    if (const auto* whole = std::get_if<std::int32_t>(&held_)) {
        return QString::number(*whole);
    }
    if (const auto* single = std::get_if<float>(&held_)) {
        return QString::number(*single, 'g', 7);
    }
    if (const auto* wide = std::get_if<double>(&held_)) {
        return QString::number(*wide, 'g', 15);
    }
    failInvalidUseOfNull();
}

std::int16_t Value::ToInteger() const { return roundedTo<std::int16_t>(ToDouble()); }

std::int32_t Value::ToLong() const { return roundedTo<std::int32_t>(ToDouble()); }

float Value::ToSingle() const { return narrowed(ToDouble()); }

double Value::ToDouble() const {
    if (IsText()) {
        return numberOf(std::get<QString>(held_));
    }
    if (IsDate()) {
        return serialOfDate(std::get<QDateTime>(held_));
    }
    if (const auto* whole = std::get_if<std::int32_t>(&held_)) {
        return *whole;
    }
    if (const auto* single = std::get_if<float>(&held_)) {
        return *single;
    }
    if (const auto* wide = std::get_if<double>(&held_)) {
        return *wide;
    }
    failInvalidUseOfNull();
}

QDateTime Value::ToDate() const {
    if (IsDate()) {
        return std::get<QDateTime>(held_);
    }
    return IsText() ? dateOf(std::get<QString>(held_)) : dateOfSerial(ToDouble());
}

float singleOf(QStringView text) { return narrowed(numberOf(text)); }

} // namespace qvnd::jet
