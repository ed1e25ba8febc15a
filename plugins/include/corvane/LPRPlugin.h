#pragma once
#include "PluginTypes.h"

// A plate reader. One instance runs on one region's thread; Init answers 1 for scene mode.
class LPRPlugin {
  public:
    virtual int Init(int minCar, int maxCar, std::string templatesFile,
                     std::string useTemplate) = 0;
    virtual std::string GetInfo(unsigned int* word) = 0;
    virtual void Reserved1() {}
    virtual std::string GetLibName() = 0;
    virtual void Process(IplImage* image) = 0;
    virtual int GetResultCount() = 0;
    virtual void GetResult(int index, std::string* plate, unsigned int* score, int rect[4],
                           int* charHeight, int* aux, std::string* tags) = 0;
    virtual void ClearResults() = 0;
    virtual void Reserved2() {}
    virtual void Reserved3() {}
    virtual void CloseLPR() = 0;
    virtual ~LPRPlugin() = default;
};

using CreateLPRPluginFn = LPRPlugin* (*)();
