// The operators that compare, which every type has.

#ifndef DV_POSTGRES_COMPARISON_H
#define DV_POSTGRES_COMPARISON_H

#include <string>

#include "postgres_type.h"

namespace dv::impl {

struct comparison {
    const char *word;
    const char *sign;
    const char *commutator, *negator;
    const char *test;      // of the order, in C++
    const char *restrict;  // selectivity: of a condition, and of a join
    const char *join;
    int strategy;  // in classes of operators for btree; 0: none
};

inline constexpr comparison COMPARISONS[] = {
    {"eq", "=", "=", "<>", "== 0", "eqsel", "eqjoinsel", 3},
    {"ne", "<>", "<>", "=", "!= 0", "neqsel", "neqjoinsel", 0},
    {"lt", "<", ">", ">=", "< 0", "scalarltsel", "scalarltjoinsel", 1},
    {"le", "<=", ">=", ">", "<= 0", "scalarlesel", "scalarlejoinsel", 2},
    {"gt", ">", "<", "<=", "> 0", "scalargtsel", "scalargtjoinsel", 5},
    {"ge", ">=", "<=", "<", ">= 0", "scalargesel", "scalargejoinsel", 4},
};

constexpr bool is_equality(const comparison &of) { return of.test[0] == '='; }

// CREATE OPERATOR of a function; how an equality joins (", HASHES, MERGES") comes behind.
inline std::string operator_statement(const comparison &of, const std::string &left, const std::string &right,
                                      const std::string &function, const std::string &joins) {
    return std::string("CREATE OPERATOR ") + of.sign + " (LEFTARG = " + left + ", RIGHTARG = " + right +
           ", FUNCTION = " + function + ",\n    COMMUTATOR = " + of.commutator + ", NEGATOR = " + of.negator +
           ", RESTRICT = " + of.restrict + ", JOIN = " + of.join + (is_equality(of) ? joins : "") + ")";
}

}  // namespace dv::impl

#endif  // DV_POSTGRES_COMPARISON_H
