// PlateCore: the reference plate reader. A trained detector network finds plates in the
// region's picture, a trained sequence network reads each one (CTC), and the project's plate
// templates are applied when the region asks for them. Both networks are ONNX files in the
// models folder beside this library, run with OpenCV's dnn module; tools/plate-reader trains
// them.
#include <dlfcn.h>
#include <limits.h>
#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <opencv2/core/core_c.h>
#include <opencv2/imgproc.hpp>

#include "PlateBand.h"
#include "PlateDetector.h"
#include "PlateLeveller.h"
#include "PlateReader.h"
#include "PlateReading.h"
#include "TemplateMatcher.h"
#include "corvane/LPRPlugin.h"

namespace {

// The folder of this library, where its models folder is. Taken when the library is loaded:
// the name the loader keeps may be relative to the working folder of that moment.
std::string LibraryFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&LibraryFolder), &info) == 0 || info.dli_fname == nullptr)
        return ".";
    char resolved[PATH_MAX];
    const std::string path =
        ::realpath(info.dli_fname, resolved) != nullptr ? resolved : info.dli_fname;
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

const std::string kLibraryFolder = LibraryFolder();

class PlateCore : public LPRPlugin {
  public:
    static constexpr int kMinPlateCharacters = 4;
    static constexpr int kMaxPlateCharacters = 10;
    // Plates narrower than 2.4 times their height may carry two rows.
    static constexpr int kTwoRowShape = 24;
    // Plates narrower than 1.8 times their height are square ones (motorcycles, tractors).
    static constexpr int kSquareShape = 18;
    // Mean character confidence a joined two-row reading needs.
    static constexpr int kStackedConfidence = 70;

    int Init(int minCar, int maxCar, std::string templatesFile, std::string useTemplate) override {
        minHeight_ = std::max(minCar, 6);
        maxHeight_ = std::max(maxCar, minHeight_ + 1);
        const std::string models = kLibraryFolder + "/models/";
        detector_ = std::make_unique<PlateDetector>(models + "plate_detector.onnx");
        reader_ = std::make_unique<PlateReader>(models + "plate_reader.onnx");
        if (!detector_->Ready() || !reader_->Ready())
            std::fprintf(stderr, "PlateCore: cannot load the networks in %s\n", models.c_str());
        matcher_.reset();
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
        return "PlateCore 2.0: plate detector and sequence reader networks, plate templates";
    }
    std::string GetLibName() override { return "PlateCore"; }

    void Process(IplImage* image) override {
        readings_.clear();
        if (image == nullptr || detector_ == nullptr || !detector_->Ready() || !reader_->Ready())
            return;
        const cv::Mat input = cv::cvarrToMat(image);
        cv::Mat grey = input;
        if (input.channels() == 3)
            cv::cvtColor(input, grey, cv::COLOR_BGR2GRAY);
        else if (input.channels() != 1 || input.depth() != CV_8U)
            return;
        const std::vector<PlateDetector::Plate> plates =
            detector_->Find(grey, minHeight_, maxHeight_);
        std::vector<std::optional<std::string>> oneRow;  // each plate read as a single row
        for (const auto& plate : plates)
            oneRow.push_back(ReadPlate(grey, plate));
        ReadStackedRows(grey, plates, oneRow);
        RankWholeReadingsFirst(readings_);
        // The likeliest reading first: the gate and the result view take the first.
        std::stable_sort(
            readings_.begin(), readings_.end(),
            [](const PlateReading& a, const PlateReading& b) { return a.rank > b.rank; });
    }

    int GetResultCount() override { return static_cast<int>(readings_.size()); }

    void GetResult(int index, std::string* plate, unsigned int* score, int rect[4], int* charHeight,
                   int* aux, std::string* tags) override {
        if (index < 0 || index >= static_cast<int>(readings_.size()))
            return;
        const PlateReading& reading = readings_[static_cast<size_t>(index)];
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
        detector_.reset();
        reader_.reset();
    }

  private:
    // Where the best template wants a digit and a letter was read (or the other way round),
    // the character's column is asked again for the best character its slot allows.
    void GuidedReread(PlateReader::Text& text) const {
        if (matcher_ == nullptr || !matcher_->Active())
            return;
        const std::string slots = matcher_->BestSlots(text.characters);
        for (size_t i = 0; i < slots.size() && i < text.columns.size(); ++i) {
            if (TemplateMatcher::SlotAccepts(text.characters[i], slots[i]))
                continue;
            int confidence = 0;
            const char c = PlateReader::Best(
                text.columns[i], TemplateMatcher::SlotCharacters(slots[i]), &confidence);
            if (c != '\0') {
                text.characters[i] = c;
                text.confidence[i] = confidence;
            }
        }
    }

    // A slanted plate is also read turned level (the likelier reading stays), and a European
    // plate with its band hidden: the band's country code is no character of the plate.
    void ReadLevelAndWithoutBand(const cv::Mat& picture, const cv::Rect& box, bool levelled,
                                 PlateReader::Text& text) {
        if (levelled) {
            PlateReader::Text level = reader_->Read(picture, box);
            if (level.logScore > text.logScore)
                text = std::move(level);
        }
        if (const auto hidden = PlateBand::Hide(picture, box)) {
            PlateReader::Text withoutBand = reader_->ReadAcrossCuts(hidden->grey, hidden->box);
            if (static_cast<int>(withoutBand.characters.size()) >= kMinPlateCharacters)
                text = std::move(withoutBand);
        }
    }

    // A reading whose characters the reader is sure of, as a reading of two rows must be: half
    // a plate of one row, read as a row, is mostly blank columns and can outscore the whole
    // plate's reading.
    static bool Confident(const PlateReader::Text& text) {
        const int count = static_cast<int>(text.characters.size());
        return count > 0 && text.ConfidenceSum() >= count * kStackedConfidence;
    }

    // A square plate's rows are read one at a time; a wider one's side by side.
    PlateReader::Text ReadTwoRows(const cv::Mat& grey, const cv::Rect& box) const {
        PlateReader::Text text = box.width < box.height * kSquareShape / 10
                                     ? reader_->ReadRowsApart(grey, box)
                                     : reader_->Read(grey, box, 2);
        PlateReader::OneKindARow(text);
        return text;
    }

    // Characters take about three fifths of a plate's height on most plates.
    static int CharacterHeight(const cv::Rect& box) { return std::max(1, box.height * 3 / 5); }

    // The rows of a plate of two rows are often marked as plates of their own, one above the
    // other. Their union is read as two rows; when that reading holds a row's own reading at
    // its start or end, it explains the plate better and goes first.
    void ReadStackedRows(const cv::Mat& grey, const std::vector<PlateDetector::Plate>& plates,
                         std::vector<std::optional<std::string>>& oneRow) {
        // A plate out of the region's size range was not read: read it as a row when needed.
        const auto rowText = [&](size_t k) -> const std::string& {
            if (!oneRow[k])
                oneRow[k] = reader_->Read(grey, plates[k].box).characters;
            return *oneRow[k];
        };
        for (size_t i = 0; i < plates.size(); ++i)
            for (size_t j = 0; j < plates.size(); ++j) {
                const cv::Rect& upper = plates[i].box;
                const cv::Rect& lower = plates[j].box;
                if (i == j || !RowsOfOnePlate(upper, lower))
                    continue;
                PlateReader::Text text = ReadTwoRows(grey, upper | lower);
                const int count = static_cast<int>(text.characters.size());
                if (count < kMinPlateCharacters + 1 || count > kMaxPlateCharacters ||
                    !Confident(text) || SurerReadingOfTwoRows(upper | lower, text))
                    continue;
                if (!HoldsAtAnEnd(text.characters, rowText(i)) &&
                    !HoldsAtAnEnd(text.characters, rowText(j)))
                    continue;
                double best = -1e9;
                for (const PlateReading& reading : readings_)
                    best = std::max(best, reading.rank);
                GuidedReread(text);
                AddReading(text, upper | lower, std::max(text.logScore, best) + 0.01,
                           CharacterHeight(lower));
            }
    }

    // The rows of a plate are about as high as each other, the lower one below the upper
    // one's upper third (the detector's box of a row is often taller than the row); a strip
    // above a plate (a country's name, a dealer's line) is much lower.
    static bool RowsOfOnePlate(const cv::Rect& upper, const cv::Rect& lower) {
        const int overlap = std::min(upper.br().x, lower.br().x) - std::max(upper.x, lower.x);
        return upper.height * 10 >= lower.height * 6 && lower.height * 10 >= upper.height * 6 &&
               lower.y > upper.y + upper.height * 7 / 20 &&
               lower.y <= upper.br().y + std::min(upper.height, lower.height) / 2 &&
               overlap * 10 >= std::min(upper.width, lower.width) * 6;
    }

    // A reading of two rows already made over most of box (a square plate read whole, or
    // another pair of its rows) whose characters the reader is as sure of stands.
    bool SurerReadingOfTwoRows(const cv::Rect& box, const PlateReader::Text& text) const {
        const int count = static_cast<int>(text.characters.size());
        const int sum = text.ConfidenceSum();
        return std::any_of(readings_.begin(), readings_.end(), [&](const PlateReading& reading) {
            return reading.rows == 2 && (reading.box & box).area() * 2 > box.area() &&
                   static_cast<long>(reading.score) * count >=
                       static_cast<long>(sum) * reading.characters;
        });
    }

    // True when row, read alone, starts whole or ends a longer whole. One character may
    // differ: a row read alone and read in its plate can take an O for a 0.
    static bool HoldsAtAnEnd(const std::string& whole, const std::string& row) {
        if (row.empty() || row.size() > whole.size())
            return false;
        const auto differences = [&](size_t from) {
            size_t count = 0;
            for (size_t k = 0; k < row.size(); ++k)
                count += whole[from + k] != row[k];
            return count;
        };
        const size_t allowed = row.size() >= 3 ? 1 : 0;
        return differences(0) <= allowed ||
               (whole.size() > row.size() && differences(whole.size() - row.size()) <= allowed);
    }

    // Reads one plate into the readings; returns its reading as a single row, for the
    // stacked-rows pass (none when its size is out of the region's range).
    std::optional<std::string> ReadPlate(const cv::Mat& grey, const PlateDetector::Plate& plate) {
        const int charHeight = CharacterHeight(plate.box);
        // Up to twice the tallest asked for: the detector's box of a large plate is often much
        // taller than the plate (its frame, the lines above and below it).
        if (charHeight < minHeight_ * 2 / 3 || charHeight > maxHeight_ * 2)
            return std::nullopt;
        PlateReader::Text text = reader_->ReadAcrossCuts(grey, plate.box);
        const std::string oneRow = text.characters;
        const auto levelled = PlateLeveller::Level(grey, plate.box);
        const cv::Mat& picture = levelled ? levelled->grey : grey;
        const cv::Rect& box = levelled ? levelled->box : plate.box;
        ReadLevelAndWithoutBand(picture, box, levelled.has_value(), text);
        if (box.width < box.height * kTwoRowShape / 10) {
            PlateReader::Text twoRows = ReadTwoRows(picture, box);
            if (twoRows.logScore > text.logScore && Confident(twoRows))
                text = std::move(twoRows);
        }
        GuidedReread(text);
        AddReading(text, plate.box, text.logScore + std::log(std::max(plate.score, 1e-4f)),
                   charHeight);
        return oneRow;
    }

    void AddReading(const PlateReader::Text& text, const cv::Rect& box, double rank,
                    int charHeight) {
        const int count = static_cast<int>(text.characters.size());
        if (count < kMinPlateCharacters || count > kMaxPlateCharacters)
            return;
        PlateReading reading;
        reading.box = box;
        reading.charHeight = charHeight;
        reading.characters = count;
        reading.rows = text.rows;
        reading.rank = rank;
        reading.score = static_cast<unsigned>(text.ConfidenceSum());
        const int formFactor = box.width * 100 / std::max(box.height, 1);
        reading.plate = text.characters;
        if (matcher_ != nullptr && matcher_->Active()) {
            const TemplateMatcher::Outcome outcome =
                matcher_->Apply(text.characters, formFactor, text.rows);
            if (outcome.discarded)
                return;
            reading.plate = outcome.plate;
            reading.tags = outcome.tags;
        } else {
            reading.tags = TemplateMatcher::PlainTags(text.characters, formFactor, text.rows);
        }
        readings_.push_back(std::move(reading));
    }

    int minHeight_ = 18;
    int maxHeight_ = 50;
    std::unique_ptr<PlateDetector> detector_;
    std::unique_ptr<PlateReader> reader_;
    std::unique_ptr<TemplateMatcher> matcher_;
    std::vector<PlateReading> readings_;
};

}  // namespace

CORVANE_PLUGIN_EXPORT LPRPlugin* CreateLPRPlugin() {
    return new PlateCore();
}
