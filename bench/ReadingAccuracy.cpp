// Plate-reading accuracy of PlateCore on synthetic plates: random plates of the stock layouts
// drawn at character heights from 14 to 80 pixels on a car, read through the plug-in as the
// region thread calls it. Prints whole-plate and per-character accuracy and the time a picture.
#include <chrono>
#include <cstdio>
#include <random>

#include <opencv2/core/core_c.h>

#include "PlateArt.h"
#include "ShippedReader.h"
#include "corvane/LPRPlugin.h"
#include "platform/FileSystem.h"
#include "plugins/PluginLPRManager.h"

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 300;
    const bool verbose = argc > 2;  // any second argument lists the misreadings
    platform::ScopedWorkingDirectory cwd(CORVANE_APP_DIR);
    PluginLPRManager readers{FixedFolder(CORVANE_APP_DIR)};
    LPRPlugin* reader = LoadPlateCore(readers);
    if (reader == nullptr)
        return 1;
    std::printf("%-6s %8s %10s %10s %10s\n", "height", "plates", "plate ok", "chars ok", "ms/pic");
    for (const bool templates : {false, true}) {
        std::printf("templates %s\n", templates ? "on" : "off");
        for (const int height : {14, 16, 20, 26, 32, 40, 56, 80}) {
            // A region is set up for the plates its camera sees: character heights from two
            // thirds to one and a half times theirs.
            reader->Init(height * 2 / 3, height * 3 / 2,
                         std::string(CORVANE_APP_DIR) + "/templates.xml", templates ? "1" : "0");
            std::mt19937 rng(static_cast<unsigned>(height));
            int plates = 0, right = 0, chars = 0, charsRight = 0;
            double ms = 0;
            for (int i = 0; i < count / 5; ++i) {
                const std::string plate = plateart::RandomEuropeanPlate(rng);
                cv::Mat grey = plateart::CarInLane(plate, height, i);
                grey = grey(cv::Rect(0, 0, grey.cols / 4 * 4, grey.rows)).clone();
                IplImage image = cvIplImage(grey);
                const auto start = std::chrono::steady_clock::now();
                reader->ClearResults();
                reader->Process(&image);
                ms += std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() -
                                                                start)
                          .count();
                std::string read;
                unsigned score = 0;
                int rect[4] = {0, 0, 0, 0};
                int charHeight = 0, aux = 0;
                std::string tags;
                if (reader->GetResultCount() > 0)
                    reader->GetResult(0, &read, &score, rect, &charHeight, &aux, &tags);
                if (verbose && read != plate)
                    std::printf("  %s read as %s\n", plate.c_str(), read.c_str());
                ++plates;
                right += read == plate ? 1 : 0;
                chars += static_cast<int>(plate.size());
                for (size_t c = 0; c < plate.size() && c < read.size(); ++c)
                    charsRight += plate[c] == read[c] ? 1 : 0;
            }
            std::printf("%-6d %8d %9.1f%% %9.1f%% %10.1f\n", height, plates, 100.0 * right / plates,
                        100.0 * charsRight / chars, ms / plates);
        }
    }
    reader->CloseLPR();
    return 0;
}
