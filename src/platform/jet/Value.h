#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <variant>

namespace qvnd::jet {

// What one field of one row holds. A plain value: copied, compared, never shared.
//
// Conversions raise the run-time errors that a typed assignment raises: 94 for Null, 13 (type
// mismatch) for a text that is no number or date, 6 (overflow) for a number too wide.
class Value {
public:
    Value() = default; // Null
    Value(const QString& text) : held_(text) {}
    Value(QStringView text) : held_(text.toString()) {}
    Value(const char16_t* text) : held_(QString::fromUtf16(text)) {}
    Value(std::int32_t number) : held_(number) {}
    Value(float number) : held_(number) {}
    Value(double number) : held_(number) {}
    Value(const QDateTime& moment) : held_(moment) {}
    Value(const QDate& day) : held_(day.startOfDay()) {}

    bool IsNull() const { return std::holds_alternative<std::monostate>(held_); }
    bool IsText() const { return std::holds_alternative<QString>(held_); }
    bool IsDate() const { return std::holds_alternative<QDateTime>(held_); }
    bool IsNumber() const { return !IsNull() && !IsText() && !IsDate(); }

    // Numbers in plain decimal ("1.5"), dates as yyyy-M-d with the time behind it if it has one.
    QString ToText() const;
    // The same, and Null as the empty text.
    QString TextOrEmpty() const { return IsNull() ? QString() : ToText(); }
    // 16 and 32 bits wide; a fraction is rounded, a half to the even neighbour.
    std::int16_t ToInteger() const;
    std::int32_t ToLong() const;
    float ToSingle() const;
    double ToDouble() const;
    QDateTime ToDate() const;

    // Same kind and same content; texts by their exact characters.
    friend bool operator==(const Value& a, const Value& b) = default;

private:
    std::variant<std::monostate, QString, std::int32_t, float, double, QDateTime> held_;
};

// The number that a text spells: blanks around it, a sign, digits with commas between thousands,
// a fraction, an exponent behind e or d, or &H and hexadecimal digits. Errors 13 and 6.
double numberOf(QStringView text);

// The single-precision number that a text spells; beyond its range error 6.
float singleOf(QStringView text);

} // namespace qvnd::jet
