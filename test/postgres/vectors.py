"""Replays the frozen vectors through SQL: those whose operation has a form there, in half up rounding, with inputs that
are values and texts in UTF-8. One query each operation, over all of its lines; an error is compared by its code.
"""

import json
import pathlib
import re
import sys

from session import Session, literal

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "vectors" / "check"))
from line import Text, case_lines  # noqa: E402

FILES = ["number_arithmetic", "number_text", "number_power", "number_model", "date", "datetime_read", "datetime_write",
         "interval", "iso", "rowid", "time_timestamp", "trunc_round", "zoned", "zones", "errors"]


class Without(Exception):
    """The line has no form in SQL."""


# ---- inputs: a field of a line as text ----

def number(word):
    if isinstance(word, bytes) or word is None:
        raise Without
    return word


def readable(word):
    """Not a day of the gap of 1582, which is no value."""
    if isinstance(word, bytes) or word is None or "@" in word or re.match("1582-10-(0[5-9]|1[0-4])", word):
        raise Without
    return word


def zoned(word):
    """The instant in UTC and the zone."""
    if isinstance(word, bytes) or word is None or "@" not in word:
        raise Without
    return word


def months(word):
    years, rest = (int(part) for part in readable(word).split(","))
    return f"{'-' if years < 0 or rest < 0 else ''}{abs(years)}-{abs(rest)}"


def days(word):
    day, second, nanosecond = (int(part) for part in readable(word).split(","))
    sign = "-" if day < 0 or second < 0 or nanosecond < 0 else ""
    second = abs(second)
    return f"{sign}{abs(day)} {second // 3600}:{second // 60 % 60}:{second % 60}.{abs(nanosecond):09}"


def text(word):
    if not isinstance(word, Text) or word.length is not None or 0 in word:
        raise Without
    try:
        return word.decode()
    except UnicodeDecodeError:
        raise Without from None


def zoned_model(word):
    """Without a zone in the model it is that of the session, which SQL does not ask for."""
    if not re.search(b"TZ[RH]", word or b""):
        raise Without
    return text(word)


def text_with_zone(word):
    given = text(word)
    if not re.search(r"[+/]|-\d\d:?\d\d$|[A-Z]{3}", given):
        raise Without
    return given


def interval(word):
    """Up to nine leading digits; behind a sign they are counted otherwise in SQL."""
    given = text(word)
    if re.match(r"\s*(-|\d{10})", given):
        raise Without
    return given


def setting(word):
    language, _, charset = word.partition(".")
    if charset != "UTF8":
        raise Without
    return language.replace("_", " ")


def plain(word):
    return word


def only(*values):
    """An input that SQL has no word for."""
    def check(word):
        if word not in values:
            raise Without
        return word
    return check


HALF_UP = only("3")
UTF8 = only("3")
PRECISION = only(*map(str, range(1, 39)))
SCALE = only(*map(str, range(-127, 128)))
PLACE = only(*map(str, range(-127, 126)))
DIGIT = only(*"0123456789")
NINE = only("9")

# ---- outputs: what the fields of a line are as text ----


def as_bytes(case):
    return case.outputs[0]


def as_number(case):
    return "x" + case.outputs[0][3:]  # the first byte is the length


def as_text(case):
    written = case.outputs[0]
    return re.sub(r"\\x(..)|\\(.)", lambda m: chr(int(m[1], 16)) if m[1] else m[2], written[1:-1]).encode("latin-1").decode()


def as_short_text(case):
    """A longer text is a scientific one in SQL."""
    written = as_text(case)
    if len(written) > 46:
        raise Without
    return written


def as_normal_days(case):
    """The sum of the fields, which have one sign and are in their ranges in SQL."""
    record = bytes.fromhex(case.outputs[0][1:])
    day, second, nanosecond = (int.from_bytes(record[i:i + 4], "big") - (1 << 30) for i in (0, 4, 8))
    total = (day * 86400 + second) * 10**9 + nanosecond
    sign, total = (-1 if total < 0 else 1), abs(total)
    fields = total // (86400 * 10**9), total // 10**9 % 86400, total % 10**9
    return "x" + "".join(f"{sign * field + (1 << 30):08X}" for field in fields)


def as_offset(case):
    hour, minute, second = bytes.fromhex(case.outputs[1][1:7])
    hour -= 100
    seconds = f":{second:02}" if second else ""
    return f"{'-' if hour < 0 else '+'}{abs(hour):02}:{minute:02}{seconds}"


def as_words(case):
    return " ".join(case.outputs).replace('"', "")


def local_time_and_name(case):
    return case.outputs[0] + " " + case.outputs[2].replace('"', "")


N, D, T, TS = "$%d::number", "$%d::dv_date", "$%d::dv_time", "$%d::dv_timestamp"
UTC = "from_tz(split_part($%d, '@', 1)::dv_timestamp, '+00:00')"
Z = f"at_time_zone({UTC}, split_part($%d, '@', 2))"
YM, DS = "$%d::dv_interval_ym", "$%d::dv_interval_ds"


def sql_of(template, *values):
    """A template with {1}, {2} for the inputs, each by its cast: {n1} is $1::number."""
    casts = {"n": N, "d": D, "t": T, "ts": TS, "z": Z, "ym": YM, "ds": DS, "i": "$%d::bigint", "s": "$%d"}

    def cast(match):
        kind, place = re.fullmatch(r"([a-z]+)(\d)", match[1]).groups()
        return casts[kind].replace("%d", place)
    return re.sub(r"\{(\w+)\}", cast, template)


def sent(type, expression):
    return f"'x' || upper(encode(dv_{type}_send({expression}), 'hex'))"


def bits(expression):
    return f"'x' || upper(encode(float8send({expression}), 'hex'))"


def of_number(inputs, expression):
    return inputs, sent("number", expression), as_number


def of_days(inputs, expression):
    return inputs, sent("interval_ds", expression), as_normal_days


def of(type, inputs, expression):
    return inputs, sent(type, expression), as_bytes


def whole(inputs, expression):
    return inputs, f"({expression})::text", as_words


def written(inputs, expression):
    return inputs, f"({expression})::text", as_text


PRESENT = "dv_date '2024-02-29 13:14:15'"
OPERATIONS = {
    "number_add": of_number([HALF_UP, number, number], "{n2} + {n3}"),
    "number_sub": of_number([HALF_UP, number, number], "{n2} - {n3}"),
    "number_mul": of_number([HALF_UP, number, number], "{n2} * {n3}"),
    "number_div": of_number([HALF_UP, number, number], "{n2} / {n3}"),
    "number_mod": of_number([HALF_UP, number, number], "{n2} % {n3}"),
    "number_rem": of_number([HALF_UP, number, number], "dv_rem({n2}, {n3})"),
    "number_sqr": of_number([HALF_UP, number], "{n2} * {n2}"),
    "number_sqrt": of_number([HALF_UP, number], "dv_sqrt({n2})"),
    "number_pow": of_number([HALF_UP, number, number], "dv_power({n2}, {n3})"),
    "number_exp": of_number([HALF_UP, number], "dv_exp({n2})"),
    "number_negate": of_number([number], "-{n1}"),
    "number_abs": of_number([number], "dv_abs({n1})"),
    "number_round_at_withmode": of_number([number, PLACE, HALF_UP], "dv_round({n1}, -{i2})"),
    "number_force_prec_scale": of_number([number, PRECISION, SCALE], "dv_cast_number({n1}, {i2}, {i3})"),
    "number_from_str": of_number([text], "{n1}"),
    "number_to_str": ([number, only(None)], "{n1}::text", as_short_text),
    "number_cmp": whole([number, number], "dv_cmp({n1}, {n2})"),
    "number_to_str_fmt": written([number, text], "to_char({n1}, {s2})"),
    "number_from_str_fmt": of_number([text, text], "dv_to_number({s1}, {s2})"),
    "dv_date_from_iso": of("date", [text], "dv_to_date({s1})"),
    "dv_time_from_iso": of("time", [text], "dv_to_time({s1})"),
    "dv_timestamp_from_iso": of("timestamp", [text], "dv_to_timestamp({s1})"),
    "dv_ts_tz_from_iso": of("timestamptz", [text], "dv_to_timestamp_tz({s1})"),
    "dv_date_to_str": written([setting, text, readable], "to_char({d3}, {s2}, {s1})"),
    "dv_time_to_str": written([setting, text, readable, NINE], "to_char({t3}, {s2}, {s1})"),
    "dv_timestamp_to_str": written([setting, text, readable, NINE], "to_char({ts3}, {s2}, {s1})"),
    "dv_ts_tz_to_str": written([setting, text, zoned, NINE], "to_char({z3}, {s2}, {s1})"),
    "dv_date_from_str": of("date", [setting, text, text], f"dv_to_date({{s3}}, {{s2}}, {{s1}}, {PRESENT})"),
    "dv_date_from_str_as_of": of("date", [setting, text, text, readable], "dv_to_date({s3}, {s2}, {s1}, {d4})"),
    "dv_timestamp_from_str": of("timestamp", [setting, text, text, NINE],
                                f"dv_to_timestamp({{s3}}, {{s2}}, {{s1}}, {PRESENT})"),
    "dv_ts_tz_from_str": of("timestamptz", [setting, zoned_model, text_with_zone, only("6", "9"), plain],
                            f"dv_to_timestamp_tz({{s3}}, {{s2}}, {{s1}}, {PRESENT})"),
    "dv_date_trunc": of("date", [readable, text], "dv_trunc({d1}, {s2})"),
    "dv_date_round": of("date", [readable, text], "dv_round({d1}, {s2})"),
    "dv_date_add_month": of("date", [readable, plain, only("0")], "add_months({d1}, {i2})"),
    "dv_date_sub": (([readable, readable]), bits("dv_date_diff({d1}, {d2})"), as_bytes),
    "dv_date_months_between": (([readable, readable]), bits("months_between({d1}, {d2})"), as_bytes),
    "dv_date_get_last_date": of("date", [readable], "last_day({d1})"),
    "dv_date_get_next_day": of("date", [readable, text, only("0"), UTF8], "next_day({d1}, {s2})"),
    "dv_date_compare": whole([readable, readable], "dv_cmp({d1}, {d2})"),
    "dv_timestamp_compare": whole([readable, readable], "dv_cmp({ts1}, {ts2})"),
    "dv_timestamp_add_itv_dts": of("timestamp", [readable, days], "{ts1} + {ds2}"),
    "dv_timestamp_sub_itv_dts": of("timestamp", [readable, days], "{ts1} - {ds2}"),
    "dv_timestamp_sub_timestamp_into_itv_dts": of_days([readable, readable], "{ts1} - {ts2}"),
    "dv_itv_dts_add_itv_dts": of_days([days, days], "{ds1} + {ds2}"),
    "dv_itv_ytm_add_itv_ytm": of("interval_ym", [months, months], "{ym1} + {ym2}"),
    "dv_itv_dts_mul": of_days([days, number], "{ds1} * {n2}"),
    "dv_itv_dts_div": of_days([days, number], "{ds1} / {n2}"),
    "dv_itv_dts_compare": whole([days, days], "dv_cmp({ds1}, {ds2})"),
    "dv_itv_ytm_compare": whole([months, months], "dv_cmp({ym1}, {ym2})"),
    "dv_itv_dts_from_str": of_days([interval, only("6"), DIGIT, plain],
                                    "dv_cast_fraction(dv_cast_leading({ds1}, {i3}), {i4})"),
    "dv_itv_ytm_from_str": of("interval_ym", [interval, only("0"), DIGIT], "dv_cast_leading({ym1}, {i3})"),
    "dv_ts_tz_from_timestamp": of("timestamptz", [readable, readable], "from_tz({ts1}, {s2})"),
    "dv_ts_tz_from_date": of("timestamptz", [readable, readable], "from_tz(dv_to_timestamp({d1}), {s2})"),
    "dv_ts_tz_add_itv_dts": of("timestamptz", [zoned, days], "{z1} + {ds2}"),
    "dv_ts_tz_sub_itv_dts": of("timestamptz", [zoned, days], "{z1} - {ds2}"),
    "dv_ts_tz_add_itv_ytm": of("timestamptz", [zoned, months], "{z1} + {ym2}"),
    "dv_ts_tz_sub_itv_ytm": of("timestamptz", [zoned, months], "{z1} - {ym2}"),
    "dv_ts_tz_sub_ts_tz_into_itv_dts": of_days([zoned, zoned], "{z1} - {z2}"),
    "dv_ts_tz_compare": whole([zoned, zoned], "dv_cmp({z1}, {z2})"),
    "dv_ts_tz_to_iso": written([zoned], "{z1}"),
    "dv_date_from_ts_tz": of("date", [zoned], "dv_to_date({z1})"),
    "dv_timestamp_from_ts_tz": of("timestamp", [zoned], "dv_to_timestamp({z1})"),
    "dv_ts_ltz_from_ts_tz": of("timestamp", [zoned], "sys_extract_utc({z1})"),
    "dv_date_to_iso": written([readable], "{d1}"),
    "dv_time_to_iso": written([readable], "{t1}"),
    "dv_timestamp_to_iso": written([readable], "{ts1}"),
    "timezone_localize": ([readable, readable], "tz_offset({s1}, from_tz({ts2}, '+00:00'))", as_offset),
    "region_at": ([readable, readable], sent("date", "dv_to_date(at_time_zone(from_tz({ts2}, '+00:00'), {s1}))") +
                  " || ' ' || dv_extract_text('TIMEZONE_ABBR', at_time_zone(from_tz({ts2}, '+00:00'), {s1}))",
                  local_time_and_name),
    "erowid_new": written([plain] * 4, "dv_rowid({i1}, {i2}, {i3}, {i4})"),
    "erowid_get_rowid": whole([text], "concat_ws(' ', dv_rowid_sgmt(dv_rowid({s1})), dv_rowid_file(dv_rowid({s1})), "
                              "dv_rowid_block(dv_rowid({s1})), dv_rowid_row(dv_rowid({s1})))"),
}

FUNCTION = """
CREATE FUNCTION call_{name}({params}) RETURNS text LANGUAGE plpgsql AS $$
DECLARE
    detail text;
BEGIN
    RETURN {expression};
EXCEPTION WHEN OTHERS THEN
    GET STACKED DIAGNOSTICS detail = PG_EXCEPTION_DETAIL;
    RETURN coalesce(substring(detail FROM '^dv(-\\d+) in '), SQLSTATE || ' ' || SQLERRM);
END $$;
"""


def call_of(case):
    """(operation, values, what it gives)."""
    inputs, _, output = OPERATIONS.get(case.operation, (None, None, None))
    if inputs is None or len(inputs) != len(case.inputs) or case.assertions:
        raise Without
    values = [convert(word) for convert, word in zip(inputs, case.inputs)]
    return case.operation, values, str(case.error[0]) if case.error else output(case)


def query(name, calls):
    inputs, expression, _ = OPERATIONS[name]
    rows = ", ".join(f"({number}, " + ", ".join("NULL" if v is None else literal(v) for v in values) + ")"
                     for number, (_, values, _) in calls)
    columns = ", ".join(f"a{i + 1}" for i in range(len(inputs)))
    casts = ", ".join(f"a{i + 1}::text" for i in range(len(inputs)))
    return (FUNCTION.format(name=name, params=", ".join(["text"] * len(inputs)), expression=sql_of(expression)) +
            f"SELECT json_build_array(number, call_{name}({casts})) FROM (VALUES {rows}) AS _(number, {columns});\n")


def main():
    calls, cases, without = {}, [], 0
    for file in FILES:
        for case in case_lines(file):
            try:
                call = call_of(case)
            except Without:
                without += 1
                continue
            calls.setdefault(call[0], []).append((len(cases), call))
            cases.append(call)
    wrong = 0
    for line in Session().lines("".join(query(*item) for item in calls.items())):
        number, got = json.loads(line)
        name, values, want = cases[number]
        if got != want:
            wrong += 1
            print(f"{name} {values}: {got} instead of {want}")
    for name in OPERATIONS.keys() - calls.keys():
        wrong += 1
        print(f"{name}: no line")
    print(f"{len(cases)} lines in {len(calls)} operations, {wrong} differ; {without} have no form in SQL")
    sys.exit(wrong != 0)


main()
