#pragma once
// The shipped plate reader, loaded from the build's plug-in folder as a region loads it.
#include <cstdio>

#include "corvane/LPRPlugin.h"
#include "plugins/PluginLPRManager.h"

// readers must outlive the reader returned; nullptr (and a line on stderr) when it is missing.
inline LPRPlugin* LoadPlateCore(PluginLPRManager& readers) {
    readers.InitList();
    LPRPlugin* reader = readers.GetLPRPlugin("PlateCore");
    if (reader == nullptr)
        std::fprintf(stderr, "PlateCore.dll not found in %s/plugin/lpr\n", CORVANE_APP_DIR);
    return reader;
}
