#pragma once
#include <memory>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace tesseract {
class TessBaseAPI;
}

// Reads the characters of one plate with Tesseract: one text line, capitals and digits only,
// no dictionary. Each character comes with its confidence, 0 to 100.
class PlateOcr {
  public:
    struct Text {
        std::string characters;
        std::vector<int> confidence;  // one a character
    };

    PlateOcr();
    ~PlateOcr();
    PlateOcr(const PlateOcr&) = delete;
    PlateOcr& operator=(const PlateOcr&) = delete;

    bool Ready() const { return ready_; }
    // plate: grey cut-out of the plate; charHeight: its characters' height in pixels.
    Text Read(const cv::Mat& plate, int charHeight);
    // One character alone, from the given set only; confidence in *confidence.
    char ReadCharacter(const cv::Mat& glyph, int charHeight, const std::string& allowed,
                       int* confidence);

  private:
    static cv::Mat Prepared(const cv::Mat& grey, int charHeight);

    std::unique_ptr<tesseract::TessBaseAPI> api_;
    bool ready_ = false;
};
