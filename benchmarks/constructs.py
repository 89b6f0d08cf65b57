"""Binds the constructs of C of tests/constructs.py with tools/bind and with SWIG, and counts by group what is right.

tools/benchmark --constructs starts this. SWIG is given what of its library the constructs need, and no typemaps of
one's own; words that only compilers know are hidden from it. What it cannot read, what does not compile and what cannot
be linked is left out, until there is a module of the rest; tools/bind does so by itself. The checks are the same,
whatever exception SWIG raises where one is due.
"""
from __future__ import print_function

import collections
import ctypes
import os
import re
import shutil
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
TOP = os.path.dirname(HERE)
BUILT = os.path.join(TOP, 'build', 'benchmark', 'constructs')
sys.path.insert(0, os.path.join(TOP, 'tests'))
import constructs

# Where the two differ in what is right, what SWIG may know of what tools/bind refuses, and how it names what Python has
# a word for.
SWIG_CHECKS = {
    'p_macro_hex': 'assert m.p_macro_hex == 0xffffffff',
    'p_macro_char': 'assert m.p_macro_char in ("x", 120)',
    'p_one_bad_member': 'r = m.p_one_bad_member_t()\nr.c = 3\nassert m.p_one_bad_member(r) == 3',
    'p_name_member': 'r = m.p_name_member_t()\nr._class, r.private.x, r._try, r.new = 2, 3, 4, 9\n'
                     'assert (m.p_name_member(r), r.new) == (2034, 9)',
    'p_name_tag': 'a, b, c = m._class(), m.operator(), m.typename()\na.a, b._in.b, c.c = 3, 4, 5\n'
                  'assert m.p_name_tag(a, b, c) == 345 and m.friend().b == 0',
    'p_wchar': 'assert m.p_wchar(u"a") == u"a"',
    'p_va_list': 'm.p_va_list("a")',
    'p_missing': 'm.p_missing(1)',
    'p_missing_variable': 'm.cvar.p_missing_variable',
}
INTERFACE = '''%module swig_probes
%{
#include "probes.h"
%}
%include <stdint.i>
%include <typemaps.i>
%include <cstring.i>
%include <wchar.i>
%include <complex.i>
#define __attribute__(x)
#define __asm__(x)
#define __restrict
'''
OUTPUTS = ('int', 'uint64_t', 'double', 'short', 'bool', 'char', 'size_t', 'float')


def run(command):
    """(whether it went well, what it printed)."""
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd=BUILT,
                               env=dict(os.environ, LC_ALL='C'))
    log = process.communicate()[0]
    return process.returncode == 0, log


def must(command):
    well, log = run(command)
    if not well:
        sys.exit('%s\n%s' % (' '.join(command), log))
    return log


def bind(_):
    must([os.path.join(TOP, 'tools', 'bind'), '--module=probes', '--include=.', '--library=libprobes.so',
          '--interface=interface', '--output=made'])
    return set()


def users(symbol):
    """What SWIG wraps by means of the symbol."""
    with open(os.path.join(BUILT, 'swig_probes_wrap.c')) as file:
        functions = re.findall(r'^SWIGINTERN \w+ \*?_wrap_(\w+)\((.*?)^}', file.read(), re.M | re.S)
    return [name for name, body in functions if re.search(r'\b%s\b' % symbol, body)]


def swig(probes):
    """Makes swig_probes of what SWIG can take; returns the names of the probes that it cannot."""
    lost = set()
    while True:
        text, owners = INTERFACE, []
        for group, name, header, _, _ in probes:
            if name in lost:
                continue
            if group == 'outputs' and name != 'p_out_array':
                text += ''.join('%%apply %s *OUTPUT { %s *out };\n' % (type, type) for type in OUTPUTS)
                text += '%apply int *OUTPUT { int *a };\n%cstring_output_allocate(char **out, );\n'
                text += '%cstring_output_allocate(const char **out, );\n'
            owners.append((text.count('\n') + 1, name))
            text += header + '\n'
            if group == 'outputs':
                text += '%clear int *a;\n'
        with open(os.path.join(BUILT, 'swig_probes.i'), 'w') as file:
            file.write(text)
        well, log = run(['swig', '-python', '-w-all', 'swig_probes.i'])
        if not well:
            lines = [int(line) for line in re.findall(r'^swig_probes\.i:(\d+): Error', log, re.M)]
            found = set([name for first, name in owners if first <= line][-1] for line in lines)
        else:
            well, log = run(['cc', '-w', '-shared', '-fPIC', '-I.', '-isystem', os.environ['PYTHON2_INCLUDE_DIR'],
                             '-fno-strict-aliasing', 'swig_probes_wrap.c', '-o', '_swig_probes.so', '-L.', '-lprobes',
                             '-Wl,-rpath,' + BUILT])
            if well:
                well, log = run([sys.executable, '-c', 'import swig_probes'])
            words = set(re.findall(r"[Ii]n function '_wrap_(\w+)'", log))
            for symbol in re.findall(r'undefined symbol: (\w+)', log):
                # It is a probe's, or of what SWIG's library forgot for some.
                words.update([symbol] if symbol.startswith('p_') else users(symbol))
            found = set(max([name for _, name in owners if (word + '_').startswith(name + '_')] or [''], key=len)
                        for word in words) - set([''])
        if well:
            return lost
        if not found:
            sys.exit('SWIG fails at what cannot be told:\n' + log)
        lost |= found


def right(module, directory, probes, lost, is_refused):
    """The names of the probes that are bound and right; each check has a process of its own, as one may crash."""
    sys.path.insert(0, directory)
    names = constructs.names(module, is_refused)
    if module == 'swig_probes':
        names['raises'] = lambda kinds, function, *arguments: constructs.raises(Exception, function, *arguments)
    found = set()
    for _, name, _, _, check in probes:
        if module == 'swig_probes':
            check = SWIG_CHECKS.get(name, check)
        if name in lost or check.startswith('refused: '):
            continue
        child = os.fork()
        if child == 0:
            os.close(2)
            try:
                exec(check, names)
            except BaseException as error:
                if '--verbose' in sys.argv:
                    print('%s: %s: %s: %s' % (module, name, type(error).__name__, error))
                    sys.stdout.flush()
                os._exit(1)
            os._exit(0)
        if os.waitpid(child, 0)[1] == 0:
            found.add(name)
    return found


def main():
    shutil.rmtree(BUILT, ignore_errors=True)
    os.makedirs(BUILT)
    probes = constructs.probes(8 * ctypes.sizeof(ctypes.c_long))
    constructs.write(BUILT, probes)
    must(['cc', '-w', '-shared', '-fPIC', '-o', 'libprobes.so', 'probes.c'])
    bind(probes)
    report = constructs.report(os.path.join(BUILT, 'made'))
    ours = right('probes', os.path.join(BUILT, 'made'), probes, (), lambda name: report[name][3] == 'refused')
    lost = swig(probes)
    theirs = right('swig_probes', BUILT, probes, lost, lambda name: False)
    groups = collections.OrderedDict()
    for group, name, _, _, _ in probes:
        counts = groups.setdefault(group, [0] * 6)
        refused = name in report and report[name][3] == 'refused'
        for i, counted in enumerate((True, name in ours, refused and name not in ours, name in theirs,
                                     name not in theirs and name not in lost, name in lost)):
            counts[i] += counted
    groups['all'] = [sum(column) for column in zip(*groups.values())]
    print('| Constructs | tried | bound and right | refused with a reason | SWIG: bound and right | wrong | left out |')
    print('|---|---:|---:|---:|---:|---:|---:|')
    for group, counts in groups.items():
        print('| %s | %s |' % (group, ' | '.join(map(str, counts))))


if __name__ == '__main__':
    main()
