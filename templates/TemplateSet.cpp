#include "TemplateSet.h"

#include <algorithm>
#include <cstdio>

#include "corvane/TagText.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

namespace {

constexpr const char* kFileTag = "CORVANE_TEMPLATES_FILE";

// A count read from the file, cut to what the reader is willing to allocate.
int BoundedCount(const std::string& text, const std::string& tag, int limit) {
    const int count = GetTagInt(text, tag);
    if (count > limit) {
        CORVANE_LOG_WARNING("TemplateSet::LoadTemplates",
                            tag + " " + std::to_string(count) + " is more than " +
                                std::to_string(limit) + "; the rest is ignored");
        return limit;
    }
    return std::max(count, 0);
}

char FirstCharacter(const std::string& text) {
    return text.empty() ? '\0' : text[0];
}

std::string Trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

PlateTemplate ReadTemplate(const std::string& block) {
    PlateTemplate plate;
    plate.id = GetTagInt(block, "ID");
    plate.numRow = GetTagInt(block, "NUMROW");
    plate.templ1 = GetTagString(block, "TEMPL1");
    plate.templ2 = GetTagString(block, "TEMPL2");
    plate.isoCountry = GetTagString(block, "ISOCOUNTRY");
    plate.idCountry = GetTagInt(block, "IDCOUNTRY");
    plate.ffMin = GetTagInt(block, "FFMIN");
    plate.ffMax = GetTagInt(block, "FFMAX");
    const int substitutions = BoundedCount(block, "NUMSUBS", TemplateSet::kMaxCharacters);
    const int forbidden = BoundedCount(block, "NUMFORB", TemplateSet::kMaxCharacters);
    plate.use = GetTagInt(block, "USE");
    for (int j = 1; j <= substitutions; ++j) {
        const std::string pair = GetTagString(block, "SUBCHAR" + std::to_string(j));
        plate.substitutions.emplace_back(FirstCharacter(GetTagString(pair, "ORIGCHAR")),
                                         FirstCharacter(GetTagString(pair, "NEWCHAR")));
    }
    for (int j = 1; j <= forbidden; ++j)
        plate.forbidden.push_back(
            FirstCharacter(GetTagString(block, "FORBCHAR" + std::to_string(j))));
    return plate;
}

void WriteTemplate(const PlateTemplate& plate, int number, bool used, std::string& text) {
    const std::string tag = TemplateSet::TemplateTag(number);
    TagOpen(tag, text);
    TagInt("ID", plate.id, text);
    TagInt("NUMROW", plate.numRow, text);
    TagString("TEMPL1", plate.templ1, text);
    TagString("TEMPL2", plate.templ2, text);
    TagString("ISOCOUNTRY", plate.isoCountry, text);
    TagInt("IDCOUNTRY", plate.idCountry, text);
    TagInt("FFMIN", plate.ffMin, text);
    TagInt("FFMAX", plate.ffMax, text);
    TagInt("USE", used ? 1 : 0, text);
    TagInt("NUMFORB", static_cast<int>(plate.forbidden.size()), text);
    for (size_t j = 0; j < plate.forbidden.size(); ++j)
        TagString("FORBCHAR" + std::to_string(j + 1), std::string(1, plate.forbidden[j]), text);
    TagInt("NUMSUBS", static_cast<int>(plate.substitutions.size()), text);
    for (size_t j = 0; j < plate.substitutions.size(); ++j) {
        const std::string pair = "SUBCHAR" + std::to_string(j + 1);
        TagOpen(pair, text);
        TagString("ORIGCHAR", std::string(1, plate.substitutions[j].first), text);
        TagString("NEWCHAR", std::string(1, plate.substitutions[j].second), text);
        TagClose(pair, text);
    }
    TagClose(tag, text);
}

}  // namespace

std::string TemplateSet::TemplateTag(int number) {
    char tag[32];
    std::snprintf(tag, sizeof tag, "TEMPLATE%03d", number);
    return tag;
}

void TemplateSet::ParseTemplates(const std::string& text, const std::string& source) {
    auto damaged = [&source](const std::string& why) {
        CORVANE_LOG_WARNING("TemplateSet::LoadTemplates", source + " is damaged: " + why);
    };
    if (text.empty())
        damaged("empty, no template read");
    else if (text.find(std::string("<\\") + kFileTag + ">") == std::string::npos)
        damaged(std::string("it ends before <\\") + kFileTag + ">");
    if (!text.empty() && text.find("<NUMTEMPL>") == std::string::npos)
        damaged("no NUMTEMPL, no template read");
    templates.clear();
    useTempl = GetTagInt(text, "USETEMPL");
    discard = GetTagInt(text, "DISCARD");
    discardPerc = GetTagInt(text, "DISCARDPERC");
    forceSub = GetTagInt(text, "FORCESUB");
    forceSubPerc = GetTagInt(text, "FORCESUBPERC");
    const int count = BoundedCount(text, "NUMTEMPL", kMaxTemplates);
    std::printf("Found %d templates\n", count);
    int missing = 0;
    std::string first;
    for (int n = 1; n <= count; ++n) {
        // A block is read only whole: open and closed.
        const std::string tag = TemplateTag(n);
        const size_t open = text.find("<" + tag + ">");
        if (open == std::string::npos || text.find("<\\" + tag + ">", open) == std::string::npos) {
            if (missing++ == 0)
                first = tag;
            continue;
        }
        templates.push_back(ReadTemplate(GetTagString(text, tag)));
    }
    if (missing > 0)
        damaged(std::to_string(missing) + " of " + std::to_string(count) +
                " templates are missing or cut (the first " + first + "), not read");
}

void TemplateSet::LoadTemplates(const std::string& path) {
    std::string text;
    switch (platform::ReadWholeFile(path, text, kMaxFileSize)) {
        case platform::ReadResult::Ok:
            ParseTemplates(text, platform::FileNameOf(path));
            return;
        case platform::ReadResult::TooLarge:
            CORVANE_LOG_WARNING("TemplateSet::LoadTemplates", path + " is damaged: too large");
            return;
        default:
            return;
    }
}

std::string TemplateSet::TemplatesText(const std::vector<std::string>& usedCountries) const {
    std::string text;
    TagOpen(kFileTag, text);
    TagInt("USETEMPL", useTempl, text);
    TagInt("DISCARD", discard, text);
    TagInt("DISCARDPERC", discardPerc, text);
    TagInt("FORCESUB", forceSub, text);
    TagInt("FORCESUBPERC", forceSubPerc, text);
    TagInt("NUMTEMPL", static_cast<int>(templates.size()), text);
    int number = 1;
    for (const auto& plate : templates) {
        const bool used = std::find(usedCountries.begin(), usedCountries.end(), plate.isoCountry) !=
                          usedCountries.end();
        WriteTemplate(plate, number++, used, text);
    }
    TagClose(kFileTag, text);
    return text;
}

bool TemplateSet::SaveTemplates(const std::string& path,
                                const std::vector<std::string>& usedCountries) const {
    return platform::WriteWholeFile(path, TemplatesText(usedCountries));
}

void TemplateSet::ParseCountryCodes(const std::string& text, const std::string& source) {
    size_t start = 0;
    int row = 0;
    size_t cr;
    while ((cr = text.find('\r', start)) != std::string::npos && cr > start) {
        const std::string line = text.substr(start, cr - start);
        ++row;
        if (line.size() < kMinCountryRow) {
            std::printf("Wrong ROW LEN:%d\n", static_cast<int>(line.size()));
        } else {
            CountryCode country;
            country.name = Trimmed(line.substr(0, 48));
            country.iso = line.substr(56, 3);
            const std::string number = line.substr(64, 3);
            country.id = AtoI(number);
            std::printf("SUBSTR%d LEN:%d----%s----%s----%s\n", row, static_cast<int>(line.size()),
                        country.name.c_str(), country.iso.c_str(), number.c_str());
            countries.push_back(country);
        }
        start = cr + 2;  // the carriage return and the line feed behind it
        if (start >= text.size())
            break;
    }
    if (text.empty())
        CORVANE_LOG_WARNING("TemplateSet::LoadCountryCodes", source + " is damaged: empty");
    else if (start < text.size() && text.find('\r', start) == std::string::npos)
        CORVANE_LOG_WARNING("TemplateSet::LoadCountryCodes", source + " is damaged: row " +
                                                                 std::to_string(row + 1) +
                                                                 " is cut (no line end), not read");
}

void TemplateSet::LoadCountryCodes(const std::string& path) {
    std::string text;
    if (platform::ReadWholeFile(path, text, kMaxFileSize) == platform::ReadResult::Ok)
        ParseCountryCodes(text, platform::FileNameOf(path));
}
