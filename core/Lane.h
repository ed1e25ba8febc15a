#pragma once
#include <memory>
#include <string>
#include <vector>

#include "OwningArray.h"

class LPRThread;
class WSDiscovery;
class SoapThread;

struct ShapePoint {
    int x = 0;
    int y = 0;
    bool operator==(const ShapePoint& other) const { return x == other.x && y == other.y; }
};

// A recognition region (the operator's ROI) of one camera, in thousandths of the frame.
struct Lane {
    std::string place;
    std::string name;
    int id = 0;
    int roi[4] = {0, 0, 1000, 1000};  // x1, y1, x2, y2
    std::vector<ShapePoint> shape;
    int MinCar = 18;
    int MaxCar = 50;
    int DROIX = 10;
    int DROIY = 20;
    int TriggerStatus = 0;  // run time only; written and read under lanesmutex
    // Region images that may wait for the reader. Each holds a whole region picture and adds
    // its wait to the latency, so a typo must not reach the thread: at most kMaxBufferLen.
    static constexpr int kMaxBufferLen = 50;
    int BufferLen = 5;
    int port = -1;
    int AutoDiscovery = 0;
    int FPS = 10;
    int FrameDim = 1;
    int bitrate = 1000000;
    int CreateLogs = 0;
    std::string lprlib = "PlateCore";
    std::string camname;
    std::string trigname = "No trigger";
    std::string intname = "No Lane";
    int UseTemplate = 0;
    // Run-time workers, owned by the record and null while it is stopped.
    std::shared_ptr<LPRThread> lprthread;
    std::shared_ptr<WSDiscovery> wsdiscovery;
    std::shared_ptr<SoapThread> soapthread;

    // The four corners of roi: (x1,y1), (x2,y1), (x2,y2), (x1,y2).
    std::vector<ShapePoint> RoiCorners() const {
        return {{roi[0], roi[1]}, {roi[2], roi[1]}, {roi[2], roi[3]}, {roi[0], roi[3]}};
    }
};

class ArrayLane : public OwningArray<Lane> {
  public:
    ArrayLane() : OwningArray("ArrayLane") {}
};
