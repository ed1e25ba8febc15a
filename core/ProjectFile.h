#pragma once
#include <string>

class Project;

// The project file "%s.tlr": tag text in UTF-8, one element a line.
std::string ProjectFileText(const Project& project);
// Writes the project file; false when it cannot be written.
bool WriteProjectFile(const std::string& path, const Project& project);
// Reads the site settings from a project file under settingsmutex. Keys are searched anywhere in
// the text; absent keys keep their value or take their defaults. False when the file is absent
// or cannot be read; the settings are then unchanged.
bool LoadProjectSettings(const std::string& path, Project& project);
// The same from text already read.
void ParseProjectSettings(const std::string& text, Project& project);

// Largest project file read; anything larger is refused.
constexpr size_t kMaxProjectFileSize = 4u << 20;

// The six component files of a project folder, in the order an import copies them.
inline constexpr const char* kComponentFiles[] = {"cameras.dat", "boards.dat",   "integrators.dat",
                                                  "lanes.dat",   "triggers.dat", "processors.dat"};
