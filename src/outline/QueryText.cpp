#include "outline/QueryText.h"

#include "outline/BareNames.h"
#include "platform/error/RunTimeError.h"

namespace qvnd::outline {

QString quoted(const QString& text) {
    if (text.contains(u'\'')) {
        throw RunTimeError(error::syntaxError,
                           ("查询中有语法错误：『" + text + "』中有撇号。").toStdU16String());
    }
    return u'\'' + text + u'\'';
}

QString rowQuery(const QString& table, const QString& key) {
    return "Select * from " + bareName(table) + " Where Key=" + quoted(key);
}

} // namespace qvnd::outline
