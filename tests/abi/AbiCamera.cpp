// A camera built by the ABI test from the public headers alone: every slot notes its name and
// what it was given.
#include <string>

#include "AbiJournal.h"
#include "corvane/CameraPlugin.h"

class AbiCamera : public CameraPlugin {
  public:
    void Start(NativeWindow viewer) override { Note("Start:" + std::to_string(viewer != nullptr)); }
    void LockFrame() override { Note("LockFrame"); }
    void UnlockFrame() override { Note("UnlockFrame"); }
    void* GetFrame(int* width, int* height, int* format, int* frameId) override {
        Note("GetFrame:" + std::to_string(*frameId));
        *width = 2;
        *height = 1;
        *format = kFrameRGB24;
        return pixels_;
    }
    void FreeMemory() override { Note("FreeMemory"); }
    std::string GetParameters(int reserved) override {
        Note("GetParameters:" + std::to_string(reserved));
        return "<TITLE>abi<\\TITLE>";
    }
    void SetParameters(std::string text) override { Note("SetParameters:" + text); }
    void Reserved1() override { Note("Reserved1"); }
    std::string GetLibName() override {
        Note("GetLibName");
        return "AbiCamera";
    }
    std::string GetGuiName(unsigned int* word) override {
        Note("GetGuiName");
        *word = 77;
        return "ABI camera";
    }
    std::string GetDescription() override {
        Note("GetDescription");
        return "every slot noted";
    }
    void Close() override { Note("Close"); }
    void Reserved2() override { Note("Reserved2"); }
    void Reserved3() override { Note("Reserved3"); }
    int HasDialog() override {
        Note("HasDialog");
        return 0;
    }
    int ShowDialog(NativeWindow, std::string projectText) override {
        Note("ShowDialog:" + projectText);
        return 1;
    }
    ~AbiCamera() override { Note("~AbiCamera"); }

  private:
    unsigned char pixels_[6] = {1, 2, 3, 4, 5, 6};
};

extern "C" CameraPlugin* CreateCameraPlugin() {
    return new AbiCamera;
}
