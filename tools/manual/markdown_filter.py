#!/usr/bin/env python3
"""A document as Doxygen reads it: markdown_filter.py FILE

Headings get the names by which links find them. Links between documents stay links, and show the title of a document
where they have its file's name; those to public headers are made by the headers' names, those to other files of the
project become the files' names. A line "<!-- drawing: NAME.svg TITLE -->" is where a drawing goes. Fences of SQL and of
the shell become plain ones. SQL functions that have the name of one in C++ are no links to that.
"""

import pathlib
import re
import sys

_LINK = re.compile(r'(?<!!)\[([^\]]+)\]\(([^)\s]+)\)')
_HEADING = re.compile(r'^(#+) +(.*?)[ \t]*$', re.M)
_DRAWING = re.compile(r'^<!-- drawing: (\S+\.svg) (.*?) -->$', re.M)
_CODE = re.compile(r'``.+?``|`([^`\n]+)`')
_CALL = re.compile(r'([a-z_]+)\([\w, ]*\)')
_FENCED = re.compile(r'(^```.*?^```$)', re.S | re.M)


def page_id(name):
    return 'page_' + re.sub(r'\W', '_', name.removesuffix('.md'))


def slug(heading):
    return re.sub(r'[^\w -]', '', heading.lower()).replace(' ', '-')


def title_of(path):
    with path.open(encoding='utf-8') as document:
        return document.readline().lstrip('# ').rstrip()


def prose(text, page, pages):
    def heading(match):
        level, title = match[1], match[2]
        return f'{level} {title} {{#{page}{"" if level == "#" else "_" + slug(title)}}}'

    def link(match):
        title, target = match[1], match[2]
        if target.startswith(('http://', 'https://')):
            return match[0]
        file, _, anchor = target.partition('#')
        name = pathlib.PurePath(file).name
        if file and name not in pages:
            shown = name if name.endswith(('.h', '.hpp')) else f'`{file.removeprefix("../")}`'
            return shown if title.strip('`') in (name, file.removeprefix('../')) else f'{title} ({shown})'
        title = pages[name] if title == name else title
        goal = page_id(name) if file else page
        return f'[{title}](@ref {goal}{"_" + anchor if anchor else ""})'

    def code(match):
        if match[1] and _CALL.fullmatch(match[1]):
            return f'<code>%{match[1]}</code>' if page.startswith('page_sql') else match[0]
        return f'``{match[1]}``' if match[1] and "'" in match[1] else match[0]  # one quote would end it

    text = _HEADING.sub(heading, text)
    text = _CODE.sub(code, text)
    text = _DRAWING.sub(r'![\2](\1)', text)
    return _LINK.sub(link, text)


def main():
    path = pathlib.Path(sys.argv[1])
    page, pages = page_id(path.name), {other.name: title_of(other) for other in path.parent.glob('*.md')}
    pieces = _FENCED.split(path.read_text('utf-8'))
    for i, piece in enumerate(pieces):
        is_code = i % 2 == 1
        pieces[i] = re.sub(r'^```(?!c\n|cpp\n)\w*', '```', piece) if is_code else prose(piece, page, pages)
    print(''.join(pieces))


if __name__ == '__main__':
    main()
