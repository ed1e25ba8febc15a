// The program's entry: the desktop window, or the program without a window when the command
// line asks for it (or no display is there to show one).
#include <wx/app.h>

#include <cstdlib>

#include "CorvaneApp.h"
#include "core/HeadlessProgram.h"
#include "core/Project.h"

wxIMPLEMENT_APP_NO_MAIN(CorvaneApp);

int main(int argc, char** argv) {
    const char* display = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    const bool hasDisplay =
        (display != nullptr && *display != '\0') || (wayland != nullptr && *wayland != '\0');
    if (WantsHeadless(argc, argv) || !hasDisplay) {
        static Project project;
        return RunHeadless(project, argc, argv);
    }
    return wxEntry(argc, argv);
}
