#pragma once
// Requests a plug-in may make of the program through the viewer window it was given in Start.
//
// A request is a command event of the toolkit's null event type (wxEVT_NULL) whose id is one
// of the values below and whose integer carries the request's argument, queued to the viewer
// window (NativeWindow is a wxWindow* in the desktop program). The program handles it on its
// window thread, so a plug-in may queue it from any thread. Without a window (the program run
// without one) the viewer is null and there is nobody to ask. A plug-in built with wxWidgets
// can use PostViewerRequest from "corvane/ViewerRequestsWx.h".
enum ViewerRequest : int {
    // Reload the source whose id is the integer: stop it, Close, FreeMemory, SetParameters
    // with its stored settings, Start, and start sampling again. An unknown id does nothing.
    kViewerRestartSource = 6093,
};
