#!/usr/bin/env python3
"""Runs the decoder of docs/bytes.md over the examples of that page and over the frozen vectors.

    bytes.py PROJECT_FOLDER

The bytes of the page's examples must be those of a vector, or of a dump() that docs/sql.md shows, whose examples the
extension's tests run. Vectors are compared with what their operation was given: a text, or a local time and its UTC.
"""

import collections
import datetime
import decimal
import pathlib
import re
import struct
import sys

project = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(project / 'vectors/check'))
from line import case_lines  # noqa: E402

page = (project / 'docs/bytes.md').read_text('utf-8')
manual = (project / 'docs/sql.md').read_text('utf-8')
decoder = {}
exec(re.search(r'^```python\n(.*?)^```$', page, re.S | re.M)[1], decoder)
decode = decoder['decode']

codes = {name: int(code) for name, code in re.findall(r'^\| ([A-Z ]+) \| (\d+) \|', page, re.M)}
checked, faults = collections.Counter(), []


def check(what, blob, expected):
    value = decode(blob)
    checked[what] += 1
    if value != (decimal.Decimal(expected) if what.startswith('NUMBER') else expected):
        faults.append(f'{what} {blob.hex(" ").upper()}: {value}, not {expected}')


# ---- the page's examples: tables of two columns, headed by the type and "bytes", or by "SQL" and "BLOB"

def without_size(record):
    if record[0] != len(record) - 1:
        faults.append(f'NUMBER {record.hex(" ").upper()}: a wrong size')
    return record[1:]


words = set(re.findall(r'\bx([0-9A-F]+)\b', ''.join(
    file.read_text('ascii') for file in (project / 'vectors').glob('*.txt'))))
dumps = dict(re.findall(r'SELECT dump\((.*)\);  -- (type=.*)', manual))
dumped = {text.rpartition('bytes=')[2].replace(':', '').upper() for text in dumps.values()}
for name, _, rows in re.findall(r'^\| ([A-Z ]+) \| (bytes|BLOB) \|\n\|[-|]+\|\n((?:\|.*\n)+)', page, re.M):
    for value, text in re.findall(r'^\| `(.+)` \| `([0-9A-F ]+)` \|$', rows, re.M):
        record = bytes.fromhex(text)
        if name == 'SQL':
            checked[name] += 1
            shown = f'type={record[0]} length={len(record) - 1} bytes={record[1:].hex(":")}'
            if dumps.get(value) != shown:
                faults.append(f'{value}: {shown}, docs/sql.md has {dumps.get(value)}')
            continue
        if record.hex().upper() not in words | dumped:
            faults.append(f'{name} {text}: neither in vectors nor in docs/sql.md')
        record = without_size(record) if name == 'NUMBER' else record
        check(name, bytes([codes[name]]) + record, value)
        if name == 'DATE':
            check(name, bytes([codes['TIMESTAMP WITH LOCAL TIME ZONE']]) + record + bytes(4), value + '.000000000')


# ---- vectors

def texts(area, operation):
    """Texts that the operation read, and the records that it made of them; intervals unrounded."""
    for case in case_lines(area):
        is_read = case.operation == operation and case.error is None and not case.assertions and case.inputs[0]
        if is_read and (operation != 'dv_itv_dts_from_str' or case.inputs[-1] == '9'):
            yield case.inputs[0].seen().decode('latin-1').strip(), bytes.fromhex(case.outputs[0][1:])


numbers = []
for text, record in texts('number_text', 'number_from_str'):
    number = decimal.Decimal(text.strip())
    if len(number.as_tuple().digits) <= 38:
        check('NUMBER vectors', bytes([1]) + without_size(record), number)
        numbers.append((record[1:], number))
numbers.sort()
if [number for _, number in numbers] != sorted(number for _, number in numbers):
    faults.append('the order of the bytes is not that of the numbers')


def as_given(found):
    return found[0]


def interval(found):
    sign, first, *rest = found.groups()
    if len(rest) == 1:
        return f'{sign or "+"}{int(first):02}-{int(rest[0]):02}'
    hour, minute, second, fraction = rest
    return f'{sign or "+"}{int(first):02} {int(hour):02}:{int(minute):02}:{int(second):02}.{fraction.ljust(9, "0")}'


DATE = r'-?\d{4}-\d\d-\d\d \d\d:\d\d:\d\d'
for area, operation, name, form, shown in [
        ('iso', 'dv_date_from_iso', 'DATE', DATE, as_given),
        ('iso', 'dv_time_from_iso', 'TIME', r'\d\d:\d\d:\d\d\.\d{9}', as_given),
        ('iso', 'dv_timestamp_from_iso', 'TIMESTAMP', DATE + r'\.\d{9}', as_given),
        ('interval', 'dv_itv_ytm_from_str', 'INTERVAL YEAR TO MONTH', r'([+-]?)(\d+)-(\d+)', interval),
        ('interval', 'dv_itv_dts_from_str', 'INTERVAL DAY TO SECOND',
         r'([+-]?)(\d+) (\d+):(\d+):(\d+)\.(\d*)', interval)]:
    for text, record in texts(area, operation):
        found = re.fullmatch(form, text)
        if found:
            check(f'{name} vectors', bytes([codes[name]]) + record, shown(found))

for case in case_lines('rowid'):
    if case.operation == 'erowid_new' and case.outputs[0].startswith('"') and not case.assertions:
        check('ROWID vectors', bytes([15]) + struct.pack('>IHIH', *map(int, case.inputs)), case.outputs[0].strip('"'))

zones = list(case_lines('zones'))
regions = [case.outputs[0].strip('"') for case in zones if case.operation == 'region_tab_']
for case in zones:
    if case.operation == 'region_at' and case.error is None:
        (region, utc), (local, zone, _, back) = case.inputs, case.outputs
        utc = datetime.datetime.fromisoformat(utc)
        shown = datetime.datetime.fromisoformat(decode(bytes([5]) + bytes.fromhex(local[1:])))
        minutes = round((shown - utc).total_seconds()) // 60
        record = bytes.fromhex(back[1:]) + bytes(4) + bytes.fromhex(zone[1:])
        check('TIMESTAMP WITH TIME ZONE vectors', bytes([21]) + record,
              f'{utc}.000000000 UTC, {"-+"[minutes >= 0]}{abs(minutes) // 60:02}:{abs(minutes) % 60:02}'
              f' region {regions.index(region)}')

print('\n'.join(faults) or ', '.join(f'{count} of {what}' for what, count in sorted(checked.items())))
untried = [what for name in codes if 'LOCAL' not in name for what in (name, f'{name} vectors') if not checked[what]]
if untried:
    print('nothing to compare for', ', '.join(untried))
sys.exit(1 if faults or untried else 0)
