#pragma once

class Project;
struct ProgramOptions;

// Runs the program without a window until it is interrupted or --seconds N have passed.
int RunHeadless(Project& project, const ProgramOptions& options);
