#!/usr/bin/env python3
"""Lists links of the manual that lead nowhere: check_links.py FOLDER. Exits with 1 when there are any."""

import html.parser
import pathlib
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.links, self.anchors = set(), set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ('id', 'name'):
                self.anchors.add(value)
            elif name in ('href', 'src') and value:
                self.links.add(value)


def main():
    folder = pathlib.Path(sys.argv[1])
    pages = {path.name: Page(path.read_text('utf-8')) for path in folder.glob('*.html')}
    dead = []
    for name, page in sorted(pages.items()):
        for link in sorted(page.links):
            target = urllib.parse.urlsplit(link)
            if target.scheme or target.netloc:
                continue
            file = urllib.parse.unquote(target.path) or name
            is_there = (folder / file).exists()
            has_anchor = not target.fragment or file not in pages or target.fragment in pages[file].anchors
            if not is_there or not has_anchor:
                dead.append(f'{name}: {link}')
    print('\n'.join(dead) if dead else f'{len(pages)} pages, no dead link')
    return 1 if dead else 0


if __name__ == '__main__':
    sys.exit(main())
