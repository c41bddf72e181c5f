// What helps the bodies: failures, raises, memory, arguments within bounds.

#include "sql_call.h"

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "sql_text_list.h"

using namespace dv::impl;

namespace {

char lower_(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool is_word_(const sql_text &text, const char *word) {
    int i = 0;
    while (i < text.length && word[i] != '\0' && lower_(text.bytes[i]) == lower_(word[i])) ++i;
    return i == text.length && word[i] == '\0';
}

}  // namespace

void dv::impl::sql_return_text(sql_call &call, const char *text) {
    sql_return_text(call, text, static_cast<int>(strlen(text)));
}

void *dv::impl::sql_resize(allocator_t *memory, void *block, size_t size) {
    void *resized = block == nullptr ? memory->malloc(memory, size, "sql_call.cpp", __LINE__)
                                     : memory->realloc(memory, block, size, "sql_call.cpp", __LINE__);
    if (resized == nullptr) memory->throw_(memory, "sql_call.cpp", __LINE__);
    return resized;
}

void dv::impl::sql_fail(sql_call &call, const char *format, ...) {
    va_list args;
    va_start(args, format);
    vsnprintf(call.failure, sizeof call.failure, format, args);
    va_end(args);
    call.outcome = SQL_FAILED;
}

sql_quoted dv::impl::sql_quote(const sql_text &text) {
    const auto length = static_cast<size_t>(text.length);
    const size_t shown = sql_cut({text.bytes, length}, sql_quoted::longest);
    sql_quoted quoted;
    snprintf(quoted.text, sizeof quoted.text, "\"%.*s\"%s", static_cast<int>(shown), text.bytes,
             shown < length ? "..." : "");
    return quoted;
}

void dv::impl::sql_raise(sql_error code, const char *file, int line, const char *function) {
    const char *slash = strrchr(file, '/');
    dv_err_and_jmp(slash == nullptr ? file : slash + 1, line, function, 0, 0, code);
}

bool dv::impl::sql_get_ints(sql_call &call, int first, std::span<int> ints) {
    for (int i = 0; i < static_cast<int>(ints.size()); ++i) {
        const int64_t integer = call.args[first + i].integer;
        if (integer < INT_MIN || integer > INT_MAX) {
            sql_fail(call, "argument %d is out of range: %lld", first + i + 1,
                     static_cast<long long>(integer));
            return false;
        }
        ints[static_cast<size_t>(i)] = static_cast<int>(integer);
    }
    return true;
}

int dv::impl::sql_get_word(sql_call &call, int position, std::span<const sql_word> words) {
    for (const sql_word &word : words) {
        if (is_word_(call.args[position].text, word.text)) return word.meaning;
    }
    sql_text_list text;
    for (size_t i = 0; i < words.size(); ++i) text.append_item(i, words.size(), words[i].text, "");
    sql_fail(call, "argument %d, %s, is not %s", position + 1, sql_quote(call.args[position].text).text,
             text.text());
    return 0;
}
