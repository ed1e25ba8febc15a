#pragma once
#include <cstddef>
#include <cstdint>

// Feeds arbitrary bytes to every reader of outside data, the transfer block parser and the
// upload check among them: the first byte picks the reader.
// Used by the libFuzzer build and by the damaged-file tests of the ordinary build.
void FuzzOneReader(const uint8_t* data, size_t size);
