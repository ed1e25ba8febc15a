#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

struct sockaddr_in;

namespace platform {

// An owned TCP socket: a client connection, an accepted peer or a listener. Closed when the
// object goes.
class TcpSocket {
  public:
    TcpSocket() = default;
    explicit TcpSocket(int fd) : fd_(fd) {}
    TcpSocket(TcpSocket&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
    TcpSocket& operator=(TcpSocket&& other) noexcept;
    TcpSocket(const TcpSocket&) = delete;
    TcpSocket& operator=(const TcpSocket&) = delete;
    ~TcpSocket() { Close(); }

    // Connects to a dotted IPv4 address; the attempt gives up after timeoutMs.
    static TcpSocket Connect(const std::string& ip, int port, int timeoutMs);
    // Listens on address:port (address "0.0.0.0" for every interface) with address reuse.
    static TcpSocket Listen(const std::string& address, int port);

    bool IsOpen() const { return fd_ >= 0; }
    void Close();
    // Receive and send time-outs: a read that waits longer returns no bytes.
    void SetTimeouts(int receiveMs, int sendMs);
    // Waits up to timeoutMs for a peer on a listener; a closed socket when none came.
    TcpSocket Accept(int timeoutMs);
    // Bytes received, 0 on a time-out, a closed peer or an error.
    size_t Receive(char* buffer, size_t capacity);
    // One send call; the bytes the system took.
    size_t Send(const void* data, size_t size);
    // Sends until everything went or a send fails; false when the peer did not take it all.
    bool SendAll(const void* data, size_t size);
    bool SendAll(const std::string& text) { return SendAll(text.data(), text.size()); }
    // The port the socket is bound to (a listener on port 0 gets one from the system).
    int LocalPort() const;
    // The peer's IPv4 address in host byte order; false when it has none (or is not IPv4).
    bool PeerAddress(uint32_t& address) const;
    // Sends everything before deadline (a tick count), in pieces, so that a peer that reads
    // slowly cannot hold the sender longer than that; false when it did not all go in time.
    bool SendAllBefore(const std::string& text, uint32_t deadline);

  private:
    // A TCP socket for a dotted address; closed when the address does not parse.
    static TcpSocket NewSocket(const std::string& ip, int port, struct sockaddr_in& address);

    int fd_ = -1;
};

// The same for a connected socket the caller owns (one another library opened).
bool SendAllBefore(int fd, const std::string& text, uint32_t deadline);

}  // namespace platform
