// What the public headers say of each exported function.

#ifndef DV_TEST_PUBLIC_HEADERS_H
#define DV_TEST_PUBLIC_HEADERS_H

#include <map>
#include <set>
#include <string>
#include <vector>

namespace dv::test {

struct documented_function {
    std::string comments;                 // the section's and its own
    std::vector<std::string> parameters;  // their names
};

// By name.
const std::map<std::string, documented_function> &documented_functions();

// The codes that the comments of a function name, and those of each function that they refer to. Empty for
// what is no exported function.
const std::set<int> &documented_codes(const std::string &function);

}  // namespace dv::test

#endif  // DV_TEST_PUBLIC_HEADERS_H
