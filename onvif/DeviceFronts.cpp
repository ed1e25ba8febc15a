#include "DeviceFronts.h"

#include "SoapThread.h"
#include "WSDiscovery.h"

void DeviceFronts::Start(const std::string& name, int port, int bitrate, bool autoDiscovery,
                         std::shared_ptr<SoapThread>& soap,
                         std::shared_ptr<WSDiscovery>& discovery) {
    soap = std::make_shared<SoapThread>(name, port, bitrate, bindAddress_);
    soap->Run();
    discovery.reset();
    if (!autoDiscovery)
        return;
    discovery = std::make_shared<WSDiscovery>(name, port);
    discovery->Run();
}

void DeviceFronts::Stop(std::shared_ptr<SoapThread>& soap,
                        std::shared_ptr<WSDiscovery>& discovery) {
    if (soap) {
        soap->Delete();  // its accept wakes every second at the latest
        soap.reset();
    }
    if (discovery) {
        discovery->Stop();  // the socket closes first, so a waiting receive ends at once
        discovery.reset();
    }
}

void DeviceFronts::SetVideoFormat(SoapThread& soap, int width, int height, int fps) {
    soap.SetVideoFormat(width, height, fps);
}
