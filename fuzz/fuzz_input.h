// What the fuzzers share: a check that prints what it found before it ends the process.

#ifndef DV_FUZZ_INPUT_H
#define DV_FUZZ_INPUT_H

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace dv::fuzz {

// Takes what a property of number_properties.h found.
inline void require_none(const std::string &fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

}  // namespace dv::fuzz

#endif  // DV_FUZZ_INPUT_H
