#include "ProjectCheck.h"

#include "Project.h"
#include "ProjectFile.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

namespace {

void CheckProjectFile(const std::string& path, std::vector<std::string>& problems) {
    std::string text;
    if (platform::ReadWholeFile(path, text, kMaxProjectFileSize) != platform::ReadResult::Ok)
        problems.push_back("the project file cannot be read");
    else if (text.find("<PROJECT>") == std::string::npos ||
             text.find("<\\PROJECT>") == std::string::npos)
        problems.push_back("the project file holds no project");
}

}  // namespace

std::vector<std::string> CheckProject(const std::string& folder, const std::string& projectFile,
                                      const std::string& appDir) {
    std::vector<std::string> problems;
    CheckProjectFile(folder + "/" + projectFile, problems);
    for (const char* name : kComponentFiles)
        if (!platform::FileExists(folder + "/" + name))
            problems.push_back(std::string(name) + " is missing");

    std::vector<std::string> plugins;
    {
        platform::ScopedLogCapture capture;
        Project scratch;
        scratch.appdir = appDir;
        scratch.loadfolder = folder;
        scratch.namedplugins = &plugins;
        scratch.LoadComponents();
        for (const std::string& warning : capture.Messages())
            problems.push_back(warning);
    }
    for (const std::string& plugin : plugins)
        if (!platform::FileExists(appDir + "/" + plugin))
            problems.push_back("plug-in " + plugin + " is not installed");
    return problems;
}
