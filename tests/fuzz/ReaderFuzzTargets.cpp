#include "ReaderFuzzTargets.h"

#include <fstream>
#include <string>

#include "access/AccessStore.h"
#include "core/LayoutFile.h"
#include "core/Project.h"
#include "core/ProjectCheck.h"
#include "core/ProjectFile.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "plugins/Parametro.h"
#include "remote/ProjectBlock.h"
#include "templates/TemplateSet.h"

namespace {

void WriteInput(const char* name, const uint8_t* data, size_t size) {
    std::ofstream out(name, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

}  // namespace

void FuzzOneReader(const uint8_t* data, size_t size) {
    if (size == 0)
        return;
    const uint8_t selector = data[0] % 14;
    ++data;
    --size;
    const auto previous = platform::SetLogSink(
        [](platform::LogLevel, const platform::LogContext&, const std::string&) {});
    {
        // Component loaders read from the working directory; no plug-in directory is present,
        // so plug-in-backed records are parsed and then dropped.
        Project project;
        const std::string text(reinterpret_cast<const char*>(data), size);
        switch (selector) {
            case 0:
                WriteInput("lanes.dat", data, size);
                project.LoadLane();
                project.SaveLane();
                break;
            case 1:
                WriteInput("cameras.dat", data, size);
                project.LoadCamera();
                break;
            case 2:
                WriteInput("boards.dat", data, size);
                project.LoadBoard();
                break;
            case 3:
                WriteInput("triggers.dat", data, size);
                project.LoadTrigger();
                break;
            case 4:
                WriteInput("integrators.dat", data, size);
                project.LoadIntegrator();
                break;
            case 5:
                WriteInput("processors.dat", data, size);
                project.LoadProcessor();
                break;
            case 6:
                WriteInput("apar.dat", data, size);
                LoadAccess(project, "apar.dat");
                break;
            case 7:
                WriteInput("layout.ini", data, size);
                LoadLayout("layout.ini");
                break;
            case 8:
                ParseProjectSettings(text, project);
                break;
            case 9:
                ReadParameterDescription(text);
                break;
            case 10:
                project.SetBoardPins(text);
                break;
            case 11: {
                // An upload as the runtime takes it: the block parsed into a staging folder,
                // then the whole check with every reader behind it.
                platform::MakeDirectory("upload");
                if (ProjectBlock::WriteSections(text, "upload", "runtime.tlr"))
                    CheckProject("upload", "runtime.tlr", platform::GetWorkingDirectory());
                break;
            }
            case 12: {
                TemplateSet plates;
                plates.ParseTemplates(text);
                break;
            }
            case 13: {
                TemplateSet plates;
                plates.ParseCountryCodes(text);
                break;
            }
        }
    }
    platform::SetLogSink(previous);
}
