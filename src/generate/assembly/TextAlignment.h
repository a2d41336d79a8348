#pragma once

#include "platform/word/model/Format.h"

#include <QStringView>

#include <optional>

namespace qvnd::generate {

// "左", "中" and "右"; nothing for any other text.
std::optional<word::Alignment> alignmentOf(QStringView position);

} // namespace qvnd::generate
