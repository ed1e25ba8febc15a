#pragma once

class Project;

// True when the command line asks for the program without a window: --headless, --runtime (or
// the name corvane-runtime), --download or --upload.
bool WantsHeadless(int argc, char** argv);

// Runs the program without a window until it is interrupted or --seconds N have passed.
int RunHeadless(Project& project, int argc, char** argv);
