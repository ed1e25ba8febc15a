// A camera that produces a numbered grey gradient frame on each GetFrame call.
#include <vector>

#include "Journal.h"
#include "corvane/CameraPlugin.h"
#include "corvane/TagText.h"

namespace {

class TestCamera : public CameraPlugin {
  public:
    void Start(NativeWindow) override {
        journal::Note("Start");
        started_ = true;
    }
    void LockFrame() override {}
    void UnlockFrame() override {}
    void* GetFrame(int* width, int* height, int* format, int* frameId) override {
        if (!started_)
            return nullptr;
        frame_.assign(static_cast<size_t>(width_ * height_ * 3), static_cast<uint8_t>(counter_));
        *width = width_;
        *height = height_;
        *format = kFrameRGB24;
        *frameId = counter_++;
        return frame_.data();
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
    int width_ = 64;
    int height_ = 48;
    int counter_ = 1;
    std::vector<uint8_t> frame_;
};

}  // namespace

CORVANE_PLUGIN_EXPORT CameraPlugin* CreateCameraPlugin() {
    return new TestCamera();
}
