#pragma once
#include <functional>
#include <string>

class Project;

// What a project flow needs from the window: questions, messages and refreshes. The desktop
// program answers with dialogs; the headless runtime and the tests answer as they are told.
class ProjectHost {
  public:
    virtual ~ProjectHost() = default;
    // A modal Yes/No question under the caption "Warning".
    virtual bool AskYesNo(const std::string& question) = 0;
    virtual void ShowMessage(const std::string& message) = 0;
    virtual void RefreshLists() {}
    // Restores layout.ini of the folder, if it has one.
    virtual void LoadPerspective(const std::string& /*folder*/) {}
    virtual void SetTitle(const std::string& /*title*/) {}
    virtual void ProjectStateChanged() {}
};

// The File flows on the one project. Every file is named by its absolute path: no flow changes
// the working directory, so no thread of the program finds a file elsewhere on the way.
class ProjectSession {
  public:
    static constexpr const char* kBanner = "Halvern - Corvane Suite 1.17.2";
    static constexpr const char* kImportQuestion =
        "Import project, current cameras and ROI will be deleted, continue?";

    ProjectSession(Project& project, ProjectHost& host) : project_(project), host_(host) {}

    // The project file, written from the model ("Cannot save project" when it cannot be).
    void SaveProject(const std::string& path);
    // Components in their save order and the project file, in the project folder.
    void SaveAll();
    // Loads the open project from its folder and starts its regions; writes nothing.
    void OpenProject();

    bool NewProject(const std::string& folder, const std::string& name);
    bool LoadProject(const std::string& projectFile);
    void SaveCurrent();
    bool CloseProject();
    // Stops the work, then asks chooseFolder for the destination (empty: cancelled), exports,
    // and starts the work again either way.
    bool ExportProject(const std::function<std::string()>& chooseFolder);
    bool ExportProject(const std::string& chosenFolder) {
        return ExportProject([&chosenFolder] { return chosenFolder; });
    }
    // Asks kImportQuestion, then imports.
    bool ImportProject(const std::string& projectFile);
    // The import once the operator said Yes.
    bool ImportConfirmed(const std::string& projectFile);
    // Opens "./TempPrj/" after a completed download, as the project "default".
    bool OpenDownloaded();

    // Starts the MIRRORDB post processor when the site keeps a local database.
    void StartMirrorDB();

    // Selects the first camera and the first region for the live views.
    void SelectFirst();

  private:
    void StopWork();
    void RestartWork();
    void CopyStockFile(const std::string& name, const std::string& to, bool overwrite);
    // The open project's file, absolute.
    std::string ProjectFilePath() const;

    Project& project_;
    ProjectHost& host_;
};
