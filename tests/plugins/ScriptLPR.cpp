// A plate reader whose readings come from the test's script:
//   init=1                         Init answers scene mode
//   reading<N>=plate|score|x|y|w|h|charHeight|tags   the N-th reading (N from 0)
//   count=<n>                      GetResultCount answers n whatever readings exist
// Every Process notes the picture's size in the journal.
#include <cstdlib>
#include <sstream>
#include <vector>

#include <opencv2/core/core_c.h>

#include "Journal.h"
#include "corvane/LPRPlugin.h"
#include "corvane/TagText.h"

namespace {

struct Scripted {
    std::string plate;
    unsigned score = 0;
    int rect[4] = {0, 0, 0, 0};
    int charHeight = 0;
    std::string tags;
};

Scripted Parse(const std::string& line) {
    Scripted reading;
    std::vector<std::string> parts;
    std::stringstream stream(line);
    std::string part;
    while (std::getline(stream, part, '|'))
        parts.push_back(part);
    parts.resize(8);
    reading.plate = parts[0];
    reading.score = static_cast<unsigned>(std::strtoul(parts[1].c_str(), nullptr, 10));
    for (int i = 0; i < 4; ++i)
        reading.rect[i] = AtoI(parts[2 + i]);
    reading.charHeight = AtoI(parts[6]);
    reading.tags = parts[7];
    return reading;
}

class ScriptLPR : public LPRPlugin {
  public:
    int Init(int minCar, int maxCar, std::string templatesFile, std::string useTemplate) override {
        journal::Note("Init:" + std::to_string(minCar) + ":" + std::to_string(maxCar) + ":" +
                      templatesFile + ":" + useTemplate);
        return AtoI(journal::ScriptValue("init", "0"));
    }
    std::string GetInfo(unsigned int*) override { return "script reader"; }
    std::string GetLibName() override { return "ScriptLPR"; }
    void Process(IplImage* image) override {
        const cv::Mat picture = cv::cvarrToMat(image);
        journal::Note("Process:" + std::to_string(picture.cols) + "x" +
                      std::to_string(picture.rows) + ":" + std::to_string(picture.channels()));
        readings_.clear();
        for (int n = 0;; ++n) {
            const std::string line = journal::ScriptValue("reading" + std::to_string(n), "");
            if (line.empty())
                break;
            readings_.push_back(Parse(line));
        }
        count_ = AtoI(journal::ScriptValue("count", std::to_string(readings_.size())));
    }
    int GetResultCount() override { return count_; }
    void GetResult(int index, std::string* plate, unsigned int* score, int rect[4], int* charHeight,
                   int*, std::string* tags) override {
        if (index < 0 || index >= static_cast<int>(readings_.size()))
            return;  // a count beyond the readings leaves the preset values
        const Scripted& reading = readings_[static_cast<size_t>(index)];
        *plate = reading.plate;
        *score = reading.score;
        for (int i = 0; i < 4; ++i)
            rect[i] = reading.rect[i];
        *charHeight = reading.charHeight;
        *tags = reading.tags;
    }
    void ClearResults() override {
        readings_.clear();
        count_ = 0;
    }
    void CloseLPR() override { journal::Note("CloseLPR"); }

  private:
    std::vector<Scripted> readings_;
    int count_ = 0;
};

}  // namespace

CORVANE_PLUGIN_EXPORT LPRPlugin* CreateLPRPlugin() {
    return new ScriptLPR();
}
