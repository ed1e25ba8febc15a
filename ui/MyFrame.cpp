#include "MyFrame.h"

#include <fcntl.h>
#include <unistd.h>

#include <unistd.h>

#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/textdlg.h>

#include <cstdio>

#include "AddLaneDlg.h"
#include "BoardDlg.h"
#include "CameraDlg.h"
#include "GestioneAccesso.h"
#include "GestioneLane.h"
#include "IntegratorDlg.h"
#include "LPRList.h"
#include "LaneDlg.h"
#include "LaneLPRResult.h"
#include "MenuIds.h"
#include "NativeWindowOf.h"
#include "NewPrjDialog.h"
#include "ProcessorDlg.h"
#include "TemplatesDlg.h"
#include "TriggerDlg.h"
#include "ViewFrame.h"
#include "Viewer.h"
#include "access/AccessStore.h"
#include "core/LayoutFile.h"
#include "core/Project.h"
#include "corvane/ViewerRequests.h"
#include "database/CheckDBThread.h"
#include "pipeline/LaneControl.h"
#include "pipeline/TransitLine.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"
#include "remote/LocalRuntime.h"
#include "remote/ProjectBlock.h"
#include "remote/RemoteAdministration.h"
#include "streaming/RtspService.h"
#include "wxAdministrator.h"

namespace {

constexpr uint32_t kViewRefreshMs = 150;
constexpr uint32_t kResultRefreshMs = 100;
constexpr const char* kLayoutFile = "layout.ini";

// The pane toggles of the menus and the pane each one shows.
struct PaneToggle {
    int id;
    const char* pane;
};
constexpr PaneToggle kToggles[] = {
    {ID_VIDEOSOURCES, "Video Sources Management"},
    {ID_VIDEOVIEW, "Video Source View"},
    {ID_BOARDS, "Boards Management"},
    {ID_TRIGGERS, "Triggers Management"},
    {ID_LANES, "Lanes Management"},
    {ID_POSTPROCESSORS, "Post Processor Management"},
    {ID_ROISETTINGS, "ROIs Management"},
    {ID_LPROUTPUT, "ROI LPR Result"},
    {ID_READINGSLIST, "View Frame"},
};

// The File-menu entries enabled in each state of the project.
void EnableFileEntries(wxMenu* menu, int state) {
    const bool open = state != 0;
    menu->Enable(ID_NEWPROJECT, !open);
    menu->Enable(ID_LOADPROJECT, !open);
    menu->Enable(ID_CLOSEPROJECT, open);
    menu->Enable(ID_SAVEPROJECT, open);
    menu->Enable(ID_EXPORTPROJECT, open);
    menu->Enable(ID_IMPORTPROJECT, open);
    menu->Enable(ID_MODIFYPROJECT, open);
}

}  // namespace

MyFrame::MyFrame(Project& project, StartMode mode)
    : wxFrame(nullptr, wxID_ANY, ProjectSession::kBanner, wxDefaultPosition, wxSize(800, 600)),
      project_(project),
      session_(project, *this),
      mode_(mode),
      activitytimer(this, ID_ACTIVITYTIMER) {
    auimanager.SetManagedWindow(this);
    // A dock may take half the window (the library's default is a third): the live view
    // starts wide enough to read plates.
    auimanager.SetDockSizeConstraint(0.5, 0.5);
    if (mode != kStartNormal)
        OpenConsole();
    else
        SilenceConsole();
    std::fprintf(stderr, "%s\n\n", ProjectSession::kBanner);
    SetAccessDefaults(project_);
    LoadAccess(project_);
    if (mode < kStartNoPassword && !Login())
        mustexit = 1;
    // The hour without use counts from the login, not from the machine's boot.
    project_.TouchActivity();
    if (mustexit == 0) {
        runtimestopped = LocalRuntime::StopForWorkstation();
    }
    activitytimer.Start(kActivityPeriodMs);
    startdir = platform::GetWorkingDirectory();
    project_.appdir = startdir;
    project_.mainframe = this;
    project_.lprsink = this;
    project_.mainwindow = NativeWindowOf(this);
    wxInitAllImageHandlers();
    viewer = new Viewer(this);
    viewer->SetName("vwr");
    viewer->Hide();
    project_.viewer = NativeWindowOf(viewer);
    project_.LoadPluginDirectories();
    viewrefreshtick = resultrefreshtick = platform::GetTickCount();

    rtsp_ = std::make_unique<RtspService>();
    fronts_ = std::make_unique<DeviceFronts>();
    rtsp_->SetDeviceFronts(fronts_.get());
    control_ = std::make_unique<LaneControl>(project_, rtsp_.get());
    remote_ = std::make_unique<RemoteAdministration>(project_, session_, *this, this);
    remote_->SetKey(ProjectBlock::ReadKeyFile(startdir + "/" + RemoteAdministration::kKeyFile));

    BuildMenus();
    BuildPanes();
    LoadPerspective(startdir);
    rtsp_->Start();
    checkdbthread = std::make_unique<CheckDBThread>(this, &project_);
    checkdbthread->Run();
    SetMenuState();
    if (platform::FileExists("logo.ico"))
        SetIcon(wxIcon("logo.ico", wxBITMAP_TYPE_ICO));

    Bind(wxEVT_MENU, &MyFrame::OnCommand, this);
    Bind(wxEVT_CORVANE_POSTED, &MyFrame::OnPosted, this);
    // Queued to the viewer by plug-ins; command events rise from the viewer to its frame.
    Bind(wxEventTypeTag<wxCommandEvent>(wxEVT_NULL), &MyFrame::OnViewerRequest, this,
         kViewerRestartSource);
    Bind(wxEVT_MENU_OPEN, &MyFrame::OnMenuOpen, this);
    Bind(wxEVT_TIMER, &MyFrame::OnActivityTimer, this, ID_ACTIVITYTIMER);
    Bind(wxEVT_TIMER, &MyFrame::OnCloseTimer, this, ID_CLOSETIMER);
    Bind(wxEVT_CLOSE_WINDOW, &MyFrame::OnClose, this);
    Bind(wxEventTypeTag<wxCommandEvent>(EVT_BROADCAST_ROI_UPDATE), &MyFrame::OnRoiUpdate, this);
    Bind(wxEventTypeTag<wxCommandEvent>(EVT_BROADCAST_ROI_CHANGED), &MyFrame::OnRoiChanged, this);
    Bind(wxEventTypeTag<wxCommandEvent>(EVT_LANE_UPDATE), &MyFrame::OnLaneUpdate, this);
    Bind(wxEventTypeTag<wxCommandEvent>(EVT_WBLIST_UPDATE), &MyFrame::OnGateList, this);
    if (mustexit == 1) {
        closetimer = std::make_unique<wxTimer>(this, ID_CLOSETIMER);
        closetimer->Start(1000);
    }
}

MyFrame::~MyFrame() {
    Shutdown(false);
    auimanager.UnInit();
}

void MyFrame::OpenConsole() {
    // A console is the terminal the program was started from; both streams unbuffered.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
}

void MyFrame::SilenceConsole() {
    // A normal start has no console: what the program says on its standard streams goes
    // nowhere (start with -dbg or -nopwd to see it).
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    std::fflush(stdout);
    std::fflush(stderr);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    ::close(nowhere);
}

bool MyFrame::Login() {
    wxAdministrator login(this, project_);
    login.username = project_.username;
    login.password = project_.password;
    return login.ShowModal() == 1;
}

void MyFrame::BuildMenus() {
    menubar = new wxMenuBar;
    filemenu = new wxMenu;
    filemenu->Append(ID_NEWPROJECT, "&N&ew Project", "New Project");
    filemenu->Append(ID_LOADPROJECT, "L&oad Project", "Load Project");
    filemenu->Append(ID_SAVEPROJECT, "S&ave Project", "Save Project");
    filemenu->Append(ID_DOWNLOADPROJECT, "Download Project", "Download Project");
    filemenu->Append(ID_UPLOADPROJECT, "Upload Project", "Upload Project");
    filemenu->Append(ID_LOGINPARAMETERS, "Login Parameters", "Login Parameters");
    filemenu->Append(ID_BLOCKWINDOW, "Block Window", "Block Window");
    filemenu->Append(ID_IMPORTPROJECT, "I&mport Project", "Import Project");
    filemenu->Append(ID_EXPORTPROJECT, "E&xport Project", "Export Project");
    filemenu->Append(ID_MODIFYPROJECT, "&Modify Project", "Modify Project");
    filemenu->Append(ID_CLOSEPROJECT, "&Close Project", "Close Project");
    filemenu->Append(ID_INFORMATION, "&Information", "Information");
    filemenu->Append(ID_EXIT, "E&xit", "Stop the program");
    menubar->Append(filemenu, "&File");

    auto* devices = new wxMenu;
    devices->AppendCheckItem(ID_VIDEOSOURCES, "Video Sources", "Video Sources Management");
    devices->AppendCheckItem(ID_VIDEOVIEW, "Video Source View", "Video Source View");
    devices->AppendCheckItem(ID_BOARDS, "Boards", "Boards Management");
    devices->AppendCheckItem(ID_TRIGGERS, "Triggers", "Triggers Management");
    devices->AppendCheckItem(ID_LANES, "Lanes", "Gates Management");
    devices->AppendCheckItem(ID_POSTPROCESSORS, "Post Processors", "Triggers Management");
    devices->AppendSeparator();
    devices->Append(ID_RESETLAYOUT, "Reset Layout", "The panes as at the first start");
    menubar->Append(devices, "&Device Settings");

    auto* rois = new wxMenu;
    rois->Append(ID_ADDROI, "Add ROI", "Manage ROI insertion/deletion");
    rois->AppendCheckItem(ID_ROISETTINGS, "ROI Settings",
                          "Manage program plugins and LPR settings");
    rois->AppendCheckItem(ID_LPROUTPUT, "LPR Output", "Show LPR Result");
    rois->AppendCheckItem(ID_READINGSLIST, "Readings List", "Show the readings list");
    menubar->Append(rois, "ROIs");

    auto* templates = new wxMenu;
    templates->Append(ID_TEMPLATES, "Templates management", "Templates management");
    menubar->Append(templates, "Templates");
    SetMenuBar(menubar);
}

void MyFrame::BuildPanes() {
    const UiContext context{&project_, this};
    // First-start sizes: the views take about 45% of a 1024-pixel window, so plates and
    // score bars can be read; a management pane fits its longest label and a value beside it.
    auto info = [](const char* name, wxSize minimum, wxSize best) {
        return wxAuiPaneInfo()
            .Name(name)
            .Caption(name)
            .MinSize(minimum)
            .BestSize(best)
            .FloatingSize(best)
            .TopDockable()
            .BottomDockable()
            .LeftDockable()
            .RightDockable();
    };
    const wxSize viewMinimum(320, 240);
    const wxSize view(460, 345);
    const wxSize sideMinimum(300, 200);
    const wxSize side(340, 420);
    const wxSize bottomMinimum(300, 200);
    const wxSize bottom(560, 260);
    viewframe = new ViewFrame(this, context);
    auimanager.AddPane(viewframe, info("Video Source View", viewMinimum, view).Right().Show());
    lanedlg = new LaneDlg(this, context);
    auimanager.AddPane(lanedlg, info("Video Sources", bottomMinimum, bottom).Bottom().Hide());
    boarddlg = new BoardDlg(this, context);
    auimanager.AddPane(boarddlg, info("Boards Management", sideMinimum, side).Left().Hide());
    triggerdlg = new TriggerDlg(this, context);
    auimanager.AddPane(triggerdlg, info("Triggers Management", sideMinimum, side).Left().Hide());
    cameradlg = new CameraDlg(this, context, *control_);
    auimanager.AddPane(cameradlg,
                       info("Video Sources Management", sideMinimum, side).Left().Hide());
    gestionelane = new GestioneLane(this, context);
    auimanager.AddPane(gestionelane,
                       info("ROIs Management", bottomMinimum, bottom).Bottom().Hide());
    integratordlg = new IntegratorDlg(this, context);
    auimanager.AddPane(integratordlg, info("Lanes Management", sideMinimum, side).Right().Hide());
    processordlg = new ProcessorDlg(this, context);
    auimanager.AddPane(processordlg,
                       info("Post Processor Management", bottomMinimum, bottom).Right().Hide());
    laneresult = new LaneLPRResult(this, context);
    auimanager.AddPane(laneresult, info("ROI LPR Result", viewMinimum, view).Right().Hide());
    lprlist = new LPRList(this, context);
    auimanager.AddPane(lprlist, wxAuiPaneInfo()
                                    .Name("View Frame")
                                    .Caption("View Frame")
                                    .Center()
                                    .PinButton()
                                    .CloseButton()
                                    .TopDockable()
                                    .BottomDockable()
                                    .LeftDockable(false)
                                    .RightDockable(false));
    auimanager.Update();
    firstStartLayout_ = auimanager.SavePerspective();
}

// From the working directory: the application folder at start, the project's folder during an
// open (a project folder without layout.ini keeps the present layout).
void MyFrame::LoadPerspective(const std::string& folder) {
    const auto layout = LoadLayout(folder + "/" + kLayoutFile);
    if (!layout)
        return;
    auimanager.LoadPerspective(wxString::FromUTF8(layout->perspective), true);
    auimanager.Update();
    SetSize(layout->x, layout->y, layout->width, layout->height);
}

void MyFrame::SavePerspective() {
    WindowLayout layout;
    GetPosition(&layout.x, &layout.y);
    GetSize(&layout.width, &layout.height);
    layout.perspective = auimanager.SavePerspective().utf8_str();
    if (!SaveLayout(startdir + "/" + kLayoutFile, layout))
        CORVANE_LOG_WARNING("MyFrame::SavePerspective", "Cannot save windows layout");
}

void MyFrame::SetMenuState() {
    const bool open = project_.prjopen != 0;
    EnableFileEntries(filemenu, project_.prjopen);
    if (!open) {
        filemenu->Enable(ID_DOWNLOADPROJECT, true);
        filemenu->Enable(ID_UPLOADPROJECT, false);
    }
    filemenu->Enable(ID_BLOCKWINDOW, project_.accessmode != 0);
    for (size_t i = 1; i < menubar->GetMenuCount(); ++i)
        menubar->EnableTop(i, open);
    EnablePanes(open);
}

void MyFrame::EnablePanes(bool enable) {
    wxWindow* panes[] = {viewframe,     lanedlg,      lprlist,      boarddlg,
                         triggerdlg,    cameradlg,    gestionelane, laneresult,
                         integratordlg, processordlg, viewer};
    for (wxWindow* pane : panes)
        if (pane != nullptr)
            pane->Enable(enable);
}

// --- ProjectHost -------------------------------------------------------------------------------

bool MyFrame::AskYesNo(const std::string& question) {
    return wxMessageBox(wxString::FromUTF8(question), "Warning", wxYES_NO, this) == wxYES;
}

void MyFrame::ShowMessage(const std::string& message) {
    wxMessageBox(wxString::FromUTF8(message), wxMessageBoxCaptionStr, wxOK, this);
}

void MyFrame::RefreshLists() {
    cameradlg->RefillTypes();
    cameradlg->Refill();
    boarddlg->RefillTypes();
    boarddlg->Refill();
    triggerdlg->RefillTypes();
    triggerdlg->Refill();
    integratordlg->RefillTypes();
    integratordlg->Refill();
    processordlg->RebuildGrid();
    processordlg->Refill();
    gestionelane->Refill();
    viewframe->RefillSources();
    laneresult->RefillRegions();
    lprlist->Refill();
}

void MyFrame::SetTitle(const std::string& title) {
    wxFrame::SetTitle(wxString::FromUTF8(title));
}

void MyFrame::ProjectStateChanged() {
    SetMenuState();
    if (project_.prjopen == 0) {
        // The title stays as it was; the views lose the closed project's pictures.
        RefreshLists();
        viewframe->Refresh(false);
        laneresult->Refresh(false);
    } else {
        // After a load or a download the project came from elsewhere: upload is offered.
        filemenu->Enable(ID_UPLOADPROJECT, true);
        filemenu->Enable(ID_DOWNLOADPROJECT, false);
        RefreshLists();
        // The live views follow the selection the open made: the first source and region.
        if (const Camera* camera = project_.GetCamera(project_.selcamera))
            viewframe->SelectSource(wxString::FromUTF8(camera->name));
    }
}

// --- Events ------------------------------------------------------------------------------------

void MyFrame::PostCommand(int id, int value, const std::string& text) {
    auto* event = new wxCommandEvent(wxEVT_CORVANE_POSTED, id);
    event->SetInt(value);
    event->SetString(wxString::FromUTF8(text));
    wxQueueEvent(this, event);
}

void MyFrame::CheckSelection(int id, int value) {
    if (id == ID_CAMERAS_CHANGED && value == 0) {
        {
            std::lock_guard<std::mutex> lock(project_.selectionmutex);
            if (project_.GetCamera(project_.selcamera) == nullptr)
                project_.selcamera = -1;
        }
        viewframe->RefillSources();
    }
    {
        std::lock_guard<std::mutex> lock(project_.selectionmutex);
        if (project_.GetLane(project_.selroi) == nullptr)
            project_.selroi = -1;
    }
    gestionelane->Refill();
    laneresult->RefillRegions();
}

void MyFrame::OnPosted(wxCommandEvent& event) {
    const int value = event.GetInt();
    switch (event.GetId()) {
        case ID_LPR_RESULT:
            // A reading queued by a region of a project that has since been closed is stale.
            if (project_.prjopen == 0)
                break;
            project_.AddResult(
                TransitLine::Record(std::string(event.GetString().utf8_str()), WallClock::now()));
            lprlist->Refill();
            break;
        case ID_VIEW_REFRESH: {
            const uint32_t now = platform::GetTickCount();
            if (value == 0 && platform::ElapsedTicks(now, viewrefreshtick) > kViewRefreshMs) {
                viewrefreshtick = now;
                viewframe->Refresh(false);
            } else if (value != 0 &&
                       platform::ElapsedTicks(now, resultrefreshtick) > kResultRefreshMs) {
                resultrefreshtick = now;
                laneresult->Refresh(false);
            }
            break;
        }
        case ID_CAMERAS_CHANGED:
        case ID_LANES_CHANGED:
            CheckSelection(event.GetId(), value);
            break;
        case ID_INTEGRATORS_CHANGED:
            if (auimanager.GetPane(gestionelane).IsShown())
                gestionelane->RebuildChoice(GestioneLane::kGateChoice);
            processordlg->RebuildGrid();
            processordlg->Refill();
            break;
        case ID_CAMERA_RESTART:
            control_->RestartCamera(value);
            break;
        case ID_DB_STATUS:
            lprlist->SetStatus(value);
            break;
        case ID_TRIGGERS_CHANGED:
            gestionelane->RebuildChoice(GestioneLane::kTriggerChoice);
            break;
        case ID_CAMERA_BUTTONS:
            cameradlg->UpdateButtons();
            viewframe->Refresh(false);  // a stopped source is shown as such
            break;
        case ID_SOURCES_CHANGED:
            gestionelane->RebuildChoice(GestioneLane::kCameraChoice);
            break;
        case ID_TRANSFER_FAILED:
        case ID_TRANSFER_DONE:
            remote_->OnTransferEvent(event.GetId(), value);
            break;
        default:
            break;
    }
}

void MyFrame::OnViewerRequest(wxCommandEvent& event) {
    if (event.GetId() == kViewerRestartSource && project_.prjopen != 0)
        control_->RestartCamera(event.GetInt());
}

void MyFrame::OnRoiUpdate(wxCommandEvent& event) {
    if (event.GetId() == 1)
        gestionelane->RefreshUnderLock();
    else if (event.GetId() == 2)
        viewframe->Refresh(false);
}

void MyFrame::OnRoiChanged(wxCommandEvent& event) {
    viewframe->SetSelectedRoi(event.GetInt());
}

void MyFrame::OnLaneUpdate(wxCommandEvent&) {
    gestionelane->RefreshUnderLock();
    processordlg->Refill();
}

void MyFrame::OnGateList(wxCommandEvent& event) {
    std::unique_ptr<GateListRecord> record(static_cast<GateListRecord*>(event.GetClientData()));
    if (record && processordlg != nullptr)
        processordlg->ApplyGateListSettings(*record);
}

void MyFrame::OnMenuOpen(wxMenuEvent&) {
    for (const PaneToggle& toggle : kToggles)
        menubar->Check(toggle.id, auimanager.GetPane(toggle.pane).IsShown());
}

void MyFrame::OnCommand(wxCommandEvent& event) {
    const int id = event.GetId();
    for (const PaneToggle& toggle : kToggles)
        if (toggle.id == id) {
            wxAuiPaneInfo& pane = auimanager.GetPane(toggle.pane);
            pane.Show(!pane.IsShown());
            auimanager.Update();
            return;
        }
    if (id == ID_RESETLAYOUT) {
        auimanager.LoadPerspective(firstStartLayout_, true);
        return;
    }
    if (id == ID_ADDROI) {
        AddLaneDlg dialog(this, UiContext{&project_, this});
        dialog.SetSize(320, 700);
        dialog.CentreOnScreen();
        dialog.ShowModal();
        return;
    }
    if (id < ID_LOADPROJECT || id > ID_TEMPLATES) {
        event.Skip();
        return;
    }
    project_.TouchActivity();
    activitytimer.Stop();
    switch (id) {
        case ID_NEWPROJECT:
            NewProject();
            break;
        case ID_LOADPROJECT:
            LoadProjectFile();
            break;
        case ID_SAVEPROJECT:
            session_.SaveCurrent();
            break;
        case ID_MODIFYPROJECT:
            ModifyProject();
            break;
        case ID_CLOSEPROJECT:
            session_.CloseProject();
            break;
        case ID_EXPORTPROJECT:
            ExportProject();
            break;
        case ID_IMPORTPROJECT:
            ImportProject();
            break;
        case ID_DOWNLOADPROJECT:
        case ID_UPLOADPROJECT:
            Transfer(id == ID_UPLOADPROJECT);
            break;
        case ID_LOGINPARAMETERS:
            LoginParameters();
            break;
        case ID_BLOCKWINDOW:
            BlockWindow();
            break;
        case ID_INFORMATION:
            wxMessageBox(ProjectSession::kBanner, wxMessageBoxCaptionStr, wxOK, this);
            break;
        case ID_EXIT:
            Close();
            break;
        case ID_TEMPLATES: {
            TemplatesDlg dialog(this, project_);
            dialog.ShowModal();
            break;
        }
        default:
            break;
    }
    if (!closing_)
        activitytimer.Start(kActivityPeriodMs);
}

// --- File flows that need a dialog ---------------------------------------------------------------

void MyFrame::NewProject() {
    NewPrjDialog dialog(this, project_, 0);
    if (dialog.ShowModal() != 1)
        return;
    // A new project leaves Download and Upload as they were.
    const bool download = filemenu->IsEnabled(ID_DOWNLOADPROJECT);
    const bool upload = filemenu->IsEnabled(ID_UPLOADPROJECT);
    session_.NewProject(dialog.folder, dialog.name);
    filemenu->Enable(ID_DOWNLOADPROJECT, download);
    filemenu->Enable(ID_UPLOADPROJECT, upload);
}

void MyFrame::LoadProjectFile() {
    wxFileDialog dialog(this, "Load Existing Project", wxString::FromUTF8(startdir), "",
                        "TarvoLPR Project Files (*.tlr)|*.tlr", wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog.ShowModal() == wxID_OK)
        OpenProjectFile(std::string(dialog.GetPath().utf8_str()));
}

void MyFrame::OpenProjectFile(const std::string& path) {
    project_.TouchActivity();
    session_.LoadProject(path);
}

void MyFrame::ModifyProject() {
    project_.processorplugins.StopMirrorDB();
    NewPrjDialog dialog(this, project_, 1);
    dialog.FillFromProject();
    dialog.ShowModal();
    // The values reach the project file at the next save.
    session_.StartMirrorDB();
}

void MyFrame::ExportProject() {
    // The work stops first and the folder is chosen then; a cancel starts it again.
    session_.ExportProject([this] {
        wxDirDialog dialog(this, "Choose destination directory", wxString::FromUTF8(startdir));
        return dialog.ShowModal() == wxID_OK ? std::string(dialog.GetPath().utf8_str())
                                             : std::string();
    });
}

void MyFrame::ImportProject() {
    // The question comes first, the file dialog after a Yes.
    if (!AskYesNo(ProjectSession::kImportQuestion))
        return;
    wxFileDialog dialog(this, "Import Existing Project", wxString::FromUTF8(startdir), "",
                        "TarvoLPR Project Files (*.tlr)|*.tlr", wxFD_OPEN);
    if (dialog.ShowModal() == wxID_OK)
        session_.ImportConfirmed(std::string(dialog.GetPath().utf8_str()));
}

void MyFrame::Transfer(bool upload) {
    wxTextEntryDialog dialog(this, "Runtime IP", "Runtime IP",
                             RemoteAdministration::kDefaultAddress);
    if (dialog.ShowModal() != wxID_OK)
        return;
    const std::string ip = dialog.GetValue().utf8_str().data();
    if (upload)
        remote_->Upload(ip);
    else
        remote_->Download(ip);
}

void MyFrame::LoginParameters() {
    GestioneAccesso dialog(this, project_);
    // Only OK (1) saves: the title bar's box ends the dialog with wxID_CANCEL, which is not 0.
    if (dialog.ShowModal() == 1) {
        dialog.CopyToProject();
        SaveAccess(project_);
    }
    filemenu->Enable(ID_BLOCKWINDOW, project_.accessmode != 0);
}

void MyFrame::BlockWindow() {
    if (project_.accessmode != 1)
        return;
    const bool passed = Login();
    project_.TouchActivity();
    if (!passed)
        CallAfter([this] { Close(); });
}

void MyFrame::OnActivityTimer(wxTimerEvent&) {
    if (project_.accessmode != 1)
        return;
    uint32_t last;
    {
        std::lock_guard<std::mutex> lock(project_.activitymutex);
        last = project_.lastactivity;
    }
    const uint64_t limit = static_cast<uint64_t>(project_.timeout) * 3600000u;
    if (platform::ElapsedTicks(platform::GetTickCount(), last) <= limit)
        return;
    activitytimer.Stop();
    const bool passed = Login();
    project_.TouchActivity();
    activitytimer.Start(kActivityPeriodMs);
    if (!passed)
        Close();
}

void MyFrame::OnCloseTimer(wxTimerEvent&) {
    if (mustexit == 1)
        Close();
}

// --- Close path ----------------------------------------------------------------------------------

void MyFrame::Shutdown(bool askQuestions) {
    if (!control_)
        return;  // already done
    project_.processorplugins.StopMirrorDB();
    project_.StopBoardThread();
    project_.StopCameras();
    project_.StopLanes();
    project_.CloseAll();
    activitytimer.Stop();
    if (closetimer)
        closetimer->Stop();
    platform::StopOrAbandon(checkdbthread, platform::kExitStopLimitMs);
    rtsp_->StopAllStreams();
    if (askQuestions && mustexit == 0) {
        SavePerspective();
        if (project_.prjopen == 1 && AskYesNo("Save Changes?"))
            session_.SaveAll();
    }
    if (askQuestions && runtimestopped && AskYesNo("Restart Corvane-Runtime service?"))
        LocalRuntime::StartService(LocalRuntime::kServiceName);
    remote_.reset();
    control_.reset();
    rtsp_.reset();
    project_.mainframe = nullptr;
    project_.lprsink = nullptr;
}

void MyFrame::OnClose(wxCloseEvent& event) {
    if (closing_)
        return;
    if (mustexit == 0 && event.CanVeto() && !AskYesNo("Exit?")) {
        event.Veto();
        return;
    }
    closing_ = true;
    // The process ends right after the close path: no stop on it waits without bound.
    if (killonclose_)
        platform::SetExitStopLimit(platform::kExitStopLimitMs);
    Shutdown(true);
    std::printf("Destroy\n");
    if (killonclose_) {
        // Everything was stopped above: the process ends here, without the toolkit's tear-down
        // and without static destructors that could still meet a plug-in thread.
        std::fflush(nullptr);
        ::_exit(0);
    }
    Destroy();
}
