// A plate reader built by the ABI test from the public headers and OpenCV's C image type.
#include <opencv2/core/types_c.h>

#include <string>

#include "AbiJournal.h"
#include "corvane/LPRPlugin.h"

class AbiLPR : public LPRPlugin {
  public:
    int Init(int minCar, int maxCar, std::string templatesFile, std::string useTemplate) override {
        Note("Init:" + std::to_string(minCar) + ":" + std::to_string(maxCar) + ":" + templatesFile +
             ":" + useTemplate);
        return 0;
    }
    std::string GetInfo(unsigned int* word) override {
        Note("GetInfo");
        *word = 5;
        return "ABI reader";
    }
    void Reserved1() override { Note("Reserved1"); }
    std::string GetLibName() override {
        Note("GetLibName");
        return "AbiLPR";
    }
    void Process(IplImage* image) override {
        Note("Process:" + std::to_string(image->width) + "x" + std::to_string(image->height) + "x" +
             std::to_string(image->nChannels));
    }
    int GetResultCount() override {
        Note("GetResultCount");
        return 1;
    }
    void GetResult(int index, std::string* plate, unsigned int* score, int rect[4], int* charHeight,
                   int* aux, std::string* tags) override {
        Note("GetResult:" + std::to_string(index));
        *plate = "AB123CD";
        *score = 700;
        rect[0] = 1;
        rect[1] = 2;
        rect[2] = 3;
        rect[3] = 4;
        *charHeight = 20;
        *aux = -1;
        *tags = "<COUNTRY>ITA<\\COUNTRY>";
    }
    void ClearResults() override { Note("ClearResults"); }
    void Reserved2() override { Note("Reserved2"); }
    void Reserved3() override { Note("Reserved3"); }
    void CloseLPR() override { Note("CloseLPR"); }
    ~AbiLPR() override { Note("~AbiLPR"); }
};

extern "C" LPRPlugin* CreateLPRPlugin() {
    return new AbiLPR;
}
