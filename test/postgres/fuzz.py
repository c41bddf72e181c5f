"""Random and mutated texts and bytes for every type. Each is refused with an SQLSTATE of class 22, or it is a value: its
text and its bytes read back. Bytes go through COPY BINARY, a file each; the session is the same one to the end.
"""

import pathlib
import random
import struct
import sys

from session import Session, literal

TEXTS = 12000  # of each type
FILES = 600
SEEDS = {
    "number": ["0", "-1", "12.5", "1e-130", "-123456789.123456789e10", "9" * 38],
    "dv_date": ["2024-02-29 13:05:00", "-4712-01-01 00:00:00", "99991231"],
    "dv_time": ["13:05:00.5", "235959", "00:00"],
    "dv_timestamp": ["2024-02-29 13:05:00.123456789", "20240229T130500", "-0044-03-15"],
    "dv_timestamptz": ["2024-02-29 13:05:00.5 Asia/Seoul", "2024-02-29T13:05Z", "2024-07-01 00:00 America/New_York EDT"],
    "dv_timestampltz": ["2024-02-29 13:05:00.5 +09:00", "2024-02-29 13:05:00 Europe/Berlin"],
    "dv_interval_ym": ["1-6", "-999999999-11", "+00-00"],
    "dv_interval_ds": ["1 2:03:04.5", "-999999999 23:59:59.999999999", "+00 00:00:00"],
    "dv_rowid": ["AAAAABAACAAAAADAAE", "D/////P//D/////P//"],
}
CHARACTERS = "0123456789-+:. /eETZAaéŸ한\t\n'\\"

SETUP = """
CREATE FUNCTION take_{word}(given text) RETURNS boolean LANGUAGE plpgsql AS $$
DECLARE
    v {type};
BEGIN
    v := given::{type};
    RETURN v::text::{type} IS DISTINCT FROM v OR dv_{word}_send(v::text::{type}) <> dv_{word}_send(v);
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
    for type, seeds in SEEDS.items():
        word = type.removeprefix("dv_")
        texts = ["".join(mutated(rng, rng.choice(seeds), CHARACTERS)) for _ in range(TEXTS)]
        script.append(SETUP.format(word=word, type=type))
        script.append("CREATE TEMP TABLE given (given text);\nCOPY given FROM STDIN (FORMAT csv);\n")
        script += ['"' + text.replace('"', '""') + '"\n' for text in texts]
        script.append(f"\\.\nSELECT 'text', '{type}', count(*), count(bad), count(*) FILTER (WHERE bad) FROM "
                      f"(SELECT take_{word}(given) AS bad FROM given OFFSET 0) AS _;\nDROP TABLE given;\n")
        records = session.lines("".join(f"SELECT encode(dv_{word}_send({literal(s)}::{type}), 'hex');\n" for s in seeds))
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
    wrong = lines[-1] != "t|3" or len(lines) != 2 * len(SEEDS) + 1
    for line in lines[:-1]:
        what, type, rows, taken, bad = line.split("|")
        # of both kinds there are many, and what is taken reads back
        if int(bad) or not int(rows) // 50 < int(taken) < int(rows) * 49 // 50:
            wrong = True
            print(f"{what} of {type}: of {rows} {taken} are taken, {bad} do not read back")
    print("\n".join(lines) if wrong else f"{len(lines) - 1} kinds of input, all refused or read back")
    sys.exit(wrong)


main()
