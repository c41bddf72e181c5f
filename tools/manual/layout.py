#!/usr/bin/env python3
"""Doxygen's own layout with the explanation of a file or class on top: layout.py FILE, changed in place."""

import pathlib
import sys
import xml.etree.ElementTree as tree

path = pathlib.Path(sys.argv[1])
layout = tree.parse(path)
for kind in ('file', 'class', 'namespace'):
    page = layout.getroot().find(kind)
    brief, details = page.find('briefdescription'), page.find('detaileddescription')
    page.remove(details)
    page.insert(list(page).index(brief) + 1, details)
layout.write(path, 'utf-8')
