#pragma once
#include <string>
#include <vector>

#include "core/StartMode.h"

// The command line of the program. The first argument may be the console mode ("-dbg",
// "-nopwd"); the rest are options and at most one project file.
struct ProgramOptions {
    StartMode startMode = kStartNormal;
    bool runtime = false;   // --runtime, or started as corvane-runtime
    bool headless = false;  // --headless: the workstation without a window
    bool rollback = false;  // --rollback: the runtime takes back its previous project
    // The runtime's transfer server: loopback unless told otherwise, and the workstations it
    // serves (ADDRESS/PREFIX); none named means loopback peers only.
    std::string listen = "127.0.0.1";
    std::vector<std::string> allow;
    std::string keyFile;  // the shared transfer key, both ends
    int seconds = -1;
    std::string projectFile;
    std::string download;  // runtime address to fetch the project from
    std::string upload;    // runtime address to send the open project to
    std::vector<std::string> errors;

    // True when the program is to run without a window: asked for by name, never implied by a
    // missing display.
    bool Windowless() const { return headless || runtime || !download.empty() || !upload.empty(); }
};

ProgramOptions ParseProgramOptions(int argc, char** argv);
