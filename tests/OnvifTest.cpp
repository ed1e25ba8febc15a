// The ONVIF device front with real peers on loopback: the discovery responder answering Probe
// datagrams, and ignoring garbage, oversized and hostile ones.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <opencv2/imgcodecs.hpp>

#include "CommandOutput.h"
#include "StreamProducer.h"
#include "TestSupport.h"
#include "onvif/SoapThread.h"
#include "onvif/WSDiscovery.h"
#include "platform/FileSystem.h"
#include "streaming/RtspService.h"

namespace {

int TestPort() {
    return 19000 + static_cast<int>(::getpid() % 1000);
}

std::string Probe(const std::string& messageId, const std::string& types) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
           "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\" "
           "xmlns:a=\"http://schemas.xmlsoap.org/ws/2004/08/addressing\" "
           "xmlns:d=\"http://schemas.xmlsoap.org/ws/2005/04/discovery\" "
           "xmlns:dn=\"http://www.onvif.org/ver10/network/wsdl\">"
           "<s:Header><a:Action>http://schemas.xmlsoap.org/ws/2005/04/discovery/Probe</a:Action>"
           "<a:MessageID>" +
           messageId +
           "</a:MessageID>"
           "<a:To>urn:schemas-xmlsoap-org:ws:2005:04:discovery</a:To></s:Header>"
           "<s:Body><d:Probe><d:Types>" +
           types + "</d:Types></d:Probe></s:Body></s:Envelope>";
}

// A client socket on loopback that sends datagrams to the responder and waits for answers.
class ProbeClient {
  public:
    ProbeClient() : sock_(::socket(AF_INET, SOCK_DGRAM, 0)) {}
    ~ProbeClient() { ::close(sock_); }
    void Send(const std::string& datagram, int port, const char* host = "127.0.0.1") const {
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(static_cast<uint16_t>(port));
        ::inet_pton(AF_INET, host, &to.sin_addr);
        ::sendto(sock_, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&to),
                 sizeof to);
    }
    std::string Receive(int milliseconds) const {
        pollfd waiting{sock_, POLLIN, 0};
        if (::poll(&waiting, 1, milliseconds) <= 0)
            return std::string();
        std::string buffer(65536, '\0');
        const ssize_t size = ::recv(sock_, buffer.data(), buffer.size(), 0);
        return size > 0 ? buffer.substr(0, static_cast<size_t>(size)) : std::string();
    }

  private:
    int sock_;
};

std::string ElementText(const std::string& xml, const std::string& localName) {
    const std::regex element("<(?:[A-Za-z0-9]+:)?" + localName + ">([^<]*)</");
    std::smatch match;
    return std::regex_search(xml, match, element) ? match[1].str() : std::string("(none)");
}

}  // namespace

TEST(WSDiscovery, UuidsAreStableForASeedAndWellFormed) {
    const std::string uuid = WSDiscovery::MakeUuid(8081);
    EXPECT_EQ(uuid, WSDiscovery::MakeUuid(8081));
    EXPECT_NE(uuid, WSDiscovery::MakeUuid(8082));
    EXPECT_TRUE(std::regex_match(
        uuid, std::regex("uuid:[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}")))
        << uuid;
}

TEST(WSDiscovery, OnlyProbesForAVideoTransmitterAreAnswered) {
    EXPECT_EQ(WSDiscovery::ProbeMessageId(Probe("uuid:1", "dn:NetworkVideoTransmitter")), "uuid:1");
    EXPECT_EQ(WSDiscovery::ProbeMessageId(Probe("uuid:2", " tds:NetworkVideoTransmitter ")),
              "uuid:2");
    EXPECT_EQ(WSDiscovery::ProbeMessageId(Probe("uuid:3", "tds:Device")), "");
    EXPECT_EQ(WSDiscovery::ProbeMessageId("not xml at all <<<"), "");
    EXPECT_EQ(WSDiscovery::ProbeMessageId(std::string(9000, 'x')), "");
    // A MessageID of 7 KB would be echoed whole: such a Probe is not answered.
    EXPECT_EQ(
        WSDiscovery::ProbeMessageId(Probe(std::string(256, 'u'), "dn:NetworkVideoTransmitter")),
        std::string(256, 'u'));
    EXPECT_EQ(
        WSDiscovery::ProbeMessageId(Probe(std::string(7000, 'u'), "dn:NetworkVideoTransmitter")),
        "");
    // A document that asks for an external entity is read without fetching it.
    const std::string probe = Probe("&x;", "dn:NetworkVideoTransmitter");
    const std::string hostile =
        "<?xml version=\"1.0\"?><!DOCTYPE s:Envelope [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>" +
        probe.substr(probe.find("?>") + 2);
    EXPECT_EQ(WSDiscovery::ProbeMessageId(hostile).find("root:"), std::string::npos);
}

TEST(WSDiscovery, AnswersByUnicastAndSurvivesGarbage) {
    platform::ScopedWorkingDirectory cwd(CORVANE_APP_DIR);  // where "templ/" lies
    WSDiscovery responder("Lane1", 8081, TestPort());
    responder.Run();
    for (int i = 0; i < 100 && !responder.Listening(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_TRUE(responder.Listening());

    ProbeClient client;
    client.Send(std::string(9000, '<'), TestPort());          // oversized
    client.Send("\x01\x02garbage", TestPort());               // no XML
    client.Send(Probe("uuid:aa", "tds:Device"), TestPort());  // another type
    client.Send(Probe("uuid:bb", "dn:NetworkVideoTransmitter"), TestPort());
    const std::string first = client.Receive(3000);
    ASSERT_FALSE(first.empty());
    EXPECT_EQ(client.Receive(300), "");  // exactly one answer, to the one real Probe
    EXPECT_EQ(ElementText(first, "RelatesTo"), "uuid:bb");
    EXPECT_EQ(ElementText(first, "Address"), responder.EndpointUrn());
    // The address told is the one the Probe came in on, not the host's list.
    EXPECT_EQ(ElementText(first, "XAddrs"), "http://127.0.0.1:8081/onvif/device_service ");
    EXPECT_EQ(ElementText(first, "Scopes"),
              "onvif://www.onvif.org/type/video_encoder  onvif://www.onvif.org/hardware/Lane1 "
              "onvif://www.onvif.org/name/Lane1 onvif://www.onvif.org/location/");
    EXPECT_NE(ElementText(first, "Types").find("NetworkVideoTransmitter"), std::string::npos);

    // The same Probe again (clients repeat theirs) leaves the kept answer as it was.
    const std::string kept = std::string(CORVANE_APP_DIR) + "/" + WSDiscovery::kLastAnswer;
    struct stat before {};
    ASSERT_EQ(::stat(kept.c_str(), &before), 0);
    client.Send(Probe("uuid:bb", "dn:NetworkVideoTransmitter"), TestPort());
    EXPECT_EQ(client.Receive(3000), first);
    struct stat after {};
    ASSERT_EQ(::stat(kept.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);  // not written again (a write renames a new file in)

    client.Send(Probe("uuid:cc", "dn:NetworkVideoTransmitter"), TestPort(), "127.0.0.2");
    const std::string second = client.Receive(3000);
    EXPECT_EQ(ElementText(second, "RelatesTo"), "uuid:cc");
    EXPECT_EQ(ElementText(second, "XAddrs"), "http://127.0.0.2:8081/onvif/device_service ");
    EXPECT_EQ(ElementText(second, "MessageID"), ElementText(first, "MessageID"));

    const auto started = std::chrono::steady_clock::now();
    responder.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(500));
}

namespace {

// One HTTP exchange with the SOAP device: sends raw bytes, returns what comes back.
std::string Exchange(int port, const std::string& request, int waitMs = 3000,
                     const char* host = "127.0.0.1") {
    const int sock = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<uint16_t>(port));
    ::inet_pton(AF_INET, host, &to.sin_addr);
    if (::connect(sock, reinterpret_cast<sockaddr*>(&to), sizeof to) != 0) {
        ::close(sock);
        return "(no connection)";
    }
    size_t sent = 0;
    while (sent < request.size()) {
        const ssize_t n = ::send(sock, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
        if (n <= 0)
            break;
        sent += static_cast<size_t>(n);
    }
    std::string answer;
    pollfd waiting{sock, POLLIN, 0};
    char chunk[4096];
    while (::poll(&waiting, 1, waitMs) > 0) {
        const ssize_t n = ::recv(sock, chunk, sizeof chunk, 0);
        if (n <= 0)
            break;
        answer.append(chunk, static_cast<size_t>(n));
    }
    ::close(sock);
    return answer;
}

std::string SoapRequest(const std::string& body) {
    const std::string envelope =
        "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\"><s:Body>" + body +
        "</s:Body></s:Envelope>";
    return "POST /onvif/device_service HTTP/1.1\r\nHost: 127.0.0.1\r\n"
           "Content-Type: application/soap+xml\r\nContent-Length: " +
           std::to_string(envelope.size()) + "\r\n\r\n" + envelope;
}

// A request as mainstream ONVIF clients send it: a WS-Security UsernameToken (plain or digest)
// and WS-Addressing headers, each marked as one the device must understand.
std::string SoapRequestWithHeaders(
    const std::string& body, const std::string& passwordType,
    const std::string& addressing = "http://www.w3.org/2005/08/addressing") {
    const std::string envelope =
        "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\" "
        "xmlns:a=\"" +
        addressing +
        "\"><s:Header>"
        "<a:Action s:mustUnderstand=\"1\">http://www.onvif.org/ver10/device/wsdl/"
        "GetDeviceInformation</a:Action>"
        "<a:MessageID>urn:uuid:6b3f0c1e-0f6e-4d39-9a53-5a0d2b6f3c11</a:MessageID>"
        "<a:ReplyTo><a:Address>http://www.w3.org/2005/08/addressing/anonymous</a:Address>"
        "</a:ReplyTo><a:To s:mustUnderstand=\"1\">http://127.0.0.1/onvif/device_service</a:To>"
        "<Security s:mustUnderstand=\"1\" xmlns=\"http://docs.oasis-open.org/wss/2004/01/"
        "oasis-200401-wss-wssecurity-secext-1.0.xsd\"><UsernameToken><Username>admin</Username>"
        "<Password Type=\"http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-username-"
        "token-profile-1.0#" +
        passwordType +
        "\">c2VjcmV0</Password><Nonce EncodingType=\"http://docs.oasis-open.org/wss/2004/01/"
        "oasis-200401-wss-soap-message-security-1.0#Base64Binary\">bm9uY2U=</Nonce>"
        "<Created xmlns=\"http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-"
        "utility-1.0.xsd\">2026-11-23T10:00:00Z</Created></UsernameToken></Security>"
        "</s:Header><s:Body>" +
        body + "</s:Body></s:Envelope>";
    return "POST /onvif/device_service HTTP/1.1\r\nHost: 127.0.0.1\r\n"
           "Content-Type: application/soap+xml\r\nContent-Length: " +
           std::to_string(envelope.size()) + "\r\n\r\n" + envelope;
}

bool WaitServing(const SoapThread& soap) {
    for (int i = 0; i < 200 && !soap.Serving(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return soap.Serving();
}

}  // namespace

TEST(SoapThread, AnswersTheOperationsWithContentAndSurvivesBadRequests) {
    const int port = TestPort() + 1;
    SoapThread soap("Gate1", port, 1000000);  // every local address
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));

    const std::string info = Exchange(
        port,
        SoapRequest("<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>"));
    EXPECT_NE(info.find("200 OK"), std::string::npos) << info;
    EXPECT_EQ(ElementText(info, "Model"), "Gate1");
    EXPECT_EQ(ElementText(info, "Manufacturer"), "Halvern");

    // Before there is a picture the snapshot is unavailable; then it is the source's JPEG.
    const std::string snapshotUri = Exchange(
        port, SoapRequest("<GetSnapshotUri xmlns=\"http://www.onvif.org/ver10/media/wsdl\">"
                          "<ProfileToken>mobile_h264</ProfileToken></GetSnapshotUri>"));
    EXPECT_EQ(ElementText(snapshotUri, "Uri"),
              "http://127.0.0.1:" + std::to_string(port) + "/onvif/snapshot.jpg");
    const std::string get = "GET /onvif/snapshot.jpg HTTP/1.1\r\nHost: x\r\n\r\n";
    EXPECT_EQ(Exchange(port, get).rfind("HTTP/1.1 503", 0), 0u);
    soap.SetSnapshotSource([] { return std::string("\xff\xd8 a picture \xff\xd9"); });
    const std::string shot = Exchange(port, get);
    EXPECT_EQ(shot.rfind("HTTP/1.1 200 OK", 0), 0u) << shot;
    EXPECT_NE(shot.find("Content-Type: image/jpeg\r\n"), std::string::npos);
    EXPECT_EQ(shot.substr(shot.find("\r\n\r\n") + 4), "\xff\xd8 a picture \xff\xd9");
    const std::string uri =
        Exchange(port, SoapRequest("<GetStreamUri xmlns=\"http://www.onvif.org/ver10/media/wsdl\">"
                                   "<ProfileToken>other</ProfileToken></GetStreamUri>"));
    // Addresses are those the request came in on, whatever the host's name resolves to.
    EXPECT_EQ(ElementText(uri, "Uri"), "rtsp://127.0.0.1:8554/Gate1");
    const std::string capabilities =
        Exchange(port,
                 SoapRequest("<GetCapabilities xmlns=\"http://www.onvif.org/ver10/device/wsdl\">"
                             "<Category>Media</Category></GetCapabilities>"),
                 3000, "127.0.0.2");
    EXPECT_EQ(ElementText(capabilities, "XAddr"),
              "http://127.0.0.2:" + std::to_string(port) + "/onvif/services");
    EXPECT_NE(capabilities.find("<tt:Major>1</tt:Major>"), std::string::npos) << capabilities;
    // A region's device tells 640 x 480 at 25 with its own bit rate; a source's follows its
    // frames and tells 512.
    const std::string profiles = Exchange(
        port, SoapRequest("<GetProfiles xmlns=\"http://www.onvif.org/ver10/media/wsdl\"/>"));
    EXPECT_EQ(ElementText(profiles, "Width"), "640");
    EXPECT_EQ(ElementText(profiles, "BitrateLimit"), "1000000");
    EXPECT_EQ(ElementText(profiles, "GovLength"), "30");
    soap.SetVideoFormat(1280, 720, 12);
    const std::string sources = Exchange(
        port, SoapRequest("<GetVideoSources xmlns=\"http://www.onvif.org/ver10/media/wsdl\"/>"));
    EXPECT_EQ(ElementText(sources, "Width"), "1280");
    EXPECT_EQ(ElementText(sources, "Framerate"), "12");
    const std::string profile = Exchange(
        port, SoapRequest("<GetProfile xmlns=\"http://www.onvif.org/ver10/media/wsdl\"/>"));
    EXPECT_EQ(ElementText(profile, "BitrateLimit"), "512");
    // A change of the measured rate alone is told as well.
    soap.SetVideoFormat(1280, 720, 9);
    EXPECT_EQ(
        ElementText(Exchange(port, SoapRequest("<GetVideoSources xmlns=\"http://www.onvif.org/"
                                               "ver10/media/wsdl\"/>")),
                    "Framerate"),
        "9");
    EXPECT_EQ(ElementText(profile, "GovLength"), "5");
    // The empty operations answer with their element; unknown ones and imaging get a fault.
    EXPECT_NE(
        Exchange(port,
                 SoapRequest("<SystemReboot xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>"))
            .find("SystemRebootResponse"),
        std::string::npos);
    EXPECT_NE(Exchange(port, SoapRequest(
                                 "<GetLayout xmlns=\"http://www.onvif.org/ver10/display/wsdl\"/>"))
                  .find("GetLayoutResponse"),
              std::string::npos);
    EXPECT_NE(
        Exchange(
            port,
            SoapRequest("<GetImagingSettings xmlns=\"http://www.onvif.org/ver20/imaging/wsdl\"/>"))
            .find("Fault"),
        std::string::npos);

    // Garbage, a truncated request and an oversized one: each ends its connection, and the
    // device answers the next request as before.
    Exchange(port, "\x01\x02\x03 garbage\r\n\r\n", 1000);
    Exchange(port, SoapRequest("<GetDeviceInformation").substr(0, 150), 1000);
    Exchange(port,
             SoapRequest("<GetScopes xmlns=\"http://www.onvif.org/ver10/device/wsdl\">" +
                         std::string(3 << 20, 'A') + "</GetScopes>"),
             1000);
    const std::string scopes = Exchange(
        port, SoapRequest("<GetScopes xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>"));
    EXPECT_NE(scopes.find("onvif://www.onvif.org/name/Gate1"), std::string::npos) << scopes;

    const auto started = std::chrono::steady_clock::now();
    soap.Delete();
    // The accept wakes every 100 ms: an edit that stops the device fronts waits no longer.
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(600));
}

TEST(SoapThread, CurlGetsA400FaultForEveryBodyThatIsNoEnvelopeAndNeverWaitsOn100Continue) {
    const int port = TestPort() + 4;
    SoapThread soap("Gate1", port, 1000000, "127.0.0.1");
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + "/onvif/device_service";
    TempDir dir;
    // What curl sends, byte for byte: cut, empty-rooted, garbage, NULs, a cut declaration.
    const std::vector<std::string> bodies = {"<a>", "<a/>", "<<<>>>", std::string("\0\0<a\0>", 6),
                                             "<?xml version=\"1.0\"?><a"};
    for (size_t i = 0; i < bodies.size(); ++i) {
        const std::string file = dir.File("body" + std::to_string(i));
        WriteFileBytes(file, std::vector<uint8_t>(bodies[i].begin(), bodies[i].end()));
        const std::string answer = CommandOutput(
            "curl -s -m 10 -w '\\n%{http_code}' -H 'Content-Type: application/soap+xml' "
            "--data-binary @" +
            file + " " + url);
        EXPECT_NE(answer.find("env:Sender"), std::string::npos) << i << ": " << answer;
        EXPECT_EQ(answer.substr(answer.size() - 3), "400") << i << ": " << answer;
    }
    // A client that waits for "100 Continue" before its body is told to go on at once.
    const std::string request =
        "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\"><s:Body>"
        "<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>"
        "</s:Body></s:Envelope>";
    WriteFileText(dir.File("information"), request);
    const auto asked = std::chrono::steady_clock::now();
    const std::string answer = CommandOutput(
        "curl -s -m 20 --expect100-timeout 15 -H 'Expect: 100-continue' "
        "-H 'Content-Type: application/soap+xml' --data-binary @" +
        dir.File("information") + " " + url);
    EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::seconds(3));
    EXPECT_NE(answer.find("GetDeviceInformationResponse"), std::string::npos) << answer;
}

TEST(SoapThread, FiftySlowClientsOfOneAddressNeverKeepAnotherFromBeingAnswered) {
    const int port = TestPort() + 5;
    SoapThread soap("Gate1", port, 1000000);
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    // Fifty clients from 127.0.0.2, each sending a request a byte a second, and reconnecting
    // when closed.
    std::atomic<bool> stop{false};
    std::vector<std::thread> slow;
    for (int i = 0; i < 50; ++i)
        slow.emplace_back([&] {
            const std::string request = "POST /onvif/device_service HTTP/1.1\r\nHost: x\r\n";
            while (!stop) {
                const int sock = ConnectFromAddress("127.0.0.2", port);
                if (sock >= 0)
                    for (size_t at = 0; at < request.size() && !stop; ++at) {
                        if (::send(sock, request.data() + at, 1, MSG_NOSIGNAL) <= 0)
                            break;
                        for (int t = 0; t < 10 && !stop; ++t)
                            std::this_thread::sleep_for(std::chrono::milliseconds(100));
                    }
                if (sock < 0)
                    std::this_thread::sleep_for(std::chrono::milliseconds(100));
                ::close(sock);
            }
        });
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    // A VMS on another address polls: answered within a second every time.
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + "/onvif/device_service";
    TempDir dir;
    WriteFileText(dir.File("information"),
                  "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\"><s:Body>"
                  "<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>"
                  "</s:Body></s:Envelope>");
    for (int probe = 0; probe < 10; ++probe) {
        const auto asked = std::chrono::steady_clock::now();
        const std::string answer =
            CommandOutput("curl -s -m 5 -H 'Content-Type: application/soap+xml' --data-binary @" +
                          dir.File("information") + " " + url);
        EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::seconds(1)) << probe;
        EXPECT_NE(answer.find("GetDeviceInformationResponse"), std::string::npos) << probe;
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    stop = true;
    for (auto& thread : slow)
        thread.join();
}

TEST(SoapThread, AClientThatAsksAgainAtOnceIsAnsweredEveryTime) {
    // A client that holds one connection open (a slow event pull, say) and polls on another,
    // one request after the other: the connection it has just finished with never counts
    // against its next one.
    const int port = TestPort() + 7;
    SoapThread soap("Gate1", port, 1000000);
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    const int held = ConnectFromAddress("127.0.0.1", port);
    ASSERT_GE(held, 0);
    ::send(held, "POST", 4, MSG_NOSIGNAL);
    for (int round = 0; round < 100; ++round) {
        const std::string answer = Exchange(
            port, SoapRequest("<GetSystemDateAndTime xmlns=\"http://www.onvif.org/ver10/device/"
                              "wsdl\"/>"));
        ASSERT_NE(answer.find("GetSystemDateAndTimeResponse"), std::string::npos)
            << "round " << round << ": " << answer;
    }
    ::close(held);
}

TEST(SoapThread, BadXmlGetsAFaultAtOnceAndSlowClientsHoldOnlyThemselves) {
    const int port = TestPort() + 3;
    SoapThread soap("Gate1", port, 1000000, "127.0.0.1");
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    using Clock = std::chrono::steady_clock;
    const std::string information =
        SoapRequest("<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>");

    // Whole requests that are not well-formed: a fault, at once, and one line each.
    LogCapture log;
    for (const std::string& body :
         {std::string("<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\">"
                      "</GetScopes>"),
          std::string("<<<>>>&&&"), std::string("<a:B xmlns:c=\"x\"/>")}) {
        const auto asked = Clock::now();
        const std::string answer = Exchange(port, SoapRequest(body), 2000);
        EXPECT_NE(answer.find("Fault"), std::string::npos) << answer;
        EXPECT_LT(Clock::now() - asked, std::chrono::milliseconds(100)) << body;
    }
    int reported = 0;
    for (const std::string& message : log.Messages())
        reported += message ==
                            "SOAP request from 127.0.0.1 not well-formed XML: answered with a "
                            "fault"
                        ? 1
                        : 0;
    EXPECT_EQ(reported, 2);  // the third is XML, of no known operation: the engine's fault

    // Clients that stall or trickle a byte a second (from another address: one address holds
    // two connections at most) hold their own connection only.
    std::atomic<bool> stop{false};
    auto trickle = [&](const std::string& request, bool stall) {
        const int sock = ConnectFromAddress("127.0.0.2", port);
        if (sock >= 0) {
            const size_t first = stall ? request.size() / 2 : 0;
            ::send(sock, request.data(), first, MSG_NOSIGNAL);
            for (size_t i = first; i < request.size() && !stop; ++i) {
                if (!stall)
                    ::send(sock, request.data() + i, 1, MSG_NOSIGNAL);
                std::this_thread::sleep_for(std::chrono::milliseconds(stall ? 50 : 1000));
            }
        }
        ::close(sock);
    };
    std::vector<std::thread> slow;
    for (int i = 0; i < 3; ++i)
        slow.emplace_back(trickle, information, i == 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    for (int i = 0; i < 5; ++i) {
        const auto asked = Clock::now();
        const std::string answer = Exchange(port, information);
        EXPECT_EQ(ElementText(answer, "Model"), "Gate1");
        EXPECT_LT(Clock::now() - asked, std::chrono::milliseconds(1000));
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
    }
    // A stop with those clients still connected is not held up by them.
    const auto asked = Clock::now();
    soap.Delete();
    EXPECT_LT(Clock::now() - asked, std::chrono::milliseconds(600));
    stop = true;
    for (auto& thread : slow)
        thread.join();
}

TEST(SoapThread, UnderstandsWsSecurityAndWsAddressingHeadersAndRelatesItsAnswer) {
    const int port = TestPort() + 2;
    SoapThread soap("Gate1", port, 400000, "127.0.0.1");
    soap.SetAddresses({"127.0.0.1"});
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    for (const char* type : {"PasswordText", "PasswordDigest"}) {
        const std::string answer = Exchange(
            port,
            SoapRequestWithHeaders(
                "<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>", type));
        SCOPED_TRACE(type);
        EXPECT_NE(answer.find("200 OK"), std::string::npos) << answer;
        EXPECT_NE(answer.find("GetDeviceInformationResponse"), std::string::npos) << answer;
        EXPECT_EQ(answer.find("Fault"), std::string::npos) << answer;
        // The answer says which request it relates to.
        EXPECT_NE(answer.find("RelatesTo>urn:uuid:6b3f0c1e-0f6e-4d39-9a53-5a0d2b6f3c11<"),
                  std::string::npos)
            << answer;
        // The token is not echoed back.
        EXPECT_EQ(answer.find("UsernameToken"), std::string::npos) << answer;
    }
    // WS-Addressing of August 2004, its Action and To marked mustUnderstand, as older clients
    // send it: understood the same.
    const std::string answer = Exchange(
        port, SoapRequestWithHeaders(
                  "<GetDeviceInformation xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>",
                  "PasswordText", "http://schemas.xmlsoap.org/ws/2004/08/addressing"));
    EXPECT_NE(answer.find("GetDeviceInformationResponse"), std::string::npos) << answer;
    EXPECT_EQ(answer.find("Fault"), std::string::npos) << answer;
    soap.Delete();
}

TEST(SoapThread, TellsTheRealTimeInUtcAndLocally) {
    // Clients need the device's clock, for one to make WS-Security digests.
    const int port = TestPort() + 3;
    SoapThread soap("Gate1", port, 400000, "127.0.0.1");
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    const std::time_t now = std::time(nullptr);
    const std::string answer = Exchange(
        port,
        SoapRequest("<GetSystemDateAndTime xmlns=\"http://www.onvif.org/ver10/device/wsdl\"/>"));
    soap.Delete();
    EXPECT_NE(answer.find("200 OK"), std::string::npos) << answer;
    const size_t utc = answer.find("UTCDateTime>");
    ASSERT_NE(utc, std::string::npos) << answer;
    const std::string utcPart = answer.substr(utc);
    std::tm expected{};
    ::gmtime_r(&now, &expected);
    EXPECT_EQ(ElementText(utcPart, "Year"), std::to_string(expected.tm_year + 1900)) << answer;
    EXPECT_EQ(ElementText(utcPart, "Month"), std::to_string(expected.tm_mon + 1));
    EXPECT_EQ(ElementText(utcPart, "Day"), std::to_string(expected.tm_mday));
    const int seconds = std::atoi(ElementText(utcPart, "Hour").c_str()) * 3600 +
                        std::atoi(ElementText(utcPart, "Minute").c_str()) * 60 +
                        std::atoi(ElementText(utcPart, "Second").c_str());
    const int expectedSeconds = expected.tm_hour * 3600 + expected.tm_min * 60 + expected.tm_sec;
    EXPECT_LE(std::abs(seconds - expectedSeconds), 5) << answer;
    EXPECT_NE(answer.find("LocalDateTime>"), std::string::npos) << answer;
    EXPECT_NE(answer.find("DateTimeType>Manual<"), std::string::npos) << answer;

    // The answer's clock is a tt:SystemDateTime by the official schema.
    const std::string schemas = std::string(CORVANE_SOURCE_DIR) + "/../shared/onvif-wsdl";
    if (!platform::FileExists(schemas + "/onvif.xsd"))
        GTEST_SKIP() << "the official ONVIF schemas (../shared/onvif-wsdl) are not here";
    const std::regex clockElement("<tds:SystemDateAndTime>([\\s\\S]*)</tds:SystemDateAndTime>");
    std::smatch clock;
    ASSERT_TRUE(std::regex_search(answer, clock, clockElement)) << answer;
    const std::string folder = ::testing::TempDir();
    const std::string fragment = folder + "/corvane-clock.xml";
    const std::string wrapper = folder + "/corvane-clock.xsd";
    platform::WriteWholeFile(fragment,
                             "<c:SystemDateAndTime xmlns:c=\"urn:corvane:check\" "
                             "xmlns:tt=\"http://www.onvif.org/ver10/schema\">" +
                                 clock[1].str() + "</c:SystemDateAndTime>");
    platform::WriteWholeFile(
        wrapper,
        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
        "targetNamespace=\"urn:corvane:check\" "
        "xmlns:tt=\"http://www.onvif.org/ver10/schema\" elementFormDefault=\"qualified\">"
        "<xs:import namespace=\"http://www.onvif.org/ver10/schema\" schemaLocation=\"" +
            schemas +
            "/onvif.xsd\"/><xs:element name=\"SystemDateAndTime\" "
            "type=\"tt:SystemDateTime\"/></xs:schema>");
    const std::string verdict =
        CommandOutput("xmllint --noout --nonet --schema " + wrapper + " " + fragment);
    EXPECT_NE(verdict.find("validates"), std::string::npos) << verdict;
}

namespace {

// An import's schema file ("./onvif.xsd"), named by its path in the official set.
void SetAbsoluteLocation(xmlNode* import, const std::string& schemas) {
    xmlChar* location = xmlGetProp(import, BAD_CAST "schemaLocation");
    if (location == nullptr)
        return;
    std::string file = reinterpret_cast<const char*>(location);
    xmlFree(location);
    if (file.compare(0, 2, "./") == 0)
        file.erase(0, 2);
    xmlSetProp(import, BAD_CAST "schemaLocation", BAD_CAST(schemas + "/" + file).c_str());
}

// The schema a WSDL of the official set carries, as a schema file of its own whose imports
// name the set's files by absolute path.
std::string SchemaOfWsdl(const std::string& schemas, const std::string& wsdl,
                         const std::string& folder) {
    xmlDoc* doc = xmlReadFile((schemas + "/" + wsdl).c_str(), nullptr, XML_PARSE_NONET);
    if (doc == nullptr)
        return std::string();
    std::string file;
    for (xmlNode* types = xmlDocGetRootElement(doc)->children; types != nullptr;
         types = types->next) {
        if (types->type != XML_ELEMENT_NODE || xmlStrcmp(types->name, BAD_CAST "types") != 0)
            continue;
        for (xmlNode* schema = types->children; schema != nullptr; schema = schema->next) {
            if (schema->type != XML_ELEMENT_NODE || xmlStrcmp(schema->name, BAD_CAST "schema"))
                continue;
            for (xmlNode* import = schema->children; import != nullptr; import = import->next)
                if (import->type == XML_ELEMENT_NODE &&
                    xmlStrcmp(import->name, BAD_CAST "import") == 0)
                    SetAbsoluteLocation(import, schemas);
            xmlDoc* own = xmlNewDoc(BAD_CAST "1.0");
            xmlNode* root = xmlDocCopyNode(schema, own, 1);
            xmlDocSetRootElement(own, root);
            // Type names (QName values) may use prefixes the WSDL declares on its root.
            for (xmlNs* ns = xmlDocGetRootElement(doc)->nsDef; ns != nullptr; ns = ns->next)
                if (ns->prefix != nullptr && xmlSearchNs(own, root, ns->prefix) == nullptr)
                    xmlNewNs(root, ns->href, ns->prefix);
            xmlReconciliateNs(own, root);
            file = folder + "/" + wsdl + ".xsd";
            xmlSaveFile(file.c_str(), own);
            xmlFreeDoc(own);
        }
    }
    xmlFreeDoc(doc);
    return file;
}

// The first element of the answer's SOAP body, as a document of its own with every namespace
// it uses declared on it.
std::string BodyElement(const std::string& answer, const std::string& file) {
    const size_t start = answer.find("<?xml");
    if (start == std::string::npos)
        return std::string();
    xmlDoc* doc = xmlReadMemory(answer.data() + start, static_cast<int>(answer.size() - start),
                                nullptr, nullptr, XML_PARSE_NONET);
    if (doc == nullptr)
        return std::string();
    xmlNode* body = nullptr;
    for (xmlNode* child = xmlDocGetRootElement(doc)->children; child != nullptr;
         child = child->next)
        if (child->type == XML_ELEMENT_NODE && xmlStrcmp(child->name, BAD_CAST "Body") == 0)
            body = child;
    xmlNode* element = body != nullptr ? xmlFirstElementChild(body) : nullptr;
    std::string name;
    if (element != nullptr) {
        name = reinterpret_cast<const char*>(element->name);
        xmlDoc* own = xmlNewDoc(BAD_CAST "1.0");
        xmlDocSetRootElement(own, xmlDocCopyNode(element, own, 1));
        xmlReconciliateNs(own, xmlDocGetRootElement(own));
        xmlSaveFile(file.c_str(), own);
        xmlFreeDoc(own);
    }
    xmlFreeDoc(doc);
    return name;
}

}  // namespace

TEST(SoapThread, EveryAnswerWithContentIsValidByTheOfficialSchemas) {
    const std::string schemas = std::string(CORVANE_SOURCE_DIR) + "/../shared/onvif-wsdl";
    if (!platform::FileExists(schemas + "/onvif.xsd"))
        GTEST_SKIP() << "the official ONVIF schemas (../shared/onvif-wsdl) are not here";
    const std::string folder = ::testing::TempDir();
    const std::string device = SchemaOfWsdl(schemas, "devicemgmt.wsdl", folder);
    const std::string media = SchemaOfWsdl(schemas, "media.wsdl", folder);
    ASSERT_FALSE(device.empty());
    ASSERT_FALSE(media.empty());

    const int port = TestPort() + 4;
    SoapThread soap("Gate1", port, 1000000, "127.0.0.1");
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    soap.SetVideoFormat(1280, 720, 10);
    const std::string tds = "xmlns=\"http://www.onvif.org/ver10/device/wsdl\"";
    const std::string trt = "xmlns=\"http://www.onvif.org/ver10/media/wsdl\"";
    const std::vector<std::pair<std::string, std::string>> calls = {
        {device, "<GetDeviceInformation " + tds + "/>"},
        {device, "<GetScopes " + tds + "/>"},
        {device, "<GetCapabilities " + tds + "><Category>All</Category></GetCapabilities>"},
        {device, "<GetSystemDateAndTime " + tds + "/>"},
        {media, "<GetVideoSources " + trt + "/>"},
        {media, "<GetProfiles " + trt + "/>"},
        {media, "<GetProfile " + trt + "><ProfileToken>mobile_h264</ProfileToken></GetProfile>"},
        {media, "<GetStreamUri " + trt +
                    "><StreamSetup><Stream xmlns=\"http://www.onvif.org/"
                    "ver10/schema\">RTP-Unicast</Stream><Transport xmlns=\"http://www.onvif.org/"
                    "ver10/schema\"><Protocol>RTSP</Protocol></Transport></StreamSetup>"
                    "<ProfileToken>mobile_h264</ProfileToken></GetStreamUri>"},
        {media,
         "<GetSnapshotUri " + trt + "><ProfileToken>mobile_h264</ProfileToken></GetSnapshotUri>"},
    };
    for (const auto& [schema, body] : calls) {
        SCOPED_TRACE(body.substr(0, body.find(' ')));
        const std::string answer = Exchange(port, SoapRequestWithHeaders(body, "PasswordDigest"));
        const std::string file = folder + "/corvane-answer.xml";
        const std::string element = BodyElement(answer, file);
        ASSERT_NE(element.find("Response"), std::string::npos) << answer;
        const std::string verdict =
            CommandOutput("xmllint --noout --nonet --schema " + schema + " " + file);
        EXPECT_NE(verdict.find("validates"), std::string::npos) << verdict;
    }
}

#ifdef CORVANE_WSDL_CLIENT
namespace {

// "tds GetScopes" and so on: the operations the device front's interface header dispatches.
std::set<std::string> DispatchedOperations() {
    std::ifstream header(std::string(CORVANE_SOURCE_DIR) + "/onvif/onvif.h");
    const std::regex operation("^int __(tds|trt|tev|tls)__(\\w+)\\(");
    std::set<std::string> names;
    std::smatch match;
    for (std::string line; std::getline(header, line);)
        if (std::regex_search(line, match, operation))
            names.insert(match[1].str() + " " + match[2].str());
    return names;
}

// The files of one xmllint run that did not validate, each with the schema errors about it
// (warnings about the schemas themselves, such as one file reached by two paths, aside).
std::string InvalidFiles(const std::string& schema, const std::vector<std::string>& files) {
    std::string command = "xmllint --noout --nonet --schema " + schema;
    for (const std::string& file : files)
        command += " " + file;
    std::istringstream verdicts(CommandOutput(command + " 2>&1"));
    std::string invalid;
    for (std::string line; std::getline(verdicts, line);)
        if (line.find(" validates") == std::string::npos &&
            line.find("Schemas parser warning") == std::string::npos)
            invalid += line + "\n";
    return invalid;
}

}  // namespace
#endif

// A client that gSOAP made from the official WSDLs calls every operation of the device, media,
// events and display services with WS-Security and WS-Addressing headers: each operation the
// device front dispatches is answered, related to its request and valid by the official
// schemas; the others get a SOAP fault.
TEST(OnvifWsdlClient, EveryDispatchedOperationAnswersValidlyToAGeneratedClient) {
#ifndef CORVANE_WSDL_CLIENT
    GTEST_SKIP() << "the official ONVIF WSDLs (../shared/onvif-wsdl) were not there when the "
                    "tests were built, so there is no client generated from them";
#else
    const std::string schemas = std::string(CORVANE_SOURCE_DIR) + "/../shared/onvif-wsdl";
    if (!platform::FileExists(schemas + "/onvif.xsd"))
        GTEST_SKIP() << "the official ONVIF schemas (../shared/onvif-wsdl) are not here";
    const TempDir temp;
    const std::string& folder = temp.Path();
    const std::map<std::string, std::string> schemaOf = {
        {"tds", SchemaOfWsdl(schemas, "devicemgmt.wsdl", folder)},
        {"trt", SchemaOfWsdl(schemas, "media.wsdl", folder)},
        {"tev", SchemaOfWsdl(schemas, "events.wsdl", folder)},
        {"tls", SchemaOfWsdl(schemas, "display.wsdl", folder)},
    };
    for (const auto& [service, schema] : schemaOf)
        ASSERT_FALSE(schema.empty()) << service;

    const int port = TestPort() + 6;
    SoapThread soap("Gate1", port, 1000000, "127.0.0.1");
    soap.Run();
    ASSERT_TRUE(WaitServing(soap));
    soap.SetVideoFormat(1280, 720, 10);
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + "/onvif/device_service";
    std::istringstream lines(
        CommandOutput(std::string(CORVANE_WSDL_CLIENT) + " " + url + " " + folder + " 2>&1"));

    const std::set<std::string> dispatched = DispatchedOperations();
    ASSERT_EQ(dispatched.size(), 166u);
    // Features the device says it lacks, whose answers could not be valid without made-up data.
    const std::set<std::string> unsupported = {"tds GetSystemBackup", "tds GetDot11Status"};
    std::set<std::string> answered;
    std::map<std::string, std::vector<std::string>> answerFiles;
    int calls = 0;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string service, operation, status, related;
        words >> service >> operation >> status >> related;
        const std::string name = service + " " + operation;
        SCOPED_TRACE(line);
        ++calls;
        EXPECT_EQ(related, "related");
        if (dispatched.count(name) == 0 || unsupported.count(name) != 0) {
            // An operation the device lacks: the fault ONVIF names for it, not an error.
            EXPECT_EQ(status, "fault");
            EXPECT_NE(line.find(":ActionNotSupported"), std::string::npos);
            answered.insert(name);
            continue;
        }
        const std::string element = folder + "/" + service + "." + operation + ".body.xml";
        std::string envelope;
        platform::ReadWholeFile(folder + "/" + service + "." + operation + ".xml", envelope,
                                1 << 20);
        EXPECT_EQ(status, "answer") << envelope;
        answered.insert(name);
        EXPECT_EQ(BodyElement(envelope, element), operation + "Response");
        answerFiles[service].push_back(element);
    }
    EXPECT_GE(calls, 180);
    for (const std::string& name : dispatched)
        EXPECT_EQ(answered.count(name), 1u) << name;
    for (const auto& [service, files] : answerFiles)
        EXPECT_EQ(InvalidFiles(schemaOf.at(service), files), "") << service;
#endif
}

TEST(OnvifClient, DiscoversTheDeviceReadsItAndPlaysItsStream) {
    const std::string client = std::string(CORVANE_SOURCE_DIR) + "/tests/onvif-client";
    ASSERT_TRUE(platform::DirectoryExists(client + "/node_modules/onvif"))
        << "npm ci --prefix tests/onvif-client installs the client";
    platform::ScopedWorkingDirectory cwd(CORVANE_APP_DIR);
    RtspService rtsp("127.0.0.1", 8554);  // the port every stream URI names
    rtsp.Start();
    for (int i = 0; i < 100 && !rtsp.RtspRunning(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ASSERT_TRUE(rtsp.RtspRunning());
    rtsp.AddStream("OnvifCam", 800000);
    StreamProducer producer(rtsp, "OnvifCam", 320, 240);
    const int port = TestPort() + 2;
    SoapThread soap("OnvifCam", port, 800000, "127.0.0.1");
    soap.SetAddresses({"127.0.0.1"});
    soap.Run();
    WSDiscovery discovery("OnvifCam", port);  // the published port: the client probes there
    discovery.SetAddresses({"127.0.0.1"});
    discovery.Run();
    ASSERT_TRUE(WaitServing(soap));

    soap.SetSnapshotSource([&rtsp] { return rtsp.Snapshot("OnvifCam"); });
    const std::string snapshot = std::string(CORVANE_APP_DIR) + "/onvif-snapshot-test.jpg";
    std::remove(snapshot.c_str());
    const std::string found =
        CommandOutput("timeout 60 node " + client + "/discover_and_play.js OnvifCam " + snapshot);
    EXPECT_NE(found.find("\"model\":\"OnvifCam\""), std::string::npos) << found;
    EXPECT_NE(found.find("\"manufacturer\":\"Halvern\""), std::string::npos) << found;
    EXPECT_NE(found.find("\"profile\":\"mobile h264\""), std::string::npos) << found;
    // The snapshot the device names is the stream's latest picture, whole.
    EXPECT_NE(found.find("\"snapshotUri\":\"http://127.0.0.1:" + std::to_string(port) +
                         "/onvif/snapshot.jpg\""),
              std::string::npos)
        << found;
    EXPECT_NE(found.find("\"snapshotType\":\"image/jpeg\""), std::string::npos) << found;
    const cv::Mat picture = cv::imread(snapshot);
    EXPECT_EQ(picture.cols, 320);
    EXPECT_EQ(picture.rows, 240);
    std::remove(snapshot.c_str());
    const std::string uri = "rtsp://127.0.0.1:8554/OnvifCam";
    EXPECT_NE(found.find("\"uri\":\"" + uri + "\""), std::string::npos) << found;
    EXPECT_EQ(CommandOutput("timeout 30 ffprobe -v error -rtsp_transport tcp -select_streams v:0 "
                            "-show_entries stream=codec_name,width,height -of csv=p=0 " +
                            uri),
              "h264,320,240\n");
}
