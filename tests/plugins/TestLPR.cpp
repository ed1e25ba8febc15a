// A plate reader that reads nothing; it proves the contract can be loaded and called.
#include "Journal.h"
#include "corvane/LPRPlugin.h"

namespace {

class TestLPR : public LPRPlugin {
  public:
    int Init(int minCar, int maxCar, std::string templatesFile, std::string useTemplate) override {
        journal::Note("Init:" + std::to_string(minCar) + ":" + std::to_string(maxCar) + ":" +
                      templatesFile + ":" + useTemplate);
        return 0;
    }
    std::string GetInfo(unsigned int* word) override {
        if (word != nullptr)
            *word = 1;
        return "test reader";
    }
    std::string GetLibName() override { return "TestLPR"; }
    void Process(IplImage*) override {}
    int GetResultCount() override { return 0; }
    void GetResult(int, std::string*, unsigned int*, int*, int*, int*, std::string*) override {}
    void ClearResults() override {}
    void CloseLPR() override { journal::Note("CloseLPR"); }
};

}  // namespace

CORVANE_PLUGIN_EXPORT LPRPlugin* CreateLPRPlugin() {
    return new TestLPR();
}
