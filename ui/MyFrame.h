#pragma once
#include <wx/aui/aui.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <memory>

#include "UiEvents.h"
#include "core/EventSink.h"
#include "core/ProjectSession.h"
#include "core/StartMode.h"

class BoardDlg;
class CameraDlg;
class CheckDBThread;
class DeviceFronts;
class GestioneLane;
class IntegratorDlg;
class LaneControl;
class LaneDlg;
class LaneLPRResult;
class LPRList;
class ProcessorDlg;
class Project;
class RemoteAdministration;
class RtspService;
class TriggerDlg;
class ViewFrame;
class Viewer;

// The main window: the hub of the process. Workers reach it only by posted events; it owns the
// panes, runs the File flows, the timers and the close path.
class MyFrame : public wxFrame, public EventSink, public ProjectHost {
  public:
    MyFrame(Project& project, StartMode mode);
    ~MyFrame() override;

    // EventSink: safe from any thread.
    void PostCommand(int id, int value, const std::string& text) override;

    // ProjectHost.
    bool AskYesNo(const std::string& question) override;
    void ShowMessage(const std::string& message) override;
    void RefreshLists() override;
    void LoadPerspective(const std::string& folder) override;
    void SetTitle(const std::string& title) override;
    void ProjectStateChanged() override;

    // The close path's stop order, without ending the process: the tests call it.
    void Shutdown(bool askQuestions);
    // The close path ends the process by itself unless told not to (the tests).
    void SetKillOnClose(bool kill) { killonclose_ = kill; }

    Project& GetProject() { return project_; }
    ProjectSession& Session() { return session_; }
    LaneControl& Control() { return *control_; }
    CameraDlg* Cameras() { return cameradlg; }
    GestioneLane* Regions() { return gestionelane; }
    LPRList* Readings() { return lprlist; }
    ViewFrame* View() { return viewframe; }
    LaneLPRResult* Results() { return laneresult; }
    IntegratorDlg* Gates() { return integratordlg; }
    ProcessorDlg* Processors() { return processordlg; }
    BoardDlg* Boards() { return boarddlg; }
    TriggerDlg* Triggers() { return triggerdlg; }
    wxAuiManager& Aui() { return auimanager; }
    void SavePerspective();
    // Load Project once the operator chose the file.
    void OpenProjectFile(const std::string& path);

    int mustexit = 0;
    bool runtimestopped = false;

  private:
    void OpenConsole();
    void SilenceConsole();
    void BuildMenus();
    void BuildPanes();
    void SetMenuState();
    void EnablePanes(bool enable);
    void CheckSelection(int id, int value);

    void OnCommand(wxCommandEvent& event);
    void OnPosted(wxCommandEvent& event);
    // A request a plug-in queued to the viewer window it holds (corvane/ViewerRequests.h).
    void OnViewerRequest(wxCommandEvent& event);
    void OnMenuOpen(wxMenuEvent& event);
    void OnActivityTimer(wxTimerEvent& event);
    void OnCloseTimer(wxTimerEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnRoiUpdate(wxCommandEvent& event);
    void OnRoiChanged(wxCommandEvent& event);
    void OnLaneUpdate(wxCommandEvent& event);
    void OnGateList(wxCommandEvent& event);

    void NewProject();
    void LoadProjectFile();
    void ModifyProject();
    void ExportProject();
    void ImportProject();
    void Transfer(bool upload);
    void LoginParameters();
    void BlockWindow();
    bool Login();

    Project& project_;
    ProjectSession session_;
    StartMode mode_;
    wxAuiManager auimanager;
    wxString firstStartLayout_;  // the panes as built, for Reset Layout
    wxMenuBar* menubar = nullptr;
    wxMenu* filemenu = nullptr;
    ViewFrame* viewframe = nullptr;
    Viewer* viewer = nullptr;
    LaneDlg* lanedlg = nullptr;
    LPRList* lprlist = nullptr;
    BoardDlg* boarddlg = nullptr;
    TriggerDlg* triggerdlg = nullptr;
    CameraDlg* cameradlg = nullptr;
    GestioneLane* gestionelane = nullptr;
    LaneLPRResult* laneresult = nullptr;
    IntegratorDlg* integratordlg = nullptr;
    ProcessorDlg* processordlg = nullptr;
    uint32_t viewrefreshtick = 0;
    uint32_t resultrefreshtick = 0;
    wxTimer activitytimer;
    std::unique_ptr<wxTimer> closetimer;
    std::string startdir;
    std::unique_ptr<RtspService> rtsp_;
    std::unique_ptr<DeviceFronts> fronts_;
    std::unique_ptr<LaneControl> control_;
    std::unique_ptr<CheckDBThread> checkdbthread;
    std::unique_ptr<RemoteAdministration> remote_;
    bool closing_ = false;
    bool killonclose_ = true;
};
