"""Runs clang-tidy on the C++ sources of a build, and clang on what is generated and on C. tools/lint starts this.

usage: lint.py BUILD [SOURCE]...

Most of the time goes into headers. Sources that are compiled with the same flags are therefore read together, as one
source that includes them, which takes a fifth of the time. What a source has for itself must not meet what another
calls by the same name: such sources are kept apart, and what still does not compile together is tried in halves.
"""
import collections
import json
import multiprocessing.pool
import os
import re
import shlex
import subprocess
import sys

TIDY = 'clang-tidy-14'
# What begins at the start of a line is in no function or class: its name is what stands before "(", "[", "{", "=" or ";".
DEFINED = re.compile(r'^(?!namespace|using|#)\w[^(={;\[\n]*?\b(\w+) *(?=[(={;\[\n])', re.MULTILINE)


def flags_of(entry):
    """The flags that matter to what is read: not -Wshadow, of which sources that are read together have more and GCC
    tells, and no precompiled headers, which need not be made."""
    words = shlex.split(entry['command'])[1:]
    flags = []
    while words:
        word = words.pop(0)
        if word in ('-o', '-c'):
            words.pop(0)
        elif word == '-Xclang' and words[:1] == ['-include-pch']:
            del words[:3]
        elif word != '-Wshadow':
            flags.append(word)
    return tuple(flags)


def sources_of(entry):
    """What is compiled: of a unity build, the sources that it includes."""
    source = entry['file']
    if not re.match(r'unity_\d+_cxx\.cxx$', os.path.basename(source)):
        return [source]
    with open(source) as file:
        return re.findall(r'^#include "(.*)"$', file.read(), re.MULTILINE)


def flags_by_source(build, wanted):
    """Of what is compiled in several targets, the first; of what is generated, what our generator makes."""
    with open(os.path.join(build, 'compile_commands.json')) as file:
        entries = json.load(file)
    flags = {}
    for entry in entries:
        for source in sources_of(entry):
            ours = not source.startswith(build + os.sep) or os.path.basename(os.path.dirname(source)) == 'generated'
            if source.endswith(('.cpp', '.c')) and ours and (not wanted or source in wanted):
                flags.setdefault(source, flags_of(entry))
    missing = [source for source in wanted if source not in flags]
    if missing:
        sys.exit('lint: not a source of preset clang: ' + ', '.join(missing))
    return flags


def sources_by_flags(flags):
    groups = collections.defaultdict(list)
    for source in sorted(flags):
        groups[flags[source]].append(source)
    return groups


def without_clashes(sources):
    """The sources in as few lists as it takes to have no name twice in one."""
    lists = []
    for source in sources:
        with open(source) as file:
            names = set(DEFINED.findall(file.read()))
        for taken, members in lists:
            if not taken & names:
                taken |= names
                members.append(source)
                break
        else:
            lists.append((names, [source]))
    return [members for _, members in lists]


class Linter(object):
    def __init__(self, folder):
        self.folder = folder
        self.reports = []

    def look_at(self, sources, flags):
        name = re.sub(r'\W', '_', '_'.join((os.path.relpath(sources[0]), str(len(sources))))) + '.cpp'
        together = os.path.join(self.folder, name)
        with open(together, 'w') as file:
            file.write(''.join('#include "%s"\n' % source for source in sources))
        status, report, errors = run((TIDY, '--quiet', together, '--') + flags)
        if 'clang-diagnostic-error' in report and len(sources) > 1:
            half = len(sources) // 2
            self.look_at(sources[:half], flags)
            self.look_at(sources[half:], flags)
        elif status != 0:
            self.reports.append(report or errors)

    def compile(self, source, flags):
        """What the compiler warns of. Checks are for what people write, and in C++."""
        compiler = 'clang-14' if source.endswith('.c') else 'clang++-14'
        status, _, errors = run((compiler, '-fsyntax-only', '-Werror', source) + flags)
        if status != 0:
            self.reports.append(errors)


def run(command):
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True)
    output, errors = process.communicate()
    return process.returncode, output, errors


def main(build, *wanted):
    build = os.path.abspath(build)
    folder = os.path.join(build, 'lint')
    if not os.path.isdir(folder):
        os.mkdir(folder)
    flags = flags_by_source(build, wanted)
    written = dict(item for item in flags.items()
                   if item[0].endswith('.cpp') and not item[0].startswith(build + os.sep))
    linter = Linter(folder)
    work = [(linter.look_at, members, flags) for flags, sources in sources_by_flags(written).items()
            for members in without_clashes(sources)]
    # The longest first, so that none of the processors waits for it at the end.
    work.sort(key=lambda item: -sum(map(os.path.getsize, item[1])))
    work += [(linter.compile, source, flags[source]) for source in sorted(set(flags) - set(written))]
    pool = multiprocessing.pool.ThreadPool()
    pool.map(lambda item: item[0](*item[1:]), work, 1)
    sys.stdout.write('\n'.join(sorted(linter.reports)))
    return 1 if linter.reports else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
