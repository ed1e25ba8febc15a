#include "OnvifDeviceData.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <unistd.h>

#include <algorithm>

std::string OnvifDeviceData::Host() const {
    return addresses.empty() ? "127.0.0.1" : addresses.front();
}

std::string OnvifDeviceData::ServiceUrl() const {
    return "http://" + Host() + ":" + std::to_string(port) + "/onvif/services";
}

std::vector<std::string> OnvifDeviceData::ReadAddresses() {
    std::vector<std::string> addresses;
    char host[80] = {};
    if (::gethostname(host, sizeof host - 1) != 0)
        return addresses;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host, nullptr, &hints, &found) != 0 || found == nullptr) {
        addresses.push_back("127.0.0.1");
        return addresses;
    }
    for (const addrinfo* entry = found; entry != nullptr; entry = entry->ai_next) {
        char dotted[INET_ADDRSTRLEN] = {};
        const auto* address = reinterpret_cast<const sockaddr_in*>(entry->ai_addr);
        if (::inet_ntop(AF_INET, &address->sin_addr, dotted, sizeof dotted) == nullptr)
            continue;
        if (std::find(addresses.begin(), addresses.end(), dotted) == addresses.end())
            addresses.push_back(dotted);
    }
    ::freeaddrinfo(found);
    if (addresses.empty())
        addresses.push_back("127.0.0.1");
    return addresses;
}
