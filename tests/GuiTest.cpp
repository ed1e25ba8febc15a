// The desktop program's real window under Xvfb, driven as an operator would: menu commands,
// pane buttons and mouse clicks on the live view. Modal dialogs are answered through the
// toolkit's modal hook, which fills the real dialog and presses its button instead of the
// operator. The reference plug-ins come from disk and the pipeline runs for real.
#include <sys/stat.h>
#include <unistd.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/evtloop.h>
#include <wx/filedlg.h>
#include <wx/listbox.h>
#include <wx/listctrl.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "TestSupport.h"
#include "core/Project.h"
#include "core/ShapeText.h"
#include "onvif/SoapThread.h"
#include "onvif/WSDiscovery.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"
#include "plugins/CameraPluginManager.h"
#include "ui/AddLaneDlg.h"
#include "ui/BoardDlg.h"
#include "ui/CameraDlg.h"
#include "ui/GestioneAccesso.h"
#include "ui/GestioneLane.h"
#include "ui/IntegratorDlg.h"
#include "ui/LPRList.h"
#include "ui/LaneLPRResult.h"
#include "ui/MenuIds.h"
#include "ui/MyFrame.h"
#include "ui/NewPrjDialog.h"
#include "ui/ParametriScheda.h"
#include "ui/ProcessorDlg.h"
#include "ui/ShowFrameDlg.h"
#include "ui/TemplatesDlg.h"
#include "ui/TriggerDlg.h"
#include "ui/ViewFrame.h"
#include "ui/wxAdministrator.h"

namespace {

using Clock = std::chrono::steady_clock;

// Runs the toolkit's events for a while, or until the condition holds.
bool Pump(std::chrono::milliseconds limit, const std::function<bool()>& done = nullptr) {
    const auto end = Clock::now() + limit;
    while (Clock::now() < end) {
        wxEventLoopBase* loop = wxEventLoopBase::GetActive();
        while (loop != nullptr && loop->Pending())
            loop->Dispatch();
        wxTheApp->ProcessPendingEvents();
        // Idle time is when closed windows are really deleted.
        wxTheApp->ProcessIdle();
        if (done && done())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return done ? done() : true;
}

// Answers the modal dialogs of the session: each kind of dialog has its script, and every
// question asked is recorded.
class ScriptedDialogs : public wxModalDialogHook {
  public:
    ScriptedDialogs() { Register(); }
    ~ScriptedDialogs() override { Unregister(); }

    std::function<int(NewPrjDialog&)> project;
    std::function<int(ParametriScheda&)> settings;
    std::function<int(AddLaneDlg&)> region;
    std::function<int(wxFileDialog&)> file;
    std::function<int(wxAdministrator&)> login;
    std::function<int(wxDialog&)> other;  // a dialog that a plug-in brings
    std::map<std::string, int> answers;   // question -> wxID_YES / wxID_NO
    std::vector<std::string> asked;

  protected:
    int Enter(wxDialog* dialog) override {
        if (auto* d = dynamic_cast<NewPrjDialog*>(dialog))
            return project ? project(*d) : 0;
        if (auto* d = dynamic_cast<ParametriScheda*>(dialog))
            return settings ? settings(*d) : 0;
        if (auto* d = dynamic_cast<AddLaneDlg*>(dialog))
            return region ? region(*d) : 0;
        if (auto* d = dynamic_cast<wxFileDialog*>(dialog))
            return file ? file(*d) : wxID_CANCEL;
        if (auto* d = dynamic_cast<wxAdministrator*>(dialog))
            return login ? login(*d) : 0;
        if (auto* d = dynamic_cast<wxMessageDialog*>(dialog)) {
            const std::string text = d->GetMessage().utf8_str().data();
            asked.push_back(text);
            const auto it = answers.find(text);
            return it != answers.end() ? it->second : wxID_OK;
        }
        if (other)
            return other(*dialog);
        return wxID_CANCEL;
    }
    void Exit(wxDialog*) override {}
};

// An application folder: the shipped plug-ins and stock files, as the program finds them.
class AppFolder {
  public:
    AppFolder() : cwd_(dir_.Path()) { FillAppFolder(dir_, CORVANE_APP_DIR); }
    std::string File(const std::string& name) const { return dir_.File(name); }

  private:
    TempDir dir_;
    platform::ScopedWorkingDirectory cwd_;
};

void Menu(MyFrame& frame, int id) {
    wxCommandEvent event(wxEVT_MENU, id);
    frame.ProcessWindowEvent(event);
}

void Click(wxWindow* window, wxEventType type, int x, int y) {
    wxMouseEvent event(type);
    event.SetPosition(wxPoint(x, y));
    event.SetEventObject(window);
    window->ProcessWindowEvent(event);
}

void SetRow(wxPropertyGrid* grid, const char* key, const wxString& value) {
    wxPGProperty* row = grid->GetProperty(key);
    ASSERT_NE(row, nullptr) << key;
    row->SetValueFromString(value);  // false when the row held the value already
    ASSERT_EQ(row->GetValueAsString(), value) << key;
}

// What the window shows on the screen now.
wxImage ScreenOf(wxWindow& window) {
    window.Refresh();
    window.Update();
    wxClientDC screen(&window);
    const wxSize size = window.GetClientSize();
    wxBitmap bitmap(size);
    {
        wxMemoryDC memory(bitmap);
        memory.Blit(0, 0, size.x, size.y, &screen, 0, 0);
    }
    return bitmap.ConvertToImage();
}

// The picture of the window as it is on screen, saved where CORVANE_SCREENSHOT_DIR says.
void Screenshot(wxWindow& window, const std::string& name) {
    const char* folder = std::getenv("CORVANE_SCREENSHOT_DIR");
    if (folder == nullptr || *folder == '\0')
        return;
    window.Refresh();
    window.Update();
    Pump(std::chrono::milliseconds(300));
    ScreenOf(window).SaveFile(wxString::FromUTF8(std::string(folder) + "/" + name),
                              wxBITMAP_TYPE_PNG);
}

std::vector<std::string> ListColumn(wxListCtrl* list, int column) {
    std::vector<std::string> cells;
    for (long row = 0; row < list->GetItemCount(); ++row)
        cells.push_back(list->GetItemText(row, column).utf8_str().data());
    return cells;
}

}  // namespace

TEST(DesktopProgram, AnOperatorSessionFromNewProjectToReopening) {
    AppFolder app;
    Project project;
    ScriptedDialogs dialogs;
    LogCapture warnings;
    auto* frame = new MyFrame(project, kStartNoPassword);
    frame->SetKillOnClose(false);
    // Whatever fails, the window goes before the project it shows.
    struct Closer {
        wxWeakRef<MyFrame> frame;  // cleared when the window is really deleted
        ~Closer() {
            if (frame) {
                frame->Shutdown(false);
                frame->Destroy();
                Pump(std::chrono::milliseconds(100));
            }
        }
    } closer{frame};
    frame->SetSize(1200, 760);
    frame->Show();
    Pump(std::chrono::milliseconds(300));
    EXPECT_EQ(frame->GetTitle(), "Halvern - Corvane Suite 1.17.2");
    EXPECT_FALSE(frame->GetMenuBar()->IsEnabledTop(1));
    EXPECT_TRUE(frame->GetMenuBar()->IsEnabled(ID_NEWPROJECT));
    EXPECT_FALSE(frame->GetMenuBar()->IsEnabled(ID_SAVEPROJECT));
    // Plug-ins get the toolkit's own windows, which they may cast back to parent a dialog.
    EXPECT_EQ(static_cast<wxWindow*>(project.mainwindow), frame);
    ASSERT_NE(project.viewer, nullptr);
    EXPECT_TRUE(static_cast<wxWindow*>(project.viewer)->IsKindOf(wxCLASSINFO(wxWindow)));

    // File > New Project: the project dialog names it and its site.
    dialogs.project = [&](NewPrjDialog& dialog) {
        SetRow(dialog.Grid(), "Project Name", "crossing");
        SetRow(dialog.Grid(), "Project Folder", wxString::FromUTF8(app.File("")));
        SetRow(dialog.Grid(), "Site Name", "North");
        return dialog.Confirm() ? 1 : 0;
    };
    Menu(*frame, ID_NEWPROJECT);
    ASSERT_EQ(project.prjopen, 1);
    EXPECT_TRUE(platform::FileExists(app.File("crossing/crossing.tlr")));
    EXPECT_EQ(frame->GetTitle(), "Halvern - Corvane Suite 1.17.2 - crossing");
    EXPECT_TRUE(frame->GetMenuBar()->IsEnabledTop(1));
    EXPECT_EQ(project.place.placename, "North");
    // A new project leaves Download and Upload as they were at start.
    EXPECT_TRUE(frame->GetMenuBar()->IsEnabled(ID_DOWNLOADPROJECT));
    EXPECT_FALSE(frame->GetMenuBar()->IsEnabled(ID_UPLOADPROJECT));
    // Without a source there is nothing to start.
    EXPECT_FALSE(frame->Cameras()->StartButton()->IsEnabled());

    // A gate from the Lanes pane, configured in the generic settings dialog.
    dialogs.settings = [](ParametriScheda& dialog) {
        dialog.Update();
        return 1;
    };
    wxPropertyGrid* gateGrid = frame->Gates()->Grid();
    SetRow(gateGrid, "Name", "Gate1");
    SetRow(gateGrid, "Type", "Voting Gate");
    frame->Gates()->OnAdd();
    ASSERT_EQ(project.integrators.GetCount(), 1u);
    EXPECT_NE(project.integrators[0].settings.find("<INTNAME>Gate1<\\INTNAME>"), std::string::npos);
    Pump(std::chrono::milliseconds(100));

    // A source: the reference camera plug-in drawing synthetic traffic.
    const std::set<std::string> drawn = {"AB123CD", "GH45KLM", "ZR874TX"};
    dialogs.settings = [&](ParametriScheda& dialog) {
        dialog.SetRowValue("Source", "Synthetic traffic");
        dialog.SetRowValue("Width", "1280");
        dialog.SetRowValue("Height", "720");
        dialog.SetRowValue("Character height", "26");
        dialog.SetRowValue("Crossing time (ms)", "2000");
        dialog.SetRowValue("Gap (ms)", "900");
        dialog.SetRowValue("Plates", "AB123CD,GH45KLM,ZR874TX,");
        dialog.Update();
        return 1;
    };
    wxPropertyGrid* cameraGrid = frame->Cameras()->Grid();
    SetRow(cameraGrid, "Name", "Cam1");
    SetRow(cameraGrid, "Type", "Video Source");
    frame->Cameras()->OnAddCamera();
    ASSERT_EQ(project.cameras.GetCount(), 1u);
    EXPECT_EQ(project.cameras[0].plugin->GetLibName(), "VideoSource");
    EXPECT_EQ(ListColumn(frame->Cameras()->List(), 1), std::vector<std::string>{"Cam1"});
    // A second source of the same name is refused with the operator's warning.
    frame->Cameras()->OnAddCamera();
    EXPECT_TRUE(warnings.Contains("Camera name needs to be unique"));
    EXPECT_EQ(project.cameras.GetCount(), 1u);
    Pump(std::chrono::milliseconds(100));

    // ROIs > Add ROI: the region over the source, read by PlateCore, reported to the gate.
    dialogs.region = [](AddLaneDlg& dialog) {
        SetRow(dialog.Grid(), "ROI Name", "Lane1");
        SetRow(dialog.Grid(), "MinCar", "14");
        SetRow(dialog.Grid(), "MaxCar", "45");
        SetRow(dialog.Grid(), "LPR Type", "PlateCore");
        SetRow(dialog.Grid(), "CAMERASEL", "Cam1");
        SetRow(dialog.Grid(), "Gate", "Gate1");
        return dialog.OnAddLane() ? 1 : 0;
    };
    Menu(*frame, ID_ADDROI);
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_EQ(project.lanes[0].camname, "Cam1");
    EXPECT_EQ(project.lanes[0].intname, "Gate1");
    EXPECT_EQ(project.lanes[0].lprlib, "PlateCore");
    EXPECT_EQ(ShapeText::Normal(project.lanes[0].shape), "0, 0; 1000, 0; 1000, 1000; 0, 1000 ");

    // Start Sampling on the source, and watch it in the live view.
    Menu(*frame, ID_VIDEOSOURCES);
    Menu(*frame, ID_LPROUTPUT);
    Pump(std::chrono::milliseconds(200));
    frame->Cameras()->Select(project.cameras[0].id);
    frame->Cameras()->OnStartSampling();
    EXPECT_EQ(project.cameras[0].sampling, 1);
    EXPECT_FALSE(frame->Cameras()->StartButton()->IsEnabled());
    frame->View()->SelectSource("Cam1");
    ASSERT_TRUE(Pump(std::chrono::seconds(10), [&] {
        return frame->View()->Editor().state == ShapeEditor::kReady;
    })) << "no picture reached the live view";

    // Draw the region's polygon with the mouse over the live view: four corners, then a click
    // on the first one closes it.
    Pump(std::chrono::milliseconds(100));
    Menu(*frame, ID_ROISETTINGS);
    frame->Regions()->Select(project.lanes[0].id);
    Pump(std::chrono::milliseconds(200));
    EXPECT_EQ(frame->View()->selectedroi, project.lanes[0].id);
    ShapeEditor& editor = frame->View()->Editor();
    auto at = [&](int x, int y) {
        return wxPoint(editor.ox + x * editor.imgw / 1000, editor.oy + y * editor.imgh / 1000);
    };
    const wxPoint corners[] = {at(10, 40), at(990, 40), at(990, 960), at(10, 960), at(10, 40)};
    for (const wxPoint& corner : corners) {
        Click(frame->View(), wxEVT_MOTION, corner.x, corner.y);
        Click(frame->View(), wxEVT_LEFT_DOWN, corner.x, corner.y);
        Click(frame->View(), wxEVT_LEFT_UP, corner.x, corner.y);
    }
    const Lane& drawnLane = project.lanes[0];
    ASSERT_EQ(drawnLane.shape.size(), 4u) << ShapeText::Normal(drawnLane.shape);
    // A window pixel covers 1000 / painted size thousandths of the picture.
    const int slack = 1000 / std::min(editor.imgw, editor.imgh) + 1;
    EXPECT_NEAR(drawnLane.roi[0], 10, slack);
    EXPECT_NEAR(drawnLane.roi[1], 40, slack);
    EXPECT_NEAR(drawnLane.roi[2], 990, slack);
    EXPECT_NEAR(drawnLane.roi[3], 960, slack);
    const std::vector<ShapePoint> drawnShape = drawnLane.shape;

    // Readings arrive in the list, newest first, with the plates the source drew.
    ASSERT_TRUE(Pump(std::chrono::seconds(60), [&] {
        return frame->Readings()->List()->GetItemCount() >= 2;
    })) << "no transit reached the list";
    for (const std::string& plate : ListColumn(frame->Readings()->List(), 2))
        EXPECT_EQ(drawn.count(plate), 1u) << plate;
    for (const std::string& lane : ListColumn(frame->Readings()->List(), 1))
        EXPECT_EQ(lane, "Lane1");
    EXPECT_EQ(frame->Readings()->StatusText(), "Database Connection: database not defined");
    // The picture for the README: the live view and the region's result view large.
    frame->Results()->SelectRegion("Lane1");
    Menu(*frame, ID_ROISETTINGS);
    frame->Aui().GetPane("Video Source View").MinSize(560, 330);
    frame->Aui().GetPane("ROI LPR Result").MinSize(560, 330);
    frame->Aui().Update();
    Pump(std::chrono::milliseconds(2500));
    Screenshot(*frame, "main-window.png");

    // Save, close (answering the two questions), and the window is empty again.
    Menu(*frame, ID_SAVEPROJECT);
    dialogs.answers = {{"Close Current Project?", wxID_YES}, {"Save Changes?", wxID_YES}};
    Menu(*frame, ID_CLOSEPROJECT);
    Pump(std::chrono::milliseconds(200));
    EXPECT_EQ(project.prjopen, 0);
    EXPECT_TRUE(project.cameras.IsEmpty());
    EXPECT_EQ(frame->Readings()->List()->GetItemCount(), 0);
    // The title stays as it was; the views and the region grid keep nothing of the project.
    EXPECT_EQ(frame->GetTitle(), "Halvern - Corvane Suite 1.17.2 - crossing");
    EXPECT_EQ(project.camframes.Latest(), nullptr);
    EXPECT_EQ(project.roiframes.Latest(), nullptr);

    // Load Project finds everything again, the drawn polygon included. (The native file chooser
    // cannot be filled without being shown: the test opens the file the operator would pick.)
    dialogs.file = [](wxFileDialog&) { return wxID_CANCEL; };
    Menu(*frame, ID_LOADPROJECT);
    EXPECT_EQ(project.prjopen, 0);
    frame->OpenProjectFile(app.File("crossing/crossing.tlr"));
    Pump(std::chrono::milliseconds(300));
    ASSERT_EQ(project.prjopen, 1);
    ASSERT_EQ(project.cameras.GetCount(), 1u);
    EXPECT_EQ(project.cameras[0].name, "Cam1");
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_EQ(project.lanes[0].shape, drawnShape);
    EXPECT_EQ(project.integrators.GetCount(), 1u);
    EXPECT_EQ(project.place.placename, "North");
    EXPECT_EQ(ListColumn(frame->Cameras()->List(), 1), std::vector<std::string>{"Cam1"});
    EXPECT_EQ(frame->Regions()->List()->GetItemCount(), 1);
    // Nothing samples by itself after a load.
    EXPECT_EQ(project.cameras[0].sampling, 0);

    // Exit: the close path saves the layout and asks about unsaved changes.
    dialogs.answers = {{"Exit?", wxID_YES}, {"Save Changes?", wxID_NO}};
    frame->Close();
    Pump(std::chrono::milliseconds(300));
    EXPECT_TRUE(platform::FileExists(app.File("layout.ini")));
    EXPECT_NE(std::find(dialogs.asked.begin(), dialogs.asked.end(), "Exit?"), dialogs.asked.end());
}

TEST(DesktopProgram, TheLoginCountsFailuresAndAsksFromTheFourth) {
    AppFolder app;
    Project project;
    ScriptedDialogs dialogs;
    wxAdministrator login(nullptr, project);
    login.username = "steer";
    login.password = "gatekeep";
    login.SetEntries("Steer", "gatekeep");  // case counts
    dialogs.answers = {{"Administrator not found, close the application?", wxID_NO}};
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(login.Confirm());
    EXPECT_EQ(login.attempts, 4);
    EXPECT_EQ(std::count(dialogs.asked.begin(), dialogs.asked.end(),
                         "Administrator not found or access not sufficient to perform the "
                         "operation"),
              4);
    EXPECT_EQ(std::count(dialogs.asked.begin(), dialogs.asked.end(),
                         "Administrator not found, close the application?"),
              1);
    login.SetEntries("", "x");
    EXPECT_FALSE(login.Confirm());
    EXPECT_EQ(dialogs.asked.back(), "Insert user name");
    login.SetEntries("steer", "gatekeep");
    EXPECT_TRUE(login.Confirm());
    EXPECT_EQ(login.result, 1);
}

TEST(DesktopProgram, TheSettingsDialogBuildsRowsAndTheValueReturn) {
    AppFolder app;
    Project project;
    const std::string description =
        "<TITLE>Gate<\\TITLE>"
        "<PARAMETER><NAME>Count<\\NAME><TYPE>INT<\\TYPE><DEFAULT>3<\\DEFAULT><\\PARAMETER>\n"
        "<PARAMETER><NAME>Mode<\\NAME><TYPE>CHOICE<\\TYPE><SEL>Fast;Slow;<\\SEL>"
        "<DEFAULT>Slow<\\DEFAULT><\\PARAMETER>\n"
        "<PARAMETER><NAME>Out<\\NAME><TYPE>PIN_OUT<\\TYPE><DEFAULT>Board9;4<\\DEFAULT>"
        "<\\PARAMETER>";
    ParametriScheda dialog(nullptr, project, description, "Lane name", "Gate1");
    EXPECT_EQ(dialog.GetTitle(), "Gate");
    ASSERT_NE(dialog.Grid()->GetProperty("Board0"), nullptr);
    EXPECT_EQ(dialog.Grid()->GetProperty("Board0")->GetValueAsString(), "NO BOARD");
    dialog.SetRowValue("Count", "7");
    dialog.SetRowValue("Lane name", "Gate2");
    dialog.Update();
    EXPECT_EQ(dialog.newname, "Gate2");
    std::string flat = dialog.returntext;
    flat.erase(std::remove(flat.begin(), flat.end(), '\n'), flat.end());
    EXPECT_NE(flat.find("<NAME>Count<\\NAME><TYPE>INT<\\TYPE><VALUE>7<\\VALUE>"), std::string::npos)
        << dialog.returntext;
    EXPECT_NE(flat.find("<VALUE>Slow<\\VALUE>"), std::string::npos);
    EXPECT_NE(flat.find("<TYPE>PIN<\\TYPE><VALUE>NO BOARD;-1<\\VALUE>"), std::string::npos)
        << dialog.returntext;

    // A default without ";" names no board, even one that exists by that name.
    project.appdir = CORVANE_APP_DIR;
    project.AddBoard("IO", "VirtualBoard", "", 1);
    ASSERT_EQ(project.boards.GetCount(), 1u);
    ParametriScheda bare(nullptr, project,
                         "<TITLE>Gate<\\TITLE><PARAMETER><NAME>Out<\\NAME><TYPE>PIN_OUT<\\TYPE>"
                         "<DEFAULT>IO<\\DEFAULT><\\PARAMETER>",
                         "Lane name", "Gate1");
    EXPECT_EQ(bare.Grid()->GetProperty("Board0")->GetValueAsString(), "NO BOARD");
    ParametriScheda named(nullptr, project,
                          "<TITLE>Gate<\\TITLE><PARAMETER><NAME>Out<\\NAME><TYPE>PIN_OUT<\\TYPE>"
                          "<DEFAULT>IO;-1<\\DEFAULT><\\PARAMETER>",
                          "Lane name", "Gate1");
    EXPECT_EQ(named.Grid()->GetProperty("Board0")->GetValueAsString(), "IO");
    project.CloseAll();
}

namespace {

// A window with a new, empty project, for the pane tests.
struct OpenWindow {
    OpenWindow() : frame(new MyFrame(project, kStartNoPassword)) {
        frame->SetKillOnClose(false);
        frame->Show();
        dialogs.project = [this](NewPrjDialog& dialog) {
            SetRow(dialog.Grid(), "Project Name", "site");
            SetRow(dialog.Grid(), "Project Folder", wxString::FromUTF8(app.File("")));
            return dialog.Confirm() ? 1 : 0;
        };
        Menu(*frame, ID_NEWPROJECT);
        Pump(std::chrono::milliseconds(100));
    }
    ~OpenWindow() {
        frame->Shutdown(false);
        frame->Destroy();
        Pump(std::chrono::milliseconds(100));
    }
    AppFolder app;
    Project project;
    ScriptedDialogs dialogs;
    LogCapture warnings;
    MyFrame* frame;
};

}  // namespace

TEST(DesktopProgram, TheRoiPaneRefusesBadChangesAndAppliesAGoodOne) {
    OpenWindow window;
    Project& project = window.project;
    window.dialogs.region = [](AddLaneDlg& dialog) {
        SetRow(dialog.Grid(), "ROI Name", "Lane1");
        SetRow(dialog.Grid(), "Shape", "100,100; 900,100; 900,900; 100,900");
        return dialog.OnAddLane() ? 1 : 0;
    };
    Menu(*window.frame, ID_ADDROI);
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_EQ(project.lanes[0].trigname, "No trigger");
    Pump(std::chrono::milliseconds(100));

    GestioneLane& pane = *window.frame->Regions();
    pane.Select(project.lanes[0].id);
    Pump(std::chrono::milliseconds(50));
    ASSERT_EQ(pane.selected, project.lanes[0].id);
    // A refused change leaves the selection and the grid as they were: the row is put back.
    auto attempt = [&](const char* key, const char* value, const char* warning) {
        const wxString good = pane.Grid()->GetPropertyValueAsString(key);
        SetRow(pane.Grid(), key, value);
        EXPECT_FALSE(pane.OnModifyLane());
        SetRow(pane.Grid(), key, good);
        EXPECT_TRUE(window.warnings.Contains(warning)) << warning;
        EXPECT_EQ(project.lanes[0].name, "Lane1");
        EXPECT_NE(project.lanes[0].lprthread, nullptr) << "the region must run again";
    };
    attempt("BufferLen", "1", "Invalid images buffer length");
    attempt("Shape", "1, 2, 3", "ROI shape not valid");
    attempt("Shape", "100, 100; 100, 900", "ROI not valid");  // a box of no width
    attempt("MinCar", "5", "LPR Configuration not valid");    // a change needs at least 10

    SetRow(pane.Grid(), "ROI Name", "Lane2");
    SetRow(pane.Grid(), "Shape", "200,300;800,300;800,700");
    SetRow(pane.Grid(), "MinCar", "12");
    EXPECT_TRUE(pane.OnModifyLane());
    EXPECT_EQ(project.lanes[0].name, "Lane2");
    EXPECT_EQ(project.lanes[0].roi[0], 200);
    EXPECT_EQ(project.lanes[0].roi[3], 700);
    EXPECT_EQ(project.lanes[0].trigname, "No Trigger");
    EXPECT_EQ(project.lanes[0].UseTemplate, 0);
    Pump(std::chrono::milliseconds(100));
    // The change refilled the list: no row is selected any more.
    EXPECT_EQ(pane.selected, -1);
    EXPECT_EQ(ListColumn(pane.List(), 1), std::vector<std::string>{"Lane2"});
}

TEST(DesktopProgram, ARebuiltChoiceInTheRoiPaneKeepsItsValueAndItsSelection) {
    OpenWindow window;
    Project& project = window.project;
    window.dialogs.region = [](AddLaneDlg& dialog) {
        SetRow(dialog.Grid(), "ROI Name", "Lane1");
        return dialog.OnAddLane() ? 1 : 0;
    };
    Menu(*window.frame, ID_ADDROI);
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    Menu(*window.frame, ID_ROISETTINGS);
    Pump(std::chrono::milliseconds(200));
    GestioneLane& pane = *window.frame->Regions();
    pane.Select(project.lanes[0].id);
    Pump(std::chrono::milliseconds(100));
    ASSERT_TRUE(pane.Grid()->SelectProperty("Gate"));
    const wxString before = pane.Grid()->GetPropertyValueAsString("Gate");

    // A gate added elsewhere: the open region's gate row gets it as a choice, with its value
    // and the operator's place in the grid as they were.
    window.dialogs.settings = [](ParametriScheda& dialog) {
        dialog.Update();
        return 1;
    };
    SetRow(window.frame->Gates()->Grid(), "Name", "Gate9");
    SetRow(window.frame->Gates()->Grid(), "Type", "Voting Gate");
    window.frame->Gates()->OnAdd();
    ASSERT_EQ(project.integrators.GetCount(), 1u);
    Pump(std::chrono::milliseconds(200));
    wxPGProperty* gate = pane.Grid()->GetProperty("Gate");
    ASSERT_NE(gate, nullptr);
    EXPECT_NE(gate->GetChoices().Index("Gate9"), wxNOT_FOUND);
    EXPECT_EQ(pane.Grid()->GetPropertyValueAsString("Gate"), before);
    ASSERT_NE(pane.Grid()->GetSelection(), nullptr);
    EXPECT_EQ(pane.Grid()->GetSelection()->GetName(), "Gate");
    // The open editor offers the new choices too, not those it was opened with.
    auto* editor = dynamic_cast<wxItemContainer*>(pane.Grid()->GetEditorControl());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->GetCount(), gate->GetChoices().GetCount());
}

TEST(DesktopProgram, AddingARegionChecksPortsNamesAndBoxesFirst) {
    OpenWindow window;
    Project& project = window.project;
    window.dialogs.settings = [](ParametriScheda& dialog) {
        dialog.Update();
        return 1;
    };
    SetRow(window.frame->Cameras()->Grid(), "Name", "Cam1");
    SetRow(window.frame->Cameras()->Grid(), "Type", "Video Source");
    SetRow(window.frame->Cameras()->Grid(), "Port", "8090");
    window.frame->Cameras()->OnAddCamera();
    ASSERT_EQ(project.cameras.GetCount(), 1u);
    EXPECT_EQ(project.cameras[0].port, 8090);
    EXPECT_EQ(project.cameras[0].bitrate, 1024000);

    std::vector<std::string> refusals;
    window.dialogs.region = [&](AddLaneDlg& dialog) {
        SetRow(dialog.Grid(), "ROI Name", "Cam1");  // a source's name
        SetRow(dialog.Grid(), "STRPORT", "8090");   // the source's port: checked first
        EXPECT_FALSE(dialog.OnAddLane());
        SetRow(dialog.Grid(), "STRPORT", "-1");
        EXPECT_FALSE(dialog.OnAddLane());
        SetRow(dialog.Grid(), "ROI Name", "Lane1");
        SetRow(dialog.Grid(), "Shape", "500,500");  // one point: the full frame
        EXPECT_TRUE(dialog.OnAddLane());
        return 1;
    };
    Menu(*window.frame, ID_ADDROI);
    EXPECT_NE(std::find(window.dialogs.asked.begin(), window.dialogs.asked.end(),
                        "Streaming port already assigned to Cam1"),
              window.dialogs.asked.end());
    EXPECT_TRUE(window.warnings.Contains("ROI Name needs to be unique"));
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_EQ(project.lanes[0].roi[2], 1000);
    EXPECT_EQ(project.lanes[0].camname, "Cam1");
}

TEST(DesktopProgram, ATriggerAddedLeavesABlankNameAndTheNextIdBehind) {
    OpenWindow window;
    window.dialogs.settings = [](ParametriScheda& dialog) {
        dialog.Update();
        return 1;
    };
    TriggerDlg& pane = *window.frame->Triggers();
    SetRow(pane.Grid(), "Name", "Loop1");
    SetRow(pane.Grid(), "Type", "Pin Trigger");
    SetRow(pane.Grid(), "ID", "0");
    pane.OnAdd();
    EXPECT_TRUE(window.warnings.Contains("ID not valid"));
    SetRow(pane.Grid(), "ID", "3");
    pane.OnAdd();
    ASSERT_EQ(window.project.triggers.GetCount(), 1u);
    EXPECT_EQ(window.project.triggers[0].id, 3);
    EXPECT_EQ(pane.Grid()->GetPropertyValueAsString("Name"), " ");
    EXPECT_EQ(pane.Grid()->GetPropertyValueAsLong("ID"), 4);
    pane.OnAdd();
    EXPECT_TRUE(window.warnings.Contains("Trigger name cannot contain spaces"));
    EXPECT_EQ(window.project.triggers.GetCount(), 1u);
}

namespace {

// The children of a window that are of type T, in the order they were made.
template <typename T>
std::vector<T*> ChildrenOf(wxWindow& parent) {
    std::vector<T*> found;
    for (wxWindow* child : parent.GetChildren())
        if (auto* typed = dynamic_cast<T*>(child))
            found.push_back(typed);
    return found;
}

void Press(wxWindow& control, wxEventType type) {
    wxCommandEvent event(type, control.GetId());
    event.SetEventObject(&control);
    if (auto* list = dynamic_cast<wxListBox*>(&control))
        event.SetInt(list->GetSelection());
    control.ProcessWindowEvent(event);
}

}  // namespace

namespace {

// Every label of the grid is shown whole, and its values have at least minimum pixels.
void ExpectReadable(wxPropertyGrid& grid, int minimum) {
    const int splitter = grid.GetSplitterPosition();

    for (wxPropertyGridIterator it = grid.GetIterator(wxPG_ITERATE_PROPERTIES); !it.AtEnd(); ++it) {
        const wxString label = (*it)->GetLabel();
        EXPECT_LE(grid.GetTextExtent(label).x + grid.GetMarginWidth(), splitter)
            << label.utf8_str().data();
    }
    EXPECT_GE(grid.GetClientSize().x - splitter, minimum);
}

}  // namespace

TEST(DesktopProgram, PropertyGridsShowWholeLabelsAndLeaveTheValuesTheRest) {
    OpenWindow window;
    Pump(std::chrono::milliseconds(300));
    // At first start (no layout.ini, the window at its first size) the live view has room for
    // plates and score bars.
    const int frameWidth = window.frame->GetClientSize().x;
    EXPECT_GE(window.frame->Aui().GetPane("Video Source View").window->GetSize().x * 10,
              frameWidth * 4);
    window.frame->SetSize(1024, 768);
    // Each management pane as it opens from the View menu at 1024x768.
    const std::vector<std::pair<const char*, wxPropertyGrid*>> panes = {
        {"Video Sources Management", window.frame->Cameras()->Grid()},
        {"ROIs Management", window.frame->Regions()->Grid()},
        {"Lanes Management", window.frame->Gates()->Grid()},
        {"Triggers Management", window.frame->Triggers()->Grid()}};
    for (const auto& [name, grid] : panes) {
        SCOPED_TRACE(name);
        window.frame->Aui().GetPane(name).Show();
        window.frame->Aui().Update();
        Pump(std::chrono::milliseconds(300));
        ExpectReadable(*grid, 60);
        window.frame->Aui().GetPane(name).Hide();
        window.frame->Aui().Update();
    }
    // The project dialog: names and folders typed there can be read.
    bool checked = false;
    window.dialogs.project = [&](NewPrjDialog& dialog) {
        dialog.Show();
        Pump(std::chrono::milliseconds(300));
        ExpectReadable(*dialog.Grid(), 250);
        dialog.Hide();
        checked = true;
        return 0;
    };
    Menu(*window.frame, ID_MODIFYPROJECT);
    EXPECT_TRUE(checked);
}

TEST(DesktopProgram, EveryRegionShowsItsPolygonOnTheLiveViewWithoutBeingSelected) {
    OpenWindow window;
    Project& project = window.project;
    window.dialogs.settings = [](ParametriScheda& dialog) {
        dialog.SetRowValue("Source", "Synthetic traffic");
        dialog.SetRowValue("Width", "640");
        dialog.SetRowValue("Height", "360");
        dialog.Update();
        return 1;
    };
    SetRow(window.frame->Cameras()->Grid(), "Name", "Cam1");
    SetRow(window.frame->Cameras()->Grid(), "Type", "Video Source");
    window.frame->Cameras()->OnAddCamera();
    ASSERT_EQ(project.cameras.GetCount(), 1u);
    window.dialogs.region = [](AddLaneDlg& dialog) {
        SetRow(dialog.Grid(), "ROI Name", "Lane1");
        SetRow(dialog.Grid(), "Shape", "100,100;900,100;500,900");  // a triangle
        SetRow(dialog.Grid(), "CAMERASEL", "Cam1");
        return dialog.OnAddLane() ? 1 : 0;
    };
    Menu(*window.frame, ID_ADDROI);
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    window.frame->Cameras()->Select(project.cameras[0].id);
    window.frame->Cameras()->OnStartSampling();
    EXPECT_EQ(project.cameras[0].sampling, 1);
    Pump(std::chrono::milliseconds(200));  // the live view's source list follows the change
    ViewFrame& view = *window.frame->View();
    view.SelectSource("Cam1");
    ASSERT_TRUE(
        Pump(std::chrono::seconds(10), [&] { return view.Editor().state == ShapeEditor::kReady; }));
    view.SetSelectedRoi(-1);
    view.Refresh();
    view.Update();
    Pump(std::chrono::milliseconds(300));

    // The picture on the screen: the triangle's slanted side, which no box line covers, is
    // drawn in the regions' green.
    const wxImage picture = ScreenOf(view);
    const wxPoint side = view.OnView(ShapePoint{700, 500});
    bool green = false;
    for (int dy = -2; dy <= 2; ++dy)
        for (int dx = -2; dx <= 2; ++dx) {
            const int x = side.x + dx;
            const int y = side.y + dy;
            if (x >= 0 && y >= 0 && x < picture.GetWidth() && y < picture.GetHeight())
                green = green || (picture.GetGreen(x, y) > 150 && picture.GetRed(x, y) < 90 &&
                                  picture.GetBlue(x, y) < 90);
        }
    EXPECT_TRUE(green) << "no polygon line at " << side.x << "," << side.y;
    EXPECT_NE(window.frame->Cameras()->List()->GetItemTextColour(0), CameraDlg::kStoppedColour);

    // Stopped: the last picture stays, greyed, and the source is listed greyed.
    window.frame->Cameras()->OnStopSampling();
    Pump(std::chrono::milliseconds(300));
    EXPECT_EQ(window.frame->Cameras()->List()->GetItemTextColour(0), CameraDlg::kStoppedColour);
    const wxImage stopped = ScreenOf(view);
    const wxPoint inside = view.OnView(ShapePoint{250, 700});
    int coloured = 0;
    for (int dy = 0; dy < 20; ++dy)
        for (int dx = 0; dx < 20; ++dx) {
            const int x = inside.x + dx;
            const int y = inside.y + dy;
            const int r = stopped.GetRed(x, y);
            const int g = stopped.GetGreen(x, y);
            const int b = stopped.GetBlue(x, y);
            coloured += std::max({r, g, b}) - std::min({r, g, b}) > 6 ? 1 : 0;
        }
    EXPECT_EQ(coloured, 0);
}

TEST(DesktopProgram, BoardsAreAddedRenamedAndRemovedThroughTheirPane) {
    OpenWindow window;
    Project& project = window.project;
    BoardDlg& pane = *window.frame->Boards();
    std::string renameTo;
    window.dialogs.settings = [&](ParametriScheda& dialog) {
        if (!renameTo.empty())
            dialog.SetRowValue("Board name", renameTo);
        dialog.Update();
        return 1;
    };
    // A name is needed, and it must not be taken by another kind of record either.
    SetRow(pane.Grid(), "Type", "Virtual Board");
    pane.OnAdd();
    EXPECT_EQ(project.boards.GetCount(), 0u);
    SetRow(pane.Grid(), "Name", "IO");
    pane.OnAdd();
    ASSERT_EQ(project.boards.GetCount(), 1u);
    EXPECT_EQ(project.boards[0].plugin->GetLibName(), "VirtualBoard");
    EXPECT_EQ(ListColumn(pane.List(), 0), std::vector<std::string>{"IO"});
    EXPECT_EQ(ListColumn(pane.List(), 1), std::vector<std::string>{"Virtual Board"});
    pane.OnAdd();  // the same name again
    EXPECT_TRUE(window.warnings.Contains("Board name needs to be unique"));
    EXPECT_EQ(project.boards.GetCount(), 1u);

    // Modify: the settings dialog renames it; the list follows.
    renameTo = "IO2";
    pane.Select(project.boards[0].id);
    pane.OnModify();
    EXPECT_EQ(project.boards[0].name, "IO2");
    EXPECT_EQ(ListColumn(pane.List(), 0), std::vector<std::string>{"IO2"});

    pane.Select(project.boards[0].id);
    pane.OnRemove();
    EXPECT_EQ(project.boards.GetCount(), 0u);
    EXPECT_EQ(pane.List()->GetItemCount(), 0);
}

TEST(DesktopProgram, PostProcessorsFollowTheirGateAndAreRemovedAfterTheQuestion) {
    OpenWindow window;
    Project& project = window.project;
    window.dialogs.settings = [](ParametriScheda& dialog) {
        dialog.Update();
        return 1;
    };
    SetRow(window.frame->Gates()->Grid(), "Name", "Gate1");
    SetRow(window.frame->Gates()->Grid(), "Type", "Voting Gate");
    window.frame->Gates()->OnAdd();
    ASSERT_EQ(project.integrators.GetCount(), 1u);
    Pump(std::chrono::milliseconds(200));  // the gate list reaches the post-processor pane

    ProcessorDlg& pane = *window.frame->Processors();
    SetRow(pane.Grid(), "Name", "Csv1");
    SetRow(pane.Grid(), "Type", "CSV Transits");
    SetRow(pane.Grid(), "Reference Gate", "Gate1");
    pane.OnAdd();
    ASSERT_EQ(project.processors.GetCount(), 1u);
    EXPECT_EQ(project.processors[0].refintegrator, "Gate1");
    EXPECT_EQ(project.processors[0].plugin->GetLibName(), "CsvTransits");
    EXPECT_EQ(ListColumn(pane.List(), 1), std::vector<std::string>{"Csv1"});

    // Removal asks first: No keeps it, Yes removes it.
    pane.Select(project.processors[0].id);
    window.dialogs.answers["Remove Post Processor?"] = wxID_NO;
    pane.OnRemove();
    EXPECT_EQ(project.processors.GetCount(), 1u);
    window.dialogs.answers["Remove Post Processor?"] = wxID_YES;
    pane.OnRemove();
    EXPECT_EQ(project.processors.GetCount(), 0u);
    EXPECT_EQ(pane.List()->GetItemCount(), 0);
}

TEST(DesktopProgram, ANetworkCameraIsFoundInItsOwnDialogAndKeepsItsSettings) {
    // A camera's device front on this host: found by the dialog's probe, asked for its
    // profiles and stream address.
    SoapThread soap("GateNorth", 18931, 1000000, "127.0.0.1");
    soap.SetAddresses({"127.0.0.1"});
    soap.Run();
    WSDiscovery discovery("GateNorth", 18931);
    discovery.SetAddresses({"127.0.0.1"});
    discovery.Run();
    OpenWindow window;
    for (int i = 0; i < 200 && !(soap.Serving() && discovery.Listening()); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));

    std::vector<std::string> cameraList;
    window.dialogs.other = [&](wxDialog& dialog) {
        EXPECT_EQ(dialog.GetTitle(), "IP Camera");
        const auto fields = ChildrenOf<wxTextCtrl>(dialog);  // URL, user, password
        EXPECT_EQ(fields.size(), 3u);
        if (fields.size() != 3)
            return wxID_CANCEL;
        fields[1]->SetValue("admin");
        fields[2]->SetValue("Sesame42");
        for (wxButton* button : ChildrenOf<wxButton>(dialog))
            if (button->GetLabel() == "Find cameras")
                Press(*button, wxEVT_BUTTON);
        wxListBox* cameras = ChildrenOf<wxListBox>(dialog).at(0);
        for (unsigned i = 0; i < cameras->GetCount(); ++i)
            cameraList.push_back(cameras->GetString(i).utf8_str().data());
        if (cameras->GetCount() == 0)
            return wxID_CANCEL;
        cameras->SetSelection(0);
        Press(*cameras, wxEVT_LISTBOX);
        return wxID_OK;
    };
    CameraDlg& pane = *window.frame->Cameras();
    SetRow(pane.Grid(), "Name", "North");
    SetRow(pane.Grid(), "Type", "IP Camera");
    pane.OnAddCamera();
    ASSERT_EQ(cameraList.size(), 1u);
    EXPECT_EQ(cameraList[0], "GateNorth  (http://127.0.0.1:18931/onvif/device_service)");
    ASSERT_EQ(window.project.cameras.GetCount(), 1u);
    const Camera& camera = window.project.cameras[0];
    EXPECT_EQ(camera.plugin->GetLibName(), "IpCamera");
    EXPECT_NE(camera.settings.find("<NAME>URL<\\NAME>\n<TYPE>STRING<\\TYPE>\n"
                                   "<VALUE>rtsp://127.0.0.1:8554/GateNorth<\\VALUE>"),
              std::string::npos)
        << camera.settings;
    EXPECT_NE(camera.settings.find("<VALUE>Sesame42<\\VALUE>"), std::string::npos);
    EXPECT_EQ(ListColumn(pane.List(), 1), std::vector<std::string>{"North"});

    // Cancelled: the source keeps what it had.
    const std::string kept = camera.settings;
    window.dialogs.other = [](wxDialog&) { return wxID_CANCEL; };
    window.frame->Cameras()->Select(camera.id);
    pane.OnModifyCameraPars();
    EXPECT_EQ(window.project.cameras[0].settings, kept);
}

TEST(DesktopProgram, TheTemplatesManagerMovesCountriesAndSavesTheirUse) {
    OpenWindow window;
    TemplatesDlg dialog(window.frame, window.project);
    ASSERT_GT(dialog.Available().size(), 5u);
    EXPECT_FALSE(dialog.AddCountry());  // nothing selected
    EXPECT_EQ(window.dialogs.asked.back(), "Please select a country before");
    while (!dialog.Used().empty()) {
        dialog.SelectUsed(0);
        ASSERT_TRUE(dialog.RemoveCountry());
    }
    dialog.SelectAvailable(0);
    ASSERT_TRUE(dialog.AddCountry());
    dialog.SelectAvailable(0);
    EXPECT_FALSE(dialog.AddCountry());
    EXPECT_EQ(window.dialogs.asked.back(), "Country already in use");
    window.dialogs.answers = {{"Save changes?", wxID_YES}};
    dialog.AskAndSave();
    TemplateSet saved;
    saved.LoadTemplates(dialog.FilePath());
    const std::string kept = dialog.Available()[0].utf8_str().data();
    for (const PlateTemplate& plate : saved.templates)
        EXPECT_EQ(plate.use, plate.isoCountry == kept ? 1 : 0) << plate.isoCountry;

    // A threshold that is no percentage is refused, and nothing is written.
    const std::string before = ReadFileText(dialog.FilePath());
    dialog.DiscardThreshold()->ChangeValue("250");
    window.dialogs.answers = {{"Save changes?", wxID_YES}};
    LogCapture refusal;
    dialog.AskAndSave();
    EXPECT_TRUE(refusal.Contains("Thresholds are percentages from 0 to 100"));
    EXPECT_EQ(ReadFileText(dialog.FilePath()), before);
}

TEST(DesktopProgram, ThePolygonEditorTakesTheImageEdgesAndClosesOnTheFirstPoint) {
    ShapeEditor editor;
    editor.state = ShapeEditor::kReady;
    editor.ox = 10;
    editor.oy = 20;
    editor.imgw = 200;
    editor.imgh = 100;
    ShapePoint point;
    EXPECT_TRUE(editor.ToImage(210, 120, point));  // the right and lower edge: 1000
    EXPECT_EQ(point.x, 1000);
    EXPECT_EQ(point.y, 1000);
    EXPECT_FALSE(editor.ToImage(211, 120, point));
    EXPECT_FALSE(editor.Click(300, 300));  // outside: no polygon starts
    EXPECT_EQ(editor.state, ShapeEditor::kReady);
    editor.Click(10, 20);
    ASSERT_EQ(editor.points.size(), 2u);  // the fixed point and the moving one
    EXPECT_EQ(editor.points[0], editor.points[1]);
    EXPECT_TRUE(editor.Move(110, 20));
    editor.Click(110, 20);
    editor.Click(110, 70);
    EXPECT_EQ(editor.points.size(), 4u);
    EXPECT_TRUE(editor.Click(13, 24));  // within 5 pixels of the first point
    EXPECT_EQ(editor.state, ShapeEditor::kReady);
    EXPECT_EQ(editor.points, (std::vector<ShapePoint>{{0, 0}, {500, 0}, {500, 500}}));
}

TEST(DesktopProgram, TheInactivityLockAsksForTheLoginAndAFailureClosesTheWindow) {
    OpenWindow window;
    Project& project = window.project;
    int logins = 0;
    window.dialogs.login = [&](wxAdministrator& dialog) {
        ++logins;
        EXPECT_EQ(dialog.username, "steer");
        return 1;
    };
    wxTimer tick(window.frame, ID_ACTIVITYTIMER);
    auto fire = [&] {
        wxTimerEvent event(tick);
        window.frame->ProcessWindowEvent(event);
    };
    // Within the time-out nothing happens; with a time-out of 0 any time at all is too long.
    project.TouchActivity();
    fire();
    EXPECT_EQ(logins, 0);
    project.timeout = 0;
    {
        std::lock_guard<std::mutex> lock(project.activitymutex);
        project.lastactivity -= 10;
    }
    fire();
    EXPECT_EQ(logins, 1);
    // Without the password mode the lock never comes.
    project.accessmode = 0;
    {
        std::lock_guard<std::mutex> lock(project.activitymutex);
        project.lastactivity -= 10;
    }
    fire();
    EXPECT_EQ(logins, 1);
    // A refused login closes the window by the close path, which asks "Exit?".
    project.accessmode = 1;
    {
        std::lock_guard<std::mutex> lock(project.activitymutex);
        project.lastactivity -= 10;
    }
    window.dialogs.login = [](wxAdministrator&) { return 0; };
    window.dialogs.answers = {{"Exit?", wxID_NO}};
    fire();
    Pump(std::chrono::milliseconds(100));
    EXPECT_NE(std::find(window.dialogs.asked.begin(), window.dialogs.asked.end(), "Exit?"),
              window.dialogs.asked.end());
    EXPECT_TRUE(window.frame->IsShown());
}

TEST(DesktopProgram, AStoredReadingOpensWithItsPlateAndBrowsesItsPictures) {
    AppFolder app;
    Project project;
    cv::Mat picture(200, 300, CV_8UC3, cv::Scalar(40, 80, 120));
    ASSERT_TRUE(cv::imwrite(app.File("reading.jpg"), picture));
    LPRPackage reading;
    reading.plate = "AB123CD";
    reading.image = app.File("reading.jpg");
    reading.rect[0] = 100;
    reading.rect[1] = 50;
    reading.rect[2] = 80;
    reading.rect[3] = 20;
    ShowFrameDlg dialog(nullptr, project, reading);
    // No site database: the reading's own picture is the only one.
    EXPECT_EQ(dialog.ImageCount(), 1);
    dialog.Browse(1);
    EXPECT_EQ(dialog.ImageIndex(), 0);
    dialog.Browse(-1);
    EXPECT_EQ(dialog.ImageIndex(), 0);
}

// A toolkit assertion fails the test instead of opening a dialog that nobody answers.
void FailOnAssert(const wxString& file, int line, const wxString& function,
                  const wxString& condition, const wxString& message) {
    ADD_FAILURE() << "toolkit assertion " << condition.utf8_str() << " in " << function.utf8_str()
                  << " (" << file.utf8_str() << ":" << line << "): " << message.utf8_str();
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    wxSetAssertHandler(FailOnAssert);
    wxApp::SetInstance(new wxApp);
    if (!wxEntryStart(argc, argv)) {
        std::fprintf(stderr, "the toolkit cannot start: no display?\n");
        return 1;
    }
    wxTheApp->CallOnInit();
    // The tests open and close windows one after another; the last one closing is no exit.
    wxTheApp->SetExitOnFrameDelete(false);
    int result;
    {
        wxEventLoop loop;
        wxEventLoopActivator active(&loop);
        result = RUN_ALL_TESTS();
    }
    wxEntryCleanup();
    return result;
}

namespace {

std::string Named(wxWindow& window) {
    const wxString label = window.GetLabel();
    return wxString(window.GetClassInfo()->GetClassName()).utf8_str().data() + std::string(" \"") +
           (label.empty() ? window.GetName() : label).utf8_str().data() + "\"";
}

// Every control that shows text has the room its text needs, at its size on the screen now:
// buttons, labels, check boxes, choices and fields whole in width and height, and every header
// of a report list wider than its text.
void ExpectNothingClipped(wxWindow& top, const std::string& where) {
    for (wxWindow* child : top.GetChildren()) {
        if (!child->IsShown() || child->IsTopLevel())
            continue;
        const std::string name = where + " > " + Named(*child);
        const wxSize size = child->GetSize();
        const wxSize best = child->GetBestSize();
        wxString text;
        if (dynamic_cast<wxButton*>(child) != nullptr || dynamic_cast<wxStaticText*>(child) ||
            dynamic_cast<wxCheckBox*>(child) != nullptr)
            text = child->GetLabel();
        else if (auto* choice = dynamic_cast<wxChoice*>(child))
            text = choice->GetStringSelection();
        else if (auto* combo = dynamic_cast<wxComboBox*>(child))
            text = combo->GetValue();
        else if (auto* field = dynamic_cast<wxTextCtrl*>(child); field && !field->IsMultiLine())
            text = field->GetValue();
        if (!text.empty() || dynamic_cast<wxTextCtrl*>(child) != nullptr) {
            wxClientDC dc(child);
            dc.SetFont(child->GetFont());
            const wxSize extent = dc.GetMultiLineTextExtent(text.empty() ? wxString("Ag") : text);
            EXPECT_GE(size.x, extent.x) << name << " is " << size.x << " wide";
            EXPECT_GE(size.y, std::min(best.y, extent.y + 4))
                << name << " is " << size.y << " high, needs " << best.y;
        }
        if (auto* list = dynamic_cast<wxListCtrl*>(child); list && list->InReportView()) {
            for (int column = 0; column < list->GetColumnCount(); ++column) {
                wxListItem header;
                header.SetMask(wxLIST_MASK_TEXT);
                list->GetColumn(column, header);
                EXPECT_GE(list->GetColumnWidth(column),
                          list->GetTextExtent(header.GetText()).x + 12)
                    << name << " column " << header.GetText().utf8_str().data();
            }
        }
        ExpectNothingClipped(*child, name);
    }
}

}  // namespace

// Every report list under the window shows its header and at least five rows.
void ExpectFiveRows(wxWindow& top, const std::string& where) {
    for (wxWindow* child : top.GetChildren()) {
        if (!child->IsShown() || child->IsTopLevel())
            continue;
        if (auto* list = dynamic_cast<wxListCtrl*>(child); list && list->InReportView()) {
            const int row = list->GetCharHeight() + 6;
            const int header = list->GetCharHeight() + 12;
            EXPECT_GE(list->GetClientSize().y, header + 5 * row)
                << where << " > " << Named(*list) << " is " << list->GetClientSize().y << " high";
        }
        ExpectFiveRows(*child, where);
    }
}

TEST(DesktopProgram, NothingIsClippedAt1024x768) {
    OpenWindow window;
    window.frame->SetSize(1024, 768);
    // Each management pane beside the views, one at a time, as the View menu opens them.
    for (const char* name :
         {"Video Sources Management", "Boards Management", "Triggers Management", "ROIs Management",
          "Lanes Management", "Post Processor Management", "Video Sources", "ROI LPR Result"}) {
        window.frame->Aui().GetPane(name).Show();
        window.frame->Aui().Update();
        Pump(std::chrono::milliseconds(300));
        ExpectNothingClipped(*window.frame, name);
        ExpectFiveRows(*window.frame, name);
        window.frame->Aui().GetPane(name).Hide();
        window.frame->Aui().Update();
    }
    // The database label stays whole and centred when its text changes.
    LPRList& readings = *window.frame->Readings();
    for (const int state : {1, 0, -1}) {
        readings.SetStatus(state);
        Pump(std::chrono::milliseconds(50));
        ExpectNothingClipped(readings, "LPR Output");
        const wxStaticText* label = ChildrenOf<wxStaticText>(readings).at(1);
        EXPECT_EQ(label->GetSize().x, readings.GetClientSize().x) << state;
        EXPECT_TRUE(label->HasFlag(wxALIGN_CENTRE_HORIZONTAL));
    }
}

TEST(DesktopProgram, TheLoginAndTheTemplatesManagerShowTheirTextsWhole) {
    AppFolder app;
    Project project;
    wxAdministrator login(nullptr, project);
    login.Show();
    Pump(std::chrono::milliseconds(300));
    ExpectNothingClipped(login, "login");
    login.Hide();
    NewPrjDialog dialog(nullptr, project, 0);
    dialog.Show();
    Pump(std::chrono::milliseconds(300));
    ExpectNothingClipped(dialog, "project");
    Screenshot(dialog, "project-dialog.png");
    dialog.Hide();
    project.prjdir = app.File("");
    TemplatesDlg templates(nullptr, project);
    templates.SetSize(1024 * 3 / 4, 768 * 3 / 4);
    templates.Show();
    Pump(std::chrono::milliseconds(300));
    ExpectNothingClipped(templates, "templates");
    templates.Hide();
}

TEST(DesktopProgram, MouseMovementOverTheResultPaneKeepsTheLiveViewComing) {
    OpenWindow window;
    Project& project = window.project;
    const uint32_t longAgo = platform::GetTickCount() - 1'300'000;
    {
        std::lock_guard<std::mutex> lock(project.framemutex);
        project.viewtick = longAgo;
    }
    Click(window.frame->Results(), wxEVT_MOTION, 40, 80);
    std::lock_guard<std::mutex> lock(project.framemutex);
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), project.viewtick), 5000u);
}

TEST(DesktopProgram, TheProjectDialogRefusesANamelessProjectAndAsksBeforeMakingItsFolder) {
    AppFolder app;
    Project project;
    ScriptedDialogs dialogs;
    NewPrjDialog dialog(nullptr, project, 0);
    SetRow(dialog.Grid(), "Project Folder", wxString::FromUTF8(app.File("north")));
    EXPECT_FALSE(dialog.Confirm());
    ASSERT_FALSE(dialogs.asked.empty());
    EXPECT_EQ(dialogs.asked.back(), "Project name not specified");
    EXPECT_FALSE(platform::DirectoryExists(app.File("north")));

    // A folder that is not there yet is made when the operator agrees.
    SetRow(dialog.Grid(), "Project Name", "north");
    dialogs.answers["Destination directory does not exists, create it?"] = wxID_YES;
    EXPECT_TRUE(dialog.Confirm());
    EXPECT_EQ(dialogs.asked.back(), "Destination directory does not exists, create it?");
    EXPECT_TRUE(platform::DirectoryExists(app.File("north")));

    // One that cannot be made is refused.
    SetRow(dialog.Grid(), "Project Folder", "/proc/north");
    EXPECT_FALSE(dialog.Confirm());
    EXPECT_EQ(dialogs.asked.back(), "Cannot create destination directory");
}

TEST(DesktopProgram, SourcesGatesAndTriggersAreRenamedAndRemovedThroughTheirPanes) {
    OpenWindow window;
    Project& project = window.project;
    std::string renameTo;
    std::string nameRow;
    window.dialogs.settings = [&](ParametriScheda& dialog) {
        if (!renameTo.empty())
            dialog.SetRowValue(nameRow, renameTo);
        dialog.Update();
        return 1;
    };

    // A source: renamed through its settings, then removed after the question.
    SetRow(window.frame->Cameras()->Grid(), "Name", "Cam1");
    SetRow(window.frame->Cameras()->Grid(), "Type", "Video Source");
    window.frame->Cameras()->OnAddCamera();
    ASSERT_EQ(project.cameras.GetCount(), 1u);
    nameRow = "Camera name";
    renameTo = "West";
    window.frame->Cameras()->Select(project.cameras[0].id);
    window.frame->Cameras()->OnModifyCameraPars();
    EXPECT_EQ(project.cameras[0].name, "West");
    EXPECT_EQ(ListColumn(window.frame->Cameras()->List(), 1), std::vector<std::string>{"West"});
    window.dialogs.answers["Remove Camera?"] = wxID_NO;
    window.frame->Cameras()->OnRemoveCamera();
    EXPECT_EQ(project.cameras.GetCount(), 1u);
    window.dialogs.answers["Remove Camera?"] = wxID_YES;
    window.frame->Cameras()->OnRemoveCamera();
    EXPECT_EQ(project.cameras.GetCount(), 0u);
    EXPECT_EQ(window.frame->Cameras()->List()->GetItemCount(), 0);

    // A gate: renamed, and the post-processor pane's gate choice follows; then removed.
    renameTo.clear();
    IntegratorDlg& gates = *window.frame->Gates();
    SetRow(gates.Grid(), "Name", "Gate1");
    SetRow(gates.Grid(), "Type", "Voting Gate");
    gates.OnAdd();
    ASSERT_EQ(project.integrators.GetCount(), 1u);
    nameRow = "Lane name";
    renameTo = "Exit";
    gates.Select(project.integrators[0].id);
    gates.OnModify();
    Pump(std::chrono::milliseconds(200));
    EXPECT_EQ(project.integrators[0].name, "Exit");
    EXPECT_EQ(ListColumn(gates.List(), 0), std::vector<std::string>{"Exit"});
    wxPGProperty* reference = window.frame->Processors()->Grid()->GetProperty("Reference Gate");
    ASSERT_NE(reference, nullptr);
    ASSERT_NE(reference->GetChoices().GetCount(), 0u);
    EXPECT_NE(reference->GetChoices().GetLabels().Index("Exit"), wxNOT_FOUND);
    window.dialogs.answers["Remove Lane?"] = wxID_YES;
    gates.Select(project.integrators[0].id);
    gates.OnRemove();
    EXPECT_EQ(project.integrators.GetCount(), 0u);

    // A trigger: renamed and removed; its list follows.
    renameTo.clear();
    TriggerDlg& triggers = *window.frame->Triggers();
    SetRow(triggers.Grid(), "Name", "Loop1");
    SetRow(triggers.Grid(), "Type", "Pin Trigger");
    triggers.OnAdd();
    ASSERT_EQ(project.triggers.GetCount(), 1u);
    nameRow = "Trigger name";
    renameTo = "Loop2";
    triggers.Select(project.triggers[0].id);
    triggers.OnModify();
    EXPECT_EQ(project.triggers[0].name, "Loop2");
    triggers.Select(project.triggers[0].id);
    triggers.OnRemove();
    EXPECT_EQ(project.triggers.GetCount(), 0u);
    EXPECT_EQ(triggers.List()->GetItemCount(), 0);
}

TEST(DesktopProgram, UserAccessSavesOnlyOnOkAndTheLockCountsFromTheStart) {
    OpenWindow window;
    Project& project = window.project;
    // The hour without use counts from the start of the session, not from the machine's boot.
    {
        std::lock_guard<std::mutex> lock(project.activitymutex);
        EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), project.lastactivity), 60000u);
    }
    const std::string password = project.password;
    const std::string stored = ReadFileText(window.app.File("apar.dat"));
    // Typed, then closed with the title bar's box: nothing is taken, nothing is written.
    window.dialogs.other = [](wxDialog& dialog) {
        auto* access = dynamic_cast<GestioneAccesso*>(&dialog);
        EXPECT_NE(access, nullptr);
        if (access != nullptr)
            SetRow(access->Grid(), "Password", "typed-not-confirmed");
        return wxID_CANCEL;
    };
    Menu(*window.frame, ID_LOGINPARAMETERS);
    Pump(std::chrono::milliseconds(50));
    EXPECT_EQ(project.password, password);
    EXPECT_EQ(ReadFileText(window.app.File("apar.dat")), stored);
    // OK takes it.
    window.dialogs.other = [](wxDialog& dialog) {
        auto* access = dynamic_cast<GestioneAccesso*>(&dialog);
        if (access != nullptr)
            SetRow(access->Grid(), "Password", "confirmed");
        return 1;
    };
    Menu(*window.frame, ID_LOGINPARAMETERS);
    Pump(std::chrono::milliseconds(50));
    EXPECT_EQ(project.password, "confirmed");
}

TEST(DesktopProgram, APlugInReloadsItsSourceThroughTheViewerItHolds) {
    // A source plug-in built with the toolkit queues a reload request to the viewer window it
    // was given; the window stops the source, closes, frees, sets up and starts the plug-in
    // again, and samples again. An unknown source id does nothing.
    CameraPluginManager testCameras(FixedFolder(AppDir()));
    OpenWindow window;
    Project& project = window.project;
    Camera camera;
    camera.name = "Cam9";
    camera.id = 9;
    camera.settings = "<PARAMETER><NAME>Width<\\NAME><VALUE>32<\\VALUE><\\PARAMETER>";
    camera.plugin = testCameras.CreateCamera("TestCamera");
    ASSERT_NE(camera.plugin, nullptr);
    camera.plugin->SetParameters(camera.settings);
    project.EditBracket([&] { project.cameras.Add(camera); });
    const std::string library = PluginPath("camera", "TestCamera");
    SetScript(library, "restart=77");
    ClearJournal(library);
    window.frame->Cameras()->Select(9);
    window.frame->Cameras()->OnStartSampling();
    ASSERT_TRUE(Pump(std::chrono::seconds(5),
                     [&] { return JournalOf(library).find("AskRestart") != std::string::npos; }));
    Pump(std::chrono::milliseconds(500));
    EXPECT_EQ(JournalOf(library), "Start\nAskRestart\n");  // nothing has id 77

    ClearJournal(library);
    SetScript(library, "restart=9");
    ASSERT_TRUE(Pump(std::chrono::seconds(5), [&] {
        return JournalOf(library).find("AskRestart\nClose") != std::string::npos;
    })) << JournalOf(library);
    EXPECT_TRUE(Pump(std::chrono::seconds(2), [&] {
        return JournalOf(library) == "AskRestart\nClose\nFreeMemory\nSetParameters:" +
                                         camera.settings + "\nStart\nStart\n";
    })) << JournalOf(library);
    EXPECT_TRUE(project.cameras[0].grabthread);
    SetScript(library, "");
}

TEST(DesktopProgram, AClosedReadingsListComesBackFromTheMenuAndResetLayoutRestoresTheFirstStart) {
    OpenWindow window;
    MyFrame& frame = *window.frame;
    wxAuiManager& aui = frame.Aui();
    const wxString firstStart = aui.SavePerspective();
    // Closed with its own button, as an operator does.
    aui.ClosePane(aui.GetPane("View Frame"));
    aui.Update();
    ASSERT_FALSE(aui.GetPane("View Frame").IsShown());
    Menu(frame, ID_READINGSLIST);
    EXPECT_TRUE(aui.GetPane("View Frame").IsShown());
    // Panes toggled and closed in any order: Reset Layout brings the first start back.
    aui.ClosePane(aui.GetPane("View Frame"));
    for (int id : {ID_LANES, ID_ROISETTINGS, ID_BOARDS, ID_VIDEOVIEW})
        Menu(frame, id);
    Menu(frame, ID_RESETLAYOUT);
    EXPECT_EQ(aui.SavePerspective(), firstStart);
    EXPECT_TRUE(aui.GetPane("View Frame").IsShown());
}
