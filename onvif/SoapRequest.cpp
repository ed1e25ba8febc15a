#include "SoapRequest.h"

#include <poll.h>
#include <sys/socket.h>

#include <libxml/parser.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>

namespace {

using Clock = std::chrono::steady_clock;

std::string Lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// How many bytes the whole request has once its headers are in; npos while that is not known
// yet (headers incomplete) or is told by the chunks themselves.
size_t ExpectedSize(const std::string& bytes, bool& chunked) {
    const size_t headersEnd = bytes.find("\r\n\r\n");
    if (headersEnd == std::string::npos)
        return std::string::npos;
    const std::string headers = Lowered(bytes.substr(0, headersEnd));
    chunked = headers.find("\r\ntransfer-encoding: chunked") != std::string::npos;
    const size_t length = headers.find("\r\ncontent-length:");
    if (chunked || length == std::string::npos)
        return chunked ? std::string::npos : headersEnd + 4;
    return headersEnd + 4 + std::strtoull(headers.c_str() + length + 17, nullptr, 10);
}

// Where the line of a header begins in the request (at the "\r\n" before it), found by its
// start in lower case ("expect:"); npos when it is not there or the headers are not all in.
size_t HeaderAt(const std::string& bytes, const std::string& lowerStart) {
    const size_t headersEnd = bytes.find("\r\n\r\n");
    if (headersEnd == std::string::npos)
        return std::string::npos;
    return Lowered(bytes.substr(0, headersEnd)).find("\r\n" + lowerStart);
}

// True once the headers are in and ask for "100 Continue" before the body.
bool AsksToContinue(const std::string& bytes) {
    return HeaderAt(bytes, "expect: 100-continue") != std::string::npos;
}

// Takes the Expect header out of the request the engine will read.
void DropExpect(std::string& bytes) {
    const size_t at = HeaderAt(bytes, "expect:");
    if (at == std::string::npos)
        return;
    const size_t end = bytes.find("\r\n", at + 2);
    bytes.erase(at, end - at);
}

bool Complete(const std::string& bytes, size_t& expected) {
    bool chunked = false;
    expected = ExpectedSize(bytes, chunked);
    if (chunked)
        return bytes.size() >= 5 && bytes.compare(bytes.size() - 5, 5, "0\r\n\r\n") == 0;
    return expected != std::string::npos && bytes.size() >= expected;
}

}  // namespace

SoapRequest::Outcome SoapRequest::Read(int socket, int transferMs, int pauseMs,
                                       std::string& bytes) {
    const auto deadline = Clock::now() + std::chrono::milliseconds(transferMs);
    char piece[16384];
    size_t expected = std::string::npos;
    bool continued = false;
    while (!Complete(bytes, expected)) {
        // A client that asks before sending its body (Expect: 100-continue) is told to go on.
        if (!continued && AsksToContinue(bytes)) {
            continued = true;
            static const char kContinue[] = "HTTP/1.1 100 Continue\r\n\r\n";
            ::send(socket, kContinue, sizeof kContinue - 1, MSG_NOSIGNAL);
        }
        if (bytes.size() > kMaxBytes || (expected != std::string::npos && expected > kMaxBytes))
            return Outcome::kTooLarge;
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd waiting{socket, POLLIN, 0};
        if (left <= 0 || ::poll(&waiting, 1, static_cast<int>(std::min<long>(left, pauseMs))) <= 0)
            return Outcome::kTimedOut;
        const ssize_t got = ::recv(socket, piece, sizeof piece, 0);
        if (got <= 0)
            return Outcome::kIncomplete;
        bytes.append(piece, static_cast<size_t>(got));
    }
    const size_t headersEnd = bytes.find("\r\n\r\n");
    bool chunked = false;
    ExpectedSize(bytes, chunked);
    // Chunks: the engine takes them apart and parses as it goes.
    const Outcome judged = chunked ? Outcome::kComplete
                                   : Judge(bytes.substr(headersEnd + 4, expected - headersEnd - 4));
    DropExpect(bytes);  // answered here; the engine would answer it a second time
    if (!chunked)
        ReadAddressingOf2004As2005(bytes);
    return judged;
}

void SoapRequest::ReadAddressingOf2004As2005(std::string& bytes) {
    // Only the declaration is renamed: the engine then knows Action, To and MessageID of
    // either, mustUnderstand ones too. The length told in the headers follows.
    static const std::string k2004 = "=\"http://schemas.xmlsoap.org/ws/2004/08/addressing\"";
    static const std::string k2005 = "=\"http://www.w3.org/2005/08/addressing\"";
    const size_t headersEnd = bytes.find("\r\n\r\n");
    if (headersEnd == std::string::npos)
        return;
    std::string body = bytes.substr(headersEnd + 4);
    bool renamed = false;
    for (size_t at = body.find(k2004); at != std::string::npos; at = body.find(k2004, at)) {
        body.replace(at, k2004.size(), k2005);
        at += k2005.size();
        renamed = true;
    }
    if (!renamed)
        return;
    std::string headers = bytes.substr(0, headersEnd);
    const size_t length = HeaderAt(bytes, "content-length:");
    if (length == std::string::npos)
        return;
    const size_t end = headers.find("\r\n", length + 2);
    headers.replace(length, (end == std::string::npos ? headers.size() : end) - length,
                    "\r\nContent-Length: " + std::to_string(body.size()));
    bytes = headers + "\r\n\r\n" + body;
}

SoapRequest::Outcome SoapRequest::Judge(const std::string& body) {
    if (body.find_first_not_of(" \t\r\n") == std::string::npos)
        return Outcome::kComplete;
    // No network, no entity expansion: only whether the text is XML, and of which root.
    xmlDocPtr doc = xmlReadMemory(body.data(), static_cast<int>(body.size()), nullptr, nullptr,
                                  XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    if (doc == nullptr)
        return Outcome::kMalformed;
    const xmlNode* root = xmlDocGetRootElement(doc);
    const bool envelope =
        root != nullptr && xmlStrEqual(root->name, reinterpret_cast<const xmlChar*>("Envelope"));
    xmlFreeDoc(doc);
    return envelope ? Outcome::kComplete : Outcome::kNotSoap;
}

std::string SoapRequest::BadRequestAnswer(const std::string& reason) {
    const std::string body =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<env:Envelope xmlns:env=\"http://www.w3.org/2003/05/soap-envelope\">"
        "<env:Body><env:Fault><env:Code><env:Value>env:Sender</env:Value></env:Code>"
        "<env:Reason><env:Text xml:lang=\"en\">" +
        reason + "</env:Text></env:Reason></env:Fault></env:Body></env:Envelope>\n";
    return "HTTP/1.1 400 Bad Request\r\nContent-Type: application/soap+xml; charset=utf-8\r\n"
           "Content-Length: " +
           std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}
