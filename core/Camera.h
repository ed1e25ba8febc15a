#pragma once
#include <string>

#include "OwningArray.h"

class CameraPlugin;
class GrabThread;
class WSDiscovery;
class SoapThread;

// A video source of any kind, served by a camera plug-in.
struct Camera {
    std::string name;
    std::string settings;
    int id = 1;
    int sampling = 0;  // never stored
    GrabThread* grabthread = nullptr;
    WSDiscovery* wsdiscovery = nullptr;
    SoapThread* soapthread = nullptr;
    CameraPlugin* plugin = nullptr;
    int port = -1;
    int FrameDim = 0;
    int AutoDiscovery = 0;
    int FPS = 10;
    int bitrate = 50000;
};

class ArrayCamera : public OwningArray<Camera> {
  public:
    ArrayCamera() : OwningArray("ArrayCamera") {}
};
