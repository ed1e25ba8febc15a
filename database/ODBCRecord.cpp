#include "ODBCRecord.h"

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "ODBCConnection.h"
#include "ODBCException.h"
#include "OdbcText.h"

namespace {

// Column names are compared over their first bytes only, without regard to case.
constexpr size_t kColumnNameBytes = 32;

}  // namespace

void ODBCRecord::Open(const ODBCConnection& connection) {
    Close();
    hdbc = connection.hdbc;
    if (hdbc == SQL_NULL_HDBC || !OdbcSucceeded(SQLAllocHandle(SQL_HANDLE_STMT, hdbc, &hstmt))) {
        hstmt = SQL_NULL_HSTMT;
        return;
    }
    // A static cursor lets the record move backwards and to either end; a driver that knows
    // only forward cursors keeps its own, and MoveNext works all the same.
    SQLSetStmtAttr(hstmt, SQL_ATTR_CURSOR_TYPE, reinterpret_cast<void*>(SQL_CURSOR_STATIC), 0);
}

int ODBCRecord::Query(const std::string& statement) {
    if (hstmt == SQL_NULL_HSTMT)
        return 0;
    SQLFreeStmt(hstmt, SQL_CLOSE);
    SQLSetStmtAttr(hstmt, SQL_ATTR_QUERY_TIMEOUT,
                   reinterpret_cast<void*>(static_cast<intptr_t>(kQueryTimeout)), 0);
    std::basic_string<SQLWCHAR> text = ToOdbcWide(statement);
    if (!OdbcSucceeded(SQLExecDirectW(hstmt, const_cast<SQLWCHAR*>(text.c_str()), SQL_NTS)))
        return 0;
    eof = 0;
    bof = 0;
    if (SQLFetchScroll(hstmt, SQL_FETCH_NEXT, 0) == SQL_NO_DATA) {
        eof = 1;
        bof = 1;
    }
    return 1;
}

void ODBCRecord::RequireStatement() const {
    if (hstmt == SQL_NULL_HSTMT)
        throw ODBCException();
}

int ODBCRecord::GetString(int column, std::string& target) {
    RequireStatement();
    target.clear();
    SQLULEN size = static_cast<SQLULEN>(std::max(GetColumnSize(column), 0));
    if (size == 0 || size > kMaxTextColumn)
        size = size == 0 ? 255 : kMaxTextColumn;
    std::vector<char> buffer(size + 1, '\0');
    SQLLEN indicator = 0;
    const SQLRETURN result =
        SQLGetData(hstmt, static_cast<SQLUSMALLINT>(column + 1), SQL_C_CHAR, buffer.data(),
                   static_cast<SQLLEN>(buffer.size()), &indicator);
    if (!OdbcSucceeded(result))
        return 0;
    if (indicator != SQL_NULL_DATA)
        target.assign(buffer.data(), ::strnlen(buffer.data(), buffer.size()));
    return 1;
}

int ODBCRecord::GetInt(int column, int& target) {
    RequireStatement();
    SQLINTEGER value = 0;
    SQLLEN indicator = 0;
    if (!OdbcSucceeded(SQLGetData(hstmt, static_cast<SQLUSMALLINT>(column + 1), SQL_C_SLONG, &value,
                                  sizeof value, &indicator)))
        return 0;
    target = indicator == SQL_NULL_DATA ? 0 : value;
    return 1;
}

int ODBCRecord::GetDouble(int column, double& target) {
    RequireStatement();
    double value = 0;
    SQLLEN indicator = 0;
    if (!OdbcSucceeded(SQLGetData(hstmt, static_cast<SQLUSMALLINT>(column + 1), SQL_C_DOUBLE,
                                  &value, sizeof value, &indicator)))
        return 0;
    target = indicator == SQL_NULL_DATA ? 0 : value;
    return 1;
}

int ODBCRecord::GetTimestamp(int column, std::tm& target) {
    RequireStatement();
    SQL_TIMESTAMP_STRUCT stamp{};
    SQLLEN indicator = 0;
    SQLGetData(hstmt, static_cast<SQLUSMALLINT>(column + 1), SQL_C_TYPE_TIMESTAMP, &stamp,
               sizeof stamp, &indicator);
    target.tm_sec = stamp.second;
    target.tm_min = stamp.minute;
    target.tm_hour = stamp.hour;
    target.tm_mday = stamp.day;
    target.tm_mon = stamp.month - 1;
    target.tm_year = stamp.year;  // the calendar year itself, not counted from 1900
    return 1;
}

int ODBCRecord::GetTimestamp(const std::string& name, std::tm& target) {
    return GetTimestamp(GetColumn(name), target);
}

int ODBCRecord::GetColumn(const std::string& name) {
    const int count = GetColumnCount();
    for (int column = 0; column < count; ++column) {
        std::string columnName;
        int type = 0;
        int size = 0;
        if (GetColumnInfo(column, columnName, type, size) &&
            ::strncasecmp(columnName.c_str(), name.c_str(), kColumnNameBytes) == 0)
            return column;
    }
    return -1;
}

int ODBCRecord::GetColumnInfo(int column, std::string& name, int& type, int& size) {
    RequireStatement();
    SQLCHAR text[256] = {};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT dataType = 0;
    SQLULEN columnSize = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    if (!OdbcSucceeded(SQLDescribeCol(hstmt, static_cast<SQLUSMALLINT>(column + 1), text,
                                      sizeof text, &nameLength, &dataType, &columnSize, &digits,
                                      &nullable)))
        return 0;
    name.assign(reinterpret_cast<const char*>(text));
    type = dataType;
    size = static_cast<int>(columnSize);
    return 1;
}

int ODBCRecord::GetColumnSize(int column) {
    std::string name;
    int type = 0;
    int size = 0;
    GetColumnInfo(column, name, type, size);
    return size;
}

int ODBCRecord::GetColumnCount() {
    RequireStatement();
    SQLSMALLINT count = 0;
    SQLNumResultCols(hstmt, &count);
    return count;
}

void ODBCRecord::MoveFirst() {
    const bool moved =
        hstmt != SQL_NULL_HSTMT && OdbcSucceeded(SQLFetchScroll(hstmt, SQL_FETCH_FIRST, 0));
    bof = moved ? 1 : 0;
    if (moved)
        eof = 0;
}

void ODBCRecord::MoveLast() {
    const bool moved =
        hstmt != SQL_NULL_HSTMT && OdbcSucceeded(SQLFetchScroll(hstmt, SQL_FETCH_LAST, 0));
    eof = moved ? 1 : 0;
    if (moved)
        bof = 0;
}

int ODBCRecord::MoveNext() {
    if (hstmt == SQL_NULL_HSTMT)
        return 0;
    const SQLRETURN result = SQLFetchScroll(hstmt, SQL_FETCH_NEXT, 0);
    bof = 0;
    eof = result == SQL_NO_DATA ? 1 : 0;
    return OdbcSucceeded(result) ? 1 : 0;
}

int ODBCRecord::MovePrevious() {
    if (hstmt == SQL_NULL_HSTMT)
        return 0;
    const SQLRETURN result = SQLFetchScroll(hstmt, SQL_FETCH_PRIOR, 0);
    eof = 0;
    bof = result == SQL_NO_DATA ? 1 : 0;
    return OdbcSucceeded(result) ? 1 : 0;
}

void ODBCRecord::Close() {
    if (hstmt != SQL_NULL_HSTMT)
        SQLFreeHandle(SQL_HANDLE_STMT, hstmt);
    hstmt = SQL_NULL_HSTMT;
}
