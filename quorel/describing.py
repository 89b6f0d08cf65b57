"""What the headers say, as text for people."""
from __future__ import absolute_import

import re
import textwrap

import QuorelApiNew
import _QuorelApiNew
from quorel.errors import STATUS_GROUPS
from quorel.reference import WIDTH, answers, reference
from quorel.searching import found_by
from quorel.wording import ANSWERS, argument, paragraphs

def _reflowed(text, width):
    """Paragraphs and items as lines of that width; what is indented stays as it is."""
    lines = []
    for items in paragraphs(text):
        if lines:
            lines.append('')
        for first, others, said in items:
            lines += ([' ' * first + said] if others is None else
                      textwrap.wrap(said, width, initial_indent=' ' * first, subsequent_indent=' ' * others,
                                    break_long_words=False, break_on_hyphens=False))
    return lines


def _table(rows):
    """Columns, of which the last is wrapped."""
    rows = list(rows)
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]) - 1)] if rows else []
    for row in rows:
        start = '  '.join(cell.ljust(width) for cell, width in zip(row, widths)) + '  '
        wrapped = textwrap.wrap(row[-1], max(WIDTH - 4 - len(start), 30), break_long_words=False,
                                break_on_hyphens=False) or ['']
        for line in wrapped:
            yield (start + line).rstrip()
            start = ' ' * len(start)


def _names(names, most=12):
    more = len(names) - most
    return ', '.join(names[:most]) + (' and %d more' % more if more > 0 else '')


def _value(name):
    value = getattr(QuorelApiNew, name, None)
    if value is None:
        return ''
    return '%d' % value if -10 < value < 10 else '%d (%#x)' % (value, value & 0xffffffff)


def _errors(known, text):
    """(name, value and meaning) of the statuses that a text names."""
    for name in sorted(set(re.findall(r'\b[A-Z][A-Z0-9_]+\b', text)), key=text.find):
        if name.startswith(STATUS_GROUPS) and getattr(QuorelApiNew, name, 0) < 0:
            entry = known.find(name)
            yield name, _value(name).split(' ')[0], entry.beside if entry else ''


def _function_lines(known, entry):
    family, declaration, docstring = entry.columns[:3]
    rest = entry.columns[3:]
    arguments = [rest[i:i + 4] for i in range(0, len(rest), 4)]
    lines = textwrap.wrap(declaration, WIDTH, subsequent_indent=' ' * (declaration.find('(') + 1)
                          if declaration.find('(') < 60 else ' ' * 8, break_long_words=False)
    sections = [_reflowed(entry.text, WIDTH - 4)]
    sections.append(list(_table((name, type_name, argument(known, kind, type_name, makers))
                                for name, kind, type_name, makers in arguments)))
    sections.append(['In Python: ' + docstring])
    errors = list(_errors(known, entry.text))
    common = [error[0] for error in _errors(known, entry.header_text) if error not in errors]
    if errors:
        sections.append(list(_table(errors)))
    notes = []
    if common:
        notes.append('Common in %s: %s' % (entry.header, ', '.join(common)))
    if entry.together():
        notes.append('Told together with %s' % _names(entry.together()))
    answer = answers().get(entry.name)
    if answer:
        notes.append('%s (%s)' % (ANSWERS.get(answer[0], answer[0]), answer[1]))
    notes.append('Bound by %s.toml' % family)
    sections += [textwrap.wrap(note, WIDTH - 4, subsequent_indent='  ', break_long_words=False) for note in notes]
    return lines, sections


def _inner_lines(entry, row):
    rows, lines = [], []
    for text, inner in entry.inner():
        if inner is None:
            lines += list(_table(rows))
            rows = []
            if text:
                lines += ([''] if lines else []) + _reflowed(text, WIDTH - 4)
        else:
            rows.append(row(inner))
    return lines + list(_table(rows))


def _record_lines(known, entry):
    def row(member):
        declaration, kind = member.columns
        type_name = re.sub(r'\b%s\b' % re.escape(member.name[1:]), '', declaration, 1).strip()
        return member.name[1:], type_name, ' '.join((member.beside or argument(known, kind, type_name, '')).split())
    return ['record ' + entry.name], [_reflowed(entry.text, WIDTH - 4), _inner_lines(entry, row),
                                      _used(known, entry.name), ['Bound by %s.toml' % entry.columns[0]]]


def _used(known, name):
    users = known.users(name)
    return textwrap.wrap('Used by ' + _names(users), WIDTH - 4, subsequent_indent='  ',
                         break_long_words=False) if users else []


def _enumeration_lines(known, entry):
    return ['enumeration ' + entry.name], [
        _reflowed(entry.text, WIDTH - 4),
        _inner_lines(entry, lambda inner: (inner.name, _value(inner.name), ' '.join(inner.beside.split()))),
        _used(known, entry.name)]


def _lines_about(known, entry):
    if entry.kind == 'function':
        return _function_lines(known, entry)
    if entry.kind == 'record':
        return _record_lines(known, entry)
    if entry.kind == 'enumeration':
        return _enumeration_lines(known, entry)
    text = _reflowed(entry.text, WIDTH - 4)
    if entry.kind in ('enumerator', 'macro'):
        of = ' of ' + entry.outer if entry.kind == 'enumerator' else ''
        return ['%s = %s%s' % (entry.name, _value(entry.name), of)], [text]
    if entry.kind in ('pointer_class', 'array'):
        told = ('One value of type %s that the SDK writes through a pointer: pass the object, then read value(). '
                'assign(value) sets it, cast() gives the pointer, frompointer(pointer) the object of one.'
                if entry.kind == 'pointer_class' else 'Functions for arrays of %s') % entry.columns[0]
        return ['%s %s' % (entry.kind.replace('_', ' '), entry.name)], [textwrap.wrap(told, WIDTH - 4)]
    return [entry.columns[0]], [text, _used(known, entry.name) if entry.kind == 'type' else []]


def _name_of(known, what):
    if isinstance(what, (str, type(u''))):
        return str(what)
    if type(what).__name__ == 'property':
        # Of a member: its accessor's docstring begins with RECORD_MEMBER_get.
        words = re.match(r'\w+?(?=_get\()', what.__doc__ or '')
        words = words.group().split('_') if words else []
        for split in range(len(words) - 1, 0, -1):
            name = '_'.join(words[:split]) + '.' + '_'.join(words[split:])
            if known.find(name):
                return name
    name = getattr(what, '__name__', None)
    if name is None or isinstance(what, type):
        # A record, or a class that is made of one's.
        names = [base.__name__ for base in (what if isinstance(what, type) else type(what)).__mro__]
        name = ([base for base in names if known.find(base)] or names)[0]
    return name


def is_told(what):
    """Whether it is the SDK's and the headers are there that tell of it; a text is if it names something there."""
    try:
        known = reference()
    except IOError:
        return False
    name = _name_of(known, what)
    if isinstance(what, (str, type(u''))):
        return known.find(name) is not None or known.header(name) is not None
    return known.find(name) is not None and (
        isinstance(what, (property, _QuorelApiNew._Proxy)) or getattr(QuorelApiNew, name, None) is what or
        isinstance(what, type) and issubclass(what, _QuorelApiNew._Proxy))


def about(what):
    """What describe() prints, a text. Raises what it does."""
    known = reference()
    name = _name_of(known, what)
    entry = known.find(name)
    if entry is None:
        header = known.header(name)
        if header is None:
            near = [found for found, _ in found_by(name.replace('_', ' '))[:3]]
            raise ValueError('the headers say nothing of %r%s'
                             % (name, '; near it are ' + ', '.join(near) if near else ''))
        lines, sections = [name], [_reflowed(header[0], WIDTH - 4),
                                   textwrap.wrap(', '.join(header[1]), WIDTH - 4, break_long_words=False)]
    else:
        lines, sections = _lines_about(known, entry)
        if entry.kind == 'member':
            lines = ['%s, member of %s' % (entry.columns[0], name.partition('.')[0])]
        if entry.header:
            lines[-1] += ' ' * max(2, WIDTH - len(lines[-1]) - len(entry.header)) + entry.header
    for section in sections:
        if section:
            lines += [''] + ['    ' + line if line else '' for line in section]
    return '\n'.join(lines)
