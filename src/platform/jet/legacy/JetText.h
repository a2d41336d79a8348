#pragma once

#include <QByteArray>
#include <QString>

namespace qvnd::jet::legacy {

// Texts of older installations: their files name the western code page 1252, but what stands in
// them is Chinese in GBK.

inline constexpr int simplifiedChinese = 936;

// A text of a version 3 file from its bytes. With code page 936 they are GBK; with any other they
// are if they can be: every byte above 127 belongs to a pair, and at least half of the pairs are
// common characters (GB 2312). Else they are western.
QString textOfBytes(const QByteArray& bytes, int codePage);

// A text of a later file, which holds Unicode. A text that was converted from version 3 as western
// ("ÖÐ¹ú" for 中国) is decoded again as GBK, provided that it has western characters alone and all
// its pairs are common Chinese characters. Any other text is returned unchanged.
QString mendedText(const QString& text);

} // namespace qvnd::jet::legacy
