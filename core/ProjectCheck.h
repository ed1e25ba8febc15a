#pragma once
#include <string>
#include <vector>

// Reads a project the way an open would, without opening it and without creating a plug-in:
// the project file must read as a project, every component file must read without a warning
// (a missing one counts: a saved project has all six) and every plug-in a record names must
// lie in the plug-in folders of appDir. Answers the problems found, none when the project can
// be taken. Safe on any thread: it neither changes the working directory nor touches the open
// project.
std::vector<std::string> CheckProject(const std::string& folder, const std::string& projectFile,
                                      const std::string& appDir);
