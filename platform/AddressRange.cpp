#include "AddressRange.h"

#include <arpa/inet.h>

#include <cstdlib>

namespace platform {

bool AddressRange::Parse(const std::string& text, AddressRange& range) {
    const size_t slash = text.find('/');
    const std::string host = text.substr(0, slash);
    in_addr parsed{};
    if (::inet_pton(AF_INET, host.c_str(), &parsed) != 1)
        return false;
    long prefix = 32;
    if (slash != std::string::npos) {
        const std::string digits = text.substr(slash + 1);
        if (digits.empty() || digits.size() > 2 ||
            digits.find_first_not_of("0123456789") != std::string::npos)
            return false;
        prefix = std::strtol(digits.c_str(), nullptr, 10);
        if (prefix > 32)
            return false;
    }
    range.mask = prefix == 0 ? 0u : ~0u << (32 - prefix);
    range.network = ntohl(parsed.s_addr) & range.mask;
    return true;
}

AddressRange LoopbackRange() {
    AddressRange range;
    AddressRange::Parse("127.0.0.0/8", range);
    return range;
}

bool AnyContains(const std::vector<AddressRange>& ranges, uint32_t address) {
    for (const AddressRange& range : ranges)
        if (range.Contains(address))
            return true;
    return false;
}

std::string DottedAddress(uint32_t address) {
    return std::to_string(address >> 24) + "." + std::to_string((address >> 16) & 255) + "." +
           std::to_string((address >> 8) & 255) + "." + std::to_string(address & 255);
}

}  // namespace platform
