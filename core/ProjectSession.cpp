#include "ProjectSession.h"

#include <mutex>

#include "Project.h"
#include "ProjectFile.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/Ticks.h"

namespace {

std::string WithSlash(std::string folder) {
    folder = platform::NativePath(folder);
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    return folder;
}

}  // namespace

void ProjectSession::SaveProject(const std::string& path) {
    if (!WriteProjectFile(path, project_))
        CORVANE_LOG_WARNING("MyFrame::SaveProject", "Cannot save project");
}

void ProjectSession::SaveAll() {
    if (!platform::DirectoryExists(project_.prjdir)) {
        CORVANE_LOG_WARNING("MyFrame::SaveAll", "Cannot save project");
        return;
    }
    project_.SaveComponents(project_.prjdir);
    SaveProject(ProjectFilePath());
}

void ProjectSession::OpenProject() {
    {
        std::lock_guard<std::mutex> lock(project_.framemutex);
        project_.viewtick = platform::GetTickCount();
    }
    project_.camframes.Clear();
    project_.roiframes.Clear();
    {
        std::lock_guard<std::mutex> lock(project_.selectionmutex);
        project_.selcamera = -1;
        project_.selroi = -1;
    }
    // Opening reads and never writes: what is on disk stays as it was until the operator saves.
    if (!LoadProjectSettings(ProjectFilePath(), project_))
        host_.ShowMessage("Cannot load project settings");
    project_.LoadComponents(project_.prjdir);
    host_.RefreshLists();
    host_.LoadPerspective(project_.prjdir);
    project_.StartLanes();
    project_.StartBoardThread();
    StartMirrorDB();
}

std::string ProjectSession::ProjectFilePath() const {
    return project_.prjfile.empty() ? project_.prjdir + project_.prjname + ".tlr"
                                    : project_.prjfile;
}

void ProjectSession::StartMirrorDB() {
    if (project_.place.uselocaldb != 0)
        project_.processorplugins.StartMirrorDB(project_.place.syncrotime, project_.place.dbstorage,
                                                project_.OpenArgs());
}

void ProjectSession::SelectFirst() {
    std::lock_guard<std::mutex> lock(project_.selectionmutex);
    project_.selcamera = project_.cameras.IsEmpty() ? -1 : project_.cameras[0].id;
    project_.selroi = project_.lanes.IsEmpty() ? -1 : project_.lanes[0].id;
}

void ProjectSession::CopyStockFile(const std::string& name, const std::string& to, bool overwrite) {
    const std::string target = WithSlash(to) + name;
    if (overwrite || !platform::FileExists(target))
        platform::CopyFileOver(WithSlash(project_.appdir) + name, target);
}

bool ProjectSession::NewProject(const std::string& folder, const std::string& name) {
    // Absolute, so that no later change of the working directory moves the project.
    const std::string directory = WithSlash(platform::AbsolutePath(WithSlash(folder) + name));
    if (!platform::MakeDirectory(directory)) {
        host_.ShowMessage("Cannot create destination directory");
        return false;
    }
    project_.prjname = name;
    project_.prjdir = directory;
    project_.prjfile = directory + name + ".tlr";
    project_.prjopen = 1;
    CopyStockFile("templates.xml", directory, true);
    CopyStockFile("countrycodes.txt", directory, true);
    SaveProject(ProjectFilePath());
    OpenProject();
    SelectFirst();
    host_.SetTitle(std::string(kBanner) + " - " + name);
    host_.ProjectStateChanged();
    return true;
}

bool ProjectSession::LoadProject(const std::string& givenFile) {
    // A bare or relative name is taken from the working directory of the moment it was given.
    const std::string projectFile = platform::AbsolutePath(givenFile);
    const std::string directory = WithSlash(platform::DirectoryOf(projectFile));
    if (!platform::FileExists(projectFile)) {
        host_.ShowMessage("Cannot open project");
        return false;
    }
    CopyStockFile("templates.xml", directory, false);
    CopyStockFile("countrycodes.txt", directory, false);
    project_.prjname = platform::FileNameWithoutExtension(projectFile);
    project_.prjdir = directory;
    project_.prjfile = projectFile;
    host_.SetTitle(std::string(kBanner) + " - " + project_.prjname);
    OpenProject();
    SelectFirst();
    project_.prjopen = 1;
    host_.ProjectStateChanged();
    return true;
}

bool ProjectSession::OpenDownloaded() {
    project_.prjname = "default";
    // Absolute, as every project folder: plug-ins get their templates by full path.
    project_.prjdir = WithSlash(platform::AbsolutePath(WithSlash(project_.appdir) + "TempPrj"));
    project_.prjfile = project_.prjdir + "default.tlr";
    host_.SetTitle(std::string(kBanner) + " - default");
    if (!platform::DirectoryExists(project_.prjdir)) {
        host_.ShowMessage("Cannot open project");
        return false;
    }
    OpenProject();
    SelectFirst();
    project_.prjopen = 1;
    host_.ProjectStateChanged();
    return true;
}

void ProjectSession::SaveCurrent() {
    if (project_.prjopen == 1)
        SaveAll();
}

void ProjectSession::StopWork() {
    project_.StopBoardThread();
    project_.StopCameras();
    project_.StopLanes();
}

void ProjectSession::RestartWork() {
    project_.StartLanes();
    project_.StartBoardThread();
    project_.PostEvent(ID_CAMERA_BUTTONS, 0);
}

bool ProjectSession::CloseProject() {
    if (!host_.AskYesNo("Close Current Project?"))
        return false;
    StopWork();
    if (host_.AskYesNo("Save Changes?"))
        SaveAll();
    project_.processorplugins.StopMirrorDB();
    project_.CloseAll();
    project_.ClearAll();
    project_.prjopen = 0;
    // The views show nothing of the closed project.
    project_.camframes.Clear();
    project_.roiframes.Clear();
    host_.RefreshLists();
    {
        std::lock_guard<std::mutex> lock(project_.selectionmutex);
        project_.selroi = -1;
        project_.selcamera = -1;
    }
    host_.ProjectStateChanged();
    return true;
}

bool ProjectSession::ExportProject(const std::function<std::string()>& chooseFolder) {
    StopWork();
    bool exported = false;
    const std::string chosenFolder = chooseFolder();
    if (chosenFolder.empty()) {
        RestartWork();
        return false;
    }
    const std::string destination = WithSlash(WithSlash(chosenFolder) + "project");
    bool ready = true;
    if (platform::DirectoryExists(destination)) {
        ready = host_.AskYesNo("Directory " + destination + " already exists, overwrite?");
    } else if (!platform::MakeDirectory(destination)) {
        host_.ShowMessage("Cannot create destination directory");
        ready = false;
    }
    if (ready) {
        platform::CopyFileOver(WithSlash(project_.prjdir) + "templates.xml",
                               destination + "templates.xml");
        platform::CopyFileOver(WithSlash(project_.prjdir) + "countrycodes.txt",
                               destination + "countrycodes.txt");
        project_.SaveComponents(destination);
        SaveProject(destination + "default.tlr");
        host_.ShowMessage("Project exported to " + destination);
        exported = true;
    }
    RestartWork();
    return exported;
}

bool ProjectSession::ImportProject(const std::string& projectFile) {
    return host_.AskYesNo(kImportQuestion) && ImportConfirmed(projectFile);
}

bool ProjectSession::ImportConfirmed(const std::string& projectFile) {
    if (!platform::FileExists(projectFile)) {
        host_.ShowMessage("Project file does not exist");
        return false;
    }
    const std::string placename = project_.place.placename;
    const int placeid = project_.place.placeid;
    LoadProjectSettings(projectFile, project_);
    const std::string source = WithSlash(platform::DirectoryOf(projectFile));
    for (const char* name : kComponentFiles)
        if (platform::FileExists(source + name))
            platform::CopyFileOver(source + name, WithSlash(project_.prjdir) + name);
    project_.place.placename = placename;
    project_.place.placeid = placeid;

    StopWork();
    project_.CloseAll();
    project_.ClearAll();
    project_.cameraplugins.InitList();
    project_.boardplugins.LoadPlugin();
    project_.triggerplugins.LoadPlugin();
    project_.integratorplugins.LoadPlugin();
    project_.LoadComponents(project_.prjdir);
    host_.RefreshLists();
    RestartWork();
    return true;
}
