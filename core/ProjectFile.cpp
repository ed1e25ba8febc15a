#include "ProjectFile.h"

#include <mutex>

#include "Project.h"
#include "corvane/TagText.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

namespace {

// A present key sets the value; an absent one keeps it or takes the default.
void ReadNumber(const std::string& text, const char* key, int& value, bool hasDefault,
                int fallback) {
    std::string number;
    if (ReadTagString(text, key, number))
        value = AtoI(number);
    else if (hasDefault)
        value = fallback;
}

// The site's code page as the text names it; the Western one when it names none or one that
// is not supported.
int SiteCodePage(const std::string& text) {
    std::string named;
    const int codePage = ReadTagString(text, "CODEPAGE", named) ? AtoI(named) : 0;
    return platform::IsSupportedCodePage(codePage) ? codePage : platform::kWesternCodePage;
}

const char* const kSettingTags[] = {
    "VERSION",    "PRJNAME",     "PRJDIR",          "PLACEID",         "PLACENAME",
    "PLACEDBIP",  "PLACEDBNAME", "PLACEDBUSERNAME", "PLACEDBPASSWORD", "USELOCALDB",
    "SYNCROTIME", "DBSTORAGE",   "WHITELIST",       "CODEPAGE"};

// A project file cut or damaged is said, naming the file and what is missing; what was read
// whole is kept.
void ReportDamage(const std::string& path, const std::string& text) {
    auto damaged = [&path](const std::string& why) {
        CORVANE_LOG_WARNING("Project::LoadProjectSettings",
                            platform::FileNameOf(path) + " is damaged: " + why);
    };
    if (text.find("<PROJECT>") == std::string::npos)
        damaged("no <PROJECT> in it");
    else if (text.find("<\\PROJECT>") == std::string::npos)
        damaged("it ends before <\\PROJECT>");
    for (const char* tag : kSettingTags) {
        const std::string open = std::string("<") + tag + ">";
        const std::string close = std::string("<\\") + tag + ">";
        const size_t at = text.find(open);
        if (at != std::string::npos && text.find(close, at) == std::string::npos)
            damaged(open + " is not closed, its setting not read");
    }
}

}  // namespace

std::string ProjectFileText(const Project& project) {
    const PlaceSettings& place = project.place;
    std::string text;
    TagOpen("PROJECT", text);
    TagString("VERSION", "1", text);
    TagString("PRJNAME", project.prjname, text);
    TagString("PRJDIR", project.prjdir, text);
    TagInt("PLACEID", place.placeid, text);
    TagString("PLACENAME", place.placename, text);
    TagString("PLACEDBIP", place.placedbip, text);
    TagString("PLACEDBNAME", place.placedbname, text);
    TagString("PLACEDBUSERNAME", place.placedbusername, text);
    TagString("PLACEDBPASSWORD", place.placedbpassword, text);
    TagInt("USELOCALDB", place.uselocaldb, text);
    TagInt("SYNCROTIME", place.syncrotime, text);
    TagInt("DBSTORAGE", place.dbstorage, text);
    TagString("WHITELIST", place.whitelist ? "Yes" : "No", text);
    // Only a site that leaves the Western default names its code page, so that the files of
    // every other site stay as they always were.
    if (place.codepage != platform::kWesternCodePage)
        TagInt("CODEPAGE", place.codepage, text);
    TagClose("PROJECT", text);
    return text;
}

bool WriteProjectFile(const std::string& path, const Project& project) {
    return platform::WriteWholeFile(path, ProjectFileText(project));
}

void ParseProjectSettings(const std::string& raw, Project& project) {
    std::string text = raw;
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        text.erase(0, 3);
    // A file saved by an editor in the 8-bit code page still loads, with its letters intact.
    if (!platform::IsValidUtf8(text))
        text = platform::AnsiToUtf8(text, SiteCodePage(text));

    std::lock_guard<std::mutex> lock(project.settingsmutex);
    PlaceSettings& place = project.place;
    ReadTagString(text, "PLACENAME", place.placename);
    ReadNumber(text, "PLACEID", place.placeid, false, 0);
    ReadTagString(text, "PLACEDBIP", place.placedbip);
    ReadTagString(text, "PLACEDBNAME", place.placedbname);
    ReadTagString(text, "PLACEDBUSERNAME", place.placedbusername);
    ReadTagString(text, "PLACEDBPASSWORD", place.placedbpassword);
    ReadNumber(text, "USELOCALDB", place.uselocaldb, true, 1);
    ReadNumber(text, "SYNCROTIME", place.syncrotime, true, 5);
    ReadNumber(text, "DBSTORAGE", place.dbstorage, true, 5);
    place.whitelist = GetTagString(text, "WHITELIST") == "Yes";
    place.codepage = SiteCodePage(text);
}

bool LoadProjectSettings(const std::string& path, Project& project) {
    std::string text;
    if (platform::ReadWholeFile(path, text, kMaxProjectFileSize) != platform::ReadResult::Ok)
        return false;
    ReportDamage(path, text);
    ParseProjectSettings(text, project);
    return true;
}
