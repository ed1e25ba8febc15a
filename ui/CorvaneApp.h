#pragma once
#include <wx/app.h>

#include <string>

#include "core/StartMode.h"

class MyFrame;
class Project;

// The desktop program. Only the first argument is looked at (-dbg, -DBG, -nopwd); "--demo"
// further on opens the demo project and starts its source at once, for a first look.
class CorvaneApp : public wxApp {
  public:
    bool OnInit() override;
    int OnExit() override;
    void OnInitCmdLine(wxCmdLineParser&) override {}
    bool OnCmdLineParsed(wxCmdLineParser&) override { return true; }

    MyFrame* frame = nullptr;

  private:
    void OpenDemo();
};

// Opens the demo project of the application folder (made from the reference plug-ins on the
// first start), shows its source and region and starts sampling.
void OpenDemoProject(MyFrame& frame);
