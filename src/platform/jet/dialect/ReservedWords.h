#pragma once

#include <QStringView>

namespace qvnd::jet {

// Is the word part of the dialect's grammar, so that it is a name only in brackets?
bool isReservedWord(QStringView word);

} // namespace qvnd::jet
