#include "ODBCException.h"

#include "platform/Log.h"

ODBCException::ODBCException() {
    ::platform::Log(::platform::LogLevel::Warning,
                    {"odbccore", "ODBCException::ODBCException", __LINE__}, "errore");
}
