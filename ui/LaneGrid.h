#pragma once
#include <string>

#include "StreamingRows.h"

struct Lane;
class Project;
class wxPropertyGrid;

// The region rows shared by the ROI add dialog and the ROI pane.
namespace LaneGrid {

enum class Form { Add, Modify };

void Build(wxPropertyGrid* grid, Project& project, Form form);
// The camera, trigger and gate choices, rebuilt from the project ("No camera", "No Trigger"
// and "No Lane" first in the pane's form).
void RebuildCameras(wxPropertyGrid* grid, Project& project, Form form);
void RebuildTriggers(wxPropertyGrid* grid, Project& project, Form form);
void RebuildGates(wxPropertyGrid* grid, Project& project);
// Fills every row from a region.
void Fill(wxPropertyGrid* grid, Project& project, const Lane& lane);

inline StreamingValues ReadStreaming(wxPropertyGrid* grid) {
    return ReadStreamingRows(grid, "STRPORT");
}
int Int(wxPropertyGrid* grid, const char* key);
std::string Text(wxPropertyGrid* grid, const char* key);
void SetText(wxPropertyGrid* grid, const char* key, const std::string& value);
// The plug-in library of the chosen "LPR Type", "PlateCore" when the index names none.
std::string LprLibrary(wxPropertyGrid* grid, Project& project);

}  // namespace LaneGrid
