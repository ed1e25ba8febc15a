// An ONVIF client that gSOAP generates from the official WSDLs, independent of the device
// front's own bindings. It calls every two-way operation of the device, media, events and
// display services at one address, each with a WS-Security UsernameToken (password digest) and
// WS-Addressing headers marked as ones to understand, as mainstream clients send them.
//
// Usage: corvane_wsdl_client URL FOLDER
// Each answer's envelope is written to FOLDER/<service>.<operation>.xml, and one line is
// printed per operation: "<service> <operation> answer|fault|error <related> <detail>", where
// <related> says whether the answer's RelatesTo names the request's MessageID.
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>

#include "DeviceBinding.nsmap"
#include "soapH.h"

namespace {

struct Call {
    const char* service;
    const char* operation;
    const char* action;
    int (*invoke)(soap*, const char*, const char*);
};

#include "wsdl_calls.inc"

constexpr const char* kPasswordDigest =
    "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-username-token-profile-1.0"
    "#PasswordDigest";
constexpr const char* kBase64 =
    "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-soap-message-security-1.0"
    "#Base64Binary";

// Everything the transport hands the client, HTTP head included, for the call under way.
std::string received;
size_t (*transportReceive)(soap*, char*, size_t) = nullptr;

size_t RecordingReceive(soap* s, char* buffer, size_t length) {
    const size_t got = transportReceive(s, buffer, length);
    received.append(buffer, got);
    return got;
}

std::string RandomBytes(size_t count) {
    std::string bytes(count, '\0');
    RAND_bytes(reinterpret_cast<unsigned char*>(&bytes[0]), static_cast<int>(count));
    return bytes;
}

std::string NewMessageId() {
    const std::string bytes = RandomBytes(16);
    char text[64];
    const auto* b = reinterpret_cast<const unsigned char*>(bytes.data());
    std::snprintf(text, sizeof text,
                  "urn:uuid:%02x%02x%02x%02x-%02x%02x-4%x%02x-%x%02x-%02x%02x%02x%02x%02x%02x",
                  b[0], b[1], b[2], b[3], b[4], b[5], b[6] & 15, b[7], 8 | (b[8] & 3), b[9], b[10],
                  b[11], b[12], b[13], b[14], b[15]);
    return text;
}

// A UsernameToken with Digest = Base64(SHA-1(nonce + created + password)).
_wsse__Security* UsernameToken(soap* s, const char* user, const char* password) {
    const std::string nonce = RandomBytes(16);
    char created[32];
    const std::time_t now = std::time(nullptr);
    std::strftime(created, sizeof created, "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&now));
    const std::string hashed = nonce + created + password;
    unsigned char digest[SHA_DIGEST_LENGTH];
    SHA1(reinterpret_cast<const unsigned char*>(hashed.data()), hashed.size(), digest);

    auto* security = soap_new__wsse__Security(s);
    auto* token = soap_new__wsse__UsernameToken(s);
    token->Username = soap_strdup(s, user);
    token->Password = soap_new__wsse__Password(s);
    token->Password->Type = soap_strdup(s, kPasswordDigest);
    token->Password->__item = soap_s2base64(s, digest, nullptr, SHA_DIGEST_LENGTH);
    token->Nonce = soap_new_wsse__EncodedString(s);
    token->Nonce->EncodingType = soap_strdup(s, kBase64);
    token->Nonce->__item = soap_s2base64(s, reinterpret_cast<const unsigned char*>(nonce.data()),
                                         nullptr, static_cast<int>(nonce.size()));
    token->wsu__Created = soap_strdup(s, created);
    security->UsernameToken = token;
    return security;
}

SOAP_ENV__Header* Headers(soap* s, const char* url, const Call& call,
                          const std::string& messageId) {
    auto* header = soap_new_SOAP_ENV__Header(s);
    header->wsse__Security = UsernameToken(s, "admin", "secret");
    header->wsa5__MessageID = soap_strdup(s, messageId.c_str());
    header->wsa5__To = soap_strdup(s, url);
    header->wsa5__Action = soap_strdup(s, call.action);
    header->wsa5__ReplyTo = soap_new_wsa5__EndpointReferenceType(s);
    header->wsa5__ReplyTo->Address =
        soap_strdup(s, "http://www.w3.org/2005/08/addressing/anonymous");
    return header;
}

// The XML after the HTTP head of what came back.
std::string Envelope(const std::string& answer) {
    const size_t head = answer.find("\r\n\r\n");
    return head == std::string::npos ? std::string() : answer.substr(head + 4);
}

std::string OneLine(const char* text) {
    std::string line = text != nullptr ? text : "";
    for (char& c : line)
        if (c == '\n' || c == '\r')
            c = ' ';
    return line;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s URL FOLDER\n", argv[0]);
        return 2;
    }
    const char* url = argv[1];
    const std::string folder = argv[2];
    soap* s = soap_new1(SOAP_XML_INDENT);
    soap_set_namespaces(s, namespaces);
    s->connect_timeout = 5;
    s->recv_timeout = 5;
    s->send_timeout = 5;
    int transportErrors = 0;
    for (const Call& call : kCalls) {
        const std::string messageId = NewMessageId();
        s->header = Headers(s, url, call, messageId);
        transportReceive = s->frecv;
        s->frecv = RecordingReceive;
        received.clear();
        const int result = call.invoke(s, url, call.action);
        s->frecv = transportReceive;

        const bool related = s->header != nullptr && s->header->wsa5__RelatesTo != nullptr &&
                             s->header->wsa5__RelatesTo->__item != nullptr &&
                             messageId == s->header->wsa5__RelatesTo->__item;
        std::string status;
        std::string detail;
        if (result == SOAP_OK) {
            status = "answer";
        } else if (result == SOAP_FAULT || result == SOAP_CLI_FAULT || result == SOAP_SVR_FAULT) {
            const char** subcode = soap_faultsubcode(s);
            status = "fault";
            detail = OneLine(subcode != nullptr ? *subcode : nullptr) + " " +
                     OneLine(*soap_faultstring(s));
        } else {
            status = "error";
            detail = "gSOAP error " + std::to_string(result);
            if (s->error == SOAP_TCP_ERROR || s->error == SOAP_EOF)
                ++transportErrors;
        }
        std::ofstream(folder + "/" + call.service + "." + call.operation + ".xml")
            << Envelope(received);
        std::printf("%s %s %s %s %s\n", call.service, call.operation, status.c_str(),
                    related ? "related" : "unrelated", detail.c_str());
        soap_destroy(s);
        soap_end(s);
    }
    soap_free(s);
    return transportErrors == 0 ? 0 : 1;
}
