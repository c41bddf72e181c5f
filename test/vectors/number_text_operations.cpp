// NUMBER as text, without a model and under models.

#include <cstring>

#include "dvtypes/number_fmt.h"
#include "vector_bind.h"

using namespace dv::test;

namespace {

using read_function = void (*)(number_t *, int, const char *, const char *);

template <read_function Read>
void read_(vector_call &call) {
    const vector_text text = call.text();
    number_t x{};
    if (call.run([&] { Read(&x, text.size, text.data, nullptr); }) && text.data != nullptr) {
        call.put_bytes(&x, x.size + size_t{1});
    }
}

// A text written into exactly size bytes. The byte behind them must stay.
template <typename Write>
void write_(vector_call &call, int64_t size, Write write, bool stays_on_raise = false) {
    constexpr char guard = '\x5A';
    auto *const buffer = static_cast<char *>(call.memory(static_cast<size_t>(size) + 1));
    buffer[size] = guard;
    const bool has_returned = call.run([&] { write(static_cast<int>(size), buffer); });
    if (buffer[size] != guard) call.fail("written beyond the buffer");
    if (has_returned || stays_on_raise)
        call.put_text(std::string_view(buffer, strnlen(buffer, static_cast<size_t>(size))));
}

// Number, form (null, "N", "S"), size of the buffer. A raise of -5067 leaves the text.
void to_text_(vector_call &call) {
    const number_t *const x = call.record<number_t>();
    const vector_text form = call.ended_text();
    const int64_t size = call.integer_or(NUMBER_NORMAL_TEXT_SIZE);
    write_(
        call, size, [&](int room, char *text) { number_to_str(x, room, text, form.data); },
        /*stays_on_raise=*/true);
}

void dump_(vector_call &call) {
    const number_t *const x = call.record<number_t>();
    const int64_t size = call.integer_or(NUMBER_DUMP_SIZE);
    write_(call, size, [&](int room, char *text) { number_sdump(x, text, room); });
}

void to_model_text_(vector_call &call) {
    const number_t *const x = call.record<number_t>();
    const vector_text model = call.text();
    const int64_t size = call.integer_or(NUMBER_FMT_TEXT_SIZE);
    write_(call, size,
           [&](int room, char *text) { number_to_str_fmt(x, room, text, model.size, model.data); });
}

void to_roman_(vector_call &call) {
    const number_t *const x = call.record<number_t>();
    const auto in_upper = static_cast<int>(call.integer());
    const int64_t size = call.integer_or(NUMBER_ROMAN_TEXT_SIZE);
    write_(call, size, [&](int room, char *text) { _number_to_str_fmt_rn(x, room, text, in_upper); });
}

void from_model_text_(vector_call &call) {
    const vector_text text = call.text(), model = call.text();
    number_t x{};
    const auto read = [&] { number_from_str_fmt(&x, text.size, text.data, model.size, model.data); };
    if (call.run(read) && text.data != nullptr) call.put_bytes(&x, x.size + size_t{1});
}

void compile_(vector_call &call) {
    const vector_text model = call.ended_text();
    number_parse_result_t result{}, other;
    if (!call.run([&] { number_fmt_parse(model.data, &result); }) || model.data == nullptr) return;
    std::memset(&other, 0xFF, sizeof other);
    number_fmt_parse(model.data, &other);
    // The bytes between the members count. NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    if (std::memcmp(&result, &other, sizeof result) != 0) call.fail("a byte of the record is not written");
    call.put_text(result.fmt_dig);
    const int fields[] = {result.fm_present, result.sign_type,      result.currency_type,  result.pos_msd,
                          result.pos_lsd,    result.power_to_raise, result.in_hexadecimal, result.in_sciform};
    for (const int field : fields) call.put(field);
}

}  // namespace

void dv::test::add_number_text_operations(vector_operations &all) {
    all.add_in_place<number_format_check, number_get_length>();
    all.add("number_from_str", read_<number_from_str>);
    all.add("number_from_str_nt", read_<number_from_str_nt>);
    all.add("number_to_str", to_text_);
    all.add("number_sdump", dump_);
    all.add("number_to_str_fmt", to_model_text_);
    all.add("_number_to_str_fmt_rn", to_roman_);
    all.add("number_from_str_fmt", from_model_text_);
    all.add("number_fmt_parse", compile_);
}
