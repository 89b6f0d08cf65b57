"""Pages of a reference for Sphinx, and an index to search it by, of any module that the generator has made.

usage: pages.py --reference=FILE --facts=FILE --output=DIR [--title=TEXT] [--layout=FILE] [--answers=FILE] [--package]

Nothing here knows an SDK: what there is, a reference.tsv says (generator/emit.h), the values of constants and what
else is told of a chip and its shell facts.py has asked, --layout is what the program of layout.c printed, and --answers
says how a simulated switch answers each function. --package: scripts have the package quorel.

In DIR stand reference.rst with a page for each family below reference/, errors.rst, and registers.rst, memories.rst and
shell.rst where the facts have any; find-index.js is what the search of the pages reads.
"""
import argparse
import html
import importlib.util
import json
import os
import re
import textwrap

import bits

PACKAGE = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'quorel')


def _module(name):
    """A module of the package that needs no SDK, without the package."""
    specification = importlib.util.spec_from_file_location(name, os.path.join(PACKAGE, name + '.py'))
    module = importlib.util.module_from_spec(specification)
    specification.loader.exec_module(module)
    return module


reference, wording = _module('reference'), _module('wording')

# How answers are shown, and what colours them.
BADGES = {'by hand': 'simulated', 'by rule': 'by rule', 'unavailable': 'not simulated'}
KINDS = [('function', 'Functions'), ('record', 'Records'), ('constants', 'Constants'), ('type', 'Types'),
         ('variable', 'Variables')]


class Header:
    """What a header declares: by kind, runs of entries with what stands above them in common."""

    def __init__(self, name, text):
        self.name, self.text = name, text
        self.runs = {kind: [] for kind, _ in KINDS}
        self._group = ['']

    def group(self, text):
        # Each is a thing of its own, whatever it says.
        self._group = [text]

    def add(self, kind, entry):
        """entry: an Entry, or Constants."""
        runs = self.runs[kind]
        if not runs or runs[-1][0] is not self._group:
            runs.append((self._group, []))
        runs[-1][1].append(entry)

    def functions(self):
        return [entry for _, run in self.runs['function'] for entry in run]

    def is_empty(self):
        return not any(self.runs.values())


class Constants:
    """The macros of a group, as an enumeration without a name."""

    def __init__(self):
        self.name, self.kind, self.beside, self.inner_entries = '', 'macros', '', []

    def inner(self):
        return [('', entry) for entry in self.inner_entries]


def headers_of(known):
    found, header, classes = [], None, []
    for number, line in enumerate(known.lines):
        columns = line.split('\t')
        name, kind = columns[:2]
        if not name:
            if kind == 'header':
                header = Header(columns[2], reference.unescaped(columns[3]))
                found.append(header)
            elif kind == 'group':
                header.group(reference.unescaped(columns[2]))
        elif kind in ('pointer_class', 'array'):
            classes.append(reference.Entry(known, number, columns))
        elif kind in ('function', 'record', 'type', 'variable'):
            header.add(kind, reference.Entry(known, number, columns))
        elif kind == 'enumeration':
            header.add('constants', reference.Entry(known, number, columns))
        elif kind == 'macro':
            runs = header.runs['constants']
            if not (runs and runs[-1][0] is header._group and isinstance(runs[-1][1][-1], Constants)):
                header.add('constants', Constants())
            runs[-1][1][-1].inner_entries.append(reference.Entry(known, number, columns))
        elif kind == 'enumerator' and not _is_inner(known, number):
            header.add('constants', Constants())
            header.runs['constants'][-1][1][-1].inner_entries.append(reference.Entry(known, number, columns))
    return [header for header in found if not header.is_empty()], classes


def _is_inner(known, number):
    return known.last('outer', number) > max(known.last('group', number), known.last('header', number)) or \
        bool(reference.Entry(known, number, known.lines[number].split('\t')).outer)


def family_of(header, families):
    """What most of its functions and records are of; of one without, the family that its name begins with; or its own."""
    own = [entry.columns[0] for kind in ('function', 'record') for _, run in header.runs[kind] for entry in run]
    if own:
        return max(sorted(set(own)), key=own.count)
    stem = os.path.splitext(os.path.basename(header.name))[0]
    words = stem.split('_')
    for count in range(len(words), 0, -1):
        if '_'.join(words[:count]) in families:
            return '_'.join(words[:count])
    return stem


class Pages:
    """What there is, where it stands, and the pages of it: write() makes them.

    where: by name, the page and place that links lead to. index: what the search knows, noted as pages are made.
    """

    def __init__(self, known, facts, answers, layout, title, with_package):
        self.known, self.facts, self.answers, self.layout = known, facts, answers, layout
        self.values, self.title, self.with_package = facts['values'], title, with_package
        self.headers, self.classes = headers_of(known)
        families = {entry.columns[0] for header in self.headers for entry in header.functions()}
        self.pages = {}
        for header in self.headers:
            self.pages.setdefault(family_of(header, families), []).append(header)
        self.where, self.index, self.placed = {}, [], set()
        for family, headers in self.pages.items():
            for header in headers:
                for kind, _ in KINDS:
                    for _, run in header.runs[kind]:
                        for entry in run:
                            self._place(family, entry)
        for entry in self.classes:
            self._place('classes', entry)
        for kind in ('registers', 'memories'):
            for place in facts.get(kind, []):
                self.where.setdefault(place['name'], '%s.html#%s' % (kind, place['name']))

    def _place(self, family, entry):
        url = 'reference/%s.html' % family
        if entry.name:
            self.where.setdefault(entry.name, '%s#%s' % (url, entry.name))
        for _, inner in entry.inner() if entry.kind in ('enumeration', 'macros') else ():
            if inner:
                self.where.setdefault(inner.name, '%s#%s' % (url, inner.name))

    # --- texts ---

    def linked(self, text, top, but=''):
        """The text as HTML, with links from the names of what there is. top: the way to the first folder."""
        def link(match):
            word = match.group()
            to = self.where.get(word) if word != but else None
            # A word of a language is no name, even if a thing is called so.
            return '<a href="%s%s">%s</a>' % (top, to, word) if to and not word.islower() or to and '_' in word else word
        return re.sub(r'[A-Za-z_]\w+', link, html.escape(text, quote=False))

    def prose(self, text, top, but=''):
        parts = []
        for items in wording.paragraphs(text):
            run = None
            for first, others, said in items:
                kind = 'pre' if others is None else 'li' if others > first else 'p'
                if kind != run:
                    parts.append({'pre': '</pre>', 'li': '</ul>'}.get(run, '') +
                                 {'pre': '<pre class="plain">', 'li': '<ul>'}.get(kind, ''))
                run = kind
                told = self.linked(said, top, but)
                parts.append({'pre': ' ' * first + told + '\n', 'p': '<p>%s</p>' % told}.get(
                    kind, '<li>%s</li>' % re.sub(r'^[-*]\s+', '', told)))
            parts.append({'pre': '</pre>', 'li': '</ul>'}.get(run, ''))
        return ''.join(parts)

    def note(self, name, kind, url, told):
        self.index.append((name, kind, url, told))

    @staticmethod
    def sentence(text):
        text = ' '.join(text.split('\n\n')[0].split())
        found = re.match(r'.*?[.:;](?=\s|$)', text)
        return (found.group() if found else text).rstrip('.:;')

    def value(self, name):
        value = self.values.get(name)
        if value is None:
            return ''
        if not isinstance(value, int) or -10 < value < 10:
            return html.escape(str(value))
        return '%d <span class="hex">%#x</span>' % (value, value & (0xffffffff if value < 0 else value))

    @staticmethod
    def table(kind, rows):
        """rows: (what links lead to, or None; the cells)."""
        return '' if not rows else '<div class="wide"><table class="%s">%s</table></div>' % (
            kind, ''.join('<tr%s>%s</tr>' % (' id="%s"' % row[0] if row[0] else '',
                                             ''.join('<td>%s</td>' % cell for cell in row[1:])) for row in rows))

    # --- entries ---

    def function(self, entry, family, above):
        top, url = '../', 'reference/%s.html#%s' % (family, entry.name)
        _, declaration, docstring = entry.columns[:3]
        rest = entry.columns[3:]
        said = '\n\n'.join(text for text in (above, entry.beside) if text)
        self.note(entry.name, 'function', url, self.sentence(entry.beside or above))
        rows = []
        for place in range(0, len(rest) - 3, 4):
            name, kind, type_name, makers = rest[place:place + 4]
            told = wording.argument(self.known, kind, type_name, makers, self.with_package)
            # What tells no more than the declaration is left out.
            if told:
                rows.append((None, '<code>%s</code>' % html.escape(name),
                             '<code>%s</code>' % self.linked(type_name, top), self.linked(told, top)))
        badge = ''
        answer = self.answers.get(entry.name)
        if answer:
            badge = '<span class="badge %s" title="%s">%s</span>' % (
                answer[0].replace(' ', '-'), html.escape('%s (%s)' % (wording.ANSWERS[answer[0]], answer[1])),
                BADGES[answer[0]])
        errors = [name for name in dict.fromkeys(re.findall(r'\b[A-Z][A-Z0-9_]+\b', said))
                  if isinstance(self.values.get(name), int) and self.values[name] < 0]
        shown = self.declaration(declaration, entry.name, top)
        # Of several of one name the first is what links lead to.
        place = '' if entry.name in self.placed else ' id="%s"' % entry.name
        self.placed.add(entry.name)
        return ('<div class="entry"%s><div class="head"><code class="declaration">%s</code>'
                '<a class="own" href="#%s" title="link to this">&para;</a>%s</div>%s%s'
                '<p class="python"><code>%s</code></p>%s</div>' % (
                    place, shown, entry.name, badge, self.prose(entry.beside, top, entry.name),
                    self.table('arguments', rows), html.escape(docstring),
                    '<p class="errors">Errors named: %s</p>' % ', '.join(self.linked(each, top) for each in errors)
                    if errors else ''))

    def declaration(self, text, name, top):
        """Of that name, with links from all others."""
        before, found, after = re.match(r'(.*?)(\b%s\b)?((?(2).*))$' % re.escape(name), text).groups('')
        return self.linked(before, top) + ('<b>%s</b>' % found if found else '') + self.linked(after, top)

    def record(self, entry, family, above):
        top, url = '../', 'reference/%s.html#%s' % (family, entry.name)
        self.note(entry.name, 'record', url, self.sentence(entry.beside or above))
        places, rows, parts = self.layout.get(entry.name, {}), [], []
        for text, member in entry.inner():
            if member is None:
                if text:
                    rows.append((None, '', '', self.prose(text, top), ''))
                continue
            name = member.name[1:]
            type_name = re.sub(r'\b%s\b' % re.escape(name), '', member.columns[0], count=1).strip()
            told = member.beside or wording.argument(self.known, member.columns[1], type_name, '', self.with_package)
            offset, size = places.get(name, ('', ''))
            self.note('%s.%s' % (entry.name, name), 'member', url.replace('#' + entry.name, '#%s.%s' % (entry.name, name)),
                      self.sentence(member.beside) or type_name)
            rows.append(('%s.%s' % (entry.name, name), '<code>%s</code>' % name,
                         '<code>%s</code>' % self.linked(type_name, top), self.linked(' '.join(told.split()), top),
                         '<span class="place" title="offset, size">%s</span>' % (
                             '%s, %s' % (offset, size) if offset != '' else '')))
        size = places.get('', '')
        users = self.known.users(entry.name)
        return ('<div class="entry" id="%s"><div class="head"><code class="declaration"><b>%s</b></code>'
                '<a class="own" href="#%s" title="link to this">&para;</a>%s</div>%s%s%s</div>' % (
                    entry.name, entry.name, entry.name,
                    '<span class="badge plain">%s bytes</span>' % size if size != '' else '',
                    self.prose(entry.beside, top, entry.name), self.table('members', rows), self.used(users, top)))

    def used(self, users, top):
        if not users:
            return ''
        links = [self.linked(name, top) for name in users]
        shown = ', '.join(links[:12])
        if len(links) > 12:
            shown += '<details><summary>and %d more</summary>%s</details>' % (len(links) - 12, ', '.join(links[12:]))
        return '<div class="users">Used by %s</div>' % shown

    def constants(self, entry, family, above):
        top, page = '../', 'reference/%s.html' % family
        rows = []
        for text, inner in entry.inner():
            if inner is None:
                if text:
                    rows.append((None, '', '', self.prose(text, top)))
                continue
            self.note(inner.name, 'constant', '%s#%s' % (page, inner.name), self.sentence(inner.beside) or entry.name)
            rows.append((inner.name, '<code>%s</code>' % inner.name, self.value(inner.name),
                         self.linked(' '.join(inner.beside.split()), top, inner.name)))
        if not entry.name:
            return self.table('constants', rows)
        self.note(entry.name, 'enumeration', '%s#%s' % (page, entry.name), self.sentence(entry.beside or above))
        return ('<div class="entry" id="%s"><div class="head"><code class="declaration">enum <b>%s</b></code>'
                '<a class="own" href="#%s" title="link to this">&para;</a></div>%s%s%s</div>' % (
                    entry.name, entry.name, entry.name, self.prose(entry.beside, top, entry.name),
                    self.table('constants', rows), self.used(self.known.users(entry.name), top)))

    def named(self, entry, family, above):
        """A type or a variable."""
        top, url = '../', 'reference/%s.html#%s' % (family, entry.name)
        self.note(entry.name, entry.kind, url, self.sentence(entry.beside or above) or entry.columns[0])
        return ('<div class="entry" id="%s"><div class="head"><code class="declaration">%s</code>'
                '<a class="own" href="#%s" title="link to this">&para;</a></div>%s%s</div>' % (
                    entry.name, self.declaration(entry.columns[0], entry.name, top), entry.name, self.prose(entry.beside, top, entry.name),
                    self.used(self.known.users(entry.name), top)))

    # --- pages ---

    def family_page(self, family, headers):
        makers = {'function': self.function, 'record': self.record, 'constants': self.constants, 'type': self.named,
                  'variable': self.named}
        page = [_heading(family, '=')]
        answered = [self.answers[entry.name][0] for header in headers for entry in header.functions()
                    if entry.name in self.answers]
        if answered:
            page.append(_raw('<p class="counts">%s</p>' % ' &middot; '.join(
                '<span class="badge %s">%s</span> %d' % (kind.replace(' ', '-'), BADGES[kind], answered.count(kind))
                for kind in BADGES if kind in answered)))
        for header in headers:
            page += [_heading(header.name, '-'), _raw(self.prose(header.text, '../') + self.interface_files(header))]
            for kind, title in KINDS:
                if not header.runs[kind]:
                    continue
                page.append(_heading(title, '~'))
                if kind == 'function' and len(header.functions()) > 8:
                    page.append(_raw('<details class="all"><summary>%d functions by name</summary><p>%s</p></details>' % (
                        len(header.functions()), ' '.join('<a href="#%s">%s</a>' % (entry.name, entry.name) for entry in
                                                          sorted(header.functions(), key=lambda entry: entry.name)))))
                for group, run in header.runs[kind]:
                    above = group[0]
                    said = self.prose(above, '../')
                    page.append(_raw('<div class="group">%s%s</div>' % (
                        '<div class="above">%s</div>' % said if said else '',
                        '\n'.join(makers[kind](entry, family, above) for entry in run))))
        return '\n'.join(page)

    def interface_files(self, header):
        """Which of them bind its functions and records; of another module's, families may be headers instead."""
        families = sorted(set(entry.columns[0] for kind in ('function', 'record') for _, run in header.runs[kind]
                              for entry in run))
        return '' if not families or not self.with_package else '<p class="bound">Bound by %s</p>' % ', '.join(
            '<code>interface/%s.toml</code>' % family for family in families)

    def classes_page(self):
        rows = []
        for entry in self.classes:
            kind = 'pointer class' if entry.kind == 'pointer_class' else 'array'
            told = ('one value that is written through a pointer: pass the object, then read value()'
                    if entry.kind == 'pointer_class' else 'functions for arrays')
            self.note(entry.name, kind, 'reference/classes.html#' + entry.name, told)
            rows.append((entry.name, '<code>%s</code>' % entry.name, kind,
                         '<code>%s</code>' % self.linked(entry.columns[0], '../'), told))
        return '\n'.join([_heading('Pointer classes and arrays', '='), _raw(self.table('members', rows))])

    def first_page(self):
        rows = []
        for family, headers in sorted(self.pages.items()):
            functions = sum(len(header.functions()) for header in headers)
            records = sum(len(run) for header in headers for _, run in header.runs['record'])
            told = next((self.sentence(header.text) for header in headers if header.text), '')
            rows.append((None, '<a href="reference/%s.html">%s</a>' % (family, family), str(functions or ''),
                         str(records or ''), self.linked(told, '')))
        others = [name for name in ('package', 'errors', 'registers', 'memories', 'shell') if name in self.extra]
        below = ['/' + name for name in others] + ['/reference/' + family for family in sorted(self.pages)]
        below += ['/reference/classes'] if self.classes else []
        return '\n'.join([
            _heading(self.title, '='),
            _raw('<p>Made from the comments of the headers. %d functions, %d constants, %d records.</p>' % (
                sum(line.split('\t', 2)[1:2] == ['function'] for line in self.known.lines), len(self.values),
                len([1 for name in self.known.numbers if self.known.find(name).kind == 'record']))),
            _raw('<div class="wide"><table class="families"><tr><th>family</th><th>functions</th><th>records</th><th></th>'
                 '</tr>%s</table></div>' % ''.join('<tr>%s</tr>' % ''.join('<td>%s</td>' % cell for cell in row[1:])
                                                   for row in rows)),
            '.. toctree::\n   :hidden:\n\n' + ''.join('   %s\n' % name for name in below)])

    def errors_page(self):
        """Constants below zero that functions name, with who names them."""
        users = {}
        for header in self.headers:
            shared = set(re.findall(r'\b[A-Z][A-Z0-9_]+\b', header.text))
            for name in shared:
                users.setdefault(name, []).append(header.name)
            for group, run in header.runs['function']:
                for entry in run:
                    for name in set(re.findall(r'\b[A-Z][A-Z0-9_]+\b', group[0] + ' ' + entry.beside)):
                        users.setdefault(name, []).append(entry.name)
        groups = {}
        for header in self.headers:
            for _, run in header.runs['constants']:
                for entry in run:
                    found = [inner for _, inner in entry.inner() if inner]
                    errors = [(-self.values[inner.name], inner.name, inner) for inner in found
                              if isinstance(self.values.get(inner.name), int) and self.values[inner.name] < 0]
                    # Statuses: below zero but for the first.
                    if entry.name and len(errors) > 2 and len(errors) >= len(found) - 1:
                        groups[entry.name] = errors
        if not groups:
            return None
        page = [_heading('Errors', '='), _raw('<p>What each means, and the functions whose comments name it; where a header '
                                              'names it for all of its functions, the header.</p>')]
        for group, found in sorted(groups.items()):
            page.append(_heading(group, '-'))
            rows = []
            for value, name, entry in sorted(found):
                used = users.get(name, [])
                of_headers = [each for each in used if '/' in each or each.endswith('.h')]
                of_functions = [each for each in used if each not in of_headers]
                links = [self.header_link(each) for each in of_headers]
                functions = [self.linked(each, '') for each in of_functions]
                told = ' '.join(filter(None, [', '.join(links), '<details><summary>%d functions</summary>%s</details>' % (
                    len(functions), ', '.join(functions)) if len(functions) > 6 else ', '.join(functions)]))
                rows.append((name, '<code>%s</code>' % self.linked(name, ''), str(-value),
                             self.linked(' '.join(entry.beside.split()), '', name), told))
            page.append(_raw(self.table('constants errors', rows)))
        return '\n'.join(page)

    def header_link(self, name):
        for family, headers in self.pages.items():
            if any(header.name == name for header in headers):
                return '<a href="reference/%s.html#%s">%s</a>' % (family, _id(name), name)
        return name

    def places_page(self, kind, title, told):
        """Registers or memories with their fields."""
        places = self.facts.get(kind)
        if not places:
            return None
        page = [_heading(title, '='), _raw('<p>%s</p>' % told)]
        blocks = {}
        for place in places:
            blocks.setdefault(place['name'].split('_')[0], []).append(place)
        for block, found in sorted(blocks.items()):
            page.append(_heading(block, '-'))
            for place in found:
                name = place['name']
                shown = ''.join('[%d..%d]' % tuple(each) for each in place['dimensions'])
                self.note(name, kind[:-1] if kind == 'registers' else 'memory', '%s.html#%s' % (kind, name),
                          ' '.join(field['name'] for field in place['fields']))
                page.append(_raw(
                    '<div class="entry" id="%s"><div class="head"><code class="declaration"><b>%s</b>%s</code>'
                    '<a class="own" href="#%s" title="link to this">&para;</a><span class="badge plain">%d bits</span></div>'
                    '<div class="wide">%s</div></div>' % (name, name, shown, name, place['bits'],
                                                          bits.drawing(name, place['fields'], place['bits']))))
        return '\n'.join(page)

    def shell_page(self):
        commands = self.facts.get('commands')
        if not commands:
            return None
        page = [_heading('Shell commands', '='), _raw(
            '<p>What the shell of the SDK knows: in Python <code>sh_process_command(0, "ps 1-4")</code>. A beginning of a '
            'name that is no other\'s is enough. Examples were run, one after another on a fresh switch each, when these '
            'pages were made.</p>')]
        group = None
        for command in commands:
            if command['group'] != group:
                group = command['group']
                page.append(_heading(group, '-'))
            page.append(_heading(command['name'], '~'))
            self.note(command['name'], 'shell command', 'shell.html#' + _id(command['name']), command['purpose'])
            page.append(command['purpose'][:1].upper() + command['purpose'][1:] + '.\n')
            width = max(len(form) for form, _ in command['forms'])
            page.append('::\n\n' + ''.join('    ' + ('%-*s  %s' % (width, form, told)).rstrip() + '\n'
                                           for form, told in command['forms']))
            if command['output'] is not None:
                page.append('.. code-block:: console\n\n' + _indented('> %s\n%s' % (command['example'],
                                                                                    command['output'].rstrip())) + '\n')
        return '\n'.join(page)

    def docstring(self, text):
        """As HTML: examples and what is indented stay as they are, `name: what it is` are rows of a table."""
        parts = []
        for paragraph in re.split(r'\n\n+', text.strip('\n')):
            if paragraph.startswith('>>> ') or paragraph.startswith('    '):
                parts.append('<pre class="example">%s</pre>' % html.escape(textwrap.dedent(paragraph), quote=False))
                continue
            rows = []
            for line in paragraph.split('\n'):
                found = re.match(r'(\w+(?:, \w+)*): +(.*)', line)
                if found or not rows:
                    rows.append(list(found.groups()) if found else ['', line])
                else:
                    rows[-1][1] += ' ' + line.strip()
            for name, said in rows:
                told = html.escape(said, quote=False)
                parts.append(self.table('arguments', [(None, '<code>%s</code>' % name, told)]) if name else
                             '<p>%s</p>' % told)
        return ''.join(parts).replace('</table></div><div class="wide"><table class="arguments">', '')

    def thing(self, thing, place):
        self.note(place, 'quorel', 'package.html#' + place, self.sentence(thing['text']))
        shown = html.escape(thing['signature'], quote=False).replace(thing['name'], '<b>%s</b>' % thing['name'], 1)
        return ('<div class="entry" id="%s"><div class="head"><code class="declaration">%s</code>'
                '<a class="own" href="#%s" title="link to this">&para;</a></div>%s%s</div>' % (
                    place, shown, place, self.docstring(thing['text']),
                    ''.join(self.thing(member, '%s.%s' % (place, member['name'])) for member in thing['members'])))

    def package_page(self):
        modules = self.facts.get('package')
        if not modules:
            return None
        page = [_heading('The package quorel', '=')]
        for module in modules:
            page += [_heading(module['name'], '-'), _raw(self.docstring(module['text'])),
                     _raw(''.join(self.thing(thing, '%s.%s' % (module['name'], thing['name']))
                                  for thing in module['things']))]
        return '\n'.join(page)

    def write(self, folder):
        os.makedirs(os.path.join(folder, 'reference'), exist_ok=True)
        self.extra = {name: text for name, text in (
            ('errors', self.errors_page()),
            ('registers', self.places_page('registers', 'Registers',
                                           'Fields that can only be read are shaded. Where several have the register, the '
                                           'brackets say which subscripts there are.')),
            ('memories', self.places_page('memories', 'Memories', 'An entry of each, the highest word first.')),
            ('shell', self.shell_page()), ('package', self.package_page())) if text}
        texts = {'%s.rst' % name: text for name, text in self.extra.items()}
        for family, headers in self.pages.items():
            texts['reference/%s.rst' % family] = self.family_page(family, headers)
        if self.classes:
            texts['reference/classes.rst'] = self.classes_page()
        texts['reference.rst'] = self.first_page()
        texts['find-index.js'] = 'quorelIndex(%s);\n' % json.dumps(
            sorted(set(self.index)), ensure_ascii=False, separators=(',', ':'))
        for name, text in texts.items():
            with open(os.path.join(folder, name), 'w', encoding='utf-8') as file:
                file.write(text)
        return texts


def _heading(text, line):
    return '\n%s\n%s\n' % (text.replace('_', r'\_'), line * len(text.replace('_', r'\_')))


def _id(heading):
    """As docutils makes it."""
    return re.sub('[^a-z0-9]+', '-', heading.lower()).strip('-')


def _indented(text):
    return ''.join('    %s\n' % line if line else '\n' for line in text.split('\n'))


def _raw(text):
    return '.. raw:: html\n\n' + _indented(text) if text else ''


def layout_of(path):
    """{record: {member: (offset, size), '': size}}"""
    found = {}
    with open(path) as file:
        for words in map(str.split, file):
            if len(words) == 2:
                found.setdefault(words[0], {})[''] = words[1]
            else:
                found.setdefault(words[0], {})[words[1]] = words[2], words[3]
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    for option in ('reference', 'facts', 'output'):
        parser.add_argument('--' + option, required=True)
    for option in ('layout', 'answers'):
        parser.add_argument('--' + option)
    parser.add_argument('--title', default='Reference')
    parser.add_argument('--package', action='store_true')
    given = parser.parse_args()
    with open(given.facts) as file:
        facts = json.load(file)
    answers = reference.read_answers(given.answers) if given.answers else {}
    Pages(reference.Reference(given.reference), facts, answers, layout_of(given.layout) if given.layout else {},
          given.title, given.package).write(given.output)


if __name__ == '__main__':
    main()
