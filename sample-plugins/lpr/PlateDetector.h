#pragma once
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>
#include <opencv2/dnn.hpp>

// Finds plates with the trained detector network: the grey picture is scaled (see InputScale),
// the network answers a heat map of plate centres (one cell every
// four pixels) with the offset and size of the plate at each cell, and the strongest local
// peaks become plate boxes in the picture's own pixels.
class PlateDetector {
  public:
    struct Plate {
        cv::Rect box;
        float score = 0.0f;  // 0..1
    };

    static constexpr int kInputWidth = 640;
    static constexpr int kMaxPlates = 4;

    explicit PlateDetector(const std::string& modelFile);

    bool Ready() const { return ready_; }
    // Plates whose characters are minCharHeight to maxCharHeight pixels high.
    std::vector<Plate> Find(const cv::Mat& grey, int minCharHeight, int maxCharHeight,
                            float minScore = 0.2f);
    // The scale the picture is given to the network at: plates of the character heights asked
    // for come out between the narrowest and the widest the network was trained on, as far as
    // the range allows, and the picture at most kInputWidth wide.
    static double InputScale(const cv::Size& picture, int minCharHeight, int maxCharHeight);

  private:
    cv::dnn::Net net_;
    bool ready_ = false;
};
