#include "platform/jet/FieldConversion.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/Failure.h"

namespace qvnd::jet {

namespace {

Value textFor(const Field& field, const QString& text) {
    if (text.isEmpty() && !field.AllowZeroLength) {
        failZeroLength(field.Name);
    }
    if (field.Type == FieldType::Text && text.size() > field.Size) {
        failTextTooLong(field.Name);
    }
    return text;
}

std::int32_t byteOf(const Value& value) {
    const std::int32_t number = value.ToLong();
    if (number < 0 || number > 255) {
        failOverflow();
    }
    return number;
}

Value typed(FieldType type, const Value& value) {
    switch (type) {
    case FieldType::Byte:
        return byteOf(value);
    case FieldType::Integer:
        return std::int32_t{value.ToInteger()};
    case FieldType::Long:
        return value.ToLong();
    case FieldType::Single:
        return value.ToSingle();
    case FieldType::Double:
        return value.ToDouble();
    case FieldType::Date:
        return value.ToDate();
    case FieldType::Text:
    case FieldType::Memo:
        break;
    }
    return value.ToText();
}

} // namespace

Value convertedFor(const Field& field, const Value& value) {
    if (value.IsNull()) {
        return {};
    }
    if (field.IsText()) {
        return textFor(field, value.ToText());
    }
    try {
        return typed(field.Type, value);
    } catch (const RunTimeError&) {
        // A mismatch and an overflow are one and the same failure of a field.
        failConversion(field.Name);
    }
}

Value defaultOf(const Field& field) {
    if (!field.DefaultValue || field.IsAutoIncrement()) {
        return {};
    }
    return typed(field.Type, *field.DefaultValue);
}

} // namespace qvnd::jet
