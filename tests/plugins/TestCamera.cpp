// A camera that produces a numbered grey gradient frame on each GetFrame call.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "Journal.h"
#include "corvane/CameraPlugin.h"
#include "corvane/TagText.h"
#include "corvane/ViewerRequestsWx.h"

namespace {

class TestCamera : public CameraPlugin {
  public:
    void Start(NativeWindow viewer) override {
        journal::Note("Start");
        viewer_ = viewer;
        started_ = true;
    }
    void LockFrame() override {}
    void UnlockFrame() override {}
    void* GetFrame(int* width, int* height, int* format, int* frameId) override {
        if (!started_)
            return nullptr;
        // "restart=ID": asks once for each ID, through the viewer, that the source ID be
        // reloaded.
        const int restart = std::atoi(journal::ScriptValue("restart", "0").c_str());
        if (restart > 0 && restart != askedRestart_) {
            askedRestart_ = restart;
            journal::Note("AskRestart");
            PostViewerRequest(viewer_, kViewerRestartSource, restart);
        }
        // The script can make the frames odd: "shape=width,height,format" and "null=1".
        int w = width_;
        int h = height_;
        int f = kFrameRGB24;
        const std::string shape = journal::ScriptValue("shape", "");
        if (!shape.empty())
            std::sscanf(shape.c_str(), "%d,%d,%d", &w, &h, &f);
        frame_.assign(static_cast<size_t>(std::max(w, 0)) * static_cast<size_t>(std::max(h, 0)) * 4,
                      static_cast<uint8_t>(counter_));
        *width = w;
        *height = h;
        *format = f;
        // "every=N": a new frame on every Nth call only; between them the id is left alone, as
        // the contract allows a camera with nothing new to do.
        const int every = std::atoi(journal::ScriptValue("every", "1").c_str());
        if (every > 1 && calls_++ % every != 0)
            return frame_.data();
        if (every > 1)
            journal::Note("Issued");
        *frameId = counter_++;
        return journal::ScriptValue("null", "0") == "1" ? nullptr : frame_.data();
    }
    void FreeMemory() override {
        journal::Note("FreeMemory");
        frame_.clear();
    }
    std::string GetParameters(int) override {
        return "<TITLE>Test camera<\\TITLE>\n<PARAMETER>\n<NAME>Width<\\NAME><TYPE>INT<\\TYPE>"
               "<DEFAULT>64<\\DEFAULT>\n<\\PARAMETER>\n<PARAMETER>\n<NAME>Height<\\NAME>"
               "<TYPE>INT<\\TYPE><DEFAULT>48<\\DEFAULT>\n<\\PARAMETER>\n";
    }
    void SetParameters(std::string text) override {
        journal::Note("SetParameters:" + text);
        if (GetTagInt(text, "VALUE") > 0)
            width_ = GetTagInt(text, "VALUE");
    }
    std::string GetLibName() override { return "TestCamera"; }
    std::string GetGuiName(unsigned int* word) override {
        if (word != nullptr)
            *word = 7;
        return "Test Camera";
    }
    std::string GetDescription() override { return "synthetic frames for tests"; }
    void Close() override {
        journal::Note("Close");
        started_ = false;
    }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    bool started_ = false;
    int askedRestart_ = 0;
    NativeWindow viewer_ = nullptr;
    int width_ = 64;
    int height_ = 48;
    int counter_ = 1;
    int calls_ = 0;
    std::vector<uint8_t> frame_;
};

}  // namespace

CORVANE_PLUGIN_EXPORT CameraPlugin* CreateCameraPlugin() {
    return new TestCamera();
}
