#include "TcpSocket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "Ticks.h"

namespace platform {

namespace {

bool ParseAddress(const std::string& ip, int port, sockaddr_in& address) {
    address = sockaddr_in{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    return ::inet_pton(AF_INET, ip.c_str(), &address.sin_addr) == 1;
}

bool WaitFor(int fd, short events, int timeoutMs) {
    pollfd entry{fd, events, 0};
    int ready;
    do
        ready = ::poll(&entry, 1, timeoutMs);
    while (ready < 0 && errno == EINTR);
    return ready > 0;
}

}  // namespace

TcpSocket TcpSocket::NewSocket(const std::string& ip, int port, sockaddr_in& address) {
    if (!ParseAddress(ip, port, address))
        return TcpSocket();
    return TcpSocket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

TcpSocket& TcpSocket::operator=(TcpSocket&& other) noexcept {
    if (this != &other) {
        Close();
        fd_ = other.fd_;
        other.fd_ = -1;
    }
    return *this;
}

void TcpSocket::Close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

TcpSocket TcpSocket::Connect(const std::string& ip, int port, int timeoutMs) {
    sockaddr_in address{};
    TcpSocket socket = NewSocket(ip, port, address);
    if (!socket.IsOpen())
        return socket;
    const int flags = ::fcntl(socket.fd_, F_GETFL, 0);
    ::fcntl(socket.fd_, F_SETFL, flags | O_NONBLOCK);
    if (::connect(socket.fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        if (errno != EINPROGRESS || !WaitFor(socket.fd_, POLLOUT, timeoutMs))
            return TcpSocket();
        int error = 0;
        socklen_t length = sizeof error;
        if (::getsockopt(socket.fd_, SOL_SOCKET, SO_ERROR, &error, &length) != 0 || error != 0)
            return TcpSocket();
    }
    ::fcntl(socket.fd_, F_SETFL, flags);
    return socket;
}

TcpSocket TcpSocket::Listen(const std::string& ip, int port) {
    sockaddr_in address{};
    TcpSocket socket = NewSocket(ip, port, address);
    if (!socket.IsOpen())
        return socket;
    const int yes = 1;
    ::setsockopt(socket.fd_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (::bind(socket.fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket.fd_, SOMAXCONN) != 0)  // the system's backlog: bursts wait no retry
        return TcpSocket();
    return socket;
}

void TcpSocket::SetTimeouts(int receiveMs, int sendMs) {
    const timeval receive{receiveMs / 1000, (receiveMs % 1000) * 1000};
    const timeval send{sendMs / 1000, (sendMs % 1000) * 1000};
    ::setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &receive, sizeof receive);
    ::setsockopt(fd_, SOL_SOCKET, SO_SNDTIMEO, &send, sizeof send);
}

TcpSocket TcpSocket::Accept(int timeoutMs) {
    if (!IsOpen() || !WaitFor(fd_, POLLIN, timeoutMs))
        return TcpSocket();
    return TcpSocket(::accept4(fd_, nullptr, nullptr, SOCK_CLOEXEC));
}

size_t TcpSocket::Receive(char* buffer, size_t capacity) {
    if (!IsOpen())
        return 0;
    ssize_t got;
    do
        got = ::recv(fd_, buffer, capacity, 0);
    while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<size_t>(got) : 0;
}

size_t TcpSocket::Send(const void* data, size_t size) {
    if (!IsOpen() || size == 0)
        return 0;
    ssize_t sent;
    do
        sent = ::send(fd_, data, size, MSG_NOSIGNAL);
    while (sent < 0 && errno == EINTR);
    return sent > 0 ? static_cast<size_t>(sent) : 0;
}

bool TcpSocket::SendAll(const void* data, size_t size) {
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const size_t sent = Send(bytes, size);
        if (sent == 0)
            return false;
        bytes += sent;
        size -= sent;
    }
    return true;
}

bool TcpSocket::PeerAddress(uint32_t& address) const {
    sockaddr_in peer{};
    socklen_t length = sizeof peer;
    if (!IsOpen() || ::getpeername(fd_, reinterpret_cast<sockaddr*>(&peer), &length) != 0 ||
        peer.sin_family != AF_INET)
        return false;
    address = ntohl(peer.sin_addr.s_addr);
    return true;
}

bool SendAllBefore(int fd, const std::string& text, uint32_t deadline) {
    constexpr size_t kPiece = 16 * 1024;
    size_t done = 0;
    while (done < text.size()) {
        const int32_t left = static_cast<int32_t>(deadline - GetTickCount());
        if (left <= 0 || !WaitFor(fd, POLLOUT, left))
            return false;
        // Never blocking: a send may take less than the piece, and the rest waits for room.
        const ssize_t sent = ::send(fd, text.data() + done, std::min(kPiece, text.size() - done),
                                    MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))
            continue;
        if (sent <= 0)
            return false;
        done += static_cast<size_t>(sent);
    }
    return true;
}

bool TcpSocket::SendAllBefore(const std::string& text, uint32_t deadline) {
    return IsOpen() && platform::SendAllBefore(fd_, text, deadline);
}

int TcpSocket::LocalPort() const {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (!IsOpen() || ::getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return -1;
    return ntohs(address.sin_port);
}

}  // namespace platform
