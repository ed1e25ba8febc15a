#pragma once
#include <string>
#include <utility>
#include <vector>

// One plate layout of one country. Layout rows are opaque text to the program; the reference
// reader understands L (letter), N (digit), A (letter or digit) and takes other characters
// literally.
struct PlateTemplate {
    int id = 0;
    int numRow = 0;
    std::string templ1;
    std::string templ2;
    std::string isoCountry;
    int idCountry = 0;
    int ffMin = 0;
    int ffMax = 0;
    int use = 0;
    std::vector<char> forbidden;
    std::vector<std::pair<char, char>> substitutions;  // original, replacement
};

// A row of countrycodes.txt.
struct CountryCode {
    std::string name;
    std::string iso;
    int id = 0;
};

// The model of a project's templates.xml (tag text despite the name) and of countrycodes.txt.
class TemplateSet {
  public:
    // Bounds that keep a damaged or hostile file from making the reader allocate without end.
    static constexpr size_t kMaxFileSize = 16u << 20;
    static constexpr int kMaxTemplates = 10000;
    static constexpr int kMaxCharacters = 256;
    static constexpr size_t kMinCountryRow = 67;

    int useTempl = 0;
    int discard = 0;
    int discardPerc = 0;
    int forceSub = 0;
    int forceSubPerc = 0;
    std::vector<CountryCode> countries;
    std::vector<PlateTemplate> templates;

    // Replaces the templates and the five settings by the file's content; a missing or
    // unreadable file leaves the model as it was.
    void LoadTemplates(const std::string& path);
    // Writes the file; USE of a template is 1 when its country is among usedCountries.
    bool SaveTemplates(const std::string& path,
                       const std::vector<std::string>& usedCountries) const;
    // Fills countries from "countrycodes.txt" in the working directory.
    void LoadCountryCodes() { LoadCountryCodes("countrycodes.txt"); }
    void LoadCountryCodes(const std::string& path);

    // The text SaveTemplates writes.
    std::string TemplatesText(const std::vector<std::string>& usedCountries) const;
    // Reads a text as LoadTemplates reads the file; damage is reported under the source's name
    // and what was read whole is kept.
    void ParseTemplates(const std::string& text, const std::string& source = "templates.xml");
    void ParseCountryCodes(const std::string& text, const std::string& source = "countrycodes.txt");

    // "TEMPLATE%03d": three digits up to 999, more from 1000 on.
    static std::string TemplateTag(int number);
};
