#include "ODBCConnection.h"

#include <cstdlib>
#include <mutex>
#include <vector>

#include "ODBCException.h"
#include "OdbcText.h"

namespace {

SQLWCHAR* WidePointer(std::basic_string<SQLWCHAR>& text) {
    return const_cast<SQLWCHAR*>(text.c_str());
}

void* IntegerAttribute(int value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

}  // namespace

ODBCConnection::~ODBCConnection() {
    try {
        Close();
    } catch (const ODBCException&) {
        // reported by the exception itself
    }
    if (henv != SQL_NULL_HENV || hdbc != SQL_NULL_HDBC) {
        if (hdbc != SQL_NULL_HDBC)
            SQLFreeHandle(SQL_HANDLE_DBC, hdbc);
        if (henv != SQL_NULL_HENV)
            SQLFreeHandle(SQL_HANDLE_ENV, henv);
    }
}

void ODBCConnection::PinDriverProtocol() {
    static std::once_flag pinned;
    std::call_once(pinned, [] { ::setenv("TDSVER", "7.4", 0); });
}

void ODBCConnection::SQLAlloc() {
    PinDriverProtocol();
    if (henv == SQL_NULL_HENV) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &henv);
        SQLSetEnvAttr(henv, SQL_ATTR_ODBC_VERSION, IntegerAttribute(SQL_OV_ODBC3), 0);
    }
    if (henv != SQL_NULL_HENV && hdbc == SQL_NULL_HDBC)
        SQLAllocHandle(SQL_HANDLE_DBC, henv, &hdbc);
}

void ODBCConnection::SQLFree() {
    if (hdbc != SQL_NULL_HDBC && henv != SQL_NULL_HENV) {
        SQLFreeHandle(SQL_HANDLE_DBC, hdbc);
        SQLFreeHandle(SQL_HANDLE_ENV, henv);
        hdbc = SQL_NULL_HDBC;
        henv = SQL_NULL_HENV;
    }
}

void ODBCConnection::SetTimeoutAttribute(SQLINTEGER attribute, int seconds) {
    if (hdbc != SQL_NULL_HDBC)
        SQLSetConnectAttr(hdbc, attribute, IntegerAttribute(seconds), 0);
}

void ODBCConnection::SetConnectionTimeout(int seconds) {
    SetTimeoutAttribute(SQL_ATTR_CONNECTION_TIMEOUT, seconds);
    connectiontimeout = seconds;
}

int ODBCConnection::DriverConnect(const std::string& connectionString) {
    // Whatever the caller set before, a driver connection runs with its own time-outs.
    logintimeout = kDriverConnectTimeout;
    connectiontimeout = kDriverConnectTimeout;
    SetTimeoutAttribute(SQL_ATTR_LOGIN_TIMEOUT, logintimeout);
    SetTimeoutAttribute(SQL_ATTR_CONNECTION_TIMEOUT, connectiontimeout);
    if (hdbc == SQL_NULL_HDBC) {
        connected = 0;
        return 0;
    }
    std::basic_string<SQLWCHAR> in = ToOdbcWide(connectionString);
    SQLWCHAR out[256] = {};
    SQLSMALLINT outLength = 0;
    const SQLRETURN result = SQLDriverConnectW(hdbc, nullptr, WidePointer(in), SQL_NTS, out, 256,
                                               &outLength, SQL_DRIVER_NOPROMPT);
    connected = OdbcSucceeded(result) ? 1 : 0;
    return connected;
}

void ODBCConnection::Connect(const std::string& dsn, const std::string& user,
                             const std::string& password) {
    if (hdbc == SQL_NULL_HDBC) {
        connected = 0;
        return;
    }
    if (connectiontimeout > 0)
        SetTimeoutAttribute(SQL_ATTR_CONNECTION_TIMEOUT, connectiontimeout);
    SetTimeoutAttribute(SQL_ATTR_LOGIN_TIMEOUT, logintimeout);
    std::basic_string<SQLWCHAR> wideDsn = ToOdbcWide(dsn);
    std::basic_string<SQLWCHAR> wideUser = ToOdbcWide(user);
    std::basic_string<SQLWCHAR> widePassword = ToOdbcWide(password);
    const SQLRETURN result = SQLConnectW(hdbc, WidePointer(wideDsn), SQL_NTS, WidePointer(wideUser),
                                         SQL_NTS, WidePointer(widePassword), SQL_NTS);
    connected = OdbcSucceeded(result) ? 1 : 0;
}

void ODBCConnection::BrowseConnect(const std::string& in, std::string& out) {
    out.clear();
    if (hdbc == SQL_NULL_HDBC) {
        connected = 0;
        return;
    }
    SQLCHAR result[256] = {};
    SQLSMALLINT length = 0;
    std::string request = in;
    const SQLRETURN status = SQLBrowseConnect(hdbc, reinterpret_cast<SQLCHAR*>(request.data()),
                                              SQL_NTS, result, sizeof result, &length);
    out.assign(reinterpret_cast<const char*>(result));
    connected = status == SQL_SUCCESS || status == SQL_SUCCESS_WITH_INFO ? 1 : 0;
}

void ODBCConnection::SetReadOnly(bool readOnly) {
    if (hdbc != SQL_NULL_HDBC)
        SQLSetConnectAttr(hdbc, SQL_ATTR_ACCESS_MODE,
                          IntegerAttribute(readOnly ? SQL_MODE_READ_ONLY : SQL_MODE_READ_WRITE), 0);
}

int ODBCConnection::GetConnectionTimeout() {
    SQLUINTEGER seconds = 0;
    if (hdbc != SQL_NULL_HDBC)
        SQLGetConnectAttr(hdbc, SQL_ATTR_CONNECTION_TIMEOUT, &seconds, 0, nullptr);
    return static_cast<int>(seconds);
}

int ODBCConnection::Execute(const std::string& statement) {
    rows = 0;
    SQLHSTMT hstmt = SQL_NULL_HSTMT;
    if (hdbc == SQL_NULL_HDBC || !OdbcSucceeded(SQLAllocHandle(SQL_HANDLE_STMT, hdbc, &hstmt)))
        return 0;
    SQLSetStmtAttr(hstmt, SQL_ATTR_QUERY_TIMEOUT, IntegerAttribute(kExecuteTimeout), 0);
    std::basic_string<SQLWCHAR> text = ToOdbcWide(statement);
    const SQLRETURN result = SQLExecDirectW(hstmt, WidePointer(text), SQL_NTS);
    SQLLEN count = 0;
    if (OdbcSucceeded(result) && OdbcSucceeded(SQLRowCount(hstmt, &count)))
        rows = static_cast<int>(count);
    SQLFreeHandle(SQL_HANDLE_STMT, hstmt);
    return OdbcSucceeded(result) ? 1 : 0;
}

void ODBCConnection::Close() {
    connected = 0;
    if (hdbc == SQL_NULL_HDBC)
        return;
    SQLDisconnect(hdbc);
    SQLFree();
}
