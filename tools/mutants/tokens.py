"""The tokens of a C++ source that a fault can be planted in, and what surrounds each.

A token knows the innermost brace around it: BLOCK (statements), TABLE (an initialiser) or SCOPE (a namespace, a class,
an enumeration, the file). Comments, preprocessor lines, attributes, template headers, static_assert, asm and the
conditions of DV_ASSERT are left out: no fault is planted there. The text of a DV_ASSERT is one token of its own.
"""

import re
from typing import NamedTuple

BLOCK, TABLE, SCOPE = "block", "table", "scope"

_TOKEN = re.compile(
    r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<text>(?:u8|[uUL])?R"(?P<end>[^()\\\s]*)\(.*?\)(?P=end)"|(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
  | (?P<character>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
  | (?P<number>\.?\d(?:[eEpP][+-]|'?[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<operator><=>|<<=|>>=|\.\.\.|::|->|\+\+|--|<<|>>|[-+*/%&|^<>=!]=|&&|\|\||\[\[|[^\s\w])
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
_CLOSING = {"(": ")", "[": "]", "{": "}"}
_SCOPE_WORDS = {"namespace", "class", "struct", "union", "enum", "extern"}


class Token(NamedTuple):
    kind: str  # text, character, number, name, operator; assertion for the condition of a DV_ASSERT
    text: str
    begin: int
    end: int
    brace: str = SCOPE
    bracket: str = ""  # the innermost bracket around it
    opens: str = ""  # of a brace: what it opens or closes
    partner: int = -1  # of a bracket: the index of the other one


def _raw_tokens(source):
    for match in _TOKEN.finditer(source):
        if match.lastgroup not in ("comment", "directive"):
            kind = "text" if match.lastgroup == "end" else match.lastgroup
            yield Token(kind, match.group(), match.start(), match.end())


def _closing(tokens, opening):
    """The index of the bracket that closes the one at `opening`."""
    open_text, depth = tokens[opening].text, 0
    for i in range(opening, len(tokens)):
        if tokens[i].text == open_text:
            depth += 1
        elif tokens[i].text == _CLOSING[open_text]:
            depth -= 1
            if depth == 0:
                return i
    raise ValueError(f"no {_CLOSING[open_text]!r} for the {open_text!r} at {tokens[opening].begin}")


def _template_end(tokens, opening):
    depth = 0
    for i in range(opening, len(tokens)):
        depth += {"<": 1, ">": -1, ">>": -2}.get(tokens[i].text, 0)
        if depth <= 0:
            return i
    return opening


def _without_unmutable(tokens, source):
    """Leaves out what the module's text says; a DV_ASSERT keeps its brackets around one token."""
    i = 0
    while i < len(tokens):
        text = tokens[i].text
        following = tokens[i + 1].text if i + 1 < len(tokens) else ""
        if text in ("static_assert", "__attribute__", "asm", "alignas", "decltype") and following == "(":
            i = _closing(tokens, i + 1) + 1
        elif text == "[[":
            while tokens[i].text != "]":
                i += 1
            i += 2
        elif text == "template" and following == "<":
            i = _template_end(tokens, i + 1) + 1
        elif text == "DV_ASSERT" and following == "(":
            close = _closing(tokens, i + 1)
            begin, end = tokens[i + 1].end, tokens[close].begin
            yield from (tokens[i], tokens[i + 1], Token("assertion", source[begin:end], begin, end), tokens[close])
            i = close + 1
        elif text == "operator" and tokens[i + 1].kind == "operator":
            yield tokens[i]
            i += 3 if tokens[i + 1].text in "([" else 2
        else:
            yield tokens[i]
            i += 1


def _brace_kind(before, parent):
    """What a brace opens, by the tokens before it and the brace around it."""
    last = before[-1].text if before else ";"
    if parent == TABLE and last in ("{", ",", "="):
        return TABLE
    if last in (")", "]", "else", "do", "try", "const", "noexcept", "override", "mutable", ":", ";", "{", "}"):
        return BLOCK
    statement = []
    for token in reversed(before):
        if token.text in (";", "{", "}"):
            break
        statement.append(token.text)
    if "->" in statement and ")" in statement and "=" not in statement[: statement.index("->")]:
        return BLOCK  # behind a trailing return type
    if _SCOPE_WORDS.intersection(statement) and "(" not in statement and "=" not in statement:
        return SCOPE
    return TABLE


def tokens_of(source):
    raw = list(_without_unmutable(list(_raw_tokens(source)), source))
    result, opened = [], []  # opened: the indices of the brackets around the current token

    def around():
        brace = next((result[i].opens for i in reversed(opened) if result[i].text == "{"), SCOPE)
        return {"brace": brace, "bracket": result[opened[-1]].text if opened else ""}

    for token in raw:
        if token.kind == "operator" and token.text in ")]}":
            opening = opened.pop()
            result[opening] = result[opening]._replace(partner=len(result))
            result.append(token._replace(**around(), partner=opening, opens=result[opening].opens))
            continue
        token = token._replace(**around())
        if token.kind == "operator" and token.text in "([{":
            opened.append(len(result))
            if token.text == "{":
                token = token._replace(opens=_brace_kind(result[-60:], token.brace))
        result.append(token)
    return result
