// Hostile records: any 23 bytes through every operation on NUMBER. Two records, then arguments. Each record
// has a heap block of its own, so that a sanitizer sees an access beside it; nothing else is asked of such
// values.

#include "fuzz_input.h"
#include "number_support.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

struct arguments_t {
    int position;
    int mode;
    int prec;
    int scale;
    int buf_size;
    char *text;      // buf_size bytes
    uint8_t *bytes;  // 23 bytes
};

template <auto convert, typename T>
void into_(number_t *x, const number_t *, const arguments_t &) {
    T value;
    convert(x, &value);
}

template <auto binary>
void binary_(number_t *x, const number_t *y, const arguments_t &) {
    binary(x, y);
}

using call_t = void(number_t *x, const number_t *y, const arguments_t &arguments);
constexpr call_t *_calls[] = {
    binary_<number_add>,
    binary_<number_sub>,
    binary_<number_mul>,
    binary_<number_div>,
    binary_<number_mod>,
    binary_<number_rem>,
    binary_<number_assign>,
    binary_<number_cmp>,
    [](number_t *x, const number_t *, const arguments_t &) { number_sqr(x); },
    [](number_t *x, const number_t *, const arguments_t &) { number_negate(x); },
    [](number_t *x, const number_t *, const arguments_t &) { number_abs(x); },
    [](number_t *x, const number_t *, const arguments_t &a) {
        number_round_at_withmode(x, a.position, a.mode);
    },
    [](number_t *x, const number_t *, const arguments_t &a) { number_force_prec_scale(x, a.prec, a.scale); },
    [](number_t *x, const number_t *, const arguments_t &a) { number_check_prec_scale(x, a.prec, a.scale); },
    [](number_t *x, const number_t *, const arguments_t &a) {
        number_to_str(x, a.buf_size, a.text, nullptr);
    },
    [](number_t *x, const number_t *, const arguments_t &a) { number_to_str(x, a.buf_size, a.text, "N"); },
    [](number_t *x, const number_t *, const arguments_t &a) { number_to_str(x, a.buf_size, a.text, "S"); },
    [](number_t *x, const number_t *, const arguments_t &a) { number_sdump(x, a.text, a.buf_size); },
    [](number_t *x, const number_t *, const arguments_t &a) { number_to_oracle_format(x, a.bytes); },
    [](number_t *x, const number_t *y, const arguments_t &) { number_from_oracle_format(x, &y->size); },
    [](number_t *x, const number_t *, const arguments_t &a) { number_range_check(x, a.mode); },
    into_<number_to_int8, int8_t>,
    into_<number_to_uint8, uint8_t>,
    into_<number_to_int16, int16_t>,
    into_<number_to_uint16, uint16_t>,
    into_<number_to_int32, int32_t>,
    into_<number_to_uint32, uint32_t>,
    into_<number_to_int64, int64_t>,
    into_<number_to_uint64, uint64_t>,
    into_<number_to_float, float>,
    into_<number_to_double, double>,
    into_<number_to_long_double, long double>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    cursor input(data, size);
    number_t records[2];
    input.bytes(records, sizeof records);
    arguments_t arguments{};
    arguments.mode = input.byte() % 14 - 1;
    arguments.buf_size = input.byte();
    arguments.position = input.below(512) - 256;
    arguments.prec = input.below(256) - 130;
    arguments.scale = input.below(512) - 256;
    const auto text = exact_block(static_cast<size_t>(arguments.buf_size));
    const auto bytes = exact_block(sizeof(number_t));
    arguments.text = text.get();
    arguments.bytes = reinterpret_cast<uint8_t *>(bytes.get());

    const assertion_watch quiet;
    for (call_t *call : _calls) {
        const auto x = exact_copy(&records[0], sizeof(number_t));
        const auto y = exact_copy(&records[1], sizeof(number_t));
        auto *const left = reinterpret_cast<number_t *>(x.get());
        raise_of([&] { call(left, reinterpret_cast<const number_t *>(y.get()), arguments); });
        require(std::memcmp(y.get(), &records[1], sizeof(number_t)) == 0, "the second operand was changed");
    }
    return 0;
}
