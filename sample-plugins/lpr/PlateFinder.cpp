#include "PlateFinder.h"

#include <algorithm>
#include <cstdlib>

#include <opencv2/imgproc.hpp>

namespace {

struct Group {
    std::vector<cv::Rect> chars;
    int Height() const { return chars.back().height; }
    int CentreY() const { return chars.back().y + chars.back().height / 2; }
    int Right() const { return chars.back().x + chars.back().width; }

    bool Takes(const cv::Rect& blob) const {
        const int h = Height();
        const int centre = blob.y + blob.height / 2;
        return std::abs(centre - CentreY()) * 10 < h * 3 &&
               std::abs(blob.height - h) * 10 < h * 3 && blob.x - Right() < h * 12 / 10 &&
               blob.x >= Right() - h / 4;
    }
};

bool CharacterLike(const cv::Rect& blob, int area, int minHeight, int maxHeight) {
    if (blob.height < minHeight || blob.height > maxHeight)
        return false;
    // From a narrow 1 to a wide W or M.
    if (blob.width * 10 < blob.height || blob.width * 2 > blob.height * 3)
        return false;
    return area * 100 >= blob.width * blob.height * 15;
}

int MedianHeight(std::vector<cv::Rect> chars) {
    std::nth_element(chars.begin(), chars.begin() + chars.size() / 2, chars.end(),
                     [](const cv::Rect& a, const cv::Rect& b) { return a.height < b.height; });
    return chars[chars.size() / 2].height;
}

PlateCandidate CandidateOf(const Group& group, const cv::Size& image) {
    PlateCandidate candidate;
    candidate.chars = group.chars;
    candidate.charHeight = MedianHeight(group.chars);
    cv::Rect box = group.chars.front();
    for (const auto& blob : group.chars)
        box |= blob;
    const int mx = candidate.charHeight * 4 / 10;
    const int my = candidate.charHeight / 4;
    box.x -= mx;
    box.y -= my;
    box.width += 2 * mx;
    box.height += 2 * my;
    candidate.box = box & cv::Rect(cv::Point(0, 0), image);
    return candidate;
}

}  // namespace

std::vector<PlateCandidate> PlateFinder::Find(const cv::Mat& grey, int minHeight, int maxHeight) {
    std::vector<PlateCandidate> plates;
    if (grey.empty() || grey.type() != CV_8UC1 || grey.cols < 8 || grey.rows < 8)
        return plates;
    const int block = std::max(3, (maxHeight | 1));
    cv::Mat binary;
    cv::adaptiveThreshold(grey, binary, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY_INV,
                          block, 12);
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centroids;
    const int count = cv::connectedComponentsWithStats(binary, labels, stats, centroids, 8);
    std::vector<cv::Rect> blobs;
    for (int i = 1; i < count; ++i) {
        const cv::Rect blob(stats.at<int>(i, cv::CC_STAT_LEFT), stats.at<int>(i, cv::CC_STAT_TOP),
                            stats.at<int>(i, cv::CC_STAT_WIDTH),
                            stats.at<int>(i, cv::CC_STAT_HEIGHT));
        if (CharacterLike(blob, stats.at<int>(i, cv::CC_STAT_AREA), minHeight, maxHeight))
            blobs.push_back(blob);
    }
    std::sort(blobs.begin(), blobs.end(),
              [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    std::vector<Group> groups;
    for (const auto& blob : blobs) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const Group& g) { return g.Takes(blob); });
        if (group != groups.end())
            group->chars.push_back(blob);
        else
            groups.push_back(Group{{blob}});
    }
    for (const auto& group : groups)
        if (static_cast<int>(group.chars.size()) >= kMinCharacters)
            plates.push_back(CandidateOf(group, grey.size()));
    return plates;
}
