#pragma once

#include <QString>

#include <cstdint>

// A key is the outline table's name, then numbers, joined by points: "工程甲.4.12". It is an
// identity, not a position: a node keeps it when others come and go around it.
namespace qvnd::outline {

// The part before the first point: the table that holds the row.
QString tableOfKey(const QString& key);

// True for the table's name, and for that name with numbers behind it, each after a point. Letters
// are compared without case. A database that comes from elsewhere may hold other texts as keys.
bool isKeyOf(const QString& table, const QString& key);

// The number of points: 0 for the root.
int depthOfKey(const QString& key);

// All parts but the last; a key without a point is its own parent key.
QString parentKeyOf(const QString& key);

// Depth that the folder command and the child-document command allow.
inline constexpr int deepestLevel = 9;

// Numbers of the key rules are 16 bits wide: a value beyond 32767 raises error 6 (overflow).
std::int16_t toInteger(std::int64_t number);

// parentKey + "." + (base + count), where base and count have that width, and their sum too.
QString newKey(const QString& parentKey, std::int16_t base, std::int16_t count);

} // namespace qvnd::outline
