"""Pictures in the guides: those that their examples print, and one of each group of measurements.

usage: figures.py FOLDER

In FOLDER/guide the examples of each page that has pictures are run, and behind a block the drawings stand of what it
printed. In FOLDER/benchmarks/recorded.md each table gets a drawing. Needs the package, on a fresh simulated switch.
"""
from __future__ import print_function

import doctest
import glob
import os
import re
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'benchmarks'))

import record
from quorel import picture, sim

_BLOCK = re.compile(r'(?ms)^```python\n(.*?)^```$')


def with_drawings(text, folder, name):
    """The page with links to drawings, which are written to the folder."""
    seen, globs, made = [], {}, []
    usual = picture.Picture

    class Seen(usual):
        def __str__(self):
            seen.append(self)
            return usual.__str__(self)

    def add(match):
        examples = doctest.DocTestParser().get_doctest(match.group(1), globs, name, name, 0)
        runner = doctest.DocTestRunner(verbose=False, optionflags=doctest.ELLIPSIS)
        if runner.run(examples, clear_globs=False).failed:
            sys.exit('%s does not print what it shows' % name)
        globs.update(examples.globs)
        links = []
        for each in seen:
            file = '%s-%d.svg' % (name, len(made) + 1)
            each.save(os.path.join(folder, file))
            made.append(file)
            links.append('\n\n![what this shows, drawn](figures/%s)' % file)
        del seen[:]
        return match.group() + ''.join(links)

    picture.Picture = Seen
    try:
        sim.Switch().fresh()
        return _BLOCK.sub(add, text)
    finally:
        picture.Picture = usual


_BAR, _LEFT, _ROW = 300, 370, 24
_BAR_STYLE = '''\
svg { background: #fff } text { font: 11px sans-serif; fill: #222 } .met { fill: #4c78a8 } .over { fill: #d1605e }
.budget { stroke: #222; stroke-dasharray: 3 2 } .muted { fill: #777 }
@media (prefers-color-scheme: dark) {
  svg { background: #131416 } text { fill: #ddd } .budget { stroke: #ddd } .muted { fill: #999 }
}'''


def bars(rows):
    """How much of its budget each row takes: the longest bars are the worst."""
    width = _LEFT + _BAR + 190
    most = max([1.25] + [float(row[4]) / float(row[5]) for row in rows])
    shapes = []
    for place, row in enumerate(rows):
        y = 26 + place * _ROW
        share = float(row[4]) / float(row[5])
        what = '%s: to %s' % (row[0], row[3].partition(':')[0])
        shapes += ['<text x="%d" y="%d" text-anchor="end">%s</text>' % (_LEFT - 8, y + 12, what),
                   '<rect x="%d" y="%d" width="%d" height="16" class="%s"/>' % (
                       _LEFT, y, share / most * _BAR, 'met' if row[6] == 'met' else 'over'),
                   '<text x="%d" y="%d">%s<tspan class="muted"> to %s</tspan></text>' % (
                       _LEFT + _BAR + 10, y + 12, row[2], row[3].partition(': ')[2])]
    budget, bottom = _LEFT + _BAR / most, 30 + len(rows) * _ROW
    shapes.append('<line x1="%d" y1="16" x2="%d" y2="%d" class="budget"/><text x="%d" y="12" text-anchor="middle" '
                  'class="muted">budget</text>' % (budget, budget, bottom - 6, budget))
    return ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 %d %d" width="%d" height="%d"><style>%s</style>%s</svg>'
            % (width, bottom, width, bottom, _BAR_STYLE, ''.join(shapes)))


def with_bars(text, folder):
    parts = re.split(r'(?m)^(## .*)$', text)
    for place in range(1, len(parts), 2):
        rows = [record.cells(line) for line, key in record.tables(parts[place + 1]) if len(key) == 3]
        if rows:
            name = re.sub('[^a-z]+', '-', parts[place][3:].lower()).strip('-') + '.svg'
            with open(os.path.join(folder, name), 'w') as file:
                file.write(bars(rows))
            parts[place] += '\n\n![the share of its budget that each takes](figures/%s)\n' % name
    return ''.join(parts)


def main(source):
    for path in glob.glob(os.path.join(source, 'guide', '*.md')) + [os.path.join(source, 'benchmarks', 'recorded.md')]:
        with open(path) as file:
            text = file.read()
        folder = os.path.join(os.path.dirname(path), 'figures')
        if not os.path.isdir(folder):
            os.mkdir(folder)
        if 'picture.' in text and '>>> ' in text:
            text = with_drawings(text, folder, os.path.splitext(os.path.basename(path))[0])
        elif path.endswith('recorded.md'):
            text = with_bars(text, folder)
        with open(path, 'w') as file:
            file.write(text)


if __name__ == '__main__':
    main(*sys.argv[1:])
