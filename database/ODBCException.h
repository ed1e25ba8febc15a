#pragma once
#include <exception>

// Raised by the ODBC layer when a getter or a close is used in a state in which the driver
// manager cannot be called at all. Its construction is reported as a warning.
class ODBCException : public std::exception {
  public:
    ODBCException();
    const char* what() const noexcept override { return "errore"; }
};
