// Plate-reading accuracy of PlateCore on folders of annotated road photographs: NAME.jpg beside
// NAME.txt holding "NAME.jpg<TAB>X<TAB>Y<TAB>W<TAB>H<TAB>PLATE". Each whole picture goes to
// Process in grey as the region thread gives it; the first reading is compared to PLATE
// (letters and digits, case and separators ignored).
//
//   corvane_plate_set_bench [--one-core] [--list] [--close FRACTION] FOLDER[@MIN_TOP1] ...
//
// Prints per folder: pictures, top-1, nothing read, character accuracy (1 - edit distance /
// length) and ms a picture. With @MIN_TOP1 the exit status is 1 when a folder's top-1 is
// under it; a folder that is missing gives status 77 (skipped). --close cuts each picture
// around its plate, as a camera close to the barrier sees it: 4:3, the plate FRACTION of its
// width, scaled to 800 pixels wide (as tools/plate-reader/derive_set.py --plate-fraction).
#include <dirent.h>
#include <unistd.h>
#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <opencv2/core/core_c.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "ShippedReader.h"
#include "corvane/LPRPlugin.h"
#include "platform/FileSystem.h"
#include "plugins/PluginLPRManager.h"

namespace {

struct Sample {
    std::string image;
    cv::Rect box;
    std::string plate;
};

constexpr double kCloseUpWidth = 800.0;

std::string Canonical(const std::string& text) {
    std::string out;
    for (const char c : text)
        if (std::isalnum(static_cast<unsigned char>(c)) != 0)
            out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

size_t EditDistance(const std::string& a, const std::string& b) {
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t up = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])});
            diagonal = up;
        }
    }
    return row[b.size()];
}

std::vector<Sample> LoadFolder(const std::string& folder) {
    std::vector<Sample> samples;
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr)
        return samples;
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        if (name.size() < 5 || name.compare(name.size() - 4, 4, ".txt") != 0)
            continue;
        std::ifstream in(folder + "/" + name);
        std::string line;
        if (!std::getline(in, line))
            continue;
        std::vector<std::string> fields;
        std::stringstream split(line);
        for (std::string field; std::getline(split, field, '\t');)
            fields.push_back(field);
        if (fields.size() >= 6)
            samples.push_back({folder + "/" + fields[0],
                               cv::Rect(std::atoi(fields[1].c_str()), std::atoi(fields[2].c_str()),
                                        std::atoi(fields[3].c_str()), std::atoi(fields[4].c_str())),
                               Canonical(fields[5])});
    }
    ::closedir(dir);
    std::sort(samples.begin(), samples.end(),
              [](const Sample& a, const Sample& b) { return a.image < b.image; });
    return samples;
}

struct Reading {
    std::string plate;
    cv::Rect box;
};

Reading FirstReading(LPRPlugin& reader, const cv::Mat& grey, double* ms) {
    cv::Mat copy = grey.clone();
    IplImage image = cvIplImage(copy);
    const auto start = std::chrono::steady_clock::now();
    reader.ClearResults();
    reader.Process(&image);
    *ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    if (reader.GetResultCount() == 0)
        return {};
    std::string plate;
    unsigned score = 0;
    int rect[4] = {0, 0, 0, 0};
    int charHeight = 0;
    int aux = 0;
    std::string tags;
    reader.GetResult(0, &plate, &score, rect, &charHeight, &aux, &tags);
    return {Canonical(plate), cv::Rect(rect[0], rect[1], rect[2], rect[3])};
}

std::string BoxText(const cv::Rect& box) {
    return std::to_string(box.x) + "," + std::to_string(box.y) + " " + std::to_string(box.width) +
           "x" + std::to_string(box.height);
}

cv::Mat CloseUp(const cv::Mat& grey, const cv::Rect& plate, double fraction) {
    // Bounded by the picture before it becomes pixels: an annotation may be anything.
    const double width = std::min<double>(plate.width / fraction, grey.cols);
    const int x = static_cast<int>(
        std::clamp(plate.x + plate.width / 2.0 - width / 2, 0.0, static_cast<double>(grey.cols)));
    const int y = static_cast<int>(std::clamp(plate.y + plate.height / 2.0 - width * 0.3, 0.0,
                                              static_cast<double>(grey.rows)));
    const cv::Rect cut = cv::Rect(x, y, static_cast<int>(width),
                                  static_cast<int>(std::min<double>(width * 0.75, grey.rows))) &
                         cv::Rect(0, 0, grey.cols, grey.rows);
    if (plate.width <= 0 || cut.width < 2 || cut.height < 2)
        return cv::Mat();
    const double scale = kCloseUpWidth / cut.width;
    cv::Mat closeUp;
    cv::resize(grey(cut), closeUp, cv::Size(), scale, scale,
               scale > 1.0 ? cv::INTER_CUBIC : cv::INTER_AREA);
    return closeUp;
}

std::string WorkingDirectory() {
    char path[4096];
    return ::getcwd(path, sizeof path) != nullptr ? std::string(path) : std::string(".");
}

}  // namespace

int main(int argc, char** argv) {
    bool list = false;
    double close = 0.0;
    std::vector<std::string> folders;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--one-core")
            cv::setNumThreads(1);
        else if (arg == "--list")
            list = true;
        else if (arg == "--close" && i + 1 < argc)
            close = std::atof(argv[++i]);
        else if (!arg.empty() && arg[0] != '/')
            folders.push_back(WorkingDirectory() + "/" + arg);  // before the chdir
        else
            folders.push_back(arg);
    }
    platform::ScopedWorkingDirectory cwd(CORVANE_APP_DIR);
    PluginLPRManager readers{FixedFolder(CORVANE_APP_DIR)};
    LPRPlugin* reader = LoadPlateCore(readers);
    if (reader == nullptr)
        return 1;
    reader->Init(6, 120, std::string(CORVANE_APP_DIR) + "/templates.xml", "0");
    int status = 0;
    std::printf("%-10s %8s %8s %13s %10s %8s\n", "set", "pictures", "top-1", "nothing read",
                "chars ok", "ms/pic");
    for (const std::string& spec : folders) {
        const size_t at = spec.rfind('@');
        const std::string folder = spec.substr(0, at);
        const double floor = at == std::string::npos ? -1.0 : std::atof(spec.c_str() + at + 1);
        const std::vector<Sample> samples = LoadFolder(folder);
        if (samples.empty()) {
            std::fprintf(stderr, "%s: no annotated pictures here, skipped\n", folder.c_str());
            status = status == 0 ? 77 : status;
            continue;
        }
        int right = 0;
        int nothing = 0;
        double characters = 0.0;
        double ms = 0.0;
        for (const Sample& sample : samples) {
            cv::Mat grey = cv::imread(sample.image, cv::IMREAD_GRAYSCALE);
            if (close > 0.0 && !grey.empty())
                grey = CloseUp(grey, sample.box, close);
            double took = 0.0;
            const Reading reading = grey.empty() ? Reading() : FirstReading(*reader, grey, &took);
            const std::string& read = reading.plate;
            ms += took;
            right += read == sample.plate ? 1 : 0;
            nothing += read.empty() ? 1 : 0;
            characters +=
                std::max(0.0, 1.0 - static_cast<double>(EditDistance(read, sample.plate)) /
                                        static_cast<double>(sample.plate.size()));
            if (list && read != sample.plate)
                std::printf("  %s: %s at %s read as %s at %s\n", sample.image.c_str(),
                            sample.plate.c_str(), BoxText(sample.box).c_str(),
                            read.empty() ? "(nothing)" : read.c_str(),
                            BoxText(reading.box).c_str());
        }
        const double n = static_cast<double>(samples.size());
        const double top1 = 100.0 * right / n;
        const std::string name = folder.substr(folder.find_last_of('/') + 1);
        std::printf("%-10s %8zu %7.1f%% %12.1f%% %9.1f%% %8.1f\n", name.c_str(), samples.size(),
                    top1, 100.0 * nothing / n, 100.0 * characters / n, ms / n);
        if (floor >= 0.0 && top1 < floor) {
            std::printf("%s: top-1 %.1f%% is under its floor of %.1f%%\n", name.c_str(), top1,
                        floor);
            status = 1;
        }
    }
    reader->CloseLPR();
    return status;
}
