#include "platform/jet/DateText.h"

#include "platform/jet/Failure.h"

#include <QRegularExpression>

#include <cmath>

namespace qvnd::jet {

namespace {

const QDate dayZero(1899, 12, 30);
constexpr int secondsADay = 24 * 60 * 60;

} // namespace

QString textOfDate(const QDateTime& moment) {
    const bool midnight = moment.time() == QTime(0, 0);
    return moment.toString(midnight ? QStringLiteral("yyyy-M-d")
                                    : QStringLiteral("yyyy-M-d H:mm:ss"));
}

QDateTime dateOf(QStringView text) {
    static const QRegularExpression form(
        QStringLiteral("^\\s*(\\d{3,4})(?:[-/.]|年)(\\d{1,2})(?:[-/.]|月)(\\d{1,2})日?"
                       "(?:[ T](\\d{1,2}):(\\d{2})(?::(\\d{2}))?)?\\s*$"));
    const QRegularExpressionMatch parts = form.match(text.toString());
    const auto number = [&](int group) { return parts.captured(group).toInt(); };
    const QDate day(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6));
    if (!day.isValid() || !time.isValid()) { // nor is the day of a text of another form
        failTypeMismatch();
    }
    return {day, time};
}

double serialOfDate(const QDateTime& moment) {
    const auto days = static_cast<double>(dayZero.daysTo(moment.date()));
    const double part = QTime(0, 0).secsTo(moment.time()) / static_cast<double>(secondsADay);
    // Before day zero the fraction still counts away from zero.
    return days < 0 ? days - part : days + part;
}

QDateTime dateOfSerial(double days) {
    constexpr double first = -657434;
    constexpr double last = 2958466;
    if (!(days > first - 1 && days < last)) {
        failOverflow();
    }
    const double whole = std::trunc(days);
    const auto seconds = static_cast<int>(std::lround(std::abs(days - whole) * secondsADay));
    const QDate day = dayZero.addDays(static_cast<qint64>(whole) + seconds / secondsADay);
    return {day, QTime(0, 0).addSecs(seconds % secondsADay)};
}

} // namespace qvnd::jet
