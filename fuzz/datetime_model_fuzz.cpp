// Compiling datetime models. The input is a type, a direction, the allocation that fails, and the model.
// Properties: the model compiles or raises a code of compilation; nothing leaks; the flattened copy has the
// same records; no length is negative, not even of records of any bytes.

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "../test/datetime_fmt/compiled_model.h"
#include "fuzz_input.h"

using namespace dv::test;

namespace {

constexpr int _codes[] = {0,     -5011, -5012, -5014, -5026, -5027, -5028,
                          -5039, -5040, -5041, -5096, -5097, -5112, DV_ERR_NO_MEMORY};

void require_(bool holds, const char *property, int code) {
    if (!holds) dv::fuzz::require_none(std::string(property) + ", code " + std::to_string(code));
}

void compile_(std::string_view model, bool is_reading, int type, long failing_call) {
    const compiled_model compiled(model, is_reading, type, failing_call);
    const int code = compiled.error.code;
    require_(std::count(std::begin(_codes), std::end(_codes), code) == 1, "a code of compilation", code);
    require_(dt_fmt_get_predicted_str_len(&compiled.ctx, 9) >= 0, "a length", code);

    const int size = dt_fmt_ctx_get_serialize_size(&compiled.ctx);
    const std::unique_ptr<char[]> block(new char[static_cast<size_t>(size)]);
    dt_fmt_ctx_serialize(&compiled.ctx, block.get(), size);
    const auto &copy = *reinterpret_cast<const dt_fmt_ctx_t *>(block.get());
    require_(is_same_model(copy, compiled.ctx), "the same model", code);
}

// Records of any bytes, but for what they own.
void measure_(std::string_view bytes) {
    std::vector<dt_fmt_token_info_t> infos(bytes.size() / sizeof(dt_fmt_token_info_t));
    if (infos.empty()) return;
    std::memcpy(infos.data(), bytes.data(), infos.size() * sizeof(dt_fmt_token_info_t));
    for (dt_fmt_token_info_t &info : infos) info.token = nullptr;
    dt_fmt_ctx_t ctx{};
    ctx.token_infos = infos.data();
    ctx.token_cnt = bytes[0] < 0 ? -1 : static_cast<int32_t>(infos.size());
    require_(dt_fmt_get_predicted_str_len(&ctx, bytes[1]) >= 0, "a length of broken records", 0);
    require_(dt_fmt_ctx_get_serialize_size(&ctx) >= 40, "a size of broken records", 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr int types[] = {DV_TYPE_DATE, DV_TYPE_TIME, DV_TYPE_TIMESTAMP, DV_TYPE_TS_TZ};
    constexpr size_t head = 3;
    if (size < head) return 0;
    const std::unique_ptr<char[]> model(new char[size - head]);  // ends where it ends
    std::memcpy(model.get(), data + head, size - head);
    const std::string_view text(model.get(), size - head);
    compile_(text, data[1] % 2 != 0, types[data[0] % 4], data[2] - 1L);
    measure_(text);
    return 0;
}
