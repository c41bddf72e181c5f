// NUMBER from text and back. The input is the text; its first byte also sets the size of a short output
// buffer. Properties: reading agrees with the long-hand twin, both readers, with and without a length;
// writing agrees with the twin's model in every form; a whole text reads back as the same record.

#include "fuzz_input.h"
#include "number_support.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

using reader_t = void(number_t *, int, const char *, const char *);

void check_reading_(reader_t *reader, const char *text, int length, const outcome_t &want) {
    const outcome_t got = ours(number_t{}, [&](number_t *r) { reader(r, length, text, nullptr); });
    require(got == want, "read " + std::to_string(got.code) + " " + describe(got.value) + "want " +
                             std::to_string(want.code) + " " + describe(want.value));
}

void check_writing_(const number_t &x, int buf_size, const char *format) {
    const auto buffer = exact_block(static_cast<size_t>(buf_size));
    const int code = raise_of([&] { number_to_str(&x, buf_size, buffer.get(), format); });
    const written_t want = twin_write(decode(x), buf_size, format);
    const bool written = code == 0 || code == -5067;
    require(code == want.code && (!written || want.text == buffer.get()),
            "write " + describe(x) + " size " + std::to_string(buf_size) + ": " + std::to_string(code) +
                ", want " + std::to_string(want.code) + " " + want.text);
    if (code != 0 || static_cast<size_t>(buf_size) < NUMBER_NORMAL_TEXT_SIZE) return;
    check_reading_(number_from_str, buffer.get(), 0, {0, x});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    const std::string until_nul = text.c_str();
    const auto twin_of = [](const std::string &t) { return theirs([&] { return twin_read(t); }); };
    const auto twin_nt_of = [](const std::string &t) { return theirs([&] { return twin_read_nt(t); }); };

    const auto ended = ended_text(data, size);
    const outcome_t value = twin_of(until_nul);
    check_reading_(number_from_str, ended.get(), 0, value);
    check_reading_(number_from_str_nt, ended.get(), -1, twin_nt_of(until_nul));
    if (size > 0) {
        const auto block = exact_copy(data, size);
        check_reading_(number_from_str, block.get(), static_cast<int>(size), twin_of(text));
        check_reading_(number_from_str_nt, block.get(), static_cast<int>(size), twin_nt_of(text));
    }
    if (value.code != 0) return 0;
    for (const char *format : {static_cast<const char *>(nullptr), "N", "S"}) {
        check_writing_(value.value, NUMBER_NORMAL_TEXT_SIZE, format);
        check_writing_(value.value, data[0] % 60, format);
    }
    return 0;
}
