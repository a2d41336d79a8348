#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace qvnd::registry {

// Handles of the root keys; 0 stands for none.
using RootHandle = std::uint32_t;

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
};

// The registry as far as the program reads it. Key and value names are compared without case.
class Registry {
public:
    virtual ~Registry() = default;

    virtual bool keyExists(RootHandle root, const QString& subKey) const = 0;
    // Nothing when the key or the value is missing. The empty name is the key's default value.
    virtual std::optional<Value> value(RootHandle root, const QString& subKey,
                                       const QString& name) const = 0;
};

} // namespace qvnd::registry
