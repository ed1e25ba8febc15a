#pragma once
#include <string>

#include "platform/CodePage.h"

// Site and database settings of a project.
struct PlaceSettings {
    int placeid = 0;
    std::string placename;
    std::string placedbip;
    std::string placedbname;
    std::string placedbusername;
    std::string placedbpassword;  // held and stored in clear text
    int uselocaldb = 1;
    int syncrotime = 5;
    int dbstorage = 5;
    bool whitelist = false;
    // The 8-bit code page of the project's binary files: 1252, 1250 or 1251.
    int codepage = platform::kWesternCodePage;
};
