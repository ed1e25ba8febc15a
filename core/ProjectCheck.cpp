#include "ProjectCheck.h"

#include "Project.h"
#include "ProjectFile.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "templates/TemplateSet.h"

namespace {

void CheckProjectFile(const std::string& path, std::vector<std::string>& problems) {
    std::string text;
    if (platform::ReadWholeFile(path, text, kMaxProjectFileSize) != platform::ReadResult::Ok)
        problems.push_back("the project file cannot be read");
    else if (text.find("<PROJECT>") == std::string::npos ||
             text.find("<\\PROJECT>") == std::string::npos)
        problems.push_back("the project file holds no project");
}

// The plate files travel with a project or stay from the one before; either way they must
// read whole.
void CheckPlateFiles(const std::string& folder) {
    TemplateSet plates;
    if (platform::FileExists(folder + "/templates.xml"))
        plates.LoadTemplates(folder + "/templates.xml");
    if (platform::FileExists(folder + "/countrycodes.txt"))
        plates.LoadCountryCodes(folder + "/countrycodes.txt");
}

}  // namespace

std::vector<std::string> CheckProject(const std::string& folder, const std::string& projectFile,
                                      const std::string& appDir) {
    std::vector<std::string> problems;
    CheckProjectFile(folder + "/" + projectFile, problems);
    for (const char* name : kComponentFiles)
        if (!platform::FileExists(folder + "/" + name))
            problems.push_back(std::string(name) + " is missing");

    platform::ScopedLogCapture capture;
    {
        Project scratch;
        scratch.appdir = appDir;
        scratch.pluginproblems = &problems;
        LoadProjectSettings(folder + "/" + projectFile, scratch);
        scratch.LoadComponents(folder);
        CheckPlateFiles(folder);
    }
    for (const std::string& warning : capture.Messages())
        problems.push_back(warning);
    return problems;
}
