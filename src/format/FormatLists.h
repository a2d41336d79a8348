#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The closed lists that the format dialog offers, and what the tables keep of their entries.
namespace qvnd::format {

// The 37 sizes: Chinese names from the largest to the smallest, then numbers of points.
const QStringList& sizeList();
// "1" to "9".
const QStringList& levelList();
// The samples of the numbering styles, as 中缀 has them.
const QStringList& sampleList();
// The leaders of the contents as the dialog shows them.
const QStringList& leaderList();
// The numbering styles of documents under documents.
const QStringList& childStyleList();

// 序号标志 for an entry of sampleList(); nothing for any other text. In a row that is made new
// "a" becomes "a型", which generation does not know and numbers in decimal.
enum class RowIs { there, made };
std::optional<QString> numberStyleOf(const QString& sample, RowIs row);

// 制表样式 for an entry of leaderList(), and the other way round; nothing for any other text.
std::optional<QString> leaderWordOf(const QString& entry);
std::optional<QString> leaderEntryOf(const QString& word);

} // namespace qvnd::format
