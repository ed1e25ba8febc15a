#pragma once

class Project;

// Fills an empty, open project with the shipped reference plug-ins, so that a first start shows
// frames, readings and transits at once: a synthetic traffic source, one region read by
// PlateCore with the plate templates, a voting gate pulsing a virtual board's output, and a
// CSV post processor. Components whose plug-in is missing are left out.
void PopulateDemoProject(Project& project);
