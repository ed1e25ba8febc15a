#pragma once
// Finds ONVIF cameras and their stream addresses, as an operator's "Find cameras" does: a
// WS-Discovery Probe for video transmitters, then the device's media profiles and the RTSP URI
// of a profile. Requests carry a WS-Security UsernameToken (password digest) when a user is
// given; a device without authentication ignores it.
#include <string>
#include <vector>

struct FoundCamera {
    std::string name;     // from the device's name scope, or its address
    std::string address;  // the device service's URL (first XAddr)
};

struct CameraProfile {
    std::string name;
    std::string token;
    int width = 0;
    int height = 0;
    std::string uri;  // the profile's RTSP address
};

class OnvifFinder {
  public:
    // Probes the multicast group and this host on port for timeoutMs; each device once.
    static std::vector<FoundCamera> Probe(int timeoutMs, int port = 3702);

    // The device's media profiles with their stream URIs; empty with problem set when a step
    // fails (no answer, a SOAP fault, a refused password).
    static std::vector<CameraProfile> Profiles(const std::string& deviceAddress,
                                               const std::string& user, const std::string& password,
                                               std::string& problem, int timeoutMs = 5000);

    // The security header for user (a UsernameToken with a SHA-1 password digest); public so
    // that it can be checked against the digest rule.
    static std::string SecurityHeader(const std::string& user, const std::string& password,
                                      const std::string& nonce, const std::string& created);
    static std::string PasswordDigest(const std::string& nonce, const std::string& created,
                                      const std::string& password);
};
