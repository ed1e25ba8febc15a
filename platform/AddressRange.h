#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace platform {

// An IPv4 network written "ADDRESS/PREFIX" ("192.168.10.0/24"); a bare address is one host.
struct AddressRange {
    uint32_t network = 0;  // host byte order, host bits cleared
    uint32_t mask = 0;

    // False when the text is not an address with an optional prefix of 0 to 32.
    static bool Parse(const std::string& text, AddressRange& range);
    bool Contains(uint32_t address) const { return (address & mask) == network; }
};

// The loopback network, 127.0.0.0/8.
AddressRange LoopbackRange();
bool AnyContains(const std::vector<AddressRange>& ranges, uint32_t address);
// Dotted text of a host-order address, for log lines.
std::string DottedAddress(uint32_t address);

}  // namespace platform
