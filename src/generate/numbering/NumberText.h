#pragma once

#include "generate/numbering/NumberingTables.h"

#include <QString>

namespace qvnd::generate {

// What the number text of a node is made from.
struct LevelNumbering {
    bool gMultLevelOn = false;
    const LevelCounters& counters;
    const ChapterGrid& grid;
    const NumberWords& words;
};

// The number text of a node. Multi-level: the running numbers of levels 1 to `level` in decimal,
// joined by ".". Otherwise the style 序号标志 of grid row min(level, 9): "一型" Chinese words,
// composed beyond 20 from the first digit and the units and without hundreds (123 is 一十三);
// "A型" and "aa型" the character of that code without a limit (27 is "["); anything else decimal.
// Never throws: a fault gives what was made until then.
QString FormatLevelNumber(const LevelNumbering& numbering, int level, int counter);

// The number of a document under a document in one of the styles "无", "1、", "1.", "A.", "1)",
// "a)", "A)" and "I."; `number` is a decimal text. In the Roman style every number from 11 on is
// "X.". Any other style gives the number unchanged. Never throws: a fault gives an empty text.
QString FormatChildNumber(const QString& number, const QString& style);

} // namespace qvnd::generate
