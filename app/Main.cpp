// The program's entry: the desktop window, or the program without a window when the command
// line asks for it. A missing display never silently turns the workstation into a windowless
// one: started over a remote shell it would stop the site's runtime service behind the
// operator's back.
#include <wx/app.h>

#include <cstdio>
#include <cstdlib>

#include "HeadlessProgram.h"
#include "ProgramOptions.h"
#include "core/Project.h"
#include "database/ODBCConnection.h"
#include "ui/CorvaneApp.h"

wxIMPLEMENT_APP_NO_MAIN(CorvaneApp);

namespace {

bool HasDisplay() {
    const char* display = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    return (display != nullptr && *display != '\0') || (wayland != nullptr && *wayland != '\0');
}

}  // namespace

int main(int argc, char** argv) {
    ODBCConnection::PinDriverProtocol();  // the environment is changed before any thread runs
    const ProgramOptions options = ParseProgramOptions(argc, argv);
    for (const std::string& error : options.errors)
        std::fprintf(stderr, "corvane: %s\n", error.c_str());
    if (!options.errors.empty())
        return 2;
    if (options.Windowless()) {
        static Project project;
        return RunHeadless(project, options);
    }
    if (!HasDisplay()) {
        std::fprintf(stderr,
                     "corvane: no display to open the window on. Start it on the desktop, or "
                     "ask for a program without a window: --headless, --runtime, --download IP "
                     "or --upload IP.\n");
        return 2;
    }
    return wxEntry(argc, argv);
}
