// What must hold of NUMBER for any operands: asked by the tests over random and adversarial values, by the
// fuzzers over their inputs. Each function returns "" where the property holds, else inputs and results.

#ifndef DV_TEST_NUMBER_PROPERTIES_H
#define DV_TEST_NUMBER_PROPERTIES_H

#include <array>

#include "number_support.h"

namespace dv::test {

// Every operation in place, with a second operand where it takes one, and its twin.
struct operation_t {
    const char *name;
    void (*library)(number_t *x, const number_t *y);
    decimal_t (*twin)(const decimal_t &x, const decimal_t &y, int mode);
};
extern const std::array<operation_t, 12> operations;
extern const std::array<operation_t, 3> power_operations;  // sqrt, pow, exp: their twins are slow
void PrintTo(const operation_t &operation, std::ostream *out);

// Record and code are those of the twin, and y stays. The same object as x and y is passed as both.
std::string arithmetic_fault(const operation_t &operation, const number_t &x, const number_t &y, int mode);
std::string rounding_fault(const number_t &x, int pos, int mode);
std::string precision_fault(const number_t &x, int prec, int scale);  // number_force_..., number_check_...

// number_cmp, the bytes and the values have one order.
std::string order_fault(const number_t &x, const number_t &y);

// Both readers, with a length and with a NUL, agree with the twin.
std::string reading_fault(std::string_view text);

// Code and text agree with the twin's model, no byte is written behind the buffer, and a whole text reads
// back as x.
std::string writing_fault(const number_t &x, int buf_size, const char *format);

// Any bytes: two records and the arguments of the calls that take some.
struct hostile_t {
    number_t x;
    number_t y;
    int8_t mode;
    uint8_t buf_size;
    int16_t position;
    int16_t prec;
    int16_t scale;
};

// Every function that takes a record leaves what is beside its records and buffers alone, and y as it was.
std::string hostile_fault(const hostile_t &input);

}  // namespace dv::test

#endif  // DV_TEST_NUMBER_PROPERTIES_H
