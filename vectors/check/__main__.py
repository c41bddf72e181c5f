"""Checks the vector files without the library: python3 vectors/check [FOLDER or FILE...]

For each file it says how many lines it recomputed, how many it could only decode, and how many are marked as without
a second source. Exits with 1 when a line differs.
"""

import importlib
import pathlib
import sys

import contract
from line import CannotTell, Case, Raised, field

AREAS = ['number', 'number_text', 'number_machine', 'number_model', 'date', 'timestamp', 'truncate', 'interval', 'zone',
         'zoned', 'iso', 'key', 'model', 'model_write', 'model_read', 'names', 'rowid']
HERE = pathlib.Path(__file__).resolve().parent


def operations():
    """By name, what gives an operation's outputs; and what judges one whose outputs are not exact."""
    table, judges = {}, {}
    for area in map(importlib.import_module, AREAS):
        table.update(area.OPERATIONS)
        judges.update(getattr(area, 'JUDGES', {}))
    return table, judges


def judge(case, table, judges):
    """'recomputed' or 'decoded'; raises ValueError where the line is wrong."""
    contract.check(case)
    if case.operation in judges and not case.assertions:
        if not judges[case.operation](case):
            raise ValueError('not near enough')
        return 'recomputed'
    if case.operation not in table or case.assertions:
        return 'decoded'
    try:
        outputs, error = [field(item) for item in table[case.operation](*case.inputs)], None
    except CannotTell:
        return 'decoded'
    except Raised as raised:
        left = getattr(raised, 'left', None)
        outputs, error = None if left is None else [field(item) for item in left], raised
    if (error is None) != (case.error is None) or error is not None and not is_same_error(error, case.error):
        raise ValueError(f'expected {error and (error.code, error.arguments)} {outputs}')
    if outputs is not None and outputs != case.outputs:
        raise ValueError(f'expected {" ".join(outputs)}')
    return 'recomputed'


def is_same_error(raised, error):
    code, _, arguments = error
    if raised.code != code or len(raised.arguments) != len(arguments):
        return False
    return all(ours == theirs or ours == b'...' for ours, theirs in zip(raised.arguments, arguments))


def check(path, table, judges):
    counts = {'recomputed': 0, 'decoded': 0, 'marked': 0, 'wrong': 0}
    for number, line in enumerate(path.read_text('ascii').splitlines(), 1):
        if not line or line.startswith('#'):
            continue
        try:
            case = Case(line)
            counts['marked' if case.is_marked else judge(case, table, judges)] += 1
        except (ValueError, IndexError, TypeError) as error:
            counts['wrong'] += 1
            if counts['wrong'] <= 20:
                print(f'{path}:{number}: {line}\n    {error!r}')
    return counts


def main():
    named = [pathlib.Path(name) for name in sys.argv[1:]] or [HERE.parent]
    files = [file for path in named for file in (sorted(path.glob('*.txt')) if path.is_dir() else [path])]
    (table, judges), total = operations(), {}
    print(f'{"file":24}{"recomputed":>12}{"decoded":>12}{"marked":>12}{"wrong":>12}')
    for file in files:
        counts = check(file, table, judges)
        print(f'{file.stem:24}' + ''.join(f'{count:12}' for count in counts.values()))
        for key, count in counts.items():
            total[key] = total.get(key, 0) + count
    print(f'{"all":24}' + ''.join(f'{count:12}' for count in total.values()))
    return 1 if total.get('wrong') else 0


if __name__ == '__main__':
    sys.exit(main())
