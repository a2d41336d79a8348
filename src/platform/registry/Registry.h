#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

namespace qvnd::registry {

// Handles of the root keys; 0 stands for none.
using RootHandle = std::uint32_t;
// An opened key; 0 stands for none.
using KeyHandle = std::uint32_t;

// How an operation ended: the numbers of the operating system.
using Status = std::int32_t;
namespace status {
inline constexpr Status success = 0;
inline constexpr Status notFound = 2;
inline constexpr Status accessDenied = 5;
inline constexpr Status invalidHandle = 6;
inline constexpr Status invalidParameter = 87;
inline constexpr Status moreData = 234;
inline constexpr Status cannotRead = 1012;
inline constexpr Status cannotWrite = 1013;
} // namespace status

// What a key is opened for: the operating system's access masks.
using Access = std::uint32_t;
namespace access {
inline constexpr Access read = 0x20019;
inline constexpr Access write = 0x20006;
inline constexpr Access readWrite = 0x2001F;
inline constexpr Access queryValue = 0x1; // the bit that reading needs
inline constexpr Access setValue = 0x2;   // the bit that changing needs
} // namespace access

enum class ValueType : std::uint32_t {
    none = 0,
    text = 1,
    expandableText = 2,
    binary = 3,
    number = 4
};

struct Value {
    ValueType type = ValueType::text;
    // Text is UTF-16LE as stored, with its terminator if it was stored with one; a number is
    // four bytes, the lowest first.
    QByteArray data;

    friend bool operator==(const Value&, const Value&) = default;
};

struct NamedValue {
    QString name;
    Value value;
};

// The registry. Key and value names are compared without case; the empty value name is the key's
// default value. Nothing throws: every operation answers with a status, 0 when it is done. A
// handle answers with 6 once it is closed, and with 5 for what it was not opened for.
class Registry {
public:
    virtual ~Registry() = default;

    // 2 when there is no such key. The empty sub-key is the root itself.
    virtual Status openKey(RootHandle root, const QString& subKey, Access access,
                           KeyHandle& key) = 0;
    // Opens the key for reading and writing; one that is missing is made with its parents.
    virtual Status createKey(RootHandle root, const QString& subKey, KeyHandle& key) = 0;
    virtual Status closeKey(KeyHandle key) = 0;
    // Takes away a key below `parent`, values and all; 5 when it has sub-keys of its own.
    virtual Status deleteKey(KeyHandle parent, const QString& subKey) = 0;
    // May the caller learn who may use the key? 0 for every open key.
    virtual Status keySecurity(KeyHandle key) = 0;

    // 2 when there is no such value.
    virtual Status queryValue(KeyHandle key, const QString& name, Value& value) = 0;
    virtual Status setValue(KeyHandle key, const QString& name, const Value& value) = 0;
    virtual Status deleteValue(KeyHandle key, const QString& name) = 0;
    // All values, in the order in which they were made.
    virtual Status enumValues(KeyHandle key, std::vector<NamedValue>& values) = 0;
};

} // namespace qvnd::registry
