#pragma once
#include "PluginTypes.h"

// Frame formats written to *format by GetFrame.
enum CameraFrameFormat {
    kFrameGrey8 = 1,   // one byte a pixel
    kFrameYUV422 = 2,  // packed U, Y0, V, Y1
    kFrameRGB24 = 3,   // red, green, blue
    kFrameRGBX32 = 4,  // red, green, blue, unused
};

// A video source. The order of the virtual operations is the binary contract: reserved entries
// keep later operations in place and are never called. The destructor stands last, behind the
// contract's entries.
class CameraPlugin {
  public:
    virtual void Start(NativeWindow viewer) = 0;
    virtual void LockFrame() = 0;
    virtual void UnlockFrame() = 0;
    virtual void* GetFrame(int* width, int* height, int* format, int* frameId) = 0;
    virtual void FreeMemory() = 0;
    virtual std::string GetParameters(int reserved) = 0;
    virtual void SetParameters(std::string text) = 0;
    virtual void Reserved1() {}
    virtual std::string GetLibName() = 0;
    virtual std::string GetGuiName(unsigned int* word) = 0;
    virtual std::string GetDescription() = 0;
    virtual void Close() = 0;
    virtual void Reserved2() {}
    virtual void Reserved3() {}
    virtual int HasDialog() = 0;
    virtual int ShowDialog(NativeWindow parent, std::string projectText) = 0;
    virtual ~CameraPlugin() = default;
};

using CreateCameraPluginFn = CameraPlugin* (*)();
