#include "SavedSite.h"

#include "TestSupport.h"
#include "core/Project.h"
#include "core/ProjectFile.h"
#include "platform/FileSystem.h"

void SaveSite(const std::string& folder, const std::string& name, const std::string& place,
              const std::string& lprLibrary) {
    Project project;
    project.appdir = AppDir();
    project.prjname = name;
    project.place.placename = place;
    {
        platform::ScopedWorkingDirectory inApp(AppDir());
        Camera camera;
        camera.name = "Cam";
        camera.id = 1;
        camera.plugin = project.cameraplugins.CreateCamera("TestCamera");
        project.cameras.Add(camera);
        project.AddBoard("IO", "TestBoard", "", 1);
    }
    Lane lane;
    lane.name = "L1";
    lane.id = 1;
    lane.camname = "Cam";
    lane.lprlib = lprLibrary;
    project.lanes.Add(lane);
    platform::ScopedWorkingDirectory inFolder(folder);
    project.SaveComponents(platform::GetWorkingDirectory());
    WriteProjectFile(name + ".tlr", project);
}
