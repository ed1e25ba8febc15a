#pragma once
#include <string>

#include "corvane/PluginTypes.h"

// The site identity and database access data that gates and post processors get at Open.
struct PluginOpenArgs {
    NativeWindow mainWindow = nullptr;
    std::string placeName;
    int placeId = 0;
    std::string dbAddress;
    std::string dbName;
    std::string dbUser;
    std::string dbPassword;
};

template <typename Plugin>
void OpenWith(Plugin* plugin, int id, const PluginOpenArgs& args) {
    plugin->Open(args.mainWindow, id, args.placeName, args.placeId, args.dbAddress, args.dbName,
                 args.dbUser, args.dbPassword);
}
