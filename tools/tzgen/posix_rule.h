// The rule at the end of a compiled zone: a TZ string of POSIX, with the extensions of TZif.

#ifndef TZGEN_POSIX_RULE_H
#define TZGEN_POSIX_RULE_H

#include <string_view>

#include "timeline.h"

namespace tzgen {

// Appends the periods that the rule yields after the last one begins, at least those that begin before `end`.
// Throws std::runtime_error: a rule that cannot be read, or one that contradicts the last period.
void extend_by_rule(timeline_t &periods, std::string_view rule, instant_t end);

}  // namespace tzgen

#endif  // TZGEN_POSIX_RULE_H
