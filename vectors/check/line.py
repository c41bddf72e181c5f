"""Lines of vector files: fields as Python values and back. See ../README.md."""

import pathlib
import re

# A quoted text, perhaps an assertion's or with a length behind it, or any other field.
_FIELD = re.compile(r'\s*(\??"(?:[^"\\]|\\.)*"(?::-?\d+)?|[^\s"]+)')
_ESCAPE = re.compile(r'\\(x[0-9A-F]{2}|.)')


class Text(bytes):
    """A quoted text. length is what the call is told, where that is not the text's own."""

    length = None

    def seen(self):
        """The bytes that a call sees that takes a length, 0 or less meaning: up to the first NUL."""
        return bytes(self[:self.length]) if (self.length or 0) > 0 else bytes(self)


class Word(bytes):
    """An output that is neither text nor a record."""

    def __new__(cls, word):
        return super().__new__(cls, word.encode())


class Raised(Exception):
    """An error: its code and the arguments of its message."""

    def __init__(self, code, *arguments):
        super().__init__(code)
        self.code = code
        self.arguments = [a if isinstance(a, bytes) else str(a).encode() for a in arguments]


class CannotTell(Exception):
    """The line's call is outside of what is recomputed here."""


class Case:
    """One line that is no comment."""

    def __init__(self, line):
        self.is_marked = line.startswith('~ ')
        words = _FIELD.findall(line[2:] if self.is_marked else line)
        if '=' not in words:
            raise ValueError('no "="')
        sign = words.index('=')
        self.operation, self.inputs = words[0], [value(word) for word in words[1:sign] if word != '_']
        rest = words[sign + 1:]
        self.error = None
        for i, word in enumerate(rest):
            if word.startswith('!'):
                self.error = (int(word[1:]), rest[i + 1], [value(a) for a in rest[i + 2:]])
                rest = rest[:i]
                break
        self.assertions = [value(word[1:]) for word in rest if word.startswith('?')]
        self.outputs = [word for word in rest if not word.startswith('?')]


def case_lines(name):
    """The cases of a file beside this folder."""
    path = pathlib.Path(__file__).parent.parent / f'{name}.txt'
    return [Case(line) for line in path.read_text('ascii').splitlines() if line and not line.startswith('#')]


def value(word):
    """A field as a Text, bytes of a record, None, or the word itself."""
    if word.startswith('"'):
        body, _, length = word[1:].rpartition('"')
        text = Text(_ESCAPE.sub(_unescape, body).encode('latin-1'))
        text.length = int(length[1:]) if length else None
        return text
    if word == 'null' or word.startswith('null:'):
        return None
    if word.startswith('x') and re.fullmatch('x([0-9A-F]{2})*', word):
        return bytes.fromhex(word[1:])
    return word


def _unescape(match):
    escape = match.group(1)
    return chr(int(escape[1:], 16)) if len(escape) == 3 else escape


def quoted(text):
    """Bytes as the field of a text."""
    def character(byte):
        if byte in b'"\\':
            return '\\' + chr(byte)
        return chr(byte) if 0x20 <= byte < 0x7F else f'\\x{byte:02X}'
    return '"' + ''.join(map(character, text)) + '"'


def field(item):
    """What a recomputation gives as the field of a line: bytes are a record, str and Text a text."""
    if isinstance(item, Word):
        return item.decode()
    if isinstance(item, Text):
        return quoted(item)
    if isinstance(item, bytes):
        return 'x' + item.hex().upper()
    if isinstance(item, str):
        return quoted(item.encode())
    return str(int(item))
