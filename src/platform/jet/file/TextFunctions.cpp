#include "platform/jet/file/TextFunctions.h"

#include "platform/jet/TextOrder.h"
#include "platform/jet/TextPattern.h"

#include <QString>

#include <sqlite3.h>

namespace qvnd::jet {

namespace {

int compare(void*, int aSize, const void* a, int bSize, const void* b) {
    return compareText({static_cast<const char*>(a), static_cast<std::size_t>(aSize)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(bSize)});
}

bool anyNull(int count, sqlite3_value** arguments) {
    for (int i = 0; i < count; ++i) {
        if (sqlite3_value_type(arguments[i]) == SQLITE_NULL) {
            return true;
        }
    }
    return false;
}

QString textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return QString::fromUtf8(text, sqlite3_value_bytes(value));
}

void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (anyNull(count, arguments)) {
        sqlite3_result_null(context);
        return;
    }
    sqlite3_result_int(context, matchesPattern(textOf(arguments[0]), textOf(arguments[1])) ? 1 : 0);
}

void instr(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (anyNull(count, arguments)) {
        sqlite3_result_null(context);
        return;
    }
    sqlite3_result_int(context, positionOf(textOf(arguments[1]), textOf(arguments[0])));
}

} // namespace

void registerTextFunctions(sqlite3* connection) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_collation_v2(connection, "JET", SQLITE_UTF8, nullptr, compare, nullptr);
    sqlite3_create_function_v2(connection, "jet_like", 2, flags, nullptr, like, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(connection, "jet_instr", 2, flags, nullptr, instr, nullptr, nullptr,
                               nullptr);
}

} // namespace qvnd::jet
