#include "outline/BareNames.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/dialect/Lexer.h"
#include "platform/jet/dialect/ReservedWords.h"

namespace qvnd::outline {

namespace {

bool isOneWord(const QString& name) {
    const jet::Token token = jet::Lexer(name).Next();
    return token.Kind == jet::TokenKind::Word && token.Content == name;
}

} // namespace

const QString& bareName(const QString& table) {
    if (!isOneWord(table) || jet::isReservedWord(table)) {
        throw RunTimeError(error::syntaxError,
                           QStringLiteral("名称“%1”中有空格、标点或保留字，不能用于此操作。")
                               .arg(table)
                               .toStdU16String());
    }
    return table;
}

QString bracketedName(const QString& table) {
    if (table.contains(u'[') || table.contains(u']')) {
        throw RunTimeError(error::nameInvalid,
                           QStringLiteral("名称“%1”中有方括号").arg(table).toStdU16String());
    }
    return u'[' + table + u']';
}

} // namespace qvnd::outline
