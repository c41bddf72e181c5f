// NUMBER from text and back. The input is the text; its first byte also sets the size of a short output
// buffer. Properties: reading agrees with the long-hand twin, both readers, with and without a length;
// writing agrees with the twin's model in every form; a whole text reads back as the same record.

#include "fuzz_input.h"
#include "number_properties.h"

using namespace dv::fuzz;
using namespace dv::test;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    require_none(reading_fault(text));
    const outcome_t value = theirs([&] { return twin_read(text); });
    if (value.code != 0) return 0;
    for (const char *format : {static_cast<const char *>(nullptr), "N", "S"}) {
        require_none(writing_fault(value.value, NUMBER_NORMAL_TEXT_SIZE, format));
        require_none(writing_fault(value.value, data[0] % 60, format));
    }
    return 0;
}
