"""Random and mutated texts and bytes for every type, of values and of states. Each is refused with an SQLSTATE of class 22,
or it is a value: its text and its bytes read back, and what is computed from a state agrees. Bytes go through COPY BINARY, a
file each; the session is the same one to the end.
"""

import pathlib
import random
import struct
import sys
from typing import NamedTuple

from session import Session, literal

FILES = 600  # of each type


class Type(NamedTuple):
    seeds: list  # expressions in SQL whose texts and bytes are mutated
    texts: int = 12000
    characters: str = "0123456789-+:. /eETZAaéŸ한\t\n'\\"
    wrong: tuple = ()  # conditions that hold for no value v, or fail with an SQLSTATE of class 22


def values(*texts):
    return Type([literal(text) for text in texts])


def states(aggregate, terms, results):
    """A type of states, by an aggregate of lists of terms, with what is computed from one (dv_X_of, dv_X_merge)."""
    first = terms[0].partition(",")[0]
    return Type(
        seeds=[f"(SELECT {aggregate} FROM (VALUES {', '.join(f'({term})' for term in each.split(','))}) AS _ (v))" for each in terms],
        texts=2000,
        characters="0123456789abcdefABCDEFg ",
        wrong=(f"dv_state_sub(dv_state_add(v, {first}), {first}) <> v",
               "dv_count_of(dv_state_merge(v, v)) <> 2 * dv_count_of(v)",
               "(SELECT dv_state_merge(s) <> dv_state_merge(v, v) FROM (VALUES (v), (NULL), (v)) AS _ (s))",
               *(f"(SELECT dv_{result}_merge(s) IS DISTINCT FROM dv_{result}_of(v) FROM (VALUES (v)) AS _ (s))" for result in results)))


NUMBERS = ["number '7.5e-9'", "number '12.5',number '-1e40',number '3e-40'", "number '0',number '9e125',number '-9e125',number '1e-130'"]
TYPES = {
    "number": values("0", "-1", "12.5", "1e-130", "-123456789.123456789e10", "9" * 38),
    "dv_date": values("2024-02-29 13:05:00", "-4712-01-01 00:00:00", "99991231"),
    "dv_time": values("13:05:00.5", "235959", "00:00"),
    "dv_timestamp": values("2024-02-29 13:05:00.123456789", "20240229T130500", "-0044-03-15"),
    "dv_timestamptz": values("2024-02-29 13:05:00.5 Asia/Seoul", "2024-02-29T13:05Z", "2024-07-01 00:00 America/New_York EDT"),
    "dv_timestampltz": values("2024-02-29 13:05:00.5 +09:00", "2024-02-29 13:05:00 Europe/Berlin"),
    "dv_interval_ym": values("1-6", "-999999999-11", "+00-00"),
    "dv_interval_ds": values("1 2:03:04.5", "-999999999 23:59:59.999999999", "+00 00:00:00"),
    "dv_rowid": values("AAAAABAACAAAAADAAE", "D/////P//D/////P//"),
    "dv_number_state": states("dv_sum_state(v)", NUMBERS, ["sum", "avg", "count"]),
    "dv_number_variance_state": states("dv_variance_state(v)", NUMBERS, ["variance", "stddev_pop", "count"]),
    "dv_interval_ym_state": states("dv_sum_state(v)", ["dv_interval_ym '1-6'", "dv_interval_ym '-999999999-11',NULL"], ["sum", "avg", "count"]),
    "dv_interval_ds_state": states("dv_sum_state(v)", ["dv_interval_ds '1 2:03:04.5'", "dv_interval_ds '-999999999 23:59:59.999999999',NULL"], ["sum", "avg", "count"]),
}

SETUP = """
CREATE FUNCTION take_{word}(given text) RETURNS boolean LANGUAGE plpgsql AS $$
DECLARE
    v {type};
BEGIN
    v := given::{type};
    IF v::text::{type} IS DISTINCT FROM v OR dv_{word}_send(v::text::{type}) <> dv_{word}_send(v) THEN
        RETURN true;
    END IF;
    {checks}
    RETURN false;
EXCEPTION WHEN data_exception THEN
    RETURN NULL;
END $$;
CREATE TABLE bytes_{word} (file int, v {type});
CREATE FUNCTION receive_{word}(file int, path text) RETURNS boolean LANGUAGE plpgsql AS $$
BEGIN
    EXECUTE format('COPY bytes_{word} FROM %L (FORMAT binary)', path);
    RETURN true;
EXCEPTION WHEN data_exception THEN
    RETURN NULL;
END $$;
"""
CHECK = "BEGIN IF {wrong} THEN RETURN true; END IF; EXCEPTION WHEN data_exception THEN NULL; END;"


def mutated(rng, given, alphabet):
    """A sequence with some elements changed, left out or put in, cut, or doubled."""
    items = list(given)
    for _ in range(rng.choice((0, 1, 1, 2, 5))):
        place = rng.randrange(len(items) + 1)
        items[place:place + rng.choice((0, 1, 1, 1, 4))] = [rng.choice(alphabet) for _ in range(rng.choice((0, 1, 1, 1, 9)))]
    return items * rng.choice((1,) * 20 + (2, 40))


def copy_file(number, value):
    """A row of an integer and a value, as COPY BINARY has it."""
    row = struct.pack("!hii", 2, 4, number) + struct.pack("!i", len(value)) + value
    return b"PGCOPY\n\xff\r\n\0" + struct.pack("!ii", 0, 0) + row + struct.pack("!h", -1)


def main():
    rng = random.Random(20241231)
    session = Session()
    folder = pathlib.Path(sys.argv[4])
    folder.mkdir(parents=True, exist_ok=True)
    folder.chmod(0o755)
    script = ["SELECT pg_backend_pid() AS pid \\gset\n"]
    for type, of in TYPES.items():
        word = type.removeprefix("dv_")
        forms = session.lines("".join(f"SELECT {seed}::text, encode(dv_{word}_send({seed}::{type}), 'hex');\n" for seed in of.seeds))
        seeds, records = zip(*(form.split("|") for form in forms))
        texts = ["".join(mutated(rng, rng.choice(seeds), of.characters)) for _ in range(of.texts)]
        script.append(SETUP.format(word=word, type=type, checks=" ".join(CHECK.format(wrong=wrong) for wrong in of.wrong)))
        script.append("CREATE TEMP TABLE given (given text);\nCOPY given FROM STDIN (FORMAT csv);\n")
        script += ['"' + text.replace('"', '""') + '"\n' for text in texts]
        script.append(f"\\.\nSELECT 'text', '{type}', count(*), count(bad), count(*) FILTER (WHERE bad) FROM "
                      f"(SELECT take_{word}(given) AS bad FROM given OFFSET 0) AS _;\nDROP TABLE given;\n")
        for number in range(FILES):
            value = bytes(mutated(rng, bytes.fromhex(rng.choice(records)), range(256)))
            path = folder / f"{word}_{number}"
            path.write_bytes(copy_file(number, value))
            path.chmod(0o644)
        script.append(f"CREATE TEMP TABLE received AS SELECT i, receive_{word}(i, '{folder}/{word}_' || i) AS taken "
                      f"FROM generate_series(0, {FILES - 1}) AS i;\n"
                      f"SELECT 'bytes', '{type}', count(*), count(taken), (SELECT count(*) FROM bytes_{word} WHERE "
                      f"dv_{word}_send(v) <> substr(pg_read_binary_file('{folder}/{word}_' || file), 34, octet_length(dv_{word}_send(v))) "
                      f"OR take_{word}(v::text) IS NOT FALSE) FROM received;\nDROP TABLE received;\n")
    script.append("SELECT pg_backend_pid() = :pid, number '1' + number '2';\n")
    lines = session.lines("".join(script))
    wrong = lines[-1] != "t|3" or len(lines) != 2 * len(TYPES) + 1
    for line in lines[:-1]:
        what, type, rows, taken, bad = line.split("|")
        # of both kinds there are many, and what is taken reads back
        if int(bad) or not int(rows) // 50 < int(taken) < int(rows) * 49 // 50:
            wrong = True
            print(f"{what} of {type}: of {rows} {taken} are taken, {bad} are wrong")
    print("\n".join(lines) if wrong else f"{len(lines) - 1} kinds of input, all refused, or values that hold")
    sys.exit(wrong)


main()
