#pragma once

#include <QDateTime>
#include <QStringView>

namespace qvnd::jet {

// yyyy-M-d, and H:mm:ss behind it unless the time is midnight.
QString textOfDate(const QDateTime& moment);

// Reads year, month and day parted by -, /, . or 年月日, with H:mm or H:mm:ss behind a blank.
// Error 13 for anything else, an impossible date included.
QDateTime dateOf(QStringView text);

// A date as days since 1899-12-30, the time as the fraction; error 6 outside the years 100 to 9999.
double serialOfDate(const QDateTime& moment);
QDateTime dateOfSerial(double days);

} // namespace qvnd::jet
