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
    while (!Complete(bytes, expected)) {
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
    if (chunked)
        return Outcome::kComplete;  // the engine takes the chunks apart and parses as it goes
    return WellFormed(bytes.substr(headersEnd + 4, expected - headersEnd - 4))
               ? Outcome::kComplete
               : Outcome::kMalformed;
}

bool SoapRequest::WellFormed(const std::string& body) {
    if (body.find_first_not_of(" \t\r\n") == std::string::npos)
        return true;
    // No network, no entity expansion: only whether the text is XML at all.
    xmlDocPtr doc = xmlReadMemory(body.data(), static_cast<int>(body.size()), nullptr, nullptr,
                                  XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    const bool wellFormed = doc != nullptr;
    xmlFreeDoc(doc);
    return wellFormed;
}
