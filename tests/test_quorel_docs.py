"""The examples in the docstrings of quorel and in the tutorial, run as they stand."""
import doctest
import os
import re
import subprocess
import sys
import tempfile
import unittest

import QuorelApiNew as q
import quorel
import simulator
from quorel import picture

TUTORIAL = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'docs', 'scripting.md')


def documented():
    """(name, docstring) of all that the package offers, with the methods and properties of its classes."""
    yield 'quorel', quorel.__doc__
    yield 'quorel.picture', picture.__doc__
    for name in quorel.__all__:
        public = getattr(quorel, name)
        yield 'quorel.' + name, public.__doc__
        for member, value in vars(public).items() if isinstance(public, type) else ():
            if not member.startswith('_') and member != 'next':
                yield 'quorel.%s.%s' % (name, member), value.__doc__


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
