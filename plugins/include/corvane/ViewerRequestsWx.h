#pragma once
// Queues a viewer request (see ViewerRequests.h) from a plug-in built with wxWidgets.
#include <wx/event.h>
#include <wx/window.h>

#include "PluginTypes.h"
#include "ViewerRequests.h"

// Safe from any thread; does nothing without a viewer.
inline void PostViewerRequest(NativeWindow viewer, ViewerRequest request, int argument) {
    auto* window = static_cast<wxWindow*>(viewer);
    if (window == nullptr)
        return;
    auto* event = new wxCommandEvent(wxEVT_NULL, request);  // the toolkit takes it
    event->SetInt(argument);
    window->GetEventHandler()->QueueEvent(event);
}
