#pragma once
#include <ctime>
#include <string>

// The daily CSV log of a region: "LPR_Logs/<name>_DD_MM_YYYY.csv" under the working directory,
// one line a reading, opened and closed for each line.
class RecognitionLog {
  public:
    static constexpr const char* kFolder = "LPR_Logs";
    static constexpr const char* kHeader =
        "TIME;PLATE;HCAR;NUMROW;PLATE_TEMPL;BEST_TEMPL;LIST_TEMPL;FF;FF_BEST;PERC;COUNTRY\n";

    // Appends the line of one reading, creating folder and day file as needed. A file that
    // cannot be opened loses the line; the next reading tries again.
    static bool WriteLog(const std::string& laneName, const std::string& plate, int charHeight,
                         const std::string& tags);

    static std::string FileName(const std::string& laneName, const std::tm& date);
    static std::string LineOf(const std::tm& now, const std::string& plate, int charHeight,
                              const std::string& tags);
};
