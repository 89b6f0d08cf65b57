"""Keeps what a run of tools/benchmark printed, and what the documents quote of it, the same.

usage: record.py FILE        the rows of FILE, a run's output, take the place of those in recorded.md, README and guides
       record.py --check     says what README and guides quote that is not recorded, and exits with 1
"""
from __future__ import print_function

import glob
import os
import re
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
RECORDED = os.path.join(HERE, 'recorded.md')
README = os.path.join(ROOT, 'README.md')
QUOTING = [README] + sorted(glob.glob(os.path.join(ROOT, 'docs', '*.md')))
# Tables of these have one row for each subject.
_BY_SUBJECT = ('Between two namespaces', 'Constructs', 'First script by')
# Figures in sentences.
_QUOTED = re.compile(r'\b(\d[\d,]*(?:\.\d+)?) (?:instructions|microseconds|KB|CPU s|Mbit/s of TCP|frames/s)\b')


def cells(line):
    return [cell.strip() for cell in line.strip().strip('|').split('|')]


def tables(text):
    """[(line, key)] of the rows of tables of measurements: the key says what was measured, in which table."""
    found, header = [], None
    for line in text.split('\n'):
        if not line.startswith('|'):
            header = None
        elif header is None:
            header = cells(line)
        elif not set(line) <= set('|-: '):
            row = cells(line)
            if header[:2] == ['Work', 'in'] and len(row) == len(header):
                found.append((line, (row[0], row[1], row[3].partition(':')[0])))
            elif header[0] in _BY_SUBJECT:
                found.append((line, (header[0], row[0])))
    return found


def merged(text, rows):
    """The text with rows of the same key in the place of its own."""
    for line, key in tables(text):
        if key in rows:
            text = text.replace(line, rows[key])
    return text


def faults(text, recorded):
    """What a document quotes that is not recorded, a line each."""
    rows = dict((key, line) for line, key in tables(recorded))
    found = []
    for line, key in tables(text):
        if key not in rows:
            found.append('not recorded: %s' % line)
        elif cells(rows[key]) != cells(line):
            found.append('quoted:   %s\nrecorded: %s' % (line, rows[key]))
    numbers = set(re.findall(r'\d[\d,]*(?:\.\d+)?', recorded))
    for quoted in _QUOTED.findall(text):
        if quoted not in numbers:
            found.append('quoted, but no figure of the record: %s' % quoted)
    return found


def read(path):
    with open(path) as file:
        return file.read()


def check():
    recorded, wrong = read(RECORDED), []
    for path in QUOTING:
        wrong += ['%s: %s' % (os.path.relpath(path, ROOT), fault) for fault in faults(read(path), recorded)]
    return wrong


def main(argument):
    if argument == '--check':
        wrong = check()
        print('\n'.join(wrong) or 'every figure that is quoted is recorded')
        return 1 if wrong else 0
    rows = dict((key, line) for line, key in tables(read(argument)))
    for path in [RECORDED] + QUOTING:
        text = merged(read(path), rows)
        with open(path, 'w') as file:
            file.write(text)
    strange = set(rows) - set(key for _, key in tables(read(RECORDED)))
    if strange:
        print('recorded.md has no place for:\n' + '\n'.join(rows[key] for key in sorted(strange)))
    return 1 if strange else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]) if len(sys.argv) == 2 else __doc__)
