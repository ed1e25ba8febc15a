#pragma once
#include <wx/window.h>

#include "corvane/PluginTypes.h"

// The window handed to a plug-in: the toolkit's own window object, which a plug-in built with
// the same toolkit casts back to wxWindow* to parent its dialogs or post events to it.
inline NativeWindow NativeWindowOf(wxWindow* window) {
    return static_cast<void*>(window);
}
