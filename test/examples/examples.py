#!/usr/bin/env python3
"""Makes programs of the examples in public headers and documents, and writes what they say they print.

    examples.py OUTPUT_FOLDER FILE...

An example is a fenced block, ```c or ```cpp, in a comment of a header or in a document. Each is the body of a
function; lines that include a header go in front of all. What it prints is told by the comments behind the lines that
print (std::cout, printf, puts), or right under such a line that has none behind it:

    std::cout << dv::number("1.50") << '\\n';     // 1.5

Written are examples.c and examples.cpp, one program a language, which print the place of each example before they run
it, and examples_c.txt and examples_cpp.txt, what they must print. A line that prints and has no comment is an error.
"""

import pathlib
import re
import sys

FENCE = re.compile(r'^(?P<comment>// ?)?```(?P<language>c|cpp)?\s*$')
PRINTS = re.compile(r'std::cout|\bprintf\(|\bputs\(')
START = {
    'c': '#include <inttypes.h>\n#include <stdio.h>\n#include <stdlib.h>\n',
    'cpp': '#include <dvtypes/column.h>\n#include <dvtypes/dvtypes.hpp>\n#include <iostream>\n',
}
PRINT_PLACE = {'c': 'puts("{}");', 'cpp': 'std::cout << "{}\\n";'}


class Example:
    def __init__(self, path, line, language):
        self.place = f'{path.name}:{line}'
        self.path, self.line, self.language, self.lines = path, line, language, []

    # The texts that stand behind the lines that print, or under them.
    def printed(self):
        texts, is_untold, may_go_on = [], False, False
        for number, line in enumerate(self.lines, self.line + 1):
            code, _, comment = line.partition('//')
            if PRINTS.search(code):
                if is_untold:
                    break
                is_untold = may_go_on = not comment
                texts += [comment.strip()] if comment else []
            elif comment and (is_untold or may_go_on and not code.strip()):
                texts.append(comment.strip())
                is_untold = False
            else:
                may_go_on = is_untold
        if is_untold:
            sys.exit(f'{self.path}:{number}: what is printed above is not told')
        return texts


def examples_of(path):
    example = None
    for number, line in enumerate(path.read_text().splitlines(), 1):
        fence = FENCE.match(line)
        if example is None:
            if fence and fence['language']:
                prefix = fence['comment'] or ''
                example = Example(path, number, fence['language'])
        elif fence:
            yield example
            example = None
        else:
            example.lines.append(line[len(prefix):])
    if example is not None:
        sys.exit(f'{example.place}: the example does not end')


def program(examples, language):
    includes, functions, calls = set(), [], []
    for index, example in enumerate(examples):
        body = []
        for line in example.lines:
            is_include = line.lstrip().startswith('#include')
            if is_include:
                includes.add(line.strip())
            body.append('' if is_include else line)
        functions.append(f'static void example_{index}(void) {{\n#line {example.line + 1} "{example.path}"\n' +
                         '\n'.join(body) + '\n}\n')
        calls.append('    ' + PRINT_PLACE[language].format(example.place) + f'\n    example_{index}();\n')
    headers = sorted({f'#include <dvtypes/{example.path.name}>' for example in examples
                      if example.path.suffix == '.h'} | includes)
    return (START[language] + '\n'.join(headers) + '\n\n' + '\n'.join(functions) +
            '\nint main(void) {\n' + ''.join(calls) + '    return 0;\n}\n')


folder = pathlib.Path(sys.argv[1])
found = [example for name in sys.argv[2:] for example in examples_of(pathlib.Path(name))]
for language in START:
    examples = [example for example in found if example.language == language]
    (folder / f'examples.{language}').write_text(program(examples, language))
    told = [line + '\n' for example in examples for line in (example.place, *example.printed())]
    (folder / f'examples_{language}.txt').write_text(''.join(told))
