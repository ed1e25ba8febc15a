#include "OnvifFinder.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <chrono>
#include <ctime>
#include <memory>
#include <random>

#include "platform/TcpSocket.h"
#include "platform/Ticks.h"

namespace {

constexpr const char* kMulticastGroup = "239.255.255.250";
constexpr size_t kLargestAnswer = 1 << 20;  // a device answering more is not read further

struct DocDeleter {
    void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};
using Doc = std::unique_ptr<xmlDoc, DocDeleter>;

Doc Parse(const std::string& xml) {
    return Doc(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                             XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
}

bool Named(const xmlNode* node, const char* localName) {
    return node->type == XML_ELEMENT_NODE &&
           xmlStrcmp(node->name, reinterpret_cast<const xmlChar*>(localName)) == 0;
}

std::string TextOf(const xmlNode* node) {
    xmlChar* text = xmlNodeGetContent(node);
    std::string value = text != nullptr ? reinterpret_cast<const char*>(text) : "";
    xmlFree(text);
    const size_t first = value.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    return value.substr(first, value.find_last_not_of(" \t\r\n") - first + 1);
}

// The elements of a local name below node, in document order, whatever their prefix.
void Collect(xmlNode* node, const char* localName, std::vector<xmlNode*>& found) {
    for (; node != nullptr; node = node->next) {
        if (Named(node, localName))
            found.push_back(node);
        Collect(node->children, localName, found);
    }
}

std::vector<xmlNode*> Below(xmlNode* node, const char* localName) {
    std::vector<xmlNode*> found;
    if (node != nullptr)
        Collect(node->children, localName, found);
    return found;
}

std::string FirstText(xmlNode* node, const char* localName) {
    const auto found = Below(node, localName);
    return found.empty() ? std::string() : TextOf(found.front());
}

std::string Attribute(xmlNode* node, const char* name) {
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    std::string text = value != nullptr ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

std::string Uuid() {
    std::random_device random;
    char text[48];
    std::snprintf(text, sizeof text, "%08x-%04x-4%03x-a%03x-%04x%08x", random(), random() & 0xFFFF,
                  random() & 0xFFF, random() & 0xFFF, random() & 0xFFFF, random());
    return text;
}

std::string Base64(const std::string& bytes) {
    std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                       reinterpret_cast<const unsigned char*>(bytes.data()),
                                       static_cast<int>(bytes.size()));
    text.resize(static_cast<size_t>(length));
    return text;
}

std::string UtcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

std::string ProbeMessage() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
           "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\" "
           "xmlns:a=\"http://schemas.xmlsoap.org/ws/2004/08/addressing\" "
           "xmlns:d=\"http://schemas.xmlsoap.org/ws/2005/04/discovery\" "
           "xmlns:dn=\"http://www.onvif.org/ver10/network/wsdl\"><s:Header>"
           "<a:MessageID>uuid:" +
           Uuid() +
           "</a:MessageID><a:To>urn:schemas-xmlsoap-org:ws:2005:04:discovery</a:To>"
           "<a:Action>http://schemas.xmlsoap.org/ws/2005/04/discovery/Probe</a:Action>"
           "</s:Header><s:Body><d:Probe><d:Types>dn:NetworkVideoTransmitter</d:Types>"
           "</d:Probe></s:Body></s:Envelope>";
}

// A camera's name from its scopes ("onvif://www.onvif.org/name/Gate%20North").
std::string NameFromScopes(const std::string& scopes) {
    const std::string marker = "onvif://www.onvif.org/name/";
    const size_t at = scopes.find(marker);
    if (at == std::string::npos)
        return std::string();
    std::string name = scopes.substr(at + marker.size());
    name = name.substr(0, name.find_first_of(" \t\r\n"));
    std::string decoded;
    for (size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '%' && i + 2 < name.size()) {
            decoded += static_cast<char>(std::stoi(name.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            decoded += name[i];
        }
    }
    return decoded;
}

void SendProbe(int sock, const std::string& message, const char* address, int port) {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<uint16_t>(port));
    ::inet_pton(AF_INET, address, &to.sin_addr);
    ::sendto(sock, message.data(), message.size(), 0, reinterpret_cast<sockaddr*>(&to), sizeof to);
}

void TakeProbeMatch(const std::string& datagram, std::vector<FoundCamera>& found) {
    const Doc doc = Parse(datagram);
    if (doc == nullptr)
        return;
    for (xmlNode* match : Below(xmlDocGetRootElement(doc.get()), "ProbeMatch")) {
        FoundCamera camera;
        const std::string xaddrs = FirstText(match, "XAddrs");
        camera.address = xaddrs.substr(0, xaddrs.find_first_of(" \t\r\n"));
        if (camera.address.rfind("http://", 0) != 0)
            continue;  // only plain HTTP device services are read
        camera.name = NameFromScopes(FirstText(match, "Scopes"));
        if (camera.name.empty())
            camera.name = camera.address;
        bool known = false;
        for (const auto& other : found)
            known = known || other.address == camera.address;
        if (!known)
            found.push_back(camera);
    }
}

struct HttpAddress {
    std::string host;
    int port = 80;
    std::string path = "/";
};

bool SplitHttpUrl(const std::string& url, HttpAddress& address) {
    const std::string scheme = "http://";
    if (url.rfind(scheme, 0) != 0)
        return false;
    const size_t hostEnd = url.find('/', scheme.size());
    std::string authority = url.substr(scheme.size(), hostEnd - scheme.size());
    if (hostEnd != std::string::npos)
        address.path = url.substr(hostEnd);
    const size_t colon = authority.rfind(':');
    if (colon != std::string::npos) {
        address.port = std::atoi(authority.c_str() + colon + 1);
        authority.resize(colon);
    }
    address.host = authority;
    return !address.host.empty() && address.port > 0 && address.port < 65536;
}

// One SOAP request over HTTP; the body of the answer, or empty with problem set.
std::string Post(const std::string& url, const std::string& envelope, int timeoutMs,
                 std::string& problem) {
    HttpAddress address;
    if (!SplitHttpUrl(url, address)) {
        problem = "not an HTTP address: " + url;
        return std::string();
    }
    platform::TcpSocket socket =
        platform::TcpSocket::Connect(address.host, address.port, timeoutMs);
    if (!socket.IsOpen()) {
        problem = "no connection to " + address.host + ":" + std::to_string(address.port);
        return std::string();
    }
    const uint32_t deadline = platform::GetTickCount() + static_cast<uint32_t>(timeoutMs);
    const std::string request = "POST " + address.path + " HTTP/1.1\r\nHost: " + address.host +
                                "\r\nContent-Type: application/soap+xml; charset=utf-8\r\n"
                                "Content-Length: " +
                                std::to_string(envelope.size()) + "\r\nConnection: close\r\n\r\n" +
                                envelope;
    if (!socket.SendAllBefore(request, deadline)) {
        problem = "the device did not take the request";
        return std::string();
    }
    std::string answer;
    char piece[4096];
    for (;;) {
        const auto left = static_cast<int32_t>(deadline - platform::GetTickCount());
        if (left <= 0 || answer.size() > kLargestAnswer)
            break;
        socket.SetTimeouts(left, left);
        const size_t got = socket.Receive(piece, sizeof piece);
        if (got == 0)
            break;
        answer.append(piece, got);
    }
    const size_t body = answer.find("\r\n\r\n");
    if (answer.rfind("HTTP/1.", 0) != 0 || body == std::string::npos) {
        problem = answer.empty() ? "no answer within " + std::to_string(timeoutMs / 1000) + " s"
                                 : "not an HTTP answer";
        return std::string();
    }
    const std::string status = answer.substr(9, 3);
    if (status == "401") {
        problem = "user or password refused (HTTP 401)";
        return std::string();
    }
    return answer.substr(body + 4);
}

std::string Envelope(const std::string& security, const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
           "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\" "
           "xmlns:tds=\"http://www.onvif.org/ver10/device/wsdl\" "
           "xmlns:trt=\"http://www.onvif.org/ver10/media/wsdl\" "
           "xmlns:tt=\"http://www.onvif.org/ver10/schema\">" +
           (security.empty() ? std::string() : "<s:Header>" + security + "</s:Header>") +
           "<s:Body>" + body + "</s:Body></s:Envelope>";
}

// The answer's body parsed, or null with problem set (nothing, not XML, a fault).
Doc Call(const std::string& url, const std::string& security, const std::string& body,
         int timeoutMs, std::string& problem) {
    const std::string answer = Post(url, Envelope(security, body), timeoutMs, problem);
    if (answer.empty()) {
        if (problem.empty())
            problem = "empty answer";
        return nullptr;
    }
    Doc doc = Parse(answer);
    if (doc == nullptr) {
        problem = "the answer is not XML";
        return nullptr;
    }
    xmlNode* root = xmlDocGetRootElement(doc.get());
    if (!Below(root, "Fault").empty()) {
        const std::string reason = FirstText(root, "Text");
        problem = "the device refused: " + (reason.empty() ? FirstText(root, "Value") : reason);
        return nullptr;
    }
    return doc;
}

}  // namespace

std::vector<FoundCamera> OnvifFinder::Probe(int timeoutMs, int port) {
    std::vector<FoundCamera> found;
    const int sock = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (sock < 0)
        return found;
    const std::string message = ProbeMessage();
    SendProbe(sock, message, kMulticastGroup, port);
    SendProbe(sock, message, "127.0.0.1", port);  // a device front of this very host
    const uint32_t deadline = platform::GetTickCount() + static_cast<uint32_t>(timeoutMs);
    std::string datagram(65536, '\0');
    for (;;) {
        const auto left = static_cast<int32_t>(deadline - platform::GetTickCount());
        pollfd waiting{sock, POLLIN, 0};
        if (left <= 0 || ::poll(&waiting, 1, left) <= 0)
            break;
        const ssize_t size = ::recv(sock, datagram.data(), datagram.size(), 0);
        if (size > 0)
            TakeProbeMatch(datagram.substr(0, static_cast<size_t>(size)), found);
    }
    ::close(sock);
    return found;
}

std::string OnvifFinder::PasswordDigest(const std::string& nonce, const std::string& created,
                                        const std::string& password) {
    const std::string joined = nonce + created + password;
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    EVP_Digest(joined.data(), joined.size(), digest, &length, EVP_sha1(), nullptr);
    return Base64(std::string(reinterpret_cast<char*>(digest), length));
}

std::string OnvifFinder::SecurityHeader(const std::string& user, const std::string& password,
                                        const std::string& nonce, const std::string& created) {
    if (user.empty())
        return std::string();
    const std::string wsse =
        "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd";
    const std::string wsu =
        "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd";
    const std::string profile =
        "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-username-token-profile-1.0";
    return "<wsse:Security s:mustUnderstand=\"1\" xmlns:wsse=\"" + wsse + "\" xmlns:wsu=\"" + wsu +
           "\"><wsse:UsernameToken><wsse:Username>" + user +
           "</wsse:Username><wsse:Password Type=\"" + profile + "#PasswordDigest\">" +
           PasswordDigest(nonce, created, password) +
           "</wsse:Password><wsse:Nonce EncodingType=\"http://docs.oasis-open.org/wss/2004/01/"
           "oasis-200401-wss-soap-message-security-1.0#Base64Binary\">" +
           Base64(nonce) + "</wsse:Nonce><wsu:Created>" + created +
           "</wsu:Created></wsse:UsernameToken></wsse:Security>";
}

std::vector<CameraProfile> OnvifFinder::Profiles(const std::string& deviceAddress,
                                                 const std::string& user,
                                                 const std::string& password, std::string& problem,
                                                 int timeoutMs) {
    // A fresh token for each request: devices refuse a nonce they have seen.
    auto security = [&] {
        unsigned char nonce[16];
        RAND_bytes(nonce, sizeof nonce);
        return SecurityHeader(user, password,
                              std::string(reinterpret_cast<char*>(nonce), sizeof nonce), UtcNow());
    };
    std::vector<CameraProfile> profiles;
    std::string media = deviceAddress;
    const Doc capabilities =
        Call(deviceAddress, security(),
             "<tds:GetCapabilities><tds:Category>Media</tds:Category></tds:GetCapabilities>",
             timeoutMs, problem);
    if (capabilities == nullptr)
        return profiles;
    for (xmlNode* node : Below(xmlDocGetRootElement(capabilities.get()), "Media")) {
        const std::string address = FirstText(node, "XAddr");
        if (!address.empty()) {
            media = address;
            break;
        }
    }
    const Doc answer = Call(media, security(), "<trt:GetProfiles/>", timeoutMs, problem);
    if (answer == nullptr)
        return profiles;
    for (xmlNode* node : Below(xmlDocGetRootElement(answer.get()), "Profiles")) {
        CameraProfile profile;
        profile.token = Attribute(node, "token");
        for (xmlNode* child = node->children; child != nullptr; child = child->next)
            if (Named(child, "Name"))
                profile.name = TextOf(child);
        profile.width = std::atoi(FirstText(node, "Width").c_str());
        profile.height = std::atoi(FirstText(node, "Height").c_str());
        const Doc uri = Call(
            media, security(),
            "<trt:GetStreamUri><trt:StreamSetup><tt:Stream>RTP-Unicast</tt:Stream><tt:Transport>"
            "<tt:Protocol>RTSP</tt:Protocol></tt:Transport></trt:StreamSetup><trt:ProfileToken>" +
                profile.token + "</trt:ProfileToken></trt:GetStreamUri>",
            timeoutMs, problem);
        if (uri == nullptr)
            return std::vector<CameraProfile>();
        profile.uri = FirstText(xmlDocGetRootElement(uri.get()), "Uri");
        profiles.push_back(profile);
    }
    if (profiles.empty() && problem.empty())
        problem = "the device has no media profile";
    return profiles;
}
