#pragma once
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>
#include <opencv2/dnn.hpp>

// Finds plates with the trained detector network: the grey picture is scaled (see InputScale),
// the network answers a heat map of plate centres (one cell every
// four pixels) with the offset and size of the plate at each cell, and the strongest local
// peaks become plate boxes in the picture's own pixels. When the region's character heights
// span more than one scale holds, a second, coarser pass adds the widest plates.
class PlateDetector {
  public:
    struct Plate {
        cv::Rect box;
        float score = 0.0f;  // 0..1
    };

    static constexpr int kInputWidth = 640;
    static constexpr size_t kMaxPlates = 4;
    static constexpr size_t kMaxWidePlates = 2;  // added by the coarse pass

    explicit PlateDetector(const std::string& modelFile);

    bool Ready() const { return ready_; }
    // Plates whose characters are minCharHeight to maxCharHeight pixels high.
    std::vector<Plate> Find(const cv::Mat& grey, int minCharHeight, int maxCharHeight,
                            float minScore = 0.2f);
    // The scale the picture is given to the network at: plates of the character heights asked
    // for come out between the narrowest and the widest the network was trained on, as far as
    // the range allows, and the picture at most kInputWidth wide.
    static double InputScale(const cv::Size& picture, int minCharHeight, int maxCharHeight);
    // The scale of a second, coarser pass for plates wider than the network learnt at
    // InputScale, or 0 when the range asked for needs none.
    static double CoarseScale(const cv::Size& picture, int minCharHeight, int maxCharHeight);

  private:
    // Plates found in small, a picture of the given size scaled down, in the picture's pixels.
    std::vector<Plate> FindAt(cv::dnn::Net& net, const cv::Mat& small, const cv::Size& picture,
                              float minScore);
    static std::vector<Plate> Strongest(std::vector<Plate> plates, size_t count);

    // A network for each pass: OpenCV sets a network up again whenever its input changes
    // size, which costs more than a pass.
    cv::dnn::Net fine_;
    cv::dnn::Net coarse_;
    bool ready_ = false;
};
