#pragma once
#include <string>
#include <vector>

// The identity a stream shows as an ONVIF device.
struct OnvifDeviceData {
    int port = 0;  // SOAP port of the stream
    std::string name;
    std::vector<std::string> addresses;  // IPv4 addresses of the host, dotted
    int height = 480;
    int width = 640;
    int fps = 25;
    int bitrate = 0;

    // The address clients are told: the first of `addresses`, else loopback.
    std::string Host() const;
    // The address of every service of the device; the server answers on any path.
    std::string ServiceUrl() const;

    // The host's IPv4 addresses as its name resolves: "127.0.0.1" when the name does not
    // resolve, none when the host has no name.
    static std::vector<std::string> ReadAddresses();
};
