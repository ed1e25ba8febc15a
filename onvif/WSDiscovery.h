#pragma once
#include <sys/types.h>

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "OnvifDeviceData.h"
#include "platform/WorkerThread.h"

// The WS-Discovery responder of one streamed source or region: listens for Probe messages on
// UDP (the published port 3702, group 239.255.255.250) and answers each Probe for a
// NetworkVideoTransmitter with one ProbeMatches, made from "templ/probematches_templ.xml" and
// sent back to the sender.
class WSDiscovery : public platform::WorkerThread {
  public:
    static constexpr int kDiscoveryPort = 3702;
    static constexpr const char* kGroup = "239.255.255.250";
    static constexpr int kMaxDatagram = 8192;
    static constexpr const char* kTemplate = "templ/probematches_templ.xml";
    static constexpr const char* kLastAnswer = "templ/res.xml";
    static constexpr size_t kMaxMessageId = 256;

    WSDiscovery(std::string name, int port, int discoveryPort = kDiscoveryPort);
    ~WSDiscovery() override;

    // Closes the socket first, so that a waiting receive ends, then stops the thread.
    void Stop();

    // "uuid:" and 32 hexadecimal digits in the 8-4-4-4-12 form; one seed, one text.
    static std::string MakeUuid(unsigned seed);
    // The Probe's MessageID when the text is a Probe for a NetworkVideoTransmitter, else empty.
    static std::string ProbeMessageId(const std::string& text);
    // The ProbeMatches answer to a Probe, from the template; empty when there is no template.
    // localAddress: the address the Probe came in on; empty to tell the host's addresses.
    std::string Answer(const std::string& relatesTo, const std::string& localAddress = "") const;

    const std::string& EndpointUrn() const { return endpointUrn_; }
    bool Listening() const { return listening_.load(); }
    // The scope and address texts of the answer.
    std::string ScopeText() const;
    std::string AddressText(const std::string& localAddress) const;
    // A datagram into buffer, with its sender and the local address it came in on.
    static ssize_t ReceiveProbe(int sock, std::vector<char>& buffer, struct sockaddr_in& sender,
                                std::string& localAddress);

    // The addresses to tell whatever interface a Probe comes in on (before Run).
    void SetAddresses(std::vector<std::string> addresses) {
        data_.addresses = std::move(addresses);
        explicitAddresses_ = true;
    }

  protected:
    void Entry() override;

  private:
    bool OpenSocket();
    void CloseSocket();

    const std::string name_;
    const int port_;
    const int discoveryPort_;
    OnvifDeviceData data_;
    bool explicitAddresses_ = false;
    std::string endpointUrn_;
    std::atomic<int> sock_{-1};
    std::atomic<bool> listening_{false};
    mutable std::mutex lastAnswerMutex_;
    mutable std::string lastAnswer_;  // what kLastAnswer holds; guarded by lastAnswerMutex_
};
