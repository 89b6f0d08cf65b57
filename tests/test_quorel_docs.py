"""The examples in the docstrings of quorel and in the tutorial, run as they stand."""
import doctest
import importlib
import os
import pkgutil
import re
import subprocess
import sys
import tempfile
import unittest

import QuorelApiNew as q
import quorel
import simulator

TUTORIAL = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'docs', 'scripting.md')


def documented():
    """(name, docstring) of all that the package and its modules offer, with the methods and properties of classes."""
    yield 'quorel', quorel.__doc__
    offered = [('quorel.' + name, getattr(quorel, name)) for name in quorel.__all__]
    for _, module_name, _ in pkgutil.walk_packages(quorel.__path__, 'quorel.'):
        module = importlib.import_module(module_name)
        yield module_name, module.__doc__
        offered += [('%s.%s' % (module_name, name), public) for name, public in sorted(vars(module).items())
                    if not name.startswith('_') and getattr(public, '__module__', None) == module_name]
    seen = set()
    for name, public in offered:
        if id(public) in seen:
            continue
        seen.add(id(public))
        yield name, public.__doc__
        for member in vars(public) if isinstance(public, type) else ():
            if not member.startswith('_') and member != 'next':
                yield '%s.%s' % (name, member), getattr(public, member).__doc__


class Examples(simulator.SwitchTest):
    def test_everything_has_a_docstring(self):
        self.assertEqual([name for name, text in documented() if not (text or '').strip()], [])

    def test_docstrings(self):
        names = dict((name, getattr(quorel, name)) for name in quorel.__all__)
        runner = doctest.DocTestRunner(verbose=False, optionflags=doctest.ELLIPSIS)
        for name, text in documented():
            test = doctest.DocTestParser().get_doctest(text, dict(names, q=q), name, name, 0)
            runner.run(test, out=sys.stderr.write)
        self.assertEqual(runner.failures, 0)
        self.assertGreater(runner.tries, 10)

    def test_the_tutorial(self):
        with open(TUTORIAL) as file:
            text = file.read()
        blocks = re.findall(r'(?ms)^```(.*?)\n(.*?)^```$', text)
        self.assertEqual([block for kind, block in blocks if kind != 'python' or not block.startswith('>>> ')], [])
        steps = [int(number) for number in re.findall('(?m)^## ([0-9]+)[.]', text)]
        self.assertEqual(steps, list(range(1, 12)))
        # On a switch that nothing has been done to. What an example shows ends at a blank line, not at a fence.
        with tempfile.NamedTemporaryFile(suffix='.txt') as file:
            file.write(re.sub('(?m)^```.*$', '', text))
            file.flush()
            process = subprocess.Popen([sys.executable, '-m', 'doctest', '-v', file.name], stdout=subprocess.PIPE)
            output = process.communicate()[0]
        self.assertEqual(process.returncode, 0, output)
        self.assertEqual(output.count('Trying:\n'), len(re.findall('(?m)^>>> ', text)))


if __name__ == '__main__':
    unittest.main()
