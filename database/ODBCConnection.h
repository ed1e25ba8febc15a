#pragma once
#include <sql.h>
#include <sqlext.h>

#include <string>

// One connection to a data source through the ODBC 3 driver manager. Short-lived: a user makes
// one, uses it on its own thread and closes it. Statements are sent by direct execution only.
class ODBCConnection {
  public:
    ODBCConnection() = default;
    ODBCConnection(const ODBCConnection&) = delete;
    ODBCConnection& operator=(const ODBCConnection&) = delete;
    ~ODBCConnection();

    static constexpr int kDriverConnectTimeout = 10;  // seconds, login and connection
    static constexpr int kExecuteTimeout = 2500;      // seconds a statement without result

    // Pins the protocol version of the FreeTDS driver (TDSVER 7.4) unless the site set one.
    // Left at "auto", the driver retries with another version after the login time-out, so a
    // server that accepts and stays silent holds every caller for twice the time-out and more.
    // Called by the program before its threads start, and by the first connection.
    static void PinDriverProtocol();

    void SQLAlloc();
    void SQLFree();
    void SetConnectionTimeout(int seconds);
    // 1 when the driver accepted the string (with or without information), else 0.
    int DriverConnect(const std::string& connectionString);
    void Connect(const std::string& dsn, const std::string& user, const std::string& password);
    void BrowseConnect(const std::string& in, std::string& out);
    void SetReadOnly(bool readOnly);
    int GetConnectionTimeout();
    // Runs a statement that returns no rows; rows holds the count it affected. 1 or 0.
    int Execute(const std::string& statement);
    void Close();

    SQLHDBC hdbc = SQL_NULL_HDBC;
    int logintimeout = 5;
    int connectiontimeout = 0;
    int connected = 0;
    SQLHENV henv = SQL_NULL_HENV;
    int rows = 0;

  private:
    void SetTimeoutAttribute(SQLINTEGER attribute, int seconds);
};

inline bool OdbcSucceeded(SQLRETURN result) {
    return result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO;
}
