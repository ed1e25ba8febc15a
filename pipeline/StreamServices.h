#pragma once
#include <cstdint>
#include <memory>
#include <string>

class SoapThread;
class WSDiscovery;

// What the pipeline needs of the streaming side: the registry of H.264 streams served over RTSP,
// and the ONVIF device front with its discovery responder for a streamed source or region.
// The pipeline runs without it (no stream is served); the streaming service installs one.
class StreamServices {
  public:
    virtual ~StreamServices() = default;

    // True while the RTSP service exists; streams are fed only then.
    virtual bool RtspRunning() const = 0;
    virtual void AddStream(const std::string& name, int bitrate) = 0;
    virtual void RemoveStream(const std::string& name) = 0;
    virtual bool HasStream(const std::string& name) const = 0;
    virtual void SetStreamSize(int width, int height, const std::string& name) = 0;
    // Copies the packed 24-bit picture; the caller keeps its buffer. captureTick is the
    // platform tick at which the picture was taken from its source: the stream's timestamps
    // follow it, not the moment the picture arrives here.
    virtual void PushStreamFrame(const uint8_t* data, int width, int height,
                                 const std::string& name, uint32_t captureTick) = 0;
    // Pictures a second that the stream's producer really pushes (measured over the last
    // seconds); fallback before there is a measure, or for an unknown stream.
    virtual int StreamRate(const std::string& name, int fallback) const = 0;

    // The device front of one stream: its SOAP thread and, with autoDiscovery, its discovery
    // responder, created and running on return.
    virtual void StartFront(const std::string& name, int port, int bitrate, bool autoDiscovery,
                            std::shared_ptr<SoapThread>& soap,
                            std::shared_ptr<WSDiscovery>& discovery) = 0;
    // Stops the SOAP thread (its context destroyed first) and the responder (its socket closed
    // first, so that a blocking receive returns); both become null.
    virtual void StopFront(std::shared_ptr<SoapThread>& soap,
                           std::shared_ptr<WSDiscovery>& discovery) = 0;
    virtual void SetVideoFormat(SoapThread& soap, int width, int height, int fps) = 0;
};
