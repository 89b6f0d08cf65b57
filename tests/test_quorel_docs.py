"""The examples in the docstrings of quorel, run as they stand."""
import doctest
import sys
import unittest

import QuorelApiNew as q
import quorel
import simulator


def documented():
    """(name, docstring) of all that the package offers, with the methods and properties of its classes."""
    yield 'quorel', quorel.__doc__
    for name in quorel.__all__:
        public = getattr(quorel, name)
        yield 'quorel.' + name, public.__doc__
        for member, value in vars(public).items() if isinstance(public, type) else ():
            if not member.startswith('_') and member != 'next':
                yield 'quorel.%s.%s' % (name, member), value.__doc__


class Docstrings(simulator.SwitchTest):
    def test_there_is_one_for_everything(self):
        self.assertEqual([name for name, text in documented() if not (text or '').strip()], [])

    def test_examples_do_what_they_show(self):
        runner = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS, verbose=False)
        found = 0
        for name, text in documented():
            names = dict((public, getattr(quorel, public)) for public in quorel.__all__)
            test = doctest.DocTestParser().get_doctest(text, dict(names, q=q), name, name, 0)
            found += len(test.examples)
            runner.run(test, out=sys.stderr.write)
        self.assertEqual(runner.failures, 0)
        self.assertGreater(found, 5)


if __name__ == '__main__':
    unittest.main()
