// The type catalogue, row identifiers, names of languages, settings, messages.

#include <cstring>

#include "dvtypes/dv_type.h"
#include "dvtypes/erowid.h"
#include "dvtypes/nerowid.h"
#include "dvtypes/nls.h"
#include "vector_bind.h"

using namespace dv::test;

namespace {

template <const auto &Table>
void row_(vector_call &call) {
    call.put_text(Table[static_cast<size_t>(call.integer()) % std::size(Table)]);
}

template <const auto &Table>
void number_(vector_call &call) {
    call.put(Table[static_cast<size_t>(call.integer()) % std::size(Table)]);
}

// Language, letter case (0 upper, 1 lower, 2 initial capitals), index: the stored big-endian UCS-2.
template <const auto &Table>
void stored_name_(vector_call &call) {
    const auto language = static_cast<size_t>(call.integer()),
               letter_case = static_cast<size_t>(call.integer());
    const auto &name = Table[(language * 3 + letter_case) % std::size(Table)][call.integer()];
    call.put_bytes(name.val, static_cast<size_t>(name.len));
}

// Language, character set, case, index: the name's bytes.
template <auto Get>
void name_(vector_call &call) {
    dt_fmt_ctx_t compiled{};
    compiled.nls_date_ctx.lang = static_cast<int>(call.integer());
    compiled.charset = static_cast<int>(call.integer());
    const auto letter_case = static_cast<int>(call.integer()), index = static_cast<int>(call.integer());
    dt_fmt_parse_ctx_t context{};
    context.fmt_ctx = &compiled;
    const char *name = "";
    if (call.run([&] { name = Get(&context, index, letter_case); })) call.put_text(name);
}

void sort_info_(vector_call &call) {
    const dv_nls_sort_info_t &info = _nls_sort_info[static_cast<size_t>(call.integer()) % DV_NLS_SORT_MAX];
    call.put_text(info.loc_name);
    call.put(info.extendable);
}

void put_sort_(vector_call &call, const dv_nls_sort_ctx_t &sort) {
    call.put(sort.sort);
    call.put(sort.extended);
    call.put(sort.strength);
}

void parse_setting_(vector_call &call) {
    const vector_text text = call.ended_text();
    dv_nls_param_t parameter = -1;
    union {
        int32_t number;
        dv_nls_sort_ctx_t sort;
    } value{-1};
    const bool has_returned = call.run([&] { dv_nls_parse(text.data, &parameter, &value); });
    call.put(parameter);
    if (!has_returned) return;
    parameter == DV_NLS_PARAM_SORT ? put_sort_(call, value.sort) : call.put(value.number);
}

template <auto Parse>
void parse_value_(vector_call &call) {
    const vector_text text = call.ended_text();
    int32_t value = -1;
    bool is_good = false;
    call.run([&] { is_good = Parse(text.data, &value); });
    call.put(is_good);
    if (is_good) call.put(value);
}

void parse_sort_(vector_call &call) {
    const vector_text text = call.ended_text();
    dv_nls_sort_ctx_t sort{};
    bool is_good = false;
    call.run([&] { is_good = dv_nls_sort_parse(text.data, &sort); });
    call.put(is_good);
    if (is_good) put_sort_(call, sort);
}

void new_rowid_(vector_call &call) {
    const int64_t segment = call.integer(), file = call.integer(), block = call.integer(),
                  row = call.integer();
    erowid_t text;
    erowid_new(&text, static_cast<uint32_t>(segment), static_cast<uint16_t>(file),
               static_cast<uint32_t>(block), static_cast<uint16_t>(row));
    call.put_text({text.text, sizeof text.text});
}

void new_row_number_(vector_call &call) {
    nerowid_t text;
    nerowid_new(&text, static_cast<nrowid_t>(call.integer()));
    call.put_text({text.text, sizeof text.text});
}

void read_rowid_(vector_call &call) {
    const auto *const text = reinterpret_cast<const erowid_t *>(call.ended_text().data);
    rowid_t rowid{};
    if (!call.run([&] { erowid_get_rowid(text, &rowid); })) return;
    for (const int64_t value :
         {int64_t{rowid.sgmt}, int64_t{rowid.file}, int64_t{rowid.block}, int64_t{rowid.row}})
        call.put(value);
}

template <auto Get, typename Value>
void read_part_(vector_call &call) {
    const auto *const text = reinterpret_cast<const erowid_t *>(call.ended_text().data);
    Value value = 0;
    if (call.run([&] { Get(text, &value); }) && text != nullptr) call.put(value);
}

void read_row_number_(vector_call &call) {
    const auto *const text = reinterpret_cast<const nerowid_t *>(call.ended_text().data);
    auto value = static_cast<nrowid_t>(call.integer_or(0));
    call.run([&] { nerowid_get_rowid(text, &value); });
    call.put_word(std::to_string(value));
}

void equal_(vector_call &call) {
    rowid_t rowids[2];
    for (rowid_t &rowid : rowids) {
        rowid.sgmt = static_cast<uint32_t>(call.integer());
        rowid.file = static_cast<uint16_t>(call.integer());
        rowid.block = static_cast<uint32_t>(call.integer());
        rowid.row = static_cast<uint16_t>(call.integer());
    }
    call.put(rowid_equals(rowids[0], rowids[1]));
}

// Character set, big-endian UCS-2; and back.
void from_ucs2_(vector_call &call) {
    const auto &info = _charset_info[static_cast<size_t>(call.integer()) % DVSTR_CHARSET_MAX];
    const std::string_view field = call.word();
    vector_call source(field);
    const uint8_t *const units = source.bytes(0);
    char text[64];
    const int size = info.from_ucs2(&info, units, static_cast<int>(field.size() / 2), text, sizeof text);
    call.put_text({text, static_cast<size_t>(size)});
}

void to_ucs2_(vector_call &call) {
    const auto &info = _charset_info[static_cast<size_t>(call.integer()) % DVSTR_CHARSET_MAX];
    const vector_text text = call.text();
    uint8_t units[64];
    call.put_bytes(units,
                   static_cast<size_t>(info.to_ucs2(&info, text.data, text.size, units, sizeof units)));
}

void message_(vector_call &call) {
    const char *const text = dv_error_text(static_cast<int>(call.integer()));
    if (text != nullptr) call.put_text(text);
}

template <const auto &...Tables>
void add_rows_(vector_operations &all) {
    (all.add(name_of_table<Tables>(), row_<Tables>), ...);
}

template <const auto &...Tables>
void add_stored_names_(vector_operations &all) {
    (all.add(name_of_table<Tables>(), stored_name_<Tables>), ...);
}

template <auto... Functions>
void add_names_(vector_operations &all) {
    (all.add(name_of<Functions>(), name_<Functions>), ...);
}

}  // namespace

void dv::test::add_catalogue_operations(vector_operations &all) {
    add_rows_<_dv_type_str, _dv_type_name, _dv_type_tbl_conv, _dv_type_tbl_cmp, _dv_type_tbl_compat,
              _dv_type_tbl_conv_psm, _dv_type_tbl_compat_psm, _dv_type_tbl_cmp_result, _dv_type_tbl_distance,
              _dv_type_opd_comb_add, _dv_type_opd_comb_sub, _dv_type_opd_comb_mul, _dv_type_opd_comb_div,
              _dv_type_opd_comb_mod, _dv_type_opd_comb_expn, _dv_type_meta_check_op_tbl,
              nls_date_lang_name_tab_, nls_date_lang_std_mon_fmt_tab_, nls_date_lang_abb_mon_fmt_tab_,
              nls_date_lang_std_day_fmt_tab_, nls_date_lang_abb_day_fmt_tab_>(all);
    all.add("_dv_type_fixed_size", number_<_dv_type_fixed_size>);
    all.add("_dv_type_info", number_<_dv_type_info>);
    add_stored_names_<std_month_tab_, abb_month_tab_, rm_month_tab_, std_day_tab_, abb_day_tab_,
                      std_adbc_tab_, std_ampm_tab_>(all);
    add_names_<nls_date_lang_get_std_month, nls_date_lang_get_abb_month, nls_date_lang_get_rom_month,
               nls_date_lang_get_std_day, nls_date_lang_get_abb_day, nls_date_lang_get_std_adbc,
               nls_date_lang_get_std_ampm>(all);
    all.add("dv_nls_date_lang_parse", parse_value_<dv_nls_date_lang_parse>);
    all.add("dv_nls_date_cal_parse", parse_value_<dv_nls_date_cal_parse>);
    all.add("dv_nls_comp_parse", parse_value_<dv_nls_comp_parse>);
    all.add("_nls_sort_info", sort_info_);
    all.add("dv_nls_parse", parse_setting_);
    all.add("dv_nls_sort_parse", parse_sort_);
    all.add("erowid_new", new_rowid_);
    all.add("erowid_get_rowid", read_rowid_);
    all.add("erowid_get_sgmt", read_part_<erowid_get_sgmt, uint32_t>);
    all.add("erowid_get_file", read_part_<erowid_get_file, uint16_t>);
    all.add("erowid_get_block", read_part_<erowid_get_block, uint32_t>);
    all.add("erowid_get_row", read_part_<erowid_get_row, uint16_t>);
    all.add("nerowid_new", new_row_number_);
    all.add("nerowid_get_rowid", read_row_number_);
    all.add("rowid_equals", equal_);
    all.add("from_ucs2", from_ucs2_);
    all.add("to_ucs2", to_ucs2_);
    all.add("dv_error_text", message_);
}
