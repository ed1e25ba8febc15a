#pragma once
#include <string>

// Saves into folder a whole project as the workstation saves it: a source on the test camera and
// a region reading with lprLibrary, in the site place. The project file is name.tlr.
void SaveSite(const std::string& folder, const std::string& name, const std::string& place,
              const std::string& lprLibrary = "TestLPR");
