#include "ReaderFuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzOneReader(data, size);
    return 0;
}
