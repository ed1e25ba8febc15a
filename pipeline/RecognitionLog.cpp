#include "RecognitionLog.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "corvane/TagText.h"
#include "platform/FileSystem.h"

namespace {

std::string TagOr(const std::string& tags, const char* tag, const char* fallback) {
    std::string value = fallback;
    ReadTagString(tags, tag, value);
    return value;
}

bool WriteAll(int fd, const std::string& text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t written = ::write(fd, text.data() + done, text.size() - done);
        if (written <= 0)
            return false;
        done += static_cast<size_t>(written);
    }
    return true;
}

}  // namespace

std::string RecognitionLog::FileName(const std::string& laneName, const std::tm& date) {
    char suffix[32];
    std::snprintf(suffix, sizeof suffix, "_%02d_%02d_%04d.csv", date.tm_mday, date.tm_mon + 1,
                  date.tm_year + 1900);
    return std::string(kFolder) + "/" + laneName + suffix;
}

std::string RecognitionLog::LineOf(const std::tm& now, const std::string& plate, int charHeight,
                                   const std::string& tags) {
    int numRow = 1;
    std::string text;
    if (ReadTagString(tags, "NUMROW", text))
        numRow = AtoI(text);
    const std::string orig = TagOr(tags, "ORIG", "NORES");
    const std::string best = TagOr(tags, "BESTTEMPL", "NORES");
    const std::string list = TagOr(tags, "LISTTEMPL", "NORES");
    const int ff = AtoI(TagOr(tags, "FFORIG", "0"));
    const int ffBest = AtoI(TagOr(tags, "FFBEST", "0"));
    const int perc = AtoI(TagOr(tags, "PERC", "0"));
    const std::string country = TagOr(tags, "CLAB", "NORES");
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "%02d-%02d-%04d %02d:%02d:%02d;", now.tm_mday,
                  now.tm_mon + 1, now.tm_year + 1900, now.tm_hour, now.tm_min, now.tm_sec);
    return stamp + plate + ";" + std::to_string(charHeight) + ";" + std::to_string(numRow) + ";" +
           orig + ";" + best + ";" + list + ";" + std::to_string(ff) + ";" +
           std::to_string(ffBest) + ";" + std::to_string(perc) + ";" + country + "\n";
}

bool RecognitionLog::WriteLog(const std::string& laneName, const std::string& plate, int charHeight,
                              const std::string& tags) {
    if (!platform::DirectoryExists(kFolder))
        platform::MakeDirectory(kFolder);
    const std::time_t seconds = std::time(nullptr);
    std::tm now{};
    localtime_r(&seconds, &now);
    const std::string path = FileName(laneName, now);
    // The first writer of the day creates the file with its header; creation is exclusive so
    // that the header is written once.
    int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd >= 0) {
        if (!WriteAll(fd, kHeader)) {
            ::close(fd);
            return false;
        }
    } else {
        fd = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
        if (fd < 0)
            return false;
    }
    const bool written = WriteAll(fd, LineOf(now, plate, charHeight, tags));
    ::close(fd);
    return written;
}
