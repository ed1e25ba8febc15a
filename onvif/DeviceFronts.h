#pragma once
#include <memory>
#include <string>

class SoapThread;
class WSDiscovery;

// Starts and stops the device front of a stream: its SOAP device on the stream's port and,
// when the stream asks for discovery, its discovery responder.
class DeviceFronts {
  public:
    // bindAddress: where the SOAP devices listen, empty for every local address.
    explicit DeviceFronts(std::string bindAddress = std::string())
        : bindAddress_(std::move(bindAddress)) {}

    void Start(const std::string& name, int port, int bitrate, bool autoDiscovery,
               std::shared_ptr<SoapThread>& soap, std::shared_ptr<WSDiscovery>& discovery);
    void Stop(std::shared_ptr<SoapThread>& soap, std::shared_ptr<WSDiscovery>& discovery);
    void SetVideoFormat(SoapThread& soap, int width, int height, int fps);

  private:
    std::string bindAddress_;
};
