#pragma once
#include <sql.h>
#include <sqlext.h>

#include <string>

// Statements are formed as UTF-8 text and handed to the driver manager as wide (UTF-16) text.
std::basic_string<SQLWCHAR> ToOdbcWide(const std::string& text);
