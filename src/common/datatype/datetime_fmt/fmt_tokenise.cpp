// Reading a datetime model, element by element.
//
//     model    = { literal | run | element [precision] [suffix] }
//     literal  = '"' { any character but '"' } ( '"' | end of the model )
//     run      = punctuation other than '"', as long as it goes
//     element  = the longest keyword that fits, in any letter case
//     precision = digit 1..9, of FF
//     suffix   = TH | SP | THSP | SPTH, the longest that fits; when compiled for writing
//
// Everything that can raise comes before the text of a literal or run is copied, so that no record is lost
// that owns something.

#include "datetime_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr const char *_file = base_name(__FILE__);

std::string_view rest_(const dt_fmt_parse_ctx_t &parse_ctx) {
    if (parse_ctx.fmt_idx >= parse_ctx.fmt_len) return {};
    return {parse_ctx.fmt + parse_ctx.fmt_idx, static_cast<size_t>(parse_ctx.fmt_len - parse_ctx.fmt_idx)};
}

bool begins_with_punc_(std::string_view text) { return !text.empty() && is_punc(text[0]); }

// What an element stands as in the model; a literal without its quotes.
struct element_t {
    int id;
    std::string_view text;
    size_t taken;  // characters of the model
};

element_t parse_literal_(std::string_view model) {
    const std::string_view inside(model.data() + 1, model.size() - 1);
    const size_t end = inside.find('"');
    if (end == inside.npos) return {DT_FMT_TOKEN_DQ, inside, model.size()};
    return {DT_FMT_TOKEN_DQ, {inside.data(), end}, end + 2};
}

element_t parse_run_(std::string_view model) {
    const auto ends = [](char c) { return !is_punc(c) || c == '"'; };
    const auto count = static_cast<size_t>(std::find_if(model.begin(), model.end(), ends) - model.begin());
    return {DT_FMT_TOKEN_PUNC, {model.data(), count}, count};
}

element_t parse_dt_fmt_(std::string_view model) {
    if (begins_with_punc_(model)) return model[0] == '"' ? parse_literal_(model) : parse_run_(model);
    const int id = find_keyword(model);
    if (id == FMT_TOKEN_NONE) raise(DV_ERR_MODEL_ELEMENT);
    const auto length = static_cast<size_t>(fmt_tokens_[static_cast<size_t>(id)].token_len);
    return {id, {model.data(), length}, length};
}

// MONTH and MOnth are upper case, month and mONTH lower, Month has initial capitals; so has A.m.
dt_fmt_case_type_e get_format_case_(const element_t &element) {
    switch (element.id) {
        case DT_FMT_TOKEN_FF:
        case DT_FMT_TOKEN_TZH:
        case DT_FMT_TOKEN_TZM:
        case DT_FMT_TOKEN_TZR:
        case DT_FMT_TOKEN_FX:
            return DT_FMT_CASE_UPPER;
        default:
            break;
    }
    const std::string_view text = element.text;
    if (text.empty() || !is_upper(text[0])) return DT_FMT_CASE_LOWER;
    const size_t second = text.size() > 1 && text[1] == '.' ? 2 : 1;
    return text.size() > second && is_lower(text[second]) ? DT_FMT_CASE_INIT : DT_FMT_CASE_UPPER;
}

// The digit behind FF, 0 when there is none.
int8_t parse_fsec_prec_(dt_fmt_parse_ctx_t &parse_ctx) {
    const std::string_view rest = rest_(parse_ctx);
    if (rest.empty() || !is_digit(rest[0])) return 0;
    if (rest[0] == '0') raise(DV_ERR_FRACTION_PRECISION);
    ++parse_ctx.fmt_idx;
    return static_cast<int8_t>(digit_of(rest[0]));
}

// Of what a model is read as, all but a run of punctuation is an element of the table.
bool has_row_(int id) { return id != DT_FMT_TOKEN_PUNC; }

void check_duplicated_token_(dt_fmt_parse_ctx_t &parse_ctx, int id) {
    if (!has_row_(id)) return;
    const dt_fmt_unit_e unit = fmt_tokens_[static_cast<size_t>(id)].unit_type;
    const fmt_conflict_t *const conflict = find_conflict(unit, parse_ctx.update_flag);
    if (conflict != nullptr && conflict->field != nullptr) raise(conflict->error, conflict->field);
    if (conflict != nullptr) raise(conflict->error);
    parse_ctx.update_flag |= unit;
}

struct suffix_t {
    std::string_view text;
    dt_fmt_sfx_type_e type;
};
constexpr suffix_t _suffixes[] = {
    // longer ones first
    {"THSP", DT_FMT_SUFFIX_SPTH},
    {"SPTH", DT_FMT_SUFFIX_THSP},
    {"TH", DT_FMT_SUFFIX_TH},
    {"SP", DT_FMT_SUFFIX_SP},
};

// Most elements are told by one look that no suffix follows.
bool may_begin_suffix_(std::string_view text) {
    if (text.empty()) return false;
    const char first = to_upper(text[0]);
    return first == 'T' || first == 'S';
}

dt_fmt_sfx_type_e get_suffix_type_(dt_fmt_parse_ctx_t &parse_ctx) {
    const std::string_view rest = rest_(parse_ctx);
    if (!may_begin_suffix_(rest)) return DT_FMT_SUFFIX_NONE;
    uint8_t next[sizeof(uint64_t)];
    store_be64(next, upper_case_word(rest));
    for (const suffix_t &suffix : _suffixes) {
        if (memcmp(next, suffix.text.data(), suffix.text.size()) != 0) continue;
        parse_ctx.fmt_idx += static_cast<int32_t>(suffix.text.size());
        return suffix.type;
    }
    return DT_FMT_SUFFIX_NONE;
}

// Only numbers take suffixes.
bool is_number_(int id) { return has_row_(id) && !fmt_tokens_[static_cast<size_t>(id)].is_str_fmt; }

// A literal or run takes its text. Should throw_ return against its contract, the text is left out.
void take_text_(allocator_t *alloc, dt_fmt_token_info_t &info, std::string_view text) {
    info.type = DT_FMT_TYPE_PUNC;
    info.token = static_cast<char *>(alloc->malloc(alloc, text.size() + 1, _file, __LINE__));
    if (info.token == nullptr) return alloc->throw_(alloc, _file, __LINE__);
    memcpy(info.token, text.data(), text.size());
    info.token[text.size()] = '\0';
    info.token_len = static_cast<int32_t>(text.size());
}

void take_keyword_(dt_fmt_parse_ctx_t &parse_ctx, dt_fmt_token_info_t &info) {
    const dt_fmt_token_t &row = fmt_tokens_[static_cast<size_t>(info.id)];
    info.type = static_cast<uint8_t>(row.type);
    info.token_len = row.input_len;
    if (row.type == DT_FMT_TYPE_FM) parse_ctx.update_flag ^= DT_FMT_UNIT_FM;
    if (row.type == DT_FMT_TYPE_FX) parse_ctx.update_flag ^= DT_FMT_UNIT_FX;
}

}  // namespace

extern "C" void dt_fmt_parse_token(allocator_t *alloc, dt_fmt_parse_ctx_t *parse_ctx) {
    if (!DV_ASSERT(alloc != NULL) || !DV_ASSERT(parse_ctx != NULL)) return;
    if (!DV_ASSERT(parse_ctx->cur_token_info != NULL)) return;
    const element_t element = parse_dt_fmt_(rest_(*parse_ctx));
    parse_ctx->fmt_idx += static_cast<int32_t>(element.taken);

    dt_fmt_token_info_t &info = *parse_ctx->cur_token_info;
    info.id = element.id;
    info.case_type = get_format_case_(element);
    info.fprec = element.id == DT_FMT_TOKEN_FF ? parse_fsec_prec_(*parse_ctx) : int8_t{0};
    if (parse_ctx->is_from_str != 0) {
        check_duplicated_token_(*parse_ctx, element.id);
    } else {
        info.sfx_type = get_suffix_type_(*parse_ctx);
        if (info.sfx_type != DT_FMT_SUFFIX_NONE && !is_number_(element.id)) raise(DV_ERR_MODEL_ELEMENT);
    }
    info.next_token_is_punc = begins_with_punc_(rest_(*parse_ctx)) ? 1 : 0;

    const bool is_keyword = element.id != DT_FMT_TOKEN_DQ && element.id != DT_FMT_TOKEN_PUNC;
    if (is_keyword) {
        take_keyword_(*parse_ctx, info);
    } else {
        take_text_(alloc, info, element.text);
    }
}
