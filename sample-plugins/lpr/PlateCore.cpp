// PlateCore: the reference plate reader. Finds plates as rows of character blobs, reads them
// with Tesseract, and applies the project's plate templates when the region asks for them.
#include <algorithm>
#include <memory>
#include <numeric>
#include <vector>

#include <opencv2/core/core_c.h>
#include <opencv2/imgproc.hpp>

#include "PlateFinder.h"
#include "PlateOcr.h"
#include "TemplateMatcher.h"
#include "corvane/LPRPlugin.h"

namespace {

struct Reading {
    std::string plate;
    unsigned score = 0;
    cv::Rect box;
    int charHeight = 0;
    int characters = 0;
    std::string tags;
};

class PlateCore : public LPRPlugin {
  public:
    static constexpr int kMinPlateCharacters = 4;
    static constexpr int kMaxPlateCharacters = 10;

    int Init(int minCar, int maxCar, std::string templatesFile, std::string useTemplate) override {
        minHeight_ = std::max(minCar, 6);
        maxHeight_ = std::max(maxCar, minHeight_ + 1);
        ocr_ = std::make_unique<PlateOcr>();
        if (useTemplate == "1") {
            TemplateSet set;
            set.LoadTemplates(templatesFile);
            matcher_ = std::make_unique<TemplateMatcher>(std::move(set));
        }
        return 0;  // plate mode: every reading is reported to the gate
    }
    std::string GetInfo(unsigned int* word) override {
        if (word != nullptr)
            *word = 0x0100;
        return "PlateCore 1.0: OpenCV plate finder, Tesseract reader, plate templates";
    }
    std::string GetLibName() override { return "PlateCore"; }

    void Process(IplImage* image) override {
        readings_.clear();
        if (image == nullptr || ocr_ == nullptr || !ocr_->Ready())
            return;
        const cv::Mat input = cv::cvarrToMat(image);
        cv::Mat grey = input;
        if (input.channels() == 3)
            cv::cvtColor(input, grey, cv::COLOR_BGR2GRAY);
        else if (input.channels() != 1 || input.depth() != CV_8U)
            return;
        for (const auto& candidate : PlateFinder::Find(grey, minHeight_, maxHeight_))
            ReadCandidate(grey, candidate);
    }

    int GetResultCount() override { return static_cast<int>(readings_.size()); }

    void GetResult(int index, std::string* plate, unsigned int* score, int rect[4], int* charHeight,
                   int* aux, std::string* tags) override {
        if (index < 0 || index >= static_cast<int>(readings_.size()))
            return;
        const Reading& reading = readings_[static_cast<size_t>(index)];
        if (plate != nullptr)
            *plate = reading.plate;
        if (score != nullptr)
            *score = reading.score;
        if (rect != nullptr) {
            rect[0] = reading.box.x;
            rect[1] = reading.box.y;
            rect[2] = reading.box.width;
            rect[3] = reading.box.height;
        }
        if (charHeight != nullptr)
            *charHeight = reading.charHeight;
        if (aux != nullptr)
            *aux = reading.characters;
        if (tags != nullptr)
            *tags = reading.tags;
    }
    void ClearResults() override { readings_.clear(); }
    void CloseLPR() override {
        readings_.clear();
        ocr_.reset();
    }

  private:
    // Where the best template wants a digit and a letter was read (or the other way round),
    // the character alone is read again from the characters its slot allows.
    void GuidedReread(const cv::Mat& grey, const PlateCandidate& candidate,
                      PlateOcr::Text& text) const {
        if (matcher_ == nullptr || !matcher_->Active() ||
            text.characters.size() != candidate.chars.size())
            return;
        const std::string slots = matcher_->BestSlots(text.characters);
        for (size_t i = 0; i < slots.size(); ++i) {
            if (TemplateMatcher::SlotAccepts(text.characters[i], slots[i]))
                continue;
            int confidence = 0;
            const char c =
                ocr_->ReadCharacter(grey(GlyphBox(grey, candidate, i)), candidate.charHeight,
                                    TemplateMatcher::SlotCharacters(slots[i]), &confidence);
            if (c != '\0') {
                text.characters[i] = c;
                text.confidence[i] = confidence;
            }
        }
    }

    static cv::Rect GlyphBox(const cv::Mat& grey, const PlateCandidate& candidate, size_t i) {
        const int margin = std::max(2, candidate.charHeight / 6);
        const cv::Rect& blob = candidate.chars[i];
        const cv::Rect around(blob.x - margin, blob.y - margin, blob.width + 2 * margin,
                              blob.height + 2 * margin);
        return around & cv::Rect(0, 0, grey.cols, grey.rows);
    }

    // When the line reading and the blobs disagree on the number of characters, the blobs are
    // read one by one: a plate has as many characters as the finder saw.
    void ReadBlobByBlob(const cv::Mat& grey, const PlateCandidate& candidate,
                        PlateOcr::Text& text) const {
        if (text.characters.size() == candidate.chars.size())
            return;
        PlateOcr::Text blobs;
        for (size_t i = 0; i < candidate.chars.size(); ++i) {
            int confidence = 0;
            const char c =
                ocr_->ReadCharacter(grey(GlyphBox(grey, candidate, i)), candidate.charHeight,
                                    TemplateMatcher::SlotCharacters('A'), &confidence);
            if (c == '\0')
                return;  // a blob that is no character: keep the line reading
            blobs.characters += c;
            blobs.confidence.push_back(confidence);
        }
        text = blobs;
    }

    void ReadCandidate(const cv::Mat& grey, const PlateCandidate& candidate) {
        PlateOcr::Text text = ocr_->Read(grey(candidate.box), candidate.charHeight);
        ReadBlobByBlob(grey, candidate, text);
        GuidedReread(grey, candidate, text);
        const int count = static_cast<int>(text.characters.size());
        if (count < kMinPlateCharacters || count > kMaxPlateCharacters)
            return;
        Reading reading;
        reading.box = candidate.box;
        reading.charHeight = candidate.charHeight;
        reading.characters = count;
        reading.score = static_cast<unsigned>(
            std::accumulate(text.confidence.begin(), text.confidence.end(), 0));
        const int formFactor = candidate.box.width * 100 / std::max(candidate.box.height, 1);
        reading.plate = text.characters;
        if (matcher_ != nullptr && matcher_->Active()) {
            const TemplateMatcher::Outcome outcome = matcher_->Apply(text.characters, formFactor);
            if (outcome.discarded)
                return;
            reading.plate = outcome.plate;
            reading.tags = outcome.tags;
        } else {
            reading.tags = TemplateMatcher::PlainTags(text.characters, formFactor);
        }
        readings_.push_back(std::move(reading));
    }

    int minHeight_ = 18;
    int maxHeight_ = 50;
    std::unique_ptr<PlateOcr> ocr_;
    std::unique_ptr<TemplateMatcher> matcher_;
    std::vector<Reading> readings_;
};

}  // namespace

CORVANE_PLUGIN_EXPORT LPRPlugin* CreateLPRPlugin() {
    return new PlateCore();
}
