"""What words fit in the headers' names and comments."""
from __future__ import absolute_import

import bisect
import re

from quorel.reference import Entry, reference

_WEIGHTS = {'function': 1.3, 'record': 1.2, 'member': 0.7, 'enumerator': 0.8, 'macro': 0.8}


class _Words(object):
    """Finds lines by words."""

    def __init__(self, reference):
        self.reference = reference
        self.lower = reference.all.lower()
        self.starts, self.covered = [], []
        start, record = 0, None
        heads = {}
        for number, line in enumerate(reference.lines):
            self.starts.append(start)
            start += len(line) + 1
            name, kind = line.split('\t', 2)[:2]
            if not name:
                heads[kind] = number
                if kind in ('header', 'group'):
                    heads.pop('part', None)
                self.covered.append([])
                continue
            self.covered.append([number])
            if kind == 'record':
                record = number
            # What a text tells of: those that follow it, a record by its members.
            head = heads.get('part' if kind in ('member', 'enumerator') else 'group')
            if head is not None:
                self.covered[head].append(number)
            if kind == 'member':
                self.covered[number] = [number, record]

    def search(self, words):
        asked = [_stem(word) for word in re.findall(r'\w+', words.lower())]
        scores = [self._scores(word) for word in asked]
        if not scores:
            return []
        total = {}
        for found in scores:
            for number, score in found.items():
                matched, before = total.get(number, (0, 0))
                total[number] = matched + 1, before + score
        most = max([matched for matched, _ in total.values()] or [0])
        lines = self.reference.lines
        best = []
        for number, (matched, score) in total.items():
            if matched == most:
                name, kind = lines[number].split('\t', 2)[:2]
                # Of equals the shorter name is the nearer.
                best.append((-score * _WEIGHTS.get(kind, 1) / (30.0 + len(name)), number))
        return [self._shown(number) for _, number in sorted(best)]

    def _scores(self, word):
        found = {}
        lines, starts, text = self.reference.lines, self.starts, self.reference.all
        for match in re.finditer(re.escape(word), self.lower):
            place = match.start()
            number = bisect.bisect_right(starts, place) - 1
            inside = place - starts[number]
            name_end = lines[number].find('\t')
            in_name = inside < name_end
            if not in_name and self._is_kind(lines[number], inside):
                continue
            before, after = text[place - 1:place], text[match.end():match.end() + 1]
            if before.isalpha() and not (text[place].isupper() and before.islower()):
                continue
            goes_on = after.isalpha() and not (after.isupper() and text[match.end() - 1].islower())
            score = (10 if in_name else 3) * (0.6 if goes_on else 1)
            for covered in self.covered[number]:
                # A member says less of its record than of itself.
                value = score if covered == number or name_end == 0 else score / 3
                if value > found.get(covered, 0):
                    found[covered] = value
        return found

    @staticmethod
    def _is_kind(line, place):
        first = line.find('\t')
        return place < line.find('\t', first + 1)

    def _shown(self, number):
        entry = Entry(self.reference, number, self.reference.lines[number].split('\t'))
        name = entry.outer + entry.name if entry.kind == 'member' else entry.name
        # Where no text is, what it is.
        declaration = {'function': 1, 'member': 0, 'type': 0, 'variable': 0}.get(entry.kind)
        declared = entry.kind.replace('_', ' ') if declaration is None else entry.columns[declaration]
        return name, _first_sentence(entry.beside or entry.text) or declared


def _stem(word):
    for ending in ('ing', 'es', 'ed', 's'):
        if word.endswith(ending) and len(word) - len(ending) >= 3 and not word.endswith('ss'):
            return word[:-len(ending)]
    return word


def _first_sentence(text):
    text = ' '.join(text.split('\n\n')[0].split())
    sentence = re.match(r'.*?[.:;](?=\s|$)', text)
    return (sentence.group() if sentence else text).rstrip('.:;')


_words = []


def found_by(words):
    """[(name, what it is in short)] of what the words fit, best first."""
    if not _words:
        _words.append(_Words(reference()))
    return _words[0].search(words)
