#pragma once
#include <memory>
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
    // Run-time workers, owned by the record and null while it does not sample.
    std::shared_ptr<GrabThread> grabthread;
    std::shared_ptr<WSDiscovery> wsdiscovery;
    std::shared_ptr<SoapThread> soapthread;
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
