// The template file, byte for byte, the country table, and the reference reader's use of them.
#include <gtest/gtest.h>

#include "TemplateMatcher.h"
#include "TestSupport.h"
#include "templates/TemplateSet.h"

namespace {

PlateTemplate Italian() {
    PlateTemplate plate;
    plate.id = 1;
    plate.numRow = 1;
    plate.templ1 = "LLNNNLL";
    plate.isoCountry = "ITA";
    plate.idCountry = 380;
    plate.ffMin = 350;
    plate.ffMax = 600;
    plate.forbidden = {'I'};
    plate.substitutions = {{'0', 'O'}, {'O', '0'}, {'5', 'S'}};
    return plate;
}

}  // namespace

TEST(TemplateSet, WritesTheExactLayout) {
    TemplateSet set;
    set.useTempl = 1;
    set.discardPerc = 60;
    PlateTemplate plate = Italian();
    plate.substitutions = {{'0', 'O'}};
    set.templates.push_back(plate);
    EXPECT_EQ(set.TemplatesText({"ITA"}),
              "<CORVANE_TEMPLATES_FILE>\n<USETEMPL>1<\\USETEMPL>\n<DISCARD>0<\\DISCARD>\n"
              "<DISCARDPERC>60<\\DISCARDPERC>\n<FORCESUB>0<\\FORCESUB>\n"
              "<FORCESUBPERC>0<\\FORCESUBPERC>\n<NUMTEMPL>1<\\NUMTEMPL>\n<TEMPLATE001>\n"
              "<ID>1<\\ID>\n<NUMROW>1<\\NUMROW>\n<TEMPL1>LLNNNLL<\\TEMPL1>\n<TEMPL2><\\TEMPL2>\n"
              "<ISOCOUNTRY>ITA<\\ISOCOUNTRY>\n<IDCOUNTRY>380<\\IDCOUNTRY>\n<FFMIN>350<\\FFMIN>\n"
              "<FFMAX>600<\\FFMAX>\n<USE>1<\\USE>\n<NUMFORB>1<\\NUMFORB>\n"
              "<FORBCHAR1>I<\\FORBCHAR1>\n<NUMSUBS>1<\\NUMSUBS>\n<SUBCHAR1>\n"
              "<ORIGCHAR>0<\\ORIGCHAR>\n<NEWCHAR>O<\\NEWCHAR>\n<\\SUBCHAR1>\n<\\TEMPLATE001>\n"
              "<\\CORVANE_TEMPLATES_FILE>\n");
}

TEST(TemplateSet, RoundTripDecidesUseByTheUsedCountries) {
    TempDir dir;
    TemplateSet set;
    set.useTempl = 1;
    set.discard = 1;
    set.discardPerc = 55;
    set.forceSub = 1;
    set.forceSubPerc = 70;
    set.templates = {Italian(), Italian()};
    set.templates[1].isoCountry = "FRA";
    set.templates[1].forbidden.clear();
    set.templates[1].substitutions.clear();
    ASSERT_TRUE(set.SaveTemplates(dir.File("templates.xml"), {"FRA"}));

    TemplateSet read;
    read.LoadTemplates(dir.File("templates.xml"));
    EXPECT_EQ(read.useTempl, 1);
    EXPECT_EQ(read.discardPerc, 55);
    EXPECT_EQ(read.forceSubPerc, 70);
    ASSERT_EQ(read.templates.size(), 2u);
    EXPECT_EQ(read.templates[0].use, 0);
    EXPECT_EQ(read.templates[1].use, 1);
    EXPECT_EQ(read.templates[0].substitutions, Italian().substitutions);
    EXPECT_EQ(read.templates[0].forbidden, std::vector<char>{'I'});
    EXPECT_TRUE(read.templates[1].forbidden.empty());
    EXPECT_EQ(read.TemplatesText({"FRA"}), set.TemplatesText({"FRA"}));

    // A missing file leaves the model as it was.
    read.LoadTemplates(dir.File("missing.xml"));
    EXPECT_EQ(read.templates.size(), 2u);
}

TEST(TemplateSet, SearchIsByTagWithBracketsAndCountsAreBounded) {
    TemplateSet set;
    // USE before NUMFORB, ID after IDCOUNTRY, and a second template block missing.
    set.ParseTemplates(
        "<USETEMPL>1<\\USETEMPL><NUMTEMPL>2<\\NUMTEMPL><TEMPLATE001><USE>1<\\USE>"
        "<IDCOUNTRY>250<\\IDCOUNTRY><ID>9<\\ID><NUMFORB>0<\\NUMFORB><\\TEMPLATE001>");
    ASSERT_EQ(set.templates.size(), 1u);  // the missing one is said, not made up
    EXPECT_EQ(set.templates[0].id, 9);
    EXPECT_EQ(set.templates[0].idCountry, 250);
    EXPECT_EQ(set.templates[0].use, 1);

    LogCapture log;
    set.ParseTemplates("<NUMTEMPL>2000000000<\\NUMTEMPL>");
    EXPECT_TRUE(set.templates.empty());
    EXPECT_TRUE(log.Contains("NUMTEMPL"));
    EXPECT_TRUE(
        log.Contains("10000 of 10000 templates are missing or cut (the first TEMPLATE001)"));
    EXPECT_EQ(TemplateSet::TemplateTag(999), "TEMPLATE999");
    EXPECT_EQ(TemplateSet::TemplateTag(1000), "TEMPLATE1000");
}

TEST(TemplateSet, CountryRowsNeed67Characters) {
    const std::string row67 = std::string("Italy") + std::string(43, ' ') + "IT      ITA     380";
    ASSERT_EQ(row67.size(), 67u);
    const std::string row66 = row67.substr(0, 66);
    TemplateSet set;
    set.ParseCountryCodes(row67 + "\r\n" + row66 + "\r\n" + row67 + "\r\n\r\n" + row67 + "\r\n");
    // The short row is skipped; the empty row ends the reading.
    ASSERT_EQ(set.countries.size(), 2u);
    EXPECT_EQ(set.countries[0].name, "Italy");
    EXPECT_EQ(set.countries[0].iso, "ITA");
    EXPECT_EQ(set.countries[0].id, 380);
}

TEST(TemplateSet, StockFilesHoldEuropeanCountries) {
    TemplateSet set;
    set.LoadTemplates(std::string(CORVANE_APP_DIR) + "/templates.xml");
    set.LoadCountryCodes(std::string(CORVANE_APP_DIR) + "/countrycodes.txt");
    EXPECT_GE(set.templates.size(), 20u);
    EXPECT_GE(set.countries.size(), 20u);
    for (const auto& plate : set.templates) {
        const auto country =
            std::find_if(set.countries.begin(), set.countries.end(),
                         [&](const CountryCode& c) { return c.iso == plate.isoCountry; });
        ASSERT_NE(country, set.countries.end()) << plate.isoCountry;
        EXPECT_EQ(country->id, plate.idCountry) << plate.isoCountry;
    }
}

TEST(TemplateMatcher, SubstitutesDiscardsAndTags) {
    TemplateSet set;
    set.useTempl = 1;
    set.forceSub = 1;
    set.forceSubPerc = 70;
    set.templates = {Italian()};
    set.templates[0].use = 1;
    TemplateMatcher matcher(set);
    // '0' where a letter belongs and 'O' where a digit belongs are swapped back.
    const TemplateMatcher::Outcome fixed = matcher.Apply("A0O23CD", 450);
    EXPECT_EQ(fixed.plate, "AO023CD");
    EXPECT_FALSE(fixed.discarded);
    EXPECT_NE(fixed.tags.find("<ORIG>A0O23CD<\\ORIG>"), std::string::npos);
    EXPECT_NE(fixed.tags.find("<CLAB>ITA<\\CLAB>"), std::string::npos);
    EXPECT_NE(fixed.tags.find("<FFBEST>475<\\FFBEST>"), std::string::npos);

    const TemplateMatcher::Outcome exact = matcher.Apply("AB123CD", 450);
    EXPECT_NE(exact.tags.find("<PERC>100<\\PERC>"), std::string::npos);
    EXPECT_NE(exact.tags.find("<LISTTEMPL>ITA:LLNNNLL<\\LISTTEMPL>"), std::string::npos);

    set.discard = 1;
    set.discardPerc = 90;
    TemplateMatcher strict(set);
    EXPECT_TRUE(strict.Apply("AI123CD", 450).discarded);  // 'I' is forbidden: 85 %
    EXPECT_TRUE(strict.Apply("ABC", 450).discarded);      // no template of that length
    EXPECT_FALSE(strict.Apply("AB123CD", 450).discarded);
}
