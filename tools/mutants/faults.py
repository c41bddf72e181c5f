"""The faults that can be planted in a source, by kind.

  condition   an if, a while or a choice by "?" negated, always true or false, its branches swapped; "!" dropped
  logic       "&&" and "||" swapped, an operand of them dropped
  comparison  the opposite comparison
  bound       a bound that is included or left out instead
  arithmetic  another arithmetic, bitwise or shift operator; a sign dropped; ++ and --
  constant    a number one off, another character, true and false, a named constant's neighbour
  statement   a statement dropped, or swapped with the next one where both name the same thing
  argument    two arguments swapped
  table       a cell of an initialiser
  text        a text, the text of an assertion, the function named in an error
"""

import re
import zlib
from typing import NamedTuple

from tokens import BLOCK, TABLE, tokens_of

# How often each kind is planted, of 100: tables and texts have many places, and faults in logic are the worse ones.
SHARES = {
    "condition": 16, "logic": 8, "comparison": 10, "bound": 10, "arithmetic": 13,
    "constant": 14, "statement": 10, "argument": 4, "table": 9, "text": 6,
}

_COMPARISONS = {"==": "!=", "!=": "==", "<": ">=", ">=": "<", ">": "<=", "<=": ">"}
_BOUNDS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
_ARITHMETIC = {
    "+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "<<": ">>", ">>": "<<", "&": "|", "|": "&", "^": "|",
    "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "%=": "/=", "|=": "&=", "&=": "|=", "^=": "|=", "<<=": ">>=",
    ">>=": "<<=", "++": "--", "--": "++",
}
_ASSIGNMENTS = {"=", *(text for text in _ARITHMETIC if text.endswith("="))}
_OPERAND_ENDS = {",", ";", "?", ":", "{", "}", "&&", "||", "=", "return"}
_DECLARATION = re.compile(r"[\w:]+(<.*?>)?\s+[*&]*\w")
_NOT_DROPPED = {
    "if", "for", "while", "do", "switch", "case", "default", "else", "return", "using", "const", "constexpr", "static",
    "struct", "auto", "goto", "public", "private", "protected", "friend", "throw", "template", "typename", "enum",
}
_CONSTANT_NAME = re.compile(r"(?!DV_EXPORT|DV_NORETURN|DV_HIDDEN)([A-Z][A-Z0-9]*_)[A-Z0-9_]+$")


class Fault(NamedTuple):
    path: str  # below src/
    kind: str
    begin: int  # in the source: [begin, end) becomes `text`
    end: int
    text: str

    @property
    def key(self):
        return f"{self.path}:{self.begin}-{self.end}:{self.kind}:{self.text}"

    def planted_in(self, source):
        return source[: self.begin] + self.text + source[self.end:]

    def lines(self, source):
        """The number of the first line that changes, and the lines before and after, without outer blanks."""
        first = source.rfind("\n", 0, self.begin) + 1
        last = source.find("\n", self.end)
        last = len(source) if last < 0 else last
        new = source[first: self.begin] + self.text + source[self.end: last]
        return source.count("\n", 0, first) + 1, source[first:last].strip(), new.strip()


def _number_faults(token):
    match = re.fullmatch(r"(0[xX])?([0-9A-Fa-f']+?)([uUlL]*)", token.text)
    if not match or (not match[1] and not match[2].replace("'", "").isdigit()):
        return []
    base, digits = 16 if match[1] else 10, match[2].replace("'", "")
    value = int(digits, base)
    return [
        (match[1] or "") + (f"{n:0{len(digits)}X}" if match[1] else str(n)) + match[3]
        for n in (value + 1, value - 1) if n >= 0
    ]


def _other_character(text, salt):
    """The text with one character changed; which one depends on the text and its place only. None: it has none."""
    begin, end = text.find('"' if '"' in text else "'") + 1, len(text) - 1
    escaped = {i + 1 for i in range(begin, end) if text[i] == "\\"}
    places = [i for i in range(begin, end) if text[i] not in "\\%" and i not in escaped]
    if not places:
        return None
    place = places[zlib.crc32(f"{salt}{text}".encode()) % len(places)]
    old = text[place]
    others = sorted({text[i] for i in places if not text[i].isalnum()} - {old})
    if old.isalnum() and old.isascii():
        new = {"z": "a", "Z": "A", "9": "8"}.get(old, chr(ord(old) + 1))
    else:
        new = others[0] if others else "~" if old != "~" else "-"
    return text[:place] + new + text[place + 1:]


class _Source:
    """One source while its faults are collected."""

    def __init__(self, path, source):
        self.path, self.source, self.tokens = path, source, tokens_of(source)
        self.found = []
        names = {t.text for i, t in enumerate(self.tokens) if t.kind == "name" and self._text(i + 1) != "("}
        self.constants = {}  # by prefix: the constants that the file names
        for name in sorted(names):
            match = _CONSTANT_NAME.match(name)
            if match:
                self.constants.setdefault(match[1], []).append(name)

    def _text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def _add(self, kind, begin, end, text):
        if self.source[begin:end] != text:
            self.found.append(Fault(self.path, kind, begin, end, text))

    def _replace(self, kind, token, text):
        if text is not None:
            self._add(kind, token.begin, token.end, text)

    def _is_binary(self, i):
        """Binary operators have blanks on both sides, which brackets of templates and declarators have not."""
        token = self.tokens[i]
        return self.source[token.begin - 1].isspace() and self.source[token.end: token.end + 1].isspace()

    def _scan(self, i, step):
        """The index of the token that ends the operand beside token i, going forward (1) or backward (-1)."""
        i += step
        while 0 <= i < len(self.tokens):
            token = self.tokens[i]
            if token.text in _OPERAND_ENDS or token.text in (")]" if step > 0 else "(["):
                return i
            i = (token.partner if token.text in "([{)]}" and token.partner >= 0 else i) + step
        return i

    def faults(self):
        for i, token in enumerate(self.tokens):
            if token.kind == "operator":
                self._operator(i, token)
            elif token.kind == "name":
                self._name(i, token)
            elif token.kind == "assertion":
                self._replace("text", token, f"({token.text})")
            else:
                self._literal(i, token)
            if self._begins_statement(i, token):
                self._statement(i)
        return self.found

    # ---- single tokens ----

    def _literal(self, i, token):
        if token.kind == "number":
            kind = "table" if token.brace == TABLE else "constant"
            for text in _number_faults(token):
                self._replace(kind, token, text)
        elif token.kind == "character":
            kind = "table" if token.brace == TABLE else "constant"
            self._replace(kind, token, _other_character(token.text, i))
        elif self._text(i - 1) != "extern":
            kind = "table" if token.brace == TABLE else "text"
            self._replace(kind, token, _other_character(token.text, i))

    def _name(self, i, token):
        kind = "table" if token.brace == TABLE else "constant"
        if token.text in ("true", "false"):
            self._replace(kind, token, "false" if token.text == "true" else "true")
        elif token.text in ("if", "while") and token.brace == BLOCK:
            self._condition(i)
        elif token.text == "raise" and self._text(i + 1) == "(" and self._text(i + 3) in (",", ")"):
            code = self.tokens[i + 2]
            self._replace("text", code, f'error_at({code.text}, __FILE__, __LINE__, "function")')
        match = _CONSTANT_NAME.match(token.text)
        if match and token.text in self.constants.get(match[1], ()) and self._text(i + 1) != "(":
            pool = self.constants[match[1]]
            self._replace(kind, token, pool[(pool.index(token.text) + 1) % len(pool)])

    def _operator(self, i, token):
        text = token.text
        if text in ("++", "--"):
            self._replace("arithmetic", token, _ARITHMETIC[text])
        elif text == "!" or (text in "-~" and not self._is_binary(i) and token.brace != TABLE):
            self._replace("condition" if text == "!" else "arithmetic", token, "")
        elif text == "?":
            self._choice(i)
        elif text == "(":
            self._arguments(i)
        elif self._is_binary(i):
            self._replace("comparison", token, _COMPARISONS.get(text))
            self._replace("bound", token, _BOUNDS.get(text))
            self._replace("arithmetic", token, _ARITHMETIC.get(text))
            if text in ("&&", "||"):
                self._logic(i, token)

    # ---- what spans several tokens ----

    def _logic(self, i, token):
        self._replace("logic", token, "||" if token.text == "&&" else "&&")
        right, left = self._scan(i, 1), self._scan(i, -1)
        if right < len(self.tokens) and left >= 0:
            self._add("logic", self.tokens[i - 1].end, self.tokens[right - 1].end, "")
            self._add("logic", self.tokens[left + 1].begin, self.tokens[i + 1].begin, "")

    def _choice(self, i):
        depth, colon = 0, i
        while True:
            colon = self._scan(colon, 1)
            if colon >= len(self.tokens) or self._text(colon) not in ("?", ":", "&&", "||", "="):
                return
            depth += {"?": 1, ":": -1}.get(self._text(colon), 0)
            if depth < 0:
                break
        end = colon
        while True:
            end = self._scan(end, 1)
            if self._text(end) not in ("?", ":", "&&", "||", "="):
                break
        first = self.source[self.tokens[i + 1].begin: self.tokens[colon - 1].end]
        second = self.source[self.tokens[colon + 1].begin: self.tokens[end - 1].end]
        if first != second:
            self._add("condition", self.tokens[i + 1].begin, self.tokens[end - 1].end, f"{second} : {first}")

    def _condition(self, i):
        opening = i + 2 if self._text(i + 1) == "constexpr" else i + 1
        if self._text(opening) != "(":
            return
        close = self.tokens[opening].partner
        first = opening + 1
        for k in range(first, close):  # behind an initialiser
            if self._text(k) == ";":
                first = k + 1
        begin, end = self.tokens[first].begin, self.tokens[close].begin
        self._add("condition", begin, end, f"!({self.source[begin:end]})")
        self._add("condition", begin, end, "false")
        if self._text(i) == "if":
            self._add("condition", begin, end, "true")

    def _arguments(self, i):
        before = self.tokens[i - 1] if i else None
        called = before and (before.kind == "name" or before.text == ">")
        if not called or before.text in _NOT_DROPPED | {"catch", "sizeof"} or self.tokens[i].brace != BLOCK:
            return
        close, begins, k = self.tokens[i].partner, [i + 1], i + 1
        while k < close:
            if self._text(k) == ",":
                begins.append(k + 1)
            k = (self.tokens[k].partner if self._text(k) in "([{" else k) + 1
        spans = [(self.tokens[a].begin, self.tokens[b - 2].end) for a, b in zip(begins, begins[1:] + [close + 1])]
        for (a, b), (c, d) in zip(spans, spans[1:]):
            first, second = self.source[a:b], self.source[c:d]
            if first != second:
                self._add("argument", a, d, second + self.source[b:c] + first)

    def _statement_end(self, i):
        """The index of the ";" of an expression's statement that begins at token i, or None."""
        if i >= len(self.tokens):
            return None
        token = self.tokens[i]
        is_jump = token.text in ("break", "continue")
        if token.brace != BLOCK or token.text in _NOT_DROPPED or token.text in "{};)" or self._text(i + 1) == ":":
            return None
        if not is_jump and _DECLARATION.match(self.source, token.begin):
            return None
        k = i
        while k < len(self.tokens) and self._text(k) != ";":
            if self._text(k) in ")}]":
                return None
            k = (self.tokens[k].partner if self._text(k) in "([{" else k) + 1
        return k

    def _begins_statement(self, i, token):
        if token.brace != BLOCK or token.bracket != "{":
            return False
        before = self.tokens[i - 1]
        if before.text == ")":
            return self._text(before.partner - 1) in ("if", "while", "for", "constexpr")
        return before.text in (";", "else") or (before.text in "{}" and before.opens == BLOCK)

    def _statement(self, i):
        end = self._statement_end(i)
        if end is None or end >= len(self.tokens):
            return
        begin, semicolon = self.tokens[i].begin, self.tokens[end]
        self._add("statement", begin, semicolon.begin, "")
        next_end = self._statement_end(end + 1) if self._text(i - 1) not in (")", "else") else None
        if next_end is None or next_end >= len(self.tokens):
            return
        if self._depend(self.tokens[i:end], self.tokens[end + 1: next_end]):
            second = self.tokens[end + 1].begin
            first_text = self.source[begin: semicolon.end]
            second_text = self.source[second: self.tokens[next_end].end]
            gap = self.source[semicolon.end: second]
            if "//" not in gap:
                self._add("statement", begin, self.tokens[next_end].end, second_text + gap + first_text)

    def _depend(self, first, second):
        """May it matter which of two statements runs first? One that assigns matters to those that name its target; of
        two assertions one at most fails."""
        if first[0].text == second[0].text == "DV_ASSERT":
            return False
        targets = [[t.text for t in tokens[: next((k for k, t in enumerate(tokens) if t.text in _ASSIGNMENTS), 0)]]
                   for tokens in (first, second)]
        texts = ["\0".join(t.text for t in tokens) for tokens in (first, second)]
        if any(targets):
            return any(target and "\0".join(target) in text for target, text in zip(targets, reversed(texts)))
        return bool({t.text for t in first if t.kind == "name"} & {t.text for t in second if t.kind == "name"})


def faults_of(path, source):
    """All faults of a source, without those whose text would be the same."""
    return sorted(set(_Source(path, source).faults()), key=lambda fault: (fault.begin, fault.end, fault.kind, fault.text))
