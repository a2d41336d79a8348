#include "plans/PlanName.h"

#include <QStringList>

namespace qvnd::plans {

namespace {

constexpr char16_t lastAscii = 0x7F;

bool isControl(QChar character) {
    return character.unicode() < u' ' || character.unicode() == lastAscii;
}

// As the user can read it; a control character by its number.
QString shown(QChar character) {
    return isControl(character)
               ? QStringLiteral("U+%1").arg(character.unicode(), 4, 16, QChar(u'0')).toUpper()
               : "“" + QString(character) + "”";
}

} // namespace

bool mayBeTyped(QChar typed) {
    return typed.unicode() > lastAscii || (typed >= u'a' && typed <= u'z') ||
           (typed >= u'A' && typed <= u'Z') || (typed >= u'0' && typed <= u'9');
}

QString illegalCharacters(const QString& name) {
    QString illegal;
    for (const QChar character : name) {
        if (!mayBeTyped(character) && character != u' ' && !illegal.contains(character)) {
            illegal += character;
        }
    }
    return illegal;
}

QString without(const QString& text, const QString& illegal) {
    QString kept = text;
    kept.removeIf([&](QChar character) { return illegal.contains(character); });
    return kept;
}

QString illegalCharactersText(const QString& illegal) {
    QStringList named;
    for (const QChar character : illegal) {
        named << shown(character);
    }
    return QStringLiteral("对不起，输入字符非法！\n方案名称只能由汉字、字母和数字组成，不能有：") +
           named.join(QStringLiteral("、"));
}

} // namespace qvnd::plans
