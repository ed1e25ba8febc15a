#pragma once
#include <sql.h>
#include <sqlext.h>

#include <ctime>
#include <string>

class ODBCConnection;

// A result set on a connection: Open, Query, read the columns of the current row, MoveNext
// until eof, Close. Column numbers count from 0.
class ODBCRecord {
  public:
    ODBCRecord() = default;
    ODBCRecord(const ODBCRecord&) = delete;
    ODBCRecord& operator=(const ODBCRecord&) = delete;
    ~ODBCRecord() { Close(); }

    static constexpr int kQueryTimeout = 60;  // seconds
    // The longest text a getter takes from one column, whatever size the driver declares.
    static constexpr SQLULEN kMaxTextColumn = 1 << 20;

    void Open(const ODBCConnection& connection);
    // Executes the statement and fetches its first row. 1 when it ran, even without rows.
    int Query(const std::string& statement);

    // The getters throw ODBCException when no statement is open, and answer 0 when the driver
    // cannot give the value.
    int GetString(int column, std::string& target);
    int GetInt(int column, int& target);
    int GetDouble(int column, double& target);
    int GetTimestamp(int column, std::tm& target);
    int GetTimestamp(const std::string& name, std::tm& target);
    int GetColumn(const std::string& name);
    int GetColumnInfo(int column, std::string& name, int& type, int& size);
    int GetColumnSize(int column);
    int GetColumnCount();

    void MoveFirst();
    void MoveLast();
    int MoveNext();
    int MovePrevious();
    void Close();

    int eof = 0;
    int bof = 0;
    SQLHDBC hdbc = SQL_NULL_HDBC;
    SQLHSTMT hstmt = SQL_NULL_HSTMT;

  private:
    void RequireStatement() const;
};
