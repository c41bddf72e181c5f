#!/usr/bin/env python3
"""Draws the pictures of the manual: drawings.py FOLDER

    bytes.svg          the bytes of every record, with the examples of docs/bytes.md
    october-1582.svg   the days around the change of calendars
    local-time.svg     a gap and an overlap of local time
    ratios.svg         the ratios to peers, of the tables in docs/performance.md
    columns.svg        one column of three rows, by stride and by offsets

Text stays text, colours follow the reader's colour scheme, and widths follow the page. Each drawing is checked as it is
written: it is well-formed, and no text leaves the picture or lies on another one, as far as estimated widths tell.
"""

import pathlib
import re
import sys
import xml.etree.ElementTree
from xml.sax.saxutils import escape

DOCS = pathlib.Path(__file__).resolve().parents[2] / 'docs'

STYLE = '''
text { font-family: system-ui, "Segoe UI", "Helvetica Neue", Arial, sans-serif; fill: #1c2430; }
.mono { font-family: ui-monospace, "DejaVu Sans Mono", Menlo, Consolas, monospace; }
.bold { font-weight: 600; }
.quiet { fill: #566070; }
.paper { fill: #ffffff; }
.line { stroke: #7d8796; fill: none; }
.strong { stroke: #1c2430; fill: none; }
.a { fill: #c9dff5; } .b { fill: #cfe9cd; } .c { fill: #fbdfb3; }
.d { fill: #e4d3f1; } .e { fill: #f8cfcb; } .f { fill: #e1e5ea; }
.ours { fill: #3f7fc1; } .above { fill: #d98a2b; } .rival { fill: #b3403a; }
.refused { stroke: #b3403a; } .twice { stroke: #d98a2b; }
text.inside { fill: #1c2430; }
.halo { paint-order: stroke; stroke: #ffffff; stroke-width: 5px; stroke-linejoin: round; }
@media (prefers-color-scheme: dark) {
    text { fill: #e4e9f0; } .quiet { fill: #a3adba; } .paper { fill: #171b21; }
    .strong { stroke: #e4e9f0; } .halo { stroke: #171b21; }
    .ours { fill: #5b9bdc; } .above { fill: #e39f4a; } .rival { fill: #e5746d; }
}
'''


def width_of(text, size, style):
    """About as much as the widest of the usual fonts takes."""
    if 'mono' in style:
        return 0.61 * size * len(text)
    capital, other = (0.75, 0.66) if 'bold' in style else (0.68, 0.6)
    return size * sum(capital if character.isupper() else other for character in text)


class Drawing:
    """A picture in the making. Coordinates are those of a view box that is `width` wide."""

    def __init__(self, name, width, title, description):
        self.name, self.width, self.height = name, width, 0
        self.title, self.description = title, description
        self.shapes, self.boxes = [], []

    def add(self, shape, bottom):
        self.shapes.append(shape)
        self.height = max(self.height, bottom)

    def rect(self, x, y, width, height, style, radius=0):
        self.add(f'<rect x="{x:g}" y="{y:g}" width="{width:g}" height="{height:g}" rx="{radius}" class="{style}"/>',
                 y + height)

    def line(self, x1, y1, x2, y2, style='line', extra=''):
        self.add(f'<line x1="{x1:g}" y1="{y1:g}" x2="{x2:g}" y2="{y2:g}" class="{style}" {extra}/>', max(y1, y2))

    def polygon(self, points, style, extra=''):
        text = ' '.join(f'{x:g},{y:g}' for x, y in points)
        self.add(f'<polygon points="{text}" class="{style}" {extra}/>', max(y for _, y in points))

    def text(self, x, y, text, size=13, style='', anchor='start', example=''):
        """example goes on behind the text, wherever that ends."""
        width = width_of(text, size, style) + (10 + width_of(example, size, 'mono') if example else 0)
        left = x - {'start': 0, 'middle': width / 2, 'end': width}[anchor]
        self.boxes.append((left, y - 0.8 * size, left + width, y + 0.2 * size, text + example))
        behind = example and f'<tspan dx="10" class="mono" font-weight="400">{escape(example)}</tspan>'
        self.add(f'<text x="{x:g}" y="{y:g}" font-size="{size}" class="{style}" text-anchor="{anchor}">'
                 f'{escape(text)}{behind}</text>', y + 0.3 * size)

    def faults(self):
        for i, (left, top, right, bottom, text) in enumerate(self.boxes):
            if left < 0 or top < 0 or right > self.width:
                yield f'"{text}" leaves the picture'
            for left2, top2, right2, bottom2, text2 in self.boxes[:i]:
                if left < right2 and left2 < right and top < bottom2 and top2 < bottom:
                    yield f'"{text}" lies on "{text2}"'

    def write(self, folder):
        height = self.height + 16
        svg = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {self.width} {height:g}" width="100%"'
               f' style="max-width: {self.width}px" role="img" aria-labelledby="{self.name}-title {self.name}-desc">\n'
               f'<title id="{self.name}-title">{escape(self.title)}</title>\n'
               f'<desc id="{self.name}-desc">{escape(self.description)}</desc>\n<style>{STYLE}</style>\n'
               f'<rect width="{self.width}" height="{height:g}" rx="6" class="paper"/>\n' +
               '\n'.join(self.shapes) + '\n</svg>\n')
        xml.etree.ElementTree.fromstring(svg)
        for fault in self.faults():
            sys.exit(f'{self.name}.svg: {fault}')
        (folder / f'{self.name}.svg').write_text(svg, 'utf-8')


# ---- the bytes of every record

DAY = [('century', 1, 'a'), ('year', 1, 'a'), ('month', 1, 'a'), ('day', 1, 'a')]
CLOCK = [('hour', 1, 'b'), ('minute', 1, 'b'), ('second', 1, 'b'), ('0', 1, 'f')]
FRACTION = [('nanoseconds', 4, 'c')]
ZONE = [('hours', 1, 'd'), ('min.', 1, 'd'), ('sec.', 1, 'd'), ('zone', 2, 'e')]
RECORDS = [  # a type and an example of docs/bytes.md, fields, what is added to them
    ('NUMBER', '127', [('size', 1, 'f'), ('sign, E', 1, 'e'), ('80 + digits', 2, 'a')],
     'C0 + E; digits of base 100'),
    ('NUMBER', '-12.34', [('size', 1, 'f'), ('sign, E', 1, 'e'), ('80 - digits', 2, 'a'), ('end', 1, 'f')],
     '3F - E; digits of base 100'),
    ('DATE', '2024-02-29 13:05:00', DAY + CLOCK, 'century and year + 64'),
    ('TIME', '13:14:15.500000000', CLOCK + FRACTION, ''),
    ('TIMESTAMP', '2001-02-03 04:05:06.500000000', DAY + CLOCK + FRACTION, 'century and year + 64'),
    ('TIMESTAMP WITH TIME ZONE', '2001-02-02 19:05:06.000000000 UTC, +09:00', DAY + CLOCK + FRACTION + ZONE,
     'offset hours + 64'),
    ('INTERVAL YEAR TO MONTH', '-01-06', [('years', 4, 'a'), ('months', 1, 'b')], 'years + 40000000, months + 0B'),
    ('INTERVAL DAY TO SECOND', '+01 02:03:04.500000000',
     [('days', 4, 'a'), ('seconds of the day', 4, 'b'), ('nanoseconds', 4, 'c')], 'each + 40000000'),
    ('ROWID', 'AAAAABAACAAAAADAAE', [('segment', 4, 'a'), ('file', 2, 'b'), ('block', 4, 'c'), ('row', 2, 'd')], ''),
]


def documented(kind, value):
    """The bytes that docs/bytes.md has for a value."""
    page = (DOCS / 'bytes.md').read_text('utf-8')
    table = re.search(rf'^\| {kind} \| bytes \|\n((?:\|.*\n)+)', page, re.M)
    row = table and re.search(rf'^\| `{re.escape(value)}` \| `([0-9A-F ]+)` \|$', table[1], re.M)
    if not row:
        sys.exit(f'docs/bytes.md has no {kind} {value}')
    return row[1].split()


def draw_bytes():
    drawing = Drawing('bytes', 820, 'The bytes of every record',
                      'One row for each record: its fields from the first byte to the last, and under them the bytes '
                      'of an example in hexadecimal. Constants that are added to fields are hexadecimal, too.')
    cell, left, y = 46, 20, 34
    for kind, value, fields, bias in RECORDS:
        record = documented(kind, value)
        if sum(size for _, size, _ in fields) != len(record):
            sys.exit(f'{kind} {value} has {len(record)} bytes')
        drawing.text(left, y, kind, 13, 'bold', example=value)
        if bias:
            drawing.text(drawing.width - 18, y, bias, 12, 'quiet', 'end')
        x = left
        for label, size, style in fields:
            drawing.rect(x + 1, y + 9, size * cell - 2, 26, style, 3)
            drawing.text(x + size * cell / 2, y + 26.5, label, 11, 'inside', 'middle')
            x += size * cell
        for i, byte in enumerate(record):
            drawing.text(left + (i + 0.5) * cell, y + 52, byte, 14, 'mono', 'middle')
        y += 88
    drawing.text(left, y + 4, 'Unsigned order of the bytes is the order of the values (of a NUMBER without its size).',
                 13, 'quiet')
    return drawing


# ---- October 1582

def draw_october():
    drawing = Drawing('october-1582', 760, 'October 1582',
                      'Days up to Thursday, 4 October 1582, day number 2299160, are of the Julian calendar. The next '
                      'day is Friday, 15 October, day number 2299161, of the Gregorian calendar. The 5th to the 14th '
                      'do not exist.')
    width, left, y = 78, 18, 66
    julian = [('2', 'Tuesday'), ('3', 'Wednesday'), ('4', 'Thursday')]
    gregorian = [('15', 'Friday'), ('16', 'Saturday'), ('17', 'Sunday')]
    gap = left + 3 * width
    right = drawing.width - 18 - 3 * width
    number = 2299160 - len(julian) + 1
    for x, days, style in ((left, julian, 'a'), (right, gregorian, 'b')):
        for i, (day, weekday) in enumerate(days):
            middle = x + (i + 0.5) * width
            drawing.rect(x + i * width + 1, y, width - 2, 62, style, 3)
            drawing.text(middle, y + 30, day, 22, 'inside bold', 'middle')
            drawing.text(middle, y + 50, weekday, 12, 'inside', 'middle')
            drawing.text(middle, y + 88, str(number), 13, 'mono', 'middle')
            number += 1
    drawing.text(left, 34, 'Julian calendar', 15, 'bold')
    drawing.text(left, 53, 'to 4 October 1582', 13, 'quiet')
    drawing.text(drawing.width - 18, 34, 'Gregorian calendar', 15, 'bold', 'end')
    drawing.text(drawing.width - 18, 53, 'from 15 October 1582', 13, 'quiet', 'end')
    middle = (gap + right) / 2
    drawing.rect(gap + 8, y, right - gap - 16, 62, 'line', 3)
    drawing.shapes[-1] = drawing.shapes[-1].replace('/>', ' stroke-dasharray="5 4"/>')
    drawing.text(middle, y + 28, '5 to 14', 18, 'bold', 'middle')
    drawing.text(middle, y + 49, 'do not exist', 13, 'quiet', 'middle')
    drawing.text(middle, y + 88, 'day numbers go on', 12, 'quiet', 'middle')
    drawing.line(gap - 4, y + 84, middle - 70, y + 84)
    drawing.line(middle + 70, y + 84, right + 4, y + 84)
    examples = [('1582-10-04 plus 1 day', '1582-10-15'), ('1582-09-10 plus 1 month', '1582-10-15'),
                ('1582-10-15 minus 1582-10-04', '1 day')]
    for i, (operation, result) in enumerate(examples):
        drawing.text(left + 4, y + 124 + 22 * i, operation, 13, 'mono')
        drawing.text(left + 240, y + 124 + 22 * i, f'= {result}', 13, 'mono')
    return drawing


# ---- a gap and an overlap

def band(drawing, hour_x, top, bottom, utc, offset, style, label):
    """What clocks show from one hour of UTC to another, under an offset."""
    (first, last), shift = utc, 4.5
    points = [(hour_x(first + offset), top), (hour_x(last + offset), top),
              (hour_x(last - shift), bottom), (hour_x(first - shift), bottom)]
    drawing.polygon(points, style, 'fill-opacity="0.75"')
    x = sum(x for x, _ in points) / 4
    drawing.text(x, (top + bottom) / 2 + 5, label, 14, 'inside bold', 'middle')


def clock_axis(drawing, hour_x, y, hours, is_above):
    drawing.line(hour_x(hours[0]), y, hour_x(hours[-1]), y, 'strong')
    for hour in hours:
        drawing.line(hour_x(hour), y - 4, hour_x(hour), y + 4, 'strong')
        drawing.text(hour_x(hour), y - 10 if is_above else y + 20, f'{hour:02}:00', 13, 'mono', 'middle')


def panel(drawing, y, heading, local, utc, bands, marked, notes):
    left, hour = 120, 104
    top, bottom = y + 54, y + 154

    def hour_x(value):
        return left + value * hour
    drawing.text(18, y, heading, 15, 'bold')
    drawing.text(18, top + 5, 'local', 13, 'quiet')
    drawing.text(18, bottom + 5, 'UTC', 13, 'quiet')
    start, end, style, word = marked
    for each in bands:
        band(drawing, hour_x, top, bottom, *each)
    drawing.line(hour_x(start), top, hour_x(end), top, style, 'stroke-width="9"')
    drawing.text(hour_x((start + end) / 2), top + 26, word, 13, 'inside' if style == 'twice' else '', 'middle')
    clock_axis(drawing, hour_x, top, range(local[0], local[1] + 1), True)
    clock_axis(drawing, lambda value: hour_x(value - 4.5), bottom, range(utc[0], utc[1] + 1), False)
    for i, note in enumerate(notes):
        drawing.text(18, bottom + 48 + 20 * i, note, 13)


def draw_local_time():
    drawing = Drawing('local-time', 700, 'A gap and an overlap of local time in America/New_York',
                      'On 2024-03-10 at 07:00 UTC clocks go from 02:00 EST to 03:00 EDT: local times from 02:00 to '
                      '02:59:59 never were and are refused. On 2024-11-03 at 06:00 UTC they go from 02:00 EDT back to '
                      '01:00 EST: local times from 01:00 to 01:59:59 have two meanings, of which the later is taken '
                      'unless the text says EDT.')
    panel(drawing, 34, 'A gap: America/New_York, 2024-03-10', (0, 5), (5, 9),
          [((5, 7), -5, 'a', 'EST, -05:00'), ((7, 9), -4, 'c', 'EDT, -04:00')], (2, 3, 'refused', 'never'),
          ['02:00 to 02:59:59 never were: 02:30 is refused, error -5110.'])
    panel(drawing, 280, 'An overlap: America/New_York, 2024-11-03', (0, 4), (4, 9),
          [((4, 6), -4, 'c', 'EDT, -04:00'), ((6, 9), -5, 'a', 'EST, -05:00')], (1, 2, 'twice', 'twice'),
          ['01:00 to 01:59:59 were twice: 01:30 is 06:30 UTC, the later of its two meanings;',
           '01:30 EDT, or 01:30 with -04:00 behind the region, is 05:30 UTC.'])
    return drawing


# ---- ratios to peers

GOAL_COLUMNS = '| operation | ours | the goal\'s peer | ratio | goal |  | rounds | where another is faster |'


def goal_rows(page):
    """The rows of the table of goals: cells of each."""
    _, found, rest = page.partition(GOAL_COLUMNS + '\n')
    if not found:
        sys.exit('docs/performance.md has no table of goals, or one with other columns')
    rows = re.match(r'\|[-| ]+\|\n((?:\|.*\|\n)+)', rest)[1].splitlines()
    return [[cell.strip() for cell in row.strip('|').split('|')] for row in rows]


def fact(page, name):
    return re.search(rf'^- {name}: (.*)$', page, re.M)[1]


def bars(drawing, y, rows, unit, end):
    """One bar a row; a line at 1, or at 2 for speeds of two threads."""
    left = 350
    scale = (drawing.width - left - 70) / end
    mark = 2 if unit else 1
    drawing.line(left, y - 4, left, y + 19 * len(rows))
    drawing.line(left + mark * scale, y - 4, left + mark * scale, y + 19 * len(rows), extra='stroke-dasharray="4 3"')
    drawing.text(left + mark * scale, y - 10, f'{mark}.0', 12, 'bold', 'middle')
    for operation, _, _, ratio, goal, _, _, faster in rows:
        ratio, goal = float(ratio.split()[0]), float(goal.split()[0])
        rival = float(faster.rpartition(':')[2]) if faster else 0
        is_rival_inside = rival <= end
        is_good = ratio >= goal if unit else ratio <= 1
        drawing.text(left - 8, y + 11, operation, 12, '', 'end')
        drawing.rect(left, y + 1, max(ratio * scale, 1), 12, 'ours' if is_good else 'above', 2)
        drawing.line(left + goal * scale, y - 1, left + goal * scale, y + 15, 'strong', 'stroke-width="1.5"')
        if rival and is_rival_inside:
            at = left + rival * scale
            drawing.polygon([(at, y + 1), (at + 6, y + 7), (at, y + 13), (at - 6, y + 7)], 'rival')
        elif rival:
            at = drawing.width - 52
            drawing.polygon([(at, y + 1), (at + 8, y + 7), (at, y + 13)], 'rival')
            drawing.text(at + 12, y + 11, f'{rival:.1f}', 12)
        behind = max(ratio, goal, rival if is_rival_inside else 0)
        drawing.text(left + behind * scale + 9, y + 11, f'{ratio:.2f}', 12, 'halo')
        y += 19
    return y


def draw_ratios():
    page = (DOCS / 'performance.md').read_text('utf-8')
    rows = goal_rows(page)
    single = [row for row in rows if 'times' not in row[3]]
    threads = [row for row in rows if 'times' in row[3]]
    below = sum(float(row[3]) < 1 for row in single)
    drawing = Drawing('ratios', 850, 'Times beside the fastest peers',
                      f'The time of each operation as a share of the time that the peer of its goal takes: {below} of '
                      f'{len(single)} are below 1. The figures are in the tables of the page on performance.')
    drawing.text(18, 32, 'Our time as a share of the peer\'s', 15, 'bold')
    measured = f'{fact(page, "Machine")}, {fact(page, "Day").partition(";")[0]}'
    drawing.text(18, 51, f'{below} of {len(single)} are below 1.0. {measured}', 12, 'quiet')
    drawing.line(24, 62, 24, 78, 'strong', 'stroke-width="1.5"')
    drawing.text(36, 75, 'goal', 12, 'quiet')
    drawing.polygon([(90, 64), (96, 70), (90, 76), (84, 70)], 'rival')
    drawing.text(102, 75, 'beside another peer, where one is faster than the goal\'s', 12, 'quiet')
    y = bars(drawing, 114, single, '', 1.4)
    drawing.text(18, y + 30, 'Two threads: how many times the speed of one', 15, 'bold')
    bars(drawing, y + 64, threads, 'times', 2.4)
    return drawing


# ---- columns

COLUMN_ROWS = ['127', None, '-12.34']  # NUMBERs of docs/bytes.md, and no value


def cells(drawing, x, y, texts, style, width=30):
    for i, text in enumerate(texts):
        drawing.rect(x + i * width + 1, y, width - 2, 26, style, 3)
        drawing.text(x + (i + 0.5) * width, y + 17.5, text, 12, 'mono inside', 'middle')
    return x + len(texts) * width


def draw_columns():
    drawing = Drawing('columns', 760, 'A column of three NUMBERs, by stride and by offsets',
                      'Rows 127, no value, -12.34. By stride each record begins a fixed distance behind the one before. '
                      'By offsets the bytes behind the size byte follow each other, and four offsets tell where each '
                      'row begins and the last one ends. The validity bitmap is 5: bits 0 and 2.')
    left, y = 130, 38
    drawing.text(18, y, 'By stride', 15, 'bold')
    drawing.text(left, y, 'row i at values + i * stride; what lies between two values is somebody else\'s', 12, 'quiet')
    x = left
    for value, style in zip(COLUMN_ROWS, 'abc'):
        drawing.text(x + 2, y + 26, value or 'no value', 12, 'bold' if value else 'quiet')
        end = cells(drawing, x, y + 34, documented('NUMBER', value) if value else ['00'], style)
        drawing.line(end, y + 47, x + 194, y + 47, extra='stroke-dasharray="2 4"')
        drawing.line(x + 1, y + 70, x + 1, y + 78)
        x += 200
    drawing.line(left + 1, y + 74, left + 201, y + 74)
    drawing.text(left + 101, y + 92, 'stride', 12, 'quiet', 'middle')
    y += 138
    drawing.text(18, y, 'By offsets', 15, 'bold')
    drawing.text(left, y, 'row i is the bytes [offsets[i], offsets[i + 1]) of values', 12, 'quiet')
    drawing.text(18, y + 34, 'values', 12)
    x, ends = left, [0]
    for value, style in zip(COLUMN_ROWS, 'abc'):
        data = documented('NUMBER', value)[1:] if value else []
        x = cells(drawing, x, y + 16, data, style)
        ends.append(ends[-1] + len(data))
    drawing.text(18, y + 78, 'offsets', 12)
    cells(drawing, left, y + 60, [str(end) for end in ends], 'f')
    drawing.text(18, y + 122, 'validity', 12)
    cells(drawing, left, y + 104, ['101'], 'f', 60)
    drawing.text(left + 72, y + 121, 'bit i for row i, the least significant bit first: rows 0 and 2 have a value', 12, 'quiet')
    drawing.text(18, y + 160, 'A NUMBER by stride is NULL by its size byte 0, too; by offsets an empty row is.', 13, 'quiet')
    return drawing


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for draw in (draw_bytes, draw_october, draw_local_time, draw_ratios, draw_columns):
        draw().write(folder)


if __name__ == '__main__':
    main()
