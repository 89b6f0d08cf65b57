"""What pages of the reference tell that no header says: asked of the modules when the pages are made.

usage: facts.py MODULE FILE [chip]

FILE becomes JSON: "values" of the module's constants. With `chip`, which is for the simulated switch, also "registers"
and "memories" with their fields, and "commands" of the shell with what their examples print.
"""
from __future__ import print_function

import ctypes
import importlib
import json
import os
import re
import sys
import tempfile


def values(module):
    return dict((name, value) for name, value in vars(module).items()
                if isinstance(value, (int, type(1 << 70), float, str)) and name[:1] != '_')


def places(names):
    """[{name, bits, dimensions, fields: [{name, bits, writable}]}]; the lowest field is first."""
    found = []
    for name in names:
        kind = names[name]._kind
        found.append({'name': name, 'bits': kind.width,
                      'dimensions': [[int(each[0]), int(each[-1])] for each in kind.dimensions],
                      'fields': [{'name': field.name, 'bits': list(field.bits), 'writable': field.writable}
                                 for field in kind.in_order]})
    return found


def printed(call, *arguments):
    """(result, what it printed), C code included."""
    flush = ctypes.CDLL(None).fflush
    sys.stdout.flush()
    flush(None)
    kept = os.dup(1)
    with tempfile.TemporaryFile() as output:
        os.dup2(output.fileno(), 1)
        try:
            result = call(*arguments)
        finally:
            flush(None)
            os.dup2(kept, 1)
            os.close(kept)
        output.seek(0)
        return result, output.read()


# What an example of a command shows more of when something has happened before.
SCENES = {
    'l2': 'l2 add 02:00:5e:00:00:07 1 7',
    'counters': 'packet send 1 ffffffffffff02005e0000010806',
}
# Those that would end the run, wait, or leave files.
NOT_RUN = 'exit', 'sleep', 'rcload', 'capture', 'config'


def commands(switch):
    """[{group, name, purpose, forms: [[form, what it does]], example, output}]"""
    import QuorelApiNew as q

    def run(line):
        return printed(q.sh_process_command, 0, line)[1]

    found, group = [], ''
    for line in run('help').splitlines():
        if not line.startswith(' '):
            group = line
            continue
        name = line.split()[0]
        told = run('help ' + name).splitlines()
        forms = [re.split('  +', form.strip()) for form in told[1:-1]]
        example = told[-1].partition(': ')[2]
        output = None
        if name not in NOT_RUN:
            switch.fresh()
            if name in SCENES:
                run(SCENES[name])
            output = run(example)
        found.append({'group': group, 'name': name, 'purpose': told[0].partition(': ')[2],
                      'forms': [(form + [''])[:2] for form in forms], 'example': example, 'output': output})
    return found


def main(name, path, *words):
    facts = {'values': values(importlib.import_module(name))}
    if 'chip' in words:
        from quorel import Chip, sim
        switch = sim.Switch()
        switch.fresh()
        chip = Chip(0)
        facts.update(registers=places(chip.regs), memories=places(chip.mems), commands=commands(switch))
    with open(path, 'w') as file:
        json.dump(facts, file, indent=1, sort_keys=True)


if __name__ == '__main__':
    main(*sys.argv[1:])
