#pragma once
// The settings of the network camera plug-in and its own dialog, where the operator types a
// camera's URL or finds the camera by ONVIF discovery.
#include "ParameterSheet.h"
#include "corvane/PluginTypes.h"

inline ParameterSheet IpCameraSheet() {
    ParameterSheet sheet("IP Camera");
    sheet.Add("URL", "STRING", "")
        .Add("User", "STRING", "")
        .Add("Password", "PASSWORD", "")
        .Add("Transport", "CHOICE", "TCP", "TCP;UDP;Automatic;")
        .Add("Stall time (s)", "INT", "5");
    return sheet;
}

// Runs the dialog modally over parent (a toolkit window of the program); on OK the sheet holds
// the operator's values and the result is true.
bool ShowIpCameraDialog(NativeWindow parent, ParameterSheet& sheet);
