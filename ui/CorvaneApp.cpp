#include "CorvaneApp.h"

#include <wx/log.h>

#include <cstdio>
#include <cstring>

#include "CameraDlg.h"
#include "LaneLPRResult.h"
#include "MyFrame.h"
#include "ViewFrame.h"
#include "core/DemoProject.h"
#include "core/Project.h"
#include "pipeline/LaneControl.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

namespace {

Project g_project;

// Operator warnings go to the toolkit's log, whose window target shows them.
void InstallLogSink() {
    platform::SetLogSink([](platform::LogLevel level, const platform::LogContext& context,
                            const std::string& message) {
        const wxString text =
            wxString::Format("%s (%s, %s:%d)", wxString::FromUTF8(message), context.function,
                             platform::BaseName(context.file), context.line);
        std::fprintf(stderr, "%s\n", static_cast<const char*>(text.utf8_str()));
        if (level == platform::LogLevel::Message)
            return;
        if (level == platform::LogLevel::Error)
            wxLogError("%s", text);
        else
            wxLogWarning("%s", text);
    });
}

}  // namespace

bool CorvaneApp::OnInit() {
    SetVendorName("Halvern");
    SetAppName("CorvaneClient");
    const StartMode mode = ParseStartMode(argc, argv);
    InstallLogSink();
    frame = new MyFrame(g_project, mode);
    frame->Show();
    for (int i = 1; i < argc; ++i)
        if (argv[i] == "--demo")
            CallAfter([this] { OpenDemo(); });
    return true;
}

int CorvaneApp::OnExit() {
    std::printf("EXIT APP\n");
    wxApp::OnExit();
    return 0;
}

void CorvaneApp::OpenDemo() {
    if (frame != nullptr && frame->mustexit == 0)
        OpenDemoProject(*frame);
}

void OpenDemoProject(MyFrame& frame) {
    Project& project = frame.GetProject();
    if (project.prjopen != 0)
        return;
    ProjectSession& session = frame.Session();
    const std::string projects = project.appdir + "/projects";
    if (platform::FileExists(projects + "/demo/demo.tlr")) {
        session.LoadProject(projects + "/demo/demo.tlr");
    } else {
        platform::MakeDirectory(projects);
        if (!session.NewProject(projects, "demo"))
            return;
        PopulateDemoProject(project);  // an edit of its own
        session.SaveAll();
        frame.RefreshLists();
    }
    if (project.cameras.IsEmpty())
        return;
    Camera& camera = project.cameras[0];
    frame.Aui().GetPane("Video Sources Management").Show();
    frame.Aui().GetPane("ROI LPR Result").Show();
    frame.Aui().Update();
    frame.Cameras()->Select(camera.id);
    frame.Cameras()->OnStartSampling();
    frame.View()->SelectSource(wxString::FromUTF8(camera.name));
    if (!project.lanes.IsEmpty())
        frame.Results()->SelectRegion(wxString::FromUTF8(project.lanes[0].name));
}
