#pragma once

#include <QDate>
#include <QString>

#include <array>

namespace qvnd::startup {

// The texts of the status bar's three panels: user, work folder, and the date of the start.
std::array<QString, 3> statusPanels(const QString& userName, const QString& gWorkPath,
                                    const QDate& today);

} // namespace qvnd::startup
