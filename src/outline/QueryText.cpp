#include "outline/QueryText.h"

#include "outline/OutlineKeys.h"
#include "platform/error/RunTimeError.h"
#include "platform/jet/dialect/Lexer.h"
#include "platform/jet/dialect/ReservedWords.h"
#include "store/Names.h"

namespace qvnd::outline {

namespace {

bool isOneWord(const QString& name) {
    const jet::Token token = jet::Lexer(name).Next();
    return token.Kind == jet::TokenKind::Word && token.Content == name;
}

// `words`: what is told, with %1 for the text.
[[noreturn]] void refuse(long number, const QString& words, const QString& text) {
    throw RunTimeError(number, words.arg(text).toStdU16String());
}

} // namespace

const QString& bareName(const QString& table) {
    if (!isOneWord(table) || jet::isReservedWord(table)) {
        refuse(error::syntaxError,
               QStringLiteral("名称“%1”中有空格、标点或保留字，不能用于此操作。"), table);
    }
    return table;
}

QString bracketedName(const QString& table) {
    if (table.contains(u'[') || table.contains(u']')) {
        refuse(error::nameInvalid, QStringLiteral("名称“%1”中有方括号，不能用于此操作。"), table);
    }
    return u'[' + table + u']';
}

QString quoted(const QString& text) {
    if (text.contains(u'\'')) {
        refuse(error::syntaxError, QStringLiteral("名称“%1”中有撇号，不能用于此操作。"), text);
    }
    return u'\'' + text + u'\'';
}

QString deletionFrom(QStringView list, const QString& name) {
    return "Delete * from " + list.toString() + " where " + store::field::name.toString() + '=' +
           quoted(name);
}

QString subtreeCondition(const QString& table, const QString& key) {
    return isKeyOf(table, key) ? " where Key like " + quoted(key + u'*')
                               : " where Key=" + quoted(key);
}

QString rowQuery(const QString& table, const QString& key) {
    return "Select * from " + bareName(table) + " Where Key=" + quoted(key);
}

} // namespace qvnd::outline
