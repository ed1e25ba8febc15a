#include "WSDiscovery.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <random>
#include <vector>

#include "platform/AddressRange.h"
#include "platform/FileSystem.h"

namespace {

constexpr const char* kScopeRoot = "onvif://www.onvif.org/";
constexpr int kPollMs = 100;  // the longest a stop waits for the receive to notice

// One message at a time over all responders: they share the answer's file.
std::mutex& DiscoveryMutex() {
    static std::mutex mutex;
    return mutex;
}

struct DocDeleter {
    void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};
using Doc = std::unique_ptr<xmlDoc, DocDeleter>;

std::string Trimmed(const std::string& text) {
    const char* blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Texts of the elements of a local name, in document order, whatever their prefix.
void Collect(xmlDoc* doc, xmlNode* node, const char* localName, std::vector<std::string>& texts) {
    for (; node != nullptr; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
            continue;
        if (xmlStrcmp(node->name, reinterpret_cast<const xmlChar*>(localName)) == 0) {
            xmlChar* text = xmlNodeListGetString(doc, node->children, 1);
            texts.push_back(Trimmed(text != nullptr ? reinterpret_cast<const char*>(text) : ""));
            xmlFree(text);
        }
        Collect(doc, node->children, localName, texts);
    }
}

std::vector<std::string> Elements(xmlDoc* doc, const char* localName) {
    std::vector<std::string> texts;
    Collect(doc, xmlDocGetRootElement(doc), localName, texts);
    return texts;
}

void SetAll(xmlXPathContext* context, const char* localName, const std::string& content) {
    const std::string expression = std::string("//*[local-name()='") + localName + "']";
    xmlXPathObject* found =
        xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(expression.c_str()), context);
    if (found == nullptr)
        return;
    if (found->nodesetval != nullptr)
        for (int i = 0; i < found->nodesetval->nodeNr; ++i) {
            xmlChar* escaped =
                xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(content.c_str()));
            xmlNodeSetContent(found->nodesetval->nodeTab[i], escaped);
            xmlFree(escaped);
        }
    xmlXPathFreeObject(found);
}

}  // namespace

WSDiscovery::WSDiscovery(std::string name, int port, int discoveryPort)
    : name_(std::move(name)), port_(port), discoveryPort_(discoveryPort) {
    data_.port = port_;
    data_.name = name_;
    data_.addresses = OnvifDeviceData::ReadAddresses();
    // Seeded with the SOAP port, so a stream keeps its identity across restarts.
    endpointUrn_ = "urn:" + MakeUuid(static_cast<unsigned>(port_));
    SetReportName("discovery responder of " + name_);
}

WSDiscovery::~WSDiscovery() {
    Stop();
}

void WSDiscovery::Stop() {
    CloseSocket();
    Delete();
}

std::string WSDiscovery::MakeUuid(unsigned seed) {
    std::mt19937 generator(seed);
    std::string uuid = "uuid:";
    const char* digits = "0123456789abcdef";
    for (int i = 0; i < 32; ++i) {
        uuid += digits[generator() % 16];
        if (i == 7 || i == 11 || i == 15 || i == 19)
            uuid += '-';
    }
    return uuid;
}

std::string WSDiscovery::ProbeMessageId(const std::string& text) {
    if (text.empty() || text.size() > kMaxDatagram)
        return std::string();
    // Parsed from memory, never from the network: no external entities, no DTD loading.
    Doc doc(xmlReadMemory(text.data(), static_cast<int>(text.size()), "probe.xml", nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!doc)
        return std::string();
    const auto actions = Elements(doc.get(), "Action");
    if (actions.empty() || actions[0].find("discovery/Probe") == std::string::npos)
        return std::string();
    const auto types = Elements(doc.get(), "Types");
    if (types.empty() || types[0].find("NetworkVideoTransmitter") == std::string::npos)
        return std::string();
    const auto ids = Elements(doc.get(), "MessageID");
    // What is echoed is bounded: a longer MessageID is no client's, and is not answered.
    if (ids.empty() || ids[0].size() > kMaxMessageId)
        return std::string();
    return ids[0];
}

std::string WSDiscovery::ScopeText() const {
    const std::string root = kScopeRoot;
    return root + "type/video_encoder  " + root + "hardware/" + name_ + " " + root + "name/" +
           name_ + " " + root + "location/";
}

std::string WSDiscovery::AddressText(const std::string& localAddress) const {
    std::string text;
    // Addresses set for the device win; else the one the Probe came in on; else the host's.
    const std::vector<std::string> local{localAddress};
    const bool told = explicitAddresses_ || localAddress.empty();
    for (const auto& address : told ? data_.addresses : local)
        text += "http://" + address + ":" + std::to_string(port_) + "/onvif/device_service ";
    return text;
}

std::string WSDiscovery::Answer(const std::string& relatesTo,
                                const std::string& localAddress) const {
    Doc doc(xmlReadFile(kTemplate, nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR));
    if (!doc)
        return std::string();
    xmlXPathContext* context = xmlXPathNewContext(doc.get());
    if (context == nullptr)
        return std::string();
    SetAll(context, "MessageID", MakeUuid(static_cast<unsigned>(port_)));
    SetAll(context, "RelatesTo", relatesTo);
    SetAll(context, "Address", endpointUrn_);
    SetAll(context, "Scopes", ScopeText());
    SetAll(context, "XAddrs", AddressText(localAddress));
    xmlXPathFreeContext(context);
    xmlChar* dumped = nullptr;
    int size = 0;
    xmlDocDumpMemory(doc.get(), &dumped, &size);
    std::string answer(reinterpret_cast<const char*>(dumped), static_cast<size_t>(size));
    xmlFree(dumped);
    // The last answer is kept on disk for the curious; a Probe sent again (clients repeat
    // theirs) writes nothing.
    {
        std::lock_guard<std::mutex> lock(lastAnswerMutex_);
        if (answer != lastAnswer_ && platform::WriteWholeFile(kLastAnswer, answer))
            lastAnswer_ = answer;
    }
    return answer;
}

bool WSDiscovery::OpenSocket() {
    const int sock = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (sock < 0)
        return false;
    const int yes = 1;
    ::setsockopt(sock, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(discoveryPort_));
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    if (::bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(sock);
        return false;
    }
    // A host without a multicast route still answers Probes sent to it directly.
    ip_mreq group{};
    group.imr_multiaddr.s_addr = ::inet_addr(kGroup);
    group.imr_interface.s_addr = htonl(INADDR_ANY);
    ::setsockopt(sock, IPPROTO_IP, IP_ADD_MEMBERSHIP, &group, sizeof group);
    // Each datagram comes with the local address it arrived on: the address to answer with.
    ::setsockopt(sock, IPPROTO_IP, IP_PKTINFO, &yes, sizeof yes);
    sock_ = sock;
    return true;
}

ssize_t WSDiscovery::ReceiveProbe(int sock, std::vector<char>& buffer, sockaddr_in& sender,
                                  std::string& localAddress) {
    iovec data{buffer.data(), buffer.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))];
    msghdr message{};
    message.msg_name = &sender;
    message.msg_namelen = sizeof sender;
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    const ssize_t size = ::recvmsg(sock, &message, 0);
    for (cmsghdr* item = CMSG_FIRSTHDR(&message); size > 0 && item != nullptr;
         item = CMSG_NXTHDR(&message, item)) {
        if (item->cmsg_level != IPPROTO_IP || item->cmsg_type != IP_PKTINFO)
            continue;
        in_pktinfo info{};
        std::memcpy(&info, CMSG_DATA(item), sizeof info);
        if (info.ipi_spec_dst.s_addr != htonl(INADDR_ANY))
            localAddress = platform::DottedAddress(ntohl(info.ipi_spec_dst.s_addr));
    }
    return size;
}

void WSDiscovery::CloseSocket() {
    const int sock = sock_.exchange(-1);
    if (sock >= 0) {
        ::shutdown(sock, SHUT_RDWR);
        ::close(sock);
    }
}

void WSDiscovery::Entry() {
    if (!OpenSocket()) {
        while (Pause(100)) {
        }
        return;
    }
    listening_ = true;
    std::vector<char> buffer(kMaxDatagram + 1);
    while (!TestDestroy()) {
        const int sock = sock_.load();
        if (sock < 0)
            break;
        pollfd waiting{sock, POLLIN, 0};
        if (::poll(&waiting, 1, kPollMs) <= 0)
            continue;
        sockaddr_in sender{};
        std::string localAddress;
        // One byte more than the largest message, to tell a too large datagram apart.
        const ssize_t size = ReceiveProbe(sock, buffer, sender, localAddress);
        if (size < 1 || size > kMaxDatagram)
            continue;
        const std::string text(buffer.data(), static_cast<size_t>(size));
        std::lock_guard<std::mutex> lock(DiscoveryMutex());
        const std::string relatesTo = ProbeMessageId(text);
        if (relatesTo.empty())
            continue;
        const std::string answer = Answer(relatesTo, localAddress);
        if (!answer.empty())
            ::sendto(sock, answer.data(), answer.size(), 0, reinterpret_cast<sockaddr*>(&sender),
                     sizeof sender);
    }
    listening_ = false;
    CloseSocket();
}
