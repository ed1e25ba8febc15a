// A SQLite extension that lets the SQLite ODBC driver stand in for the site's SQL Server in
// tests: CONVERT(type, value, style) turns the date texts of styles 103, 120 and 121 into the
// sortable ISO form "YYYY-MM-DD hh:mm:ss" that the test tables hold. The type argument is a
// column of that name in the test tables, so the statements run exactly as the system sends
// them to a server.
#include <sqlite3ext.h>

#include <cstdio>
#include <cstring>
#include <string>

SQLITE_EXTENSION_INIT1

namespace {

std::string FromStyle103(const std::string& text) {
    int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
    if (std::sscanf(text.c_str(), "%d/%d/%d %d:%d:%d", &day, &month, &year, &hour, &minute,
                    &second) != 6)
        return text;
    char iso[32];
    std::snprintf(iso, sizeof iso, "%04d-%02d-%02d %02d:%02d:%02d", year, month, day, hour, minute,
                  second);
    return iso;
}

void Convert(sqlite3_context* context, int argc, sqlite3_value** argv) {
    if (argc != 3 || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const std::string value = reinterpret_cast<const char*>(sqlite3_value_text(argv[1]));
    const int style = sqlite3_value_int(argv[2]);
    const std::string result = style == 103 ? FromStyle103(value) : value.substr(0, 19);
    sqlite3_result_text(context, result.c_str(), static_cast<int>(result.size()), SQLITE_TRANSIENT);
}

}  // namespace

extern "C" int sqlite3_extension_init(sqlite3* db, char**, const sqlite3_api_routines* api) {
    SQLITE_EXTENSION_INIT2(api);
    return sqlite3_create_function(db, "CONVERT", 3, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   Convert, nullptr, nullptr);
}
