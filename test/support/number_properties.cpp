// The properties of NUMBER. See number_properties.h.

#include "number_properties.h"

#include <algorithm>
#include <sstream>

namespace dv::test {

namespace {

template <auto unary>
void unary_(number_t *x, const number_t *) {
    unary(x);
}
void add_(number_t *x, const number_t *y) { number_add_with_mode(x, y, 1); }
void subtract_(number_t *x, const number_t *y) { number_add_with_mode(x, y, 0); }
decimal_t square_(const decimal_t &x, const decimal_t &, int mode) { return twin_mul(x, x, mode); }
decimal_t negative_(const decimal_t &x, const decimal_t &, int) { return {-x.digits, x.exponent}; }
decimal_t magnitude_(const decimal_t &x, const decimal_t &, int) { return {abs(x.digits), x.exponent}; }
decimal_t second_(const decimal_t &, const decimal_t &y, int) { return y; }
decimal_t root_(const decimal_t &x, const decimal_t &, int mode) { return twin_sqrt(x, mode); }
decimal_t exponential_(const decimal_t &x, const decimal_t &, int mode) {
    return twin_pow(decode(*_number_e), x, mode);
}

}  // namespace

const std::array<operation_t, 12> operations = {{{"add", number_add, twin_add},
                                                 {"sub", number_sub, twin_sub},
                                                 {"mul", number_mul, twin_mul},
                                                 {"div", number_div, twin_div},
                                                 {"mod", number_mod, twin_mod},
                                                 {"rem", number_rem, twin_rem},
                                                 {"add_with_mode_1", add_, twin_add},
                                                 {"add_with_mode_0", subtract_, twin_sub},
                                                 {"sqr", unary_<number_sqr>, square_},
                                                 {"negate", unary_<number_negate>, negative_},
                                                 {"abs", unary_<number_abs>, magnitude_},
                                                 {"assign", number_assign, second_}}};

const std::array<operation_t, 3> power_operations = {{{"sqrt", unary_<number_sqrt>, root_},
                                                      {"pow", number_pow, twin_pow},
                                                      {"exp", unary_<number_exp>, exponential_}}};

void PrintTo(const operation_t &operation, std::ostream *out) { *out << operation.name; }

namespace {

int sign_(int n) { return (n > 0) - (n < 0); }

template <typename... Parts>
std::string message_(const Parts &...parts) {
    std::ostringstream stream;
    (stream << ... << parts);
    return stream.str();
}

// "" where both agree.
template <typename... Parts>
std::string difference_(const outcome_t &got, const outcome_t &want, const Parts &...inputs) {
    if (got == want) return {};
    return message_(inputs..., ": got ", describe(got), ", want ", describe(want));
}

// ---- every function that takes a record ----

struct call_t {
    number_t *x;
    const number_t *y;
    const hostile_t &input;
    char *text;      // input.buf_size bytes
    uint8_t *bytes;  // of a record
};

template <typename T>
void convert_(void (*convert)(const number_t *, T *), const call_t &c) {
    T value;
    convert(c.x, &value);
}
template <auto... conversions>
void to_each_(const call_t &c) {
    (raise_of([&] { convert_(conversions, c); }), ...);
}

constexpr void (*_calls[])(const call_t &) = {
    to_each_<number_to_int8, number_to_uint8, number_to_int16, number_to_uint16, number_to_int32,
             number_to_uint32, number_to_int64, number_to_uint64, number_to_float, number_to_double,
             number_to_long_double>,
    [](const call_t &c) { number_to_str(c.x, c.input.buf_size, c.text, nullptr); },
    [](const call_t &c) { number_to_str(c.x, c.input.buf_size, c.text, "N"); },
    [](const call_t &c) { number_to_str(c.x, c.input.buf_size, c.text, "S"); },
    [](const call_t &c) { number_sdump(c.x, c.text, c.input.buf_size); },
    [](const call_t &c) { number_round_at_withmode(c.x, c.input.position % 200, c.input.mode % 9); },
    [](const call_t &c) { number_force_prec_scale(c.x, c.input.prec % 130, c.input.scale % 200); },
    [](const call_t &c) { number_check_prec_scale(c.x, c.input.prec, c.input.scale); },
    [](const call_t &c) { number_range_check(c.x, c.input.mode % 13); },
    [](const call_t &c) { number_cmp(c.x, c.y); },
    [](const call_t &c) { number_to_oracle_format(c.x, c.bytes); },
    [](const call_t &c) { number_from_oracle_format(c.x, &c.y->size); }};

// Runs a call on guarded copies of the input; is what it must not write as it was?
template <typename F>
bool stays_in_bounds_(const hostile_t &input, F &&call) {
    const guarded x(input.x), y(input.y), text(input.buf_size), bytes(sizeof(number_t));
    const call_t c{x.record(), y.record(), input, text.text(), &bytes.record()->size};
    raise_of([&] { call(c); });
    return x.intact() && y.intact() && y.holds(input.y) && text.intact() && bytes.intact();
}

}  // namespace

std::string arithmetic_fault(const operation_t &operation, const number_t &x, const number_t &y, int mode) {
    const rounding_mode in_mode(mode);
    const guarded right(y);
    outcome_t got = ours(x, [&](number_t *r) { operation.library(r, &x == &y ? r : right.record()); });
    if (!right.intact() || !right.holds(y)) got.code = BROKEN_RECORD;
    const outcome_t want = theirs([&] { return operation.twin(decode(x), decode(y), mode); });
    return difference_(got, want, describe(x), operation.name, " ", describe(y), "mode ", mode);
}

std::string rounding_fault(const number_t &x, int pos, int mode) {
    const outcome_t got = ours(x, [&](number_t *r) { number_round_at_withmode(r, pos, mode); });
    const outcome_t want = theirs([&] { return twin_round(decode(x), pos, mode); });
    return difference_(got, want, describe(x), "at ", pos, " mode ", mode);
}

std::string precision_fault(const number_t &x, int prec, int scale) {
    if (number_check_prec_scale(&x, prec, scale) != int{twin_check(decode(x), prec, scale)})
        return message_("check of ", describe(x), "precision ", prec, " scale ", scale);
    const outcome_t got = ours(x, [&](number_t *r) { number_force_prec_scale(r, prec, scale); });
    const outcome_t want = theirs([&] { return twin_force(decode(x), prec, scale); });
    return difference_(got, want, describe(x), "precision ", prec, " scale ", scale);
}

std::string order_fault(const number_t &x, const number_t &y) {
    const int want = sign_(compare(decode(x), decode(y)));
    const int bytes = std::memcmp(&x.signexp, &y.signexp, std::min(x.size, y.size));
    if (sign_(number_cmp(&x, &y)) == want && sign_(number_cmp(&y, &x)) == -want &&
        sign_(bytes != 0 ? bytes : x.size - y.size) == want)
        return {};
    return message_(describe(x), describe(y), "want ", want);
}

// `ended` by a NUL, or read by its length.
static std::string reading_fault_(std::string_view text, bool ended, bool is_nt) {
    const guarded block(text.size() + (ended ? 1 : 0), std::string(text).c_str());
    const int length = ended ? 0 : static_cast<int>(text.size());
    const auto reader = is_nt ? number_from_str_nt : number_from_str;
    const auto twin = is_nt ? twin_read_nt : twin_read;
    const outcome_t got = ours(number_t{}, [&](number_t *r) { reader(r, length, block.text(), nullptr); });
    const outcome_t want = theirs([&] { return twin(text); });
    number_t tried{};
    const int code = is_nt ? got.code : number_try_from_str(&tried, length, block.text());
    if (code != got.code || (code == 0 && !is_nt && tried != got.value))
        return message_("tried: ", code, " ", describe(got));
    return difference_(got, want, is_nt ? "nt '" : "'", text.substr(0, 500), "' length ", length);
}

std::string reading_fault(std::string_view text) {
    const std::string_view until_nul = text.substr(0, text.find('\0'));
    std::string faults;
    for (const bool is_nt : {false, true}) {
        faults += reading_fault_(until_nul, /*ended=*/true, is_nt);
        if (!text.empty()) faults += reading_fault_(text, /*ended=*/false, is_nt);  // a length of 0 is none
    }
    return faults;
}

std::string writing_fault(const number_t &x, int buf_size, const char *format) {
    const auto size = static_cast<size_t>(std::max(buf_size, 0));
    const guarded buffer(size);
    const int code = raise_of([&] { number_to_str(&x, buf_size, buffer.text(), format); });
    const bool written = code == 0 || code == -5067;
    const std::string text(buffer.text(), written ? strnlen(buffer.text(), size) : 0);
    const written_t want = twin_write(decode(x), buf_size, format);
    if (!buffer.intact() || code != want.code || text != want.text) {
        return message_(describe(x), "size ", buf_size, " format ", format != nullptr ? format : "NULL",
                        ": got ", code, " '", text, "', want ", want.code, " '", want.text, "'");
    }
    const bool is_whole = code == 0 && buf_size >= NUMBER_NORMAL_TEXT_SIZE;
    return is_whole && num(text) != x ? text + " reads back otherwise" : "";
}

std::string hostile_fault(const hostile_t &input) {
    const assertion_watch quiet;
    const rounding_mode in_mode(input.mode % 9);
    const auto fault = [&](const std::string &call) {
        return message_(call, " ", describe(input.x), describe(input.y), "mode ", +input.mode, " size ",
                        +input.buf_size);
    };
    for (const auto &call : _calls) {
        if (!stays_in_bounds_(input, call)) return fault("call " + std::to_string(&call - _calls));
    }
    const auto operation_fault = [&](const operation_t &operation) {
        const auto call = [&](const call_t &c) { operation.library(c.x, c.y); };
        return stays_in_bounds_(input, call) ? std::string() : fault(operation.name);
    };
    std::string faults;
    for (const operation_t &operation : operations) faults += operation_fault(operation);
    for (const operation_t &operation : power_operations) faults += operation_fault(operation);
    return faults;
}

}  // namespace dv::test
