#pragma once
#include <string>

class Project;

// apar.dat: the operator's user name, password (clear text), access mode and lock time-out.
constexpr int kAccessStoreVersion = 5;

// Sets the access defaults: "steer", "gatekeep", mode 1, time-out 1 hour, no activity yet.
void SetAccessDefaults(Project& project);
// Reads the store; an absent or unreadable file leaves the values as they are, a damaged one
// keeps what was read whole and is reported.
void LoadAccess(Project& project, const std::string& path = "apar.dat");
// Writes the store; a failure is not reported.
void SaveAccess(const Project& project, const std::string& path = "apar.dat");
