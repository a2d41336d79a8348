#pragma once

#include <QStringView>

namespace qvnd::jet {

// True for a word of the dialect's grammar, which is a name only in brackets. Without case.
bool isReservedWord(QStringView word);

} // namespace qvnd::jet
