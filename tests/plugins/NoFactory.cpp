// A library that loads but exports no factory: scans must unload and skip it.
#include "corvane/PluginTypes.h"

CORVANE_PLUGIN_EXPORT int NotAFactory() {
    return 42;
}
