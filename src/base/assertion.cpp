// Assertions: each thread has its own reporter, action and count.

#include <cstdio>
#include <cstdlib>

#include "dvtypes/base.h"

namespace {

struct assertion_state_t {
    dv_assert_reporter_t *reporter;  // NULL: standard error
    dv_assert_action_e action;
    unsigned long count;
};

thread_local assertion_state_t _state = {nullptr, DV_ASSERT_CONTINUE, 0};

}  // namespace

extern "C" {

void dv_assert_msg(const char *cond_text, const char *src_file, int line) {
    if (_state.reporter != nullptr) {
        _state.reporter(cond_text, src_file, line);
    } else {
        std::fprintf(stderr, "%s:%d: assertion failed: %s\n", src_file, line, cond_text);
    }
}

void dv_thr_assert_cmd(void) {
    ++_state.count;
    if (_state.action == DV_ASSERT_ABORT) std::abort();
}

void dv_assert_set_action(dv_assert_action_e action) { _state.action = action; }

unsigned long dv_assert_count(void) { return _state.count; }

void dv_assert_set_reporter(dv_assert_reporter_t *reporter) { _state.reporter = reporter; }

}  // extern "C"
