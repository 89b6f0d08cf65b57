"""What pages of the reference tell that no header says: asked of the modules when the pages are made.

usage: facts.py MODULE FILE [chip]

FILE becomes JSON: "values" of the module's constants. With `chip`, which is for the simulated switch, also "registers"
and "memories" with their fields, "commands" of the shell with what their examples print, and "package": what quorel
offers, with its docstrings.
"""
from __future__ import print_function

import ctypes
import importlib
import inspect
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


def signature(name, thing):
    """Of a Python function or class; of C code the docstring begins with it."""
    if inspect.isclass(thing):
        thing = vars(thing).get('__init__')
    if not inspect.isfunction(thing):
        return name
    thing = thing.__closure__[0].cell_contents if thing.__code__.co_name == 'helper' else thing
    names, several, keywords, defaults = inspect.getargspec(thing)
    return name + re.sub(r"^\(self(, )?", "(", inspect.formatargspec(names, several, keywords, defaults))


def told(name, thing):
    """{name, signature, text, members: [such]}; methods and properties in the order of their sources."""
    text, shown = inspect.getdoc(thing) or '', signature(name, thing)
    of_c = re.match(r'(%s\([^)]*\)): ' % name, text)
    if of_c:
        shown, text = of_c.group(1), text[of_c.end():]
    members = []
    if inspect.isclass(thing):
        found = [(member, value) for member, value in vars(thing).items()
                 if member[0] != '_' and (inspect.isfunction(value) or isinstance(value, property)) and value.__doc__]

        def line(item):
            code = getattr(getattr(item[1], 'fget', item[1]), '__code__', None)
            return code.co_firstlineno if code else 0
        members = [dict(told(member, value), property=isinstance(value, property))
                   for member, value in sorted(found, key=line)]
    return {'name': name, 'signature': shown, 'text': text, 'members': members}


def package():
    """[{name, text, things}] of the package's modules."""
    import quorel
    from quorel import picture, sim
    from quorel.sim import lab
    found = []
    for module in quorel, picture, sim, lab:
        names = getattr(module, '__all__', [name for name, value in sorted(vars(module).items()) if name[0] != '_' and
                                            getattr(value, '__module__', None) == module.__name__])
        things = [told(name, getattr(module, name)) for name in sorted(names, key=str.lower)
                  if inspect.isroutine(getattr(module, name)) or inspect.isclass(getattr(module, name))]
        found.append({'name': module.__name__, 'text': inspect.getdoc(module), 'things': things})
    return found


def main(name, path, *words):
    facts = {'values': values(importlib.import_module(name))}
    if 'chip' in words:
        from quorel import Chip, sim
        switch = sim.Switch()
        switch.fresh()
        chip = Chip(0)
        facts.update(registers=places(chip.regs), memories=places(chip.mems), commands=commands(switch),
                     package=package())
    with open(path, 'w') as file:
        json.dump(facts, file, indent=1, sort_keys=True)


if __name__ == '__main__':
    main(*sys.argv[1:])
