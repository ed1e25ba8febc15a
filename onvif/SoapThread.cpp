#include "SoapThread.h"

#include <cstdio>

#include "Device.nsmap"  // the namespace table, defined once here
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

}  // namespace

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
    if (height == data_.height && width == data_.width)
        return;  // a change of the rate alone changes nothing
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
    context->user = &served_;
    context->fheader = AnswerHeader;
    if (Bind(context)) {
        serving_ = true;
        Serve(context);
        serving_ = false;
        std::printf("End soap thread port %d\n", data_.port);
    }
    soap_closesock(context);
    soap_destroy(context);
    soap_end(context);
    soap_free(context);
}

void SoapThread::Serve(struct soap* context) {
    DeviceService device(context);
    EventService events(context);
    MediaService media(context);
    DisplayService display(context);
    while (!TestDestroy()) {
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
        {
            std::lock_guard<std::mutex> lock(datamutex_);
            served_ = data_;
        }
        if (soap_begin_serve(context) == SOAP_OK) {
            // Each service in turn, while the one before does not know the request. A request
            // none knows is answered with the fault, so the client need not wait.
            if (device.dispatch() == SOAP_NO_METHOD && events.dispatch() == SOAP_NO_METHOD &&
                media.dispatch() == SOAP_NO_METHOD)
                display.dispatch();
        }
        if (context->error != SOAP_OK && context->error < SOAP_STOP)
            soap_send_fault(context);
        soap_destroy(context);
        soap_end(context);
        soap_closesock(context);
    }
}
