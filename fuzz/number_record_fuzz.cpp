// Hostile records: any 23 bytes through every operation on NUMBER. Two records, then arguments. Each record
// has a heap block of its own, so that a sanitizer sees an access beside it; nothing else is asked of such
// values.

#include "fuzz_input.h"
#include "number_properties.h"

using namespace dv::fuzz;
using namespace dv::test;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    hostile_t input{};
    if (size != 0) std::memcpy(&input, data, std::min(size, sizeof input));
    require_none(hostile_fault(input));
    return 0;
}
