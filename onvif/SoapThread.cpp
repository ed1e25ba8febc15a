#include "SoapThread.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>

#include "SoapRequest.h"
#include "platform/AddressRange.h"
#include "platform/Log.h"
#include "platform/TcpSocket.h"
#include "platform/Ticks.h"
#include "soapDeviceService.h"
#include "soapDisplayService.h"
#include "soapEventService.h"
#include "soapMediaService.h"

namespace {

// Called once a request's header is read; what is left of it is the answer's header. A client's
// WS-Security token is read and ignored (the device has no authentication), and of its
// WS-Addressing headers the message id comes back as RelatesTo; nothing else is echoed.
int AnswerHeader(struct soap* context) {
    SOAP_ENV__Header* header = context->header;
    if (header == nullptr)
        return SOAP_OK;
    std::string* messageId = header->wsa5__MessageID;
    soap_default_SOAP_ENV__Header(context, header);
    if (messageId != nullptr)
        header->wsa5__RelatesTo = messageId;
    else
        context->header = nullptr;
    return SOAP_OK;
}

// The address the connection came in on, as clients must be told it; empty when it cannot be
// told (unknown, or every address at once).
std::string LocalAddress(SOAP_SOCKET socket) {
    sockaddr_in local{};
    socklen_t length = sizeof local;
    if (::getsockname(socket, reinterpret_cast<sockaddr*>(&local), &length) != 0 ||
        local.sin_family != AF_INET || local.sin_addr.s_addr == htonl(INADDR_ANY))
        return std::string();
    return platform::DottedAddress(ntohl(local.sin_addr.s_addr));
}

// One line for each request refused or left unfinished, never one per byte.
void ReportBadRequest(SoapRequest::Outcome outcome, const std::string& bytes, SOAP_SOCKET socket) {
    const char* what = nullptr;
    if (outcome == SoapRequest::Outcome::kMalformed)
        what = "not well-formed XML: answered with a fault";
    else if (outcome == SoapRequest::Outcome::kNotSoap)
        what = "not a SOAP envelope: answered with a fault";
    else if (outcome == SoapRequest::Outcome::kTooLarge)
        what = "too large: answered with a fault";
    else if (outcome == SoapRequest::Outcome::kTimedOut && !bytes.empty())
        what = "not whole within its time: dropped";
    if (what == nullptr)
        return;
    sockaddr_in peer{};
    socklen_t length = sizeof peer;
    const std::string from = ::getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &length) == 0
                                 ? platform::DottedAddress(ntohl(peer.sin_addr.s_addr))
                                 : std::string("?");
    CORVANE_LOG_WARNING("SoapThread::Answer", "SOAP request from " + from + " " + what);
}

const char* ReasonOf(SoapRequest::Outcome outcome) {
    switch (outcome) {
        case SoapRequest::Outcome::kTooLarge:
            return "Request too large";
        case SoapRequest::Outcome::kNotSoap:
            return "Request is not a SOAP envelope";
        default:
            return "Request is not well-formed XML";
    }
}

// The request of the connection served on this thread, read whole beforehand; the engine reads
// it from here instead of from the socket.
struct ReadRequest {
    std::string bytes;
    size_t taken = 0;
};
thread_local ReadRequest* currentRequest = nullptr;

size_t FromReadRequest(struct soap*, char* buffer, size_t length) {
    if (currentRequest == nullptr)
        return 0;
    const size_t count = std::min(length, currentRequest->bytes.size() - currentRequest->taken);
    currentRequest->bytes.copy(buffer, count, currentRequest->taken);
    currentRequest->taken += count;
    return count;
}

// The connection this thread answers is marked done as its socket is shut down or closed,
// wherever the engine does it (a service's answer does it itself): a client that asks again as
// soon as it sees the end finds its place free, not held by the connection it has just
// finished with.
struct Closing {
    std::atomic<bool>* done = nullptr;
    int (*shutdown)(struct soap*, SOAP_SOCKET, int) = nullptr;
    int (*close)(struct soap*, SOAP_SOCKET) = nullptr;
};
thread_local Closing closing;

void MarkDone() {
    if (closing.done != nullptr)
        *closing.done = true;
}

int ShutDownMarkingDone(struct soap* context, SOAP_SOCKET socket, int how) {
    MarkDone();
    return closing.shutdown != nullptr ? closing.shutdown(context, socket, how)
                                       : ::shutdown(socket, how);
}

int CloseMarkingDone(struct soap* context, SOAP_SOCKET socket) {
    MarkDone();
    return closing.close != nullptr ? closing.close(context, socket) : ::close(socket);
}

}  // namespace

// One client's connection: its own copy of the context and of the device's data, its thread.
struct SoapThread::Connection {
    struct soap* context = nullptr;
    OnvifDeviceData data;
    std::function<std::string()> snapshot;
    std::thread thread;
    uint32_t peer = 0;  // the client's address
    std::atomic<bool> done{false};
    std::mutex socketMutex;  // the socket is closed by its thread or cut by a stop, never both
};

SoapThread::SoapThread(std::string name, int port, int bitrate, std::string bindAddress)
    : bindAddress_(std::move(bindAddress)) {
    data_.name = std::move(name);
    data_.port = port;
    data_.addresses = OnvifDeviceData::ReadAddresses();
    data_.bitrate = bitrate;
    SetReportName("SOAP thread of " + data_.name);
}

SoapThread::~SoapThread() {
    Delete();
}

void SoapThread::SetVideoFormat(int width, int height, int fps) {
    std::lock_guard<std::mutex> lock(datamutex_);
    data_.fps = fps;  // the rate alone may change: clients are told the measured one
    if (height == data_.height && width == data_.width)
        return;
    data_.width = width;
    data_.height = height;
    data_.fps = fps;
    data_.bitrate = 512;
}

OnvifDeviceData SoapThread::Data() const {
    std::lock_guard<std::mutex> lock(datamutex_);
    return data_;
}

void SoapThread::SetAddresses(std::vector<std::string> addresses) {
    std::lock_guard<std::mutex> lock(datamutex_);
    data_.addresses = std::move(addresses);
    explicitAddresses_ = true;
}

bool SoapThread::Bind(struct soap* context) {
    while (!TestDestroy()) {
        context->bind_flags = SO_REUSEADDR;
        const char* host = bindAddress_.empty() ? nullptr : bindAddress_.c_str();
        if (soap_valid_socket(soap_bind(context, host, data_.port, 100)))
            return true;
        std::fprintf(stderr, "Cannot start gsoap thread on port %d\n", data_.port);
        soap_closesock(context);
        soap_destroy(context);
        soap_end(context);
        for (int round = 0; round < kRetryRounds; ++round)
            if (!Pause(100))
                return false;
    }
    return false;
}

void SoapThread::Entry() {
    std::printf("Start soap thread port %d\n", data_.port);
    struct soap* context = soap_new();
    soap_set_namespaces(context, namespaces);
    context->accept_timeout = -kAcceptPollMicroseconds;
    context->recv_timeout = kIoTimeoutSeconds;
    context->send_timeout = kIoTimeoutSeconds;
    context->transfer_timeout = kTransferTimeoutSeconds;
    context->fheader = AnswerHeader;
    if (Bind(context)) {
        serving_ = true;
        Serve(context);
        serving_ = false;
        std::printf("End soap thread port %d\n", data_.port);
    }
    Reap(true);
    soap_closesock(context);
    soap_destroy(context);
    soap_end(context);
    soap_free(context);
}

void SoapThread::Serve(struct soap* context) {
    while (!TestDestroy()) {
        Reap(false);
        if (!soap_valid_socket(soap_accept(context))) {
            if (context->errnum == 0)
                continue;  // the accept's time-out: look at the stop flag again
            // The listening socket failed: wait a second and bind anew.
            if (!Pause(1000))
                return;
            soap_closesock(context);
            soap_force_closesock(context);
            if (!Bind(context))
                return;
            continue;
        }
        Admit(context);
    }
}

void SoapThread::Admit(struct soap* context) {
    Reap(false);  // a connection that has just ended holds no place
    const uint32_t peer = static_cast<uint32_t>(context->ip);
    const size_t fromPeer =
        static_cast<size_t>(std::count_if(connections_.begin(), connections_.end(),
                                          [peer](const auto& held) { return held->peer == peer; }));
    if (connections_.size() >= kMaxConnections || fromPeer >= kMaxConnectionsPerClient) {
        // Every place busy, or this client's own: closed at once rather than left waiting, so
        // that slow clients of one address never keep another from being answered.
        soap_closesock(context);
        return;
    }
    auto connection = std::make_unique<Connection>();
    connection->peer = peer;
    connection->context = soap_copy(context);  // takes the accepted socket with it
    context->socket = SOAP_INVALID_SOCKET;
    if (connection->context == nullptr)
        return;
    bool explicitAddresses = false;
    {
        std::lock_guard<std::mutex> lock(datamutex_);
        connection->data = data_;
        connection->snapshot = snapshot_;
        explicitAddresses = explicitAddresses_;
    }
    // Addresses set for the device win; else the one the request came in on; else the host's.
    const std::string local = LocalAddress(connection->context->socket);
    if (!local.empty() && !explicitAddresses)
        connection->data.addresses = {local};
    connection->context->user = &connection->data;
    Connection* raw = connection.get();
    raw->thread = std::thread([raw] { Answer(*raw); });
    connections_.push_back(std::move(connection));
}

void SoapThread::Answer(Connection& connection) {
    struct soap* context = connection.context;
    closing = {&connection.done, context->fshutdownsocket, context->fclosesocket};
    context->fshutdownsocket = ShutDownMarkingDone;
    context->fclosesocket = CloseMarkingDone;
    ReadRequest request;
    const SoapRequest::Outcome outcome = SoapRequest::Read(
        context->socket, kTransferTimeoutSeconds * 1000, kIoTimeoutSeconds * 1000, request.bytes);
    ReportBadRequest(outcome, request.bytes, connection.context->socket);
    if (outcome == SoapRequest::Outcome::kComplete && AnswerSnapshot(connection, request.bytes)) {
        // answered: a picture is not a SOAP exchange
    } else if (outcome == SoapRequest::Outcome::kMalformed ||
               outcome == SoapRequest::Outcome::kTooLarge ||
               outcome == SoapRequest::Outcome::kNotSoap) {
        // Answered here: the engine, given such a body, closes the connection without a word.
        platform::SendAllBefore(context->socket, SoapRequest::BadRequestAnswer(ReasonOf(outcome)),
                                platform::GetTickCount() + kIoTimeoutSeconds * 1000);
    } else if (outcome != SoapRequest::Outcome::kIncomplete &&
               outcome != SoapRequest::Outcome::kTimedOut) {
        currentRequest = &request;
        context->frecv = FromReadRequest;
        DeviceService device(context);
        EventService events(context);
        MediaService media(context);
        DisplayService display(context);
        if (soap_begin_serve(context) == SOAP_OK) {
            // Each service in turn, while the one before does not know the request. A request
            // none knows is answered with the fault ONVIF names for it, so the client need not
            // wait; as a fault of its own (not a transport error) it keeps the RelatesTo header.
            if (device.dispatch() == SOAP_NO_METHOD && events.dispatch() == SOAP_NO_METHOD &&
                media.dispatch() == SOAP_NO_METHOD && display.dispatch() == SOAP_NO_METHOD)
                soap_receiver_fault_subcode(context, "ter:ActionNotSupported",
                                            "Optional Action Not Implemented", nullptr);
        }
        if (context->error != SOAP_OK && context->error < SOAP_STOP) {
            // A service's dispatch sets the table of its own types only; a fault's subcode is
            // in the error namespace, which is in the device front's table.
            soap_set_namespaces(context, namespaces);
            soap_send_fault(context);
        }
        soap_destroy(context);
        soap_end(context);
        currentRequest = nullptr;
    }
    {
        std::lock_guard<std::mutex> lock(connection.socketMutex);
        soap_closesock(context);
    }
    connection.done = true;  // closed by the engine already, or a connection never answered
}

void SoapThread::SetSnapshotSource(std::function<std::string()> source) {
    std::lock_guard<std::mutex> lock(datamutex_);
    snapshot_ = std::move(source);
}

bool SoapThread::AnswerSnapshot(Connection& connection, const std::string& request) {
    const std::string get = std::string("GET ") + kSnapshotPath;
    if (request.compare(0, get.size(), get) != 0 ||
        (request.size() > get.size() && request[get.size()] != ' ' && request[get.size()] != '?'))
        return false;
    const std::string picture = connection.snapshot ? connection.snapshot() : std::string();
    const std::string head =
        picture.empty() ? std::string(
                              "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n"
                              "Retry-After: 1\r\nConnection: close\r\n\r\n")
                        : "HTTP/1.1 200 OK\r\nContent-Type: image/jpeg\r\nContent-Length: " +
                              std::to_string(picture.size()) +
                              "\r\nCache-Control: no-store\r\nConnection: close\r\n\r\n";
    // Within the transfer time in all, as a request is read: a client that takes the picture
    // a byte at a time cannot hold its connection for longer.
    platform::SendAllBefore(connection.context->socket, head + picture,
                            platform::GetTickCount() + kTransferTimeoutSeconds * 1000);
    return true;
}

void SoapThread::Reap(bool all) {
    for (auto it = connections_.begin(); it != connections_.end();) {
        Connection& connection = **it;
        if (!all && !connection.done) {
            ++it;
            continue;
        }
        if (all) {
            // A client still sending or reading: its receive or send returns at once.
            std::lock_guard<std::mutex> lock(connection.socketMutex);
            if (soap_valid_socket(connection.context->socket))
                ::shutdown(connection.context->socket, SHUT_RDWR);
        }
        connection.thread.join();
        soap_free(connection.context);
        it = connections_.erase(it);
    }
}
