// The binary row identifier: equality, and its diagnostic print.

#include "dvtypes/rowid.h"

#include <stddef.h>
#include <stdio.h>

static_assert(sizeof(rowid_t) == 12 && offsetof(rowid_t, block) == 4 && offsetof(rowid_t, file) == 8 &&
              offsetof(rowid_t, row) == 10);

extern "C" bool rowid_equals(rowid_t a, rowid_t b) {
    return a.sgmt == b.sgmt && a.block == b.block && a.file == b.file && a.row == b.row;
}

extern "C" void rowid_print(rowid_t rowid) {
    printf("Sgmt No : %d, Rel File No : %d, Blk No : %d, Row No : %d\n", static_cast<int>(rowid.sgmt),
           rowid.file, static_cast<int>(rowid.block), rowid.row);
}
