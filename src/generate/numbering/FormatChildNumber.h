#pragma once

#include <QString>

namespace qvnd::generate {

// The number of a document under a document in one of the styles "无", "1、", "1.", "A.", "1)",
// "a)", "A)" and "I."; `number` is a decimal text. In the Roman style every number from 11 on is
// "X.". Any other style gives the number unchanged. Never throws: a fault gives an empty text.
QString FormatChildNumber(const QString& number, const QString& style);

} // namespace qvnd::generate
