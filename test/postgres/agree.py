"""Runs the examples of the manuals and the calls of test/sqlite, of which the tests of the SQLite extension prove what
they give there, and compares what they give here. What differs by intent stands in one list below, with the reason.
"""

import itertools
import json
import re
import sys

from session import Session, literal

FILES = ["docs/sql.md", "docs/datetime-models.md", "docs/number-models.md", "docs/error-codes.md", "docs/zones.md",
         "docs/languages.md", "test/sqlite/calls.sql"]

# What SQLite alone has: part of a statement, and why it is left out.
LEFT_OUT = [
    (r"\bx'", "a BLOB that holds a value is SQLite's stored form"),
    (r"_text_view|payment_text|sqlite_|pragma_|typeof\(|GLOB|\bINDEXED BY\b|json_each|julianday|strftime|\bdate\(", "SQLite's own"),
    (r"char\(0\)", "a text of the server has no NUL"),
    (r"9e999|1e999|dv_start|dv_zone >", "literals and hidden columns of SQLite"),
    (r"dv_typeof|\bdump\(('|x|1|-2|NULL|\))", "names of SQLite's kinds"),
    (r"rowid\)", "rows of tables have no number"),
    (r"\) \|\| \(|\) \|\| dv_cmp", "truth values and integers are not joined here"),
    (r"json_object|json_group|iif\(|-> 'a'|stock_text|changes\(|dv_json\(1\.0|->>|WHERE info & 16|dv_functions WHERE vol", "JSON, conditions and sets of SQLite"),
    (r"\('[^']*'\), \(7\)|\(7\), |TZR'\) FROM|\(dv_time\(6, 7, 8\)\)", "values of several types in a column"),
    (r"dv_date\(2024, 3, 1\) < dv_timestamp|to_date\(dv_timestamp.* = dv_timestamp", "bytes of two types, compared as such"),
    (r"dv_extract\('M\w+', d\) \|\||round\(months", "operators and functions of SQLite"),
    (r"%239s", "a format of SQLite's printf"),
    (r"sum\(to_number\(5\)\)|dv_avg\(NULL\)", "the server's own sum of a BLOB, and of no type"),
]

# What has another error or none by intent: the text expected of SQLite, what is accepted here, and why.
ACCEPTED = [
    (r"^error: argument \d+ is (INTEGER|REAL|TEXT|BLOB|NULL|[A-Z ]+?)\b.* where .* is expected",
     r"^(|42883|42725|22P02|22007|22023|22003|0A000)$", "a literal takes the type that is asked for, and kinds are the server's, and chosen when a statement is read"),
    (r"^error: no such function|^error: wrong number of arguments|^error: .* takes \d+ to", r"^(42883|42725)", "the same"),
]

SETUP = """
CREATE FUNCTION gives(query text) RETURNS json LANGUAGE plpgsql AS $$
DECLARE
    value text; message text; state text; detail text; hint text;
BEGIN
    EXECUTE query INTO value;
    RETURN json_build_object('value', coalesce(value, 'NULL'));
EXCEPTION WHEN OTHERS THEN
    GET STACKED DIAGNOSTICS message = MESSAGE_TEXT, state = RETURNED_SQLSTATE, detail = PG_EXCEPTION_DETAIL,
        hint = PG_EXCEPTION_HINT;
    RETURN json_build_object('message', message, 'state', state, 'detail', detail, 'hint', hint);
END $$;
CREATE FUNCTION gathered(so_far text, value text) RETURNS text LANGUAGE sql
    RETURN CASE WHEN value IS NULL THEN so_far ELSE concat_ws(',', so_far, value) END;
CREATE FUNCTION gathered(so_far text, value bigint) RETURNS text LANGUAGE sql RETURN gathered(so_far, value::text);
CREATE FUNCTION gathered(so_far text, value bigint, separator text) RETURNS text LANGUAGE sql
    RETURN concat_ws(separator, so_far, value);
CREATE AGGREGATE group_concat(bigint, text) (SFUNC = gathered, STYPE = text);
CREATE AGGREGATE group_concat(bigint) (SFUNC = gathered, STYPE = text);
CREATE AGGREGATE group_concat(text) (SFUNC = gathered, STYPE = text);
CREATE AGGREGATE group_concat(text, text) (SFUNC = string_agg_transfn, STYPE = internal, FINALFUNC = string_agg_finalfn);
"""


def examples(file):
    """(statement, what it gives or None) of an .sql file or of the sql blocks of a manual."""
    is_sql, sql = file.endswith(".sql"), ""
    for line in open(file, encoding="utf-8").read().split("\n"):
        is_fence = line.startswith("```")
        if is_fence:
            is_sql = line == "```sql"
        if is_fence or not is_sql or (not sql and (not line or line.startswith("--"))):
            continue
        head, comment, result = line.partition(";  -- ")
        sql += head
        if comment or line.endswith(";"):
            yield sql.rstrip(";"), result if comment else None
            sql = ""
        else:
            sql += "\n"


# ---- translation ----

TOKEN = re.compile(r"'(?:[^']|'')*'|\d+\.?\d*(?:[eE][+-]?\d+)?|[A-Za-z_]\w*|\s+|\|\||.", re.S)
CONVERSIONS = {"to_number", "to_date", "to_time", "to_timestamp", "to_timestamp_tz", "to_yminterval", "to_dsinterval"}
TABLES = {"dv_zones", "dv_types", "dv_functions"}
RENAMED = {"char": "chr", "dv_sum": "sum", "dv_avg": "avg"}


def with_aliases(tokens):
    """Subqueries in FROM have names here."""
    number = itertools.count()
    opened, out = [], []
    for i, token in enumerate(tokens):
        out.append(token)
        if token == "(":
            before = [t for t in tokens[:i] if not t.isspace()][-1:]
            after = [t for t in tokens[i + 1:] if not t.isspace()][:1]
            opened.append(after in (["SELECT"], ["VALUES"]) and before in (["FROM"], ["JOIN"], [","]))
        elif token == ")" and opened.pop():
            after = [t for t in tokens[i + 1:] if not t.isspace()][:1]
            if after != ["AS"]:
                out.append(f" AS _{next(number)}")
    return out


# Parameters that are integers: all of a function, or all but the first.
INTEGERS = {"dv_date": 0, "dv_time": 0, "dv_timestamp": 0, "dv_rowid": 0, "add_months": 0, "char": 0, "dv_cast_number": 1,
            "dv_round": 1, "dv_trunc": 1, "dv_cast_leading": 1, "dv_cast_fraction": 1, "repeat": 0}


def is_number(token, function, argument, are_integers_numbers):
    """Is a literal a NUMBER here? The server has a to_char of integers."""
    if not token[0].isdigit() or function == "printf":
        return False
    if not token.isdigit() or (function, argument) == ("to_char", 0):
        return True
    return are_integers_numbers and argument < INTEGERS.get(function, 9)


def translated(sql, are_integers_numbers):
    """The statement as the server has it."""
    tokens = TOKEN.findall(sql)
    out, calls = [], [["", 0]]
    for i, token in enumerate(tokens):
        after = tokens[i + 1] if i + 1 < len(tokens) else ""
        if token == "(":
            calls.append([tokens[i - 1] if i else "", 0])
        elif token == ")":
            calls.pop()
        elif token == ",":
            calls[-1][1] += 1
        if is_number(token, *calls[-1], are_integers_numbers):
            out.append(f"number '{token}'")
        elif token in CONVERSIONS and after == "(":
            out.append("dv_" + token)
        elif token in TABLES and tokens[i - 2:i - 1] in (["FROM"], ["JOIN"]):
            out.append(token + "()")
        else:
            out.append(RENAMED.get(token, token) if after == "(" else token)
    text = "".join(with_aliases(out))
    text = re.sub(r"printf\('%\.(\d+)c', ('[^']*')\)", r"repeat(\2, \1)", text)
    text = re.sub(r"printf\('%0(\d+)d', 0\)", r"repeat('0', \1)", text)
    text = re.sub(r"hex\(zeroblob\((\d+)\)\)", r"repeat('00', \1)", text)
    text = re.sub(r"(?i)dv_extract\('(timezone_(region|abbr))'", r"dv_extract_text('\1'", text)
    return re.sub(r"printf\('%-(\d+)s', ('[^']*')\)", r"rpad(\2, \1)", text)


# ---- comparison ----

def shown(answer):
    if "value" in answer:
        return {"true": "1", "false": "0"}.get(answer["value"], answer["value"])
    code = re.match(r"(dv-\d+) in ", answer["detail"])
    hint = " " + answer["hint"] if answer["hint"] else ""
    return "error: " + answer["message"] + hint + (f" ({code[1]})" if code else "")


def expected_here(result):
    result = re.sub(r"^error: \w+: ", "error: ", result)
    return re.sub(r"^(-?\d+)\.0$", r"\1", result)  # a double precision


def is_accepted(result, answer):
    return any(re.search(want, result) and re.match(got, answer.get("state", "")) for want, got, _ in ACCEPTED)


def is_unresolved(answer):
    return answer.get("state") in ("42883", "42725")


def main():
    session = Session()
    given, left_out = [], 0
    for file in FILES:
        made = set()
        for sql, result in examples(file):
            made |= set(re.findall(r"CREATE (?:TABLE|VIEW) (\w+)", sql))
            uses_made = made & set(re.findall(r"\w+", sql))
            if result is None or uses_made or any(re.search(part, sql) for part, _ in LEFT_OUT):
                left_out += 1
            else:
                given.append((file, sql, result))
    calls = [literal(translated(sql, numbers)) for _, sql, _ in given for numbers in (False, True)]
    script = SETUP + "".join(f"SELECT gives({call});\n" for call in calls)
    answers = [json.loads(line) for line in session.lines(script)]
    differences = 0
    for (file, sql, result), plain, numbers in zip(given, answers[::2], answers[1::2]):
        answer = numbers if is_unresolved(plain) else plain
        want = expected_here(result)
        if shown(answer) != want and not is_accepted(want, answer):
            differences += 1
            print(f"{file}: {sql}\n  SQLite:     {want}\n  PostgreSQL: {shown(answer)} {answer.get('state', '')}")
    print(f"{len(given)} calls agree but for {differences}, {left_out} are SQLite's alone")
    sys.exit(differences != 0)


main()
