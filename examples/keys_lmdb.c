// An index in LMDB, whose keys are values: reads towns and amounts from standard input, a row a line, stores
// a key of town, amount and the line's number for each, and prints the rows of one town above an amount, the
// greatest first. The store compares bytes and knows of no type.
//
//   printf '%s\n' 'Jeju 12.50' 'Busan 3' 'Jeju 100' | keys_lmdb FOLDER Jeju 12
//   Jeju 100 (line 3)
//   Jeju 12.5 (line 1)

#include <dvtypes/number.h>
#include <dvtypes/packed_key.h>
#include <lmdb.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { TEXT_SIZE = 64, KEY_SIZE = 2 * TEXT_SIZE + 2 * DV_KEY_PART_MAX };

// ORDER BY town, amount DESC, line
static const dv_key_part_t by_town = {.type = DV_KEY_BYTES, .nulls = DV_KEY_NOT_NULL};
static const dv_key_part_t by_amount = {
    .type = DV_KEY_NUMBER, .order = DV_KEY_DESCENDING, .nulls = DV_KEY_NOT_NULL};
static const dv_key_part_t by_line = {.type = DV_KEY_INT32, .nulls = DV_KEY_NOT_NULL};

typedef struct row_s {
    char town[TEXT_SIZE];
    char amount_text[TEXT_SIZE];
    number_t amount;
    int32_t line;
} row_t;

static void check(int code) {
    if (code == MDB_SUCCESS) return;
    fprintf(stderr, "%s\n", mdb_strerror(code));
    exit(1);
}

static void read_amount(void *arg) {
    row_t *row = arg;
    number_from_str(&row->amount, 0, row->amount_text, NULL);
}

// The error's code, 0 for none.
static int read_row(row_t *row, const char *town, const char *amount) {
    snprintf(row->town, sizeof row->town, "%s", town);
    snprintf(row->amount_text, sizeof row->amount_text, "%s", amount);
    return dv_protect(read_amount, row, NULL);
}

static void store_row(MDB_txn *transaction, MDB_dbi index, const row_t *row) {
    uint8_t bytes[KEY_SIZE];
    dv_key_t key = {bytes, 0, sizeof bytes};
    dv_key_append(&key, &by_town, row->town, strlen(row->town));
    dv_key_append(&key, &by_amount, &row->amount, 0);
    dv_key_append(&key, &by_line, &row->line, 0);
    MDB_val stored = {key.size, key.bytes}, nothing = {0, NULL};
    check(mdb_put(transaction, index, &stored, &nothing, 0));
}

static void store_lines(MDB_txn *transaction, MDB_dbi index) {
    char line[4 * TEXT_SIZE], town[TEXT_SIZE], amount[TEXT_SIZE];
    row_t row = {.line = 0};
    while (fgets(line, sizeof line, stdin) != NULL) {
        ++row.line;
        if (sscanf(line, "%63s %63s", town, amount) != 2) continue;
        const int code = read_row(&row, town, amount);
        if (code == 0) {
            store_row(transaction, index, &row);
        } else {
            printf("line %d: %d\n", (int)row.line, code);
        }
    }
}

static void print_key(MDB_val stored) {
    dv_key_rest_t rest = {stored.mv_data, stored.mv_size};
    char town[TEXT_SIZE], amount_text[NUMBER_NORMAL_TEXT_SIZE];
    number_t amount;
    int32_t line;
    int64_t town_size, size;
    if (dv_key_take(&rest, &by_town, town, sizeof town, &town_size) != NULL ||
        dv_key_take(&rest, &by_amount, &amount, sizeof amount, &size) != NULL ||
        dv_key_take(&rest, &by_line, &line, sizeof line, &size) != NULL) {
        puts("a key that is none of this index");
        return;
    }
    number_to_str(&amount, sizeof amount_text, amount_text, NULL);
    printf("%.*s %s (line %d)\n", (int)town_size, town, amount_text, (int)line);
}

// WHERE town = ... AND amount > ...
static void print_above(MDB_txn *transaction, MDB_dbi index, const row_t *given) {
    uint8_t low[KEY_SIZE], high[KEY_SIZE];
    dv_key_t from = {low, 0, sizeof low}, to = {high, 0, sizeof high};
    dv_key_append(&from, &by_town, given->town, strlen(given->town));
    dv_key_append(&to, &by_town, given->town, strlen(given->town));
    if (!dv_key_range(&by_amount, DV_COLUMN_GT, &given->amount, 0, &from, &to)) return;

    MDB_cursor *cursor;
    check(mdb_cursor_open(transaction, index, &cursor));
    MDB_val key = {from.size, from.bytes}, nothing, end = {to.size, to.bytes};
    int code = mdb_cursor_get(cursor, &key, &nothing, MDB_SET_RANGE);
    while (code == MDB_SUCCESS && (to.size == 0 || mdb_cmp(transaction, index, &key, &end) < 0)) {
        print_key(key);
        code = mdb_cursor_get(cursor, &key, &nothing, MDB_NEXT);
    }
    mdb_cursor_close(cursor);
}

int main(int argc, char **argv) {
    row_t given = {.line = 0};
    if (argc != 4 || read_row(&given, argv[2], argv[3]) != 0) {
        fprintf(stderr, "usage: keys_lmdb FOLDER TOWN AMOUNT\n");
        return 2;
    }
    MDB_env *environment;
    MDB_txn *transaction;
    MDB_dbi index;
    check(mdb_env_create(&environment));
    check(mdb_env_open(environment, argv[1], 0, 0600));
    check(mdb_txn_begin(environment, NULL, 0, &transaction));
    check(mdb_dbi_open(transaction, NULL, 0, &index));
    store_lines(transaction, index);
    print_above(transaction, index, &given);
    check(mdb_txn_commit(transaction));
    mdb_env_close(environment);
    return 0;
}
