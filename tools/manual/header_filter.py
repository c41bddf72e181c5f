#!/usr/bin/env python3
"""A public header as Doxygen reads it: header_filter.py FILE

The headers' comments are plain. Here a block in front of a declaration becomes the declaration's documentation, and
that of all that follow without a blank line between; a comment behind a field or an enumerator is its own. Indented
lines and what follows "Raises" keep their layout. --check FILE... lists what is without a block instead, and exits with
1 when there is any: exported functions and data, and in C++ classes, their public members and everything else that a
program may name.
"""

import pathlib
import re
import sys

_COMMENT = re.compile(r'^(\s*)//( ?)(.*)$')
_RULE = re.compile(r'^\s*// ?-{10,}$')
_TRAILING = re.compile(r'^(.*\S)(\s*)// (.*)$')
_SPECIAL = re.compile(r'([\\@<>#%&*~]|(?<!\w)_|_(?!\w))')
_ACCESS = re.compile(r'(public|protected|private):$')
_UNNAMED = re.compile(r'(class|struct) \w+;|friend class|static_assert|struct raising\b|inline [^(]*\w::\w+\(|constexpr \w+ _|}')
_STRING = re.compile(r'"([^"\\]|\\.)*"|\'([^\'\\]|\\.)\'')


def escaped(text):
    """Prose without what Doxygen and its Markdown would take for markup; what is quoted as code stays."""
    pieces = re.split(r'(`[^`]*`)', text)
    return ''.join(piece if i % 2 else _SPECIAL.sub(r'\\\1', piece).replace('--', r'\--')
                   for i, piece in enumerate(pieces))


def is_laid_out(line):
    return line.startswith('  ')


def documentation(lines):
    """The lines of a block, as those of a Doxygen comment."""
    out, i = [], 0
    while i < len(lines):
        line = lines[i]
        end = i + 1
        if line.startswith('```'):
            while end < len(lines) and not lines[end].startswith('```'):
                end += 1
            out += ['@code{.cpp}' if 'cpp' in line else '@code{.c}', *lines[i + 1:end], '@endcode']
            end += 1
        elif is_laid_out(line) or re.match('Raises  ', line):
            while end < len(lines) and lines[end] and (is_laid_out(lines[end]) or re.match('Raises  ', line)):
                end += 1
            out += ['@verbatim', *lines[i:end], '@endverbatim']
        else:
            out.append(escaped(line))
        i = end
    return out


def comment(lines, indent, command=''):
    body = documentation(lines)
    return [f'{indent}/*! {command}', *(f'{indent}{line}' for line in body), f'{indent}*/']


def title(lines):
    """The lines of a file's comment: "dvtypes/number.h: SQL NUMBER." goes first."""
    return ['@file', '@brief ' + escaped(lines[0].partition(': ')[2] or lines[0])], lines[1:]


def shown(lines):
    """Without what users of the manual do not look for: specializations of the standard library's templates, which
    Doxygen does not know, the operations on records under values, and members that only heirs see."""
    end = None  # of what is being left out: a line that still is, or one that is not
    for line, following in zip(lines, [*lines[1:], '']):
        if end is None and line.startswith('template') and re.match(r'(struct|class) std::', following):
            end = '};'
        elif end is None and re.match(r'\s+struct raising\b', line):
            end = line[:line.index('struct')] + '};'
        elif end is None and line == '  protected:':
            end = ('  private:', '};')
        if end is None or line in end and isinstance(end, tuple):
            end = None
            yield line
        elif line == end:
            end = None


class Header:
    """Walks over the lines, and knows what encloses each: scopes (of a namespace, class or enum) or a body of code."""

    def __init__(self, text, is_cpp):
        self.lines, self.is_cpp = text.splitlines(), is_cpp
        self.out, self.unclaimed = [], []
        self.block, self.indent = [], ''  # the documentation of the declarations that follow
        self.statement = ''  # what there is of it so far
        self.enclosing = []
        self.access = []  # of each of these: may a program name what is in it?

    def run(self):
        first = 0
        while first < len(self.lines) and self.lines[first].startswith('//'):
            first += 1
        head, rest = title([line[3:] for line in self.lines[:first]])
        self.out += ['/*! ' + head[0], head[1], '', *documentation(rest), '*/']
        block = []
        for line in shown(self.lines[first:]):
            match = _COMMENT.match(line)
            if _RULE.match(line):
                block = []
                self.out.append('')
            elif match and not self.is_in_code():
                block.append(match[3])
                self.indent = match[1]
                self.out.append('')
            else:
                if block:
                    self.block, block = block, []
                self.take(line)
        return self

    def is_in_code(self):
        return 'code' in self.enclosing or bool(self.statement)

    def take(self, line):
        stripped = line.strip()
        if not stripped and not self.is_in_code():
            self.block = []
        is_declaration = stripped and not stripped.startswith(('#', '}', 'extern "C" {', 'namespace'))
        if is_declaration and not self.is_in_code() and not _ACCESS.match(stripped):
            if self.block:
                self.out += comment(self.block, self.indent)
            elif self.is_named(stripped) and not _TRAILING.match(line):
                self.unclaimed.append(stripped)
        self.out.append(line if 'code' in self.enclosing else self.own(line))
        if _ACCESS.match(stripped) and self.access:
            self.access[-1] = stripped == 'public:'
        elif not stripped.startswith('#'):
            self.follow(_STRING.sub('""', stripped).partition('//')[0] + ' ')

    def is_named(self, declaration):
        """Is it the beginning of something that a program may name?"""
        if not self.is_cpp:
            return re.match(r'(extern )?DV_EXPORT', declaration)
        return self.enclosing and all(self.access) and not _UNNAMED.match(declaration)

    def follow(self, code):
        for c in code:
            if c == '{':
                scope = scope_of(self.statement)
                self.enclosing.append(scope)
                self.access.append(scope != 'class' and not re.search(r'\bdetail\b|struct raising\b', self.statement))
                self.statement = ''
                if scope != 'code':
                    self.block = []
            elif c == '}':
                if self.enclosing:
                    self.enclosing.pop()
                    self.access.pop()
                self.statement = ''
            elif c == ';' or c == ',' and self.enclosing[-1:] == ['enum']:
                self.statement = ''
            elif c != ' ' or self.statement:
                self.statement += c

    @staticmethod
    def own(line):
        """A comment behind a field, an enumerator or a declaration of a line."""
        match = _TRAILING.match(line)
        if not match or match[1].count('"') % 2 or match[1].lstrip().startswith(('#', '}')):
            return line
        return f'{match[1]}{match[2]}//!< {escaped(match[3])}'


def scope_of(statement):
    if re.search(r'\)\s*(const|noexcept|override|requires.*)*\s*$', statement):
        return 'code'
    found = re.search(r'\b(class|struct|union|enum|namespace)\b', statement)
    return found[1] if found else 'scope' if statement.startswith('extern ""') else 'code'


def main():
    arguments = sys.argv[1:]
    is_check = arguments[0] == '--check'
    missing = 0
    for name in arguments[1:] if is_check else arguments:
        header = Header(pathlib.Path(name).read_text('ascii'), name.endswith('.hpp')).run()
        if not is_check:
            print('\n'.join(header.out))
        for declaration in header.unclaimed if is_check else []:
            print(f'{name}: not documented: {declaration}')
            missing += 1
    return 1 if missing else 0


if __name__ == '__main__':
    sys.exit(main())
