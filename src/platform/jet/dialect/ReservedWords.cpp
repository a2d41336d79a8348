#include "platform/jet/dialect/ReservedWords.h"

#include <algorithm>
#include <iterator>

namespace qvnd::jet {

namespace {

constexpr QStringView words[] = {
    u"add",       u"all",         u"alter",  u"and",        u"any",        u"as",      u"asc",
    u"between",   u"by",          u"column", u"constraint", u"create",     u"delete",  u"desc",
    u"distinct",  u"distinctrow", u"drop",   u"eqv",        u"exists",     u"foreign", u"from",
    u"group",     u"having",      u"imp",    u"in",         u"index",      u"inner",   u"insert",
    u"into",      u"is",          u"join",   u"left",       u"like",       u"mod",     u"not",
    u"null",      u"on",          u"or",     u"order",      u"parameters", u"pivot",   u"primary",
    u"procedure", u"references",  u"right",  u"select",     u"set",        u"some",    u"table",
    u"top",       u"transform",   u"union",  u"unique",     u"update",     u"values",  u"where",
    u"with",      u"xor",
};

} // namespace

bool isReservedWord(QStringView word) {
    return std::any_of(std::begin(words), std::end(words), [&](QStringView reserved) {
        return reserved.compare(word, Qt::CaseInsensitive) == 0;
    });
}

} // namespace qvnd::jet
